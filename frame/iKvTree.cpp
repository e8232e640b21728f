#include "frame/iKvTree.h"

#include "frame/CoreUtil.h"

namespace kv {

bool iKvTree::ShowPropTable(const std::wstring&, const std::wstring&) {
    return Trap(L"iKvTree.ShowPropTable", [] {
        CoreUtil::Instance().Door().Beep();
        return false;
    });
}

bool iKvTree::ShowUsers(const Head&) { return false; }

bool iKvTree::ImportData(RegData&, std::wstring&) { return false; }

bool iKvTree::TlbrButtonClick(const std::wstring&, const std::wstring&, const std::wstring&,
                              const std::wstring&) {
    return false;
}

bool iKvTree::PasteData(const Head&, std::wstring&, ClipItem&) { return false; }

kv::DesignTree& iKvTree::Tree() const {
    if (!Tree_) RaiseFault(fault::kNoObject);
    return *Tree_;
}

}  // namespace kv
