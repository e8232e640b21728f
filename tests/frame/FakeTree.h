// A tree that writes down the value words it is offered, and refuses one of them on demand.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "frame/DesignTree.h"

namespace kv::test {

class FakeTree final : public DesignTree {
  public:
    std::vector<std::wstring> Offered;  // "SECTION KEYWORD= WORD"
    std::size_t RefuseAt = 0;           // 1-based offer that fails, 0 for none
    std::size_t ThrowAt = 0;            // 1-based offer that throws, 0 for none

    [[nodiscard]] bool AddDefault(std::wstring_view Section, std::wstring_view Keyword,
                                  std::wstring_view Word) override {
        Offered.push_back(std::wstring(Section) + L" " + std::wstring(Keyword) + L" " + std::wstring(Word));
        if (Offered.size() == ThrowAt) throw std::runtime_error("no tree");
        return Offered.size() == RefuseAt;
    }

    void MarkModified(bool) override {}
    void AddNode(const NewNode&) override {}
    void AddIconNode(const NewNode&) override {}
    void ClearNodes() override {}
    void RemoveNode(std::wstring_view) override {}
    void RemoveChildren(std::wstring_view) override {}
    bool HasNode(std::wstring_view) const override { return false; }
    std::wstring NodeText(std::wstring_view) const override { return {}; }
    void SetNodeText(std::wstring_view, std::wstring_view) override {}
    std::wstring NodeParent(std::wstring_view) const override { return {}; }
    std::int32_t NodeId(std::wstring_view) const override { return 0; }
    std::wstring NodeAt(std::wstring_view, std::int32_t) const override { return {}; }
    void SelectNode(std::wstring_view) override {}
    [[nodiscard]] bool MoveListItem(ParmListBase&, std::int32_t, std::wstring&, std::int32_t&) override {
        return true;
    }
    void AddToolButton(const ToolButtonInfo&) override {}
    [[nodiscard]] bool SetTools(std::span<const std::wstring_view>) override { return false; }
    bool SyntaxOn() const override { return true; }
    [[nodiscard]] bool ShowTree(TreeCall&) override { return true; }
    void Dispose() override {}
};

}  // namespace kv::test
