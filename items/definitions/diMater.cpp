#include "items/definitions/diMater.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
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

using Html = InRecord<&R::Html>;

constexpr ListSection<R> kLists[] = {
    {kHtml, 0, vdbShared::ListOf<Html>, vdbShared::NewIn<Html>,
     vdbShared::Leaf<Html, kHtml, HtmlNode<HtmlRecord>>, NewAt::End, Move::Yes, Delete::Yes},
};

constexpr ElementSection<R> kHtmlSection =
    vdbShared::Edits<Html, ParmEditor::SaveHtml, ParmEditor::DispHtml, HtmlNode<HtmlRecord>>(kHtml,
                                                                                             Self::Yes);

}  // namespace

bool diMater::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diMater.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        return At.Key == kHtml &&
               vdbShared::SaveElement(Tree(), Record(), kHtmlSection, At, NewItemKey, Buffer, Flags);
    });
}

bool diMater::Save(RegData& Clsid) {
    return Trap(L"diMater.Save", [&] { return Record().Save(Clsid); });
}

bool diMater::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diMater.MoveData", Tree(), Record(), kLists, At, Direction);
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
        vdbShared::Exporter Out(*this, Buffer);
        return Out.One(kParms, 1) || Out.Each(kHtml, Record().Html, 1);
    });
}

bool diMater::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diMater.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diMater::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                       std::int32_t Indent) {
    return Trap(L"diMater.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            if (At.Key == kParms) return DispParm(Buffer, vdbShared::InnerIndent(Indent));
            return At.Key == kHtml &&
                   vdbShared::DispElement(Tree(), Record(), kHtmlSection, At, Item, Buffer, Flags);
        });
    });
}

bool diMater::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diMater.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diMater::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diMater.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diMater::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diMater.SaveParm", Scratch::Parameters, kParmLadder, Record(), Buffer, SyntaxOn);
}

bool diMater::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diMater.DispParm", kParmLines, Record(), Buffer, Indent);
}

}  // namespace kv
