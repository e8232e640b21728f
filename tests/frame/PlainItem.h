// An item that answers what the contract's plain case answers, and writes down on what it was saved.
#pragma once

#include <string>

#include "frame/iKvTree.h"

namespace kv::test {

class PlainItem final : public iKvTree {
  public:
    RegData* SavedOn = nullptr;
    bool Fails = false;  // the answer of Save

    [[nodiscard]] bool Save(RegData& Clsid) override {
        SavedOn = &Clsid;
        return Fails;
    }
    [[nodiscard]] bool SaveData(const Head&, std::wstring&, std::wstring&, RegData*) override {
        return false;
    }
    [[nodiscard]] bool MoveData(Head&, std::int32_t) override { return true; }
    [[nodiscard]] bool LoadData(RegData&) override { return false; }
    [[nodiscard]] bool GetObjectInfo(std::wstring&, std::wstring&, std::int16_t&, std::wstring&) override {
        return false;
    }
    [[nodiscard]] bool ExportData(RegData&, std::wstring&) override { return false; }
    [[nodiscard]] bool EditData(const Head&, std::wstring&) override { return false; }
    [[nodiscard]] bool DispData(const Head&, std::wstring&, bool, Positions, std::int32_t) override {
        return false;
    }
    [[nodiscard]] bool CopyData(const Head&, bool, ClipItem&) override { return false; }
    [[nodiscard]] bool DeleteData(const Head&, bool) override { return false; }

    using iKvTree::Tree;
};

}  // namespace kv::test
