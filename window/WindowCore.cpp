#include "window/WindowCore.h"

#include <utility>

#include "frame/CoreUtil.h"
#include "frame/vdbInclude.h"

namespace kv::window {
namespace {

const std::wstring kNoPath;

}  // namespace

Head WindowCore::HeadOf(const Selection& At) const {
    const TreeNode* const Node = Tree_.Find(At.CurrItem);
    const TreeNode* const Parent = Node ? Node->Parent : nullptr;
    Head Made;
    Made.CurrItem = At.CurrItem;
    Made.CurrFolder = At.CurrFolder             ? *At.CurrFolder
                      : !IsLeafKey(At.CurrItem) ? At.CurrItem
                      : Parent                  ? Parent->Key
                                                : std::wstring();
    if (At.Index) {
        Made.Index = *At.Index;
    } else if (Parent) {
        const std::wstring_view Kind = Tree_.Kind(*Parent);
        if (Kind == kind::kList || Kind == kind::kSubList) Made.Index = SiblingOrder<TreeNode>::PlaceOf(Node);
    }
    Made.Key = At.Key ? *At.Key : std::wstring(SectionWord(At.CurrItem));
    return Made;
}

// Runs one operation on the selected node. The items mark the tree as they go; one that fails leaves no mark.
// What fails here and not in the server is shown here.
template <class Call>
bool WindowCore::Run(std::wstring_view Source, const Selection& At, Call&& Operation) {
    const bool Before = Tree_.Modified();
    const bool Failed = Trap(Source, [&] {
        if (Tree_.HasNode(At.CurrItem)) Tree_.SelectNode(At.CurrItem);
        Head Made = HeadOf(At);
        return Operation(Made);
    });
    if (!Failed) return false;
    Tree_.MarkModified(Before);
    CoreUtil::Instance().ShowLastError();
    return true;
}

bool WindowCore::LoadData() {
    Tree_.ForgetOffers();
    return Server_.LoadData(kNoPath);
}

bool WindowCore::DispData(const Selection& At, std::wstring& Buffer) {
    return Run(L"WindowCore.DispData", At,
               [&](const Head& Made) { return Server_.DispData(kNoPath, Made, Buffer); });
}

bool WindowCore::SaveData(const Selection& At, std::wstring& Buffer, std::wstring& NewItemKey) {
    return Run(L"WindowCore.SaveData", At, [&](const Head& Made) {
        if (Server_.SaveData(kNoPath, Made, NewItemKey, Buffer)) return true;
        Tree_.MarkModified(true);
        return false;
    });
}

bool WindowCore::EditData(const Selection& At, std::wstring& NewItemKey) {
    return Run(L"WindowCore.EditData", At, [&](const Head& Made) {
        if (Server_.EditData(kNoPath, Made, NewItemKey)) return true;
        if (Tree_.HasNode(NewItemKey)) Tree_.SelectNode(NewItemKey);
        return false;
    });
}

bool WindowCore::MoveData(const Selection& At, std::int32_t Direction, std::wstring& CurrItem) {
    return Run(L"WindowCore.MoveData", At, [&](Head& Made) {
        if (Server_.MoveData(kNoPath, Made, Direction)) return true;
        CurrItem = Made.CurrItem;
        return false;
    });
}

bool WindowCore::DeleteData(const Selection& At, bool Group) {
    return Run(L"WindowCore.DeleteData", At,
               [&](const Head& Made) { return Server_.DeleteData(kNoPath, Made, Group); });
}

bool WindowCore::CopyData(const Selection& At, bool Group, std::wstring& ClassWord) {
    return Run(L"WindowCore.CopyData", At, [&](const Head& Made) {
        const auto Data = std::make_shared<MemoryRegData>(Object_.Clsid());
        ClipItem Holder{.DataObj = Data, .ClassWord = Data->Clsid()};
        if (Server_.CopyData(kNoPath, Made, Group, Holder)) return true;
        if (Data->Written()) {
            std::wstring Path;
            if (ClipboardStore(Data->Read(), Path)) return true;
            Clipboard_ = std::move(Holder);
        }
        ClassWord = Clipboard_.ClassWord;
        return false;
    });
}

bool WindowCore::PasteData(const Selection& At, const std::optional<std::wstring>& Path,
                           std::wstring& NewItemKey) {
    return Run(L"WindowCore.PasteData", At, [&](const Head& Made) {
        if (Server_.PasteData(Path ? *Path : Object_.Clsid(), Made, NewItemKey, Clipboard_)) return true;
        if (!Clipboard_.DataObj) return false;
        RegObject Before = Object_.Read();
        Replace(Clipboard_.DataObj->Read());
        if (LoadData()) {
            // The item has kept its record and the tree: only the object is put back.
            Replace(std::move(Before));
            return true;
        }
        if (!BeforePaste_) BeforePaste_ = std::move(Before);
        Tree_.MarkModified(true);
        return false;
    });
}

// Puts content into the object under edit, in memory: its identity stays, and nothing is stored.
void WindowCore::Replace(RegObject Content) {
    const RegObject& Own = Object_.Read();
    Content.Id = Own.Id;
    Content.Name = Own.Name;
    Content.Desc = Own.Desc;
    Content.Version = Own.Version;
    Content.UserList = Own.UserList;
    Object_.SetSaving(false);
    Object_.Write(std::move(Content));
}

bool WindowCore::ShowPropTable(const Selection& At) {
    return Run(L"WindowCore.ShowPropTable", At, [&](const Head& Made) {
        return Server_.ShowPropTable(kNoPath, Made.CurrFolder, Made.CurrItem);
    });
}

void WindowCore::TlbrButtonClick(const std::wstring& Method, const Selection& At) {
    static_cast<void>(Run(L"WindowCore.TlbrButtonClick", At, [&](const Head& Made) {
        Server_.TlbrButtonClick(Method, Made.CurrFolder, Made.CurrItem, Made.Key);
        return false;
    }));
}

bool WindowCore::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                               std::wstring& Id, std::wstring& Clsid, std::wstring& UserList) {
    return Server_.GetObjectInfo(kNoPath, Name, Desc, Version, Clsid, Id, UserList);
}

bool WindowCore::HelpShow(const Selection& At, const std::wstring& HelpItem) {
    return Run(L"WindowCore.HelpShow", At, [&](const Head& Made) {
        return Server_.HelpShow(kNoPath, Made.CurrFolder, Made.CurrItem, HelpItem);
    });
}

bool WindowCore::Save() {
    if (Server_.Save(kNoPath)) return true;
    BeforePaste_.reset();
    Tree_.MarkModified(false);
    return false;
}

bool WindowCore::Reload() {
    const bool Failed = Trap(L"WindowCore.Reload", [&] {
        if (!BeforePaste_) return LoadData();
        RegObject Pasted = Object_.Read();
        Replace(*BeforePaste_);
        if (!LoadData()) return false;
        Replace(std::move(Pasted));
        return true;
    });
    if (Failed) {
        CoreUtil::Instance().ShowLastError();
        return true;
    }
    BeforePaste_.reset();
    Tree_.MarkModified(false);
    return false;
}

bool WindowCore::Terminate() {
    std::shared_ptr<RegData> Returned;
    return Server_.Terminate(kNoPath, Returned);
}

}  // namespace kv::window
