#include "items/navigation/diHelp.h"

#include "editor/MenuShape.h"

namespace kv {
namespace {

struct Form {
    using Record = HelpRecord;
    static constexpr std::wstring_view kClass = L"diHelp";
    static constexpr SectionRow<Record> kPath{L"MIRROROF=", read::Text<&Record::MirrorOf>,
                                              write::Quoted<&Record::MirrorOf>};
    static constexpr auto kFlagWords = kNoWords;
    static constexpr std::wstring_view kLines[] = {
        L"HELP=",      L"HELPWWW=",   L"TIPS=",     L"TIPSALIGN=", L"TIPSBUTTONS=", L"LARGEBUTT=",
        L"TOOLALIGN=", L"TIPSWIDTH=", L"TOOLTIPS=", L"FLAGS=",     L"MIRROROF="};
    // Offered, though the parser knows no STYLE=.
    static constexpr std::array<std::wstring_view, 3> kStyles{L"TEXT", L"HTML", L"WINDOWS"};
    static constexpr std::array<Choice, 1> kFirstChoices{{{vdbShared::kParms, L"STYLE=", kStyles}}};
    static constexpr Move kPopupsMove = Move::Yes;
    static constexpr std::wstring_view kExport[] = {MenuShape::kHtml, MenuShape::kCommands,
                                                    MenuShape::kPopups, MenuShape::kTitles};
};

}  // namespace

bool diHelp::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return MenuShape::SaveData<Form>(Tree(), Record(), At, NewItemKey, Buffer);
}

bool diHelp::Save(RegData& Clsid) { return MenuShape::Save<Form>(Record(), Clsid); }

bool diHelp::MoveData(Head& At, std::int32_t Direction) {
    return MenuShape::MoveData<Form>(Tree(), Record(), At, Direction);
}

bool diHelp::LoadData(RegData& Clsid) { return MenuShape::LoadData<Form>(Tree(), Record_, Clsid); }

bool diHelp::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return MenuShape::GetObjectInfo<Form>(Record(), Name, Desc, Version, Id);
}

bool diHelp::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return MenuShape::ExportData<Form>(*this, Record_, Clsid, Buffer);
}

bool diHelp::EditData(const Head& At, std::wstring& NewItemKey) {
    return MenuShape::EditData<Form>(Tree(), Record(), At, NewItemKey);
}

bool diHelp::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                      std::int32_t Indent) {
    return MenuShape::DispData<Form>(Tree(), Record(), At, Buffer, ExternalTarget, Item, Indent);
}

bool diHelp::CopyData(const Head&, bool, ClipItem& DataObj) {
    return MenuShape::CopyData<Form>(*this, DataObj);
}

bool diHelp::DeleteData(const Head& At, bool Group) {
    return MenuShape::DeleteData<Form>(Tree(), Record(), At, Group);
}

}  // namespace kv
