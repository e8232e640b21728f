#include "items/navigation/diMenu.h"

#include "editor/MenuShape.h"

namespace kv {
namespace {

struct Form {
    using Record = MenuRecord;
    static constexpr std::wstring_view kClass = L"diMenu";
    static constexpr SectionRow<Record> kPath{L"MIRROROF=", read::Text<&Record::MirrorOf>,
                                              write::Quoted<&Record::MirrorOf>};
    static constexpr auto kFlagWords = kNoWords;
    static constexpr std::wstring_view kLines[] = {
        L"HELP=",      L"HELPWWW=",   L"TIPS=",     L"TIPSALIGN=", L"TIPSBUTTONS=", L"TOOLALIGN=",
        L"LARGEBUTT=", L"TIPSWIDTH=", L"TOOLTIPS=", L"FLAGS=",     L"MIRROROF="};
    static constexpr std::array<Choice, 0> kFirstChoices{};
    static constexpr Move kPopupsMove = Move::No;
    static constexpr std::wstring_view kExport[] = {MenuShape::kCommands, MenuShape::kPopups,
                                                    MenuShape::kHtml, MenuShape::kTitles};
};

}  // namespace

bool diMenu::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return MenuShape::SaveData<Form>(Tree(), Record(), At, NewItemKey, Buffer);
}

bool diMenu::Save(RegData& Clsid) { return MenuShape::Save<Form>(Record(), Clsid); }

bool diMenu::MoveData(Head& At, std::int32_t Direction) {
    return MenuShape::MoveData<Form>(Tree(), Record(), At, Direction);
}

bool diMenu::LoadData(RegData& Clsid) { return MenuShape::LoadData<Form>(Tree(), Record_, Clsid); }

bool diMenu::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return MenuShape::GetObjectInfo<Form>(Record(), Name, Desc, Version, Id);
}

bool diMenu::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return MenuShape::ExportData<Form>(*this, Record_, Clsid, Buffer);
}

bool diMenu::EditData(const Head& At, std::wstring& NewItemKey) {
    return MenuShape::EditData<Form>(Tree(), Record(), At, NewItemKey);
}

bool diMenu::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                      std::int32_t Indent) {
    return MenuShape::DispData<Form>(Tree(), Record(), At, Buffer, ExternalTarget, Item, Indent);
}

bool diMenu::CopyData(const Head&, bool, ClipItem& DataObj) {
    return MenuShape::CopyData<Form>(*this, DataObj);
}

bool diMenu::DeleteData(const Head& At, bool Group) {
    return MenuShape::DeleteData<Form>(Tree(), Record(), At, Group);
}

}  // namespace kv
