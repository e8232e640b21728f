#include "items/definitions/diMater.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = MaterRecord;

constexpr std::wstring_view kHtml = L"HTML";

constexpr LadderRow<R> kParmLadder[] = {
    {L"FLAGS=", read::Flags<&R::Flags, kNoWords>},
};

constexpr LineRow<R> kParmLines[] = {
    {L"FLAGS=", write::Constant<kNone>},
};

constexpr Choice kChoices[] = {
    {kParms, L"FLAGS=", kNoneOnly},
};

constexpr ListSection<R> kLists[] = {
    {kHtml, 0, [](R& Record, const Place&) -> ParmListBase& { return Record.Html; },
     [](R& Record, const Place&, std::int32_t After) { return vdbShared::NewElement(Record.Html, After); },
     [](DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
        std::optional<std::int32_t> Relationship) {
         return vdbShared::SetLeaf(Tree, kHtml, HtmlNode(Record.Html.Item(Index)), Key, Relationship);
     },
     NewAt::End, Move::Yes, Delete::Yes},
};

}  // namespace

HtmlRecord& diMater::Template(const Head& At, Positions Item) {
    return Record().Html.Item(vdbShared::PlaceOf(Tree(), At, 0, Self::Yes, Item)[0]);
}

bool diMater::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diMater.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return SaveParm(Buffer, Tree().SyntaxOn());
        if (At.Key == kHtml) {
            HtmlRecord& Edited = Template(At, {});
            if (ParmEditor::SaveHtml(Edited, Buffer, Flags)) return true;
            vdbShared::ShowCaption(Tree(), At.CurrItem, HtmlNode(Edited), NewItemKey);
        }
        return false;
    });
}

bool diMater::Save(RegData& Clsid) {
    return Trap(L"diMater.Save", [&] { return Record().Save(Clsid); });
}

bool diMater::MoveData(Head& At, std::int32_t Direction) {
    return Trap(L"diMater.MoveData", [&] {
        const auto* const List = FindSection(kLists, At.Key);
        return List && vdbShared::MoveInSection(Tree(), Record(), *List, At, Direction);
    });
}

bool diMater::LoadData(RegData& Clsid) {
    return Trap(L"diMater.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kHtml, L"HTML", kind::kList);
        if (vdbShared::BuildLists(Tree(), Record(), kLists)) return true;
        return AddChoices(Tree(), kChoices) || HtmlDefaults(Tree(), kHtml);
    });
}

bool diMater::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diMater.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diMater::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diMater.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        if (DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1)) return true;
        for (std::int32_t I = 1; I <= Record().Html.Count(); ++I)
            if (DispData(vdbShared::ExportHead(kHtml), Buffer, true, {&I, 1}, 1)) return true;
        return false;
    });
}

bool diMater::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diMater.EditData", [&] {
        if (const auto* const List = FindSection(kLists, At.Key))
            return vdbShared::AddElement(Tree(), Record(), *List, At, NewItemKey);
        return false;
    });
}

bool diMater::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                       std::int32_t Indent) {
    return Trap(L"diMater.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            if (At.Key == kParms) return DispParm(Buffer, vdbShared::InnerIndent(Indent));
            if (At.Key == kHtml) return ParmEditor::DispHtml(Template(At, Item), Buffer, Flags);
            return false;
        });
    });
}

bool diMater::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diMater.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diMater::DeleteData(const Head& At, bool Group) {
    return Trap(L"diMater.DeleteData", [&] {
        if (const auto* const List = FindSection(kLists, At.Key))
            vdbShared::DeleteInSection(Tree(), Record(), *List, At, Group);
        return false;
    });
}

bool diMater::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    SectionText Text(Buffer);
    return Trap(L"diMater.SaveParm", Text, [&] {
        R Scratch;
        Record().CopyTo(Scratch);
        ClearParmCheck();
        if (ReadLadder(Text, kParmLadder, Scratch, SyntaxOn)) return true;
        std::move(Scratch).CopyTo(Record());
        return false;
    });
}

bool diMater::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diMater.DispParm", kParmLines, Record(), Buffer, Indent);
}

}  // namespace kv
