#include "items/navigation/diSetOp.h"

#include "editor/MenuShape.h"

namespace kv {
namespace {

struct Form {
    using Record = SetOpRecord;
    static constexpr std::wstring_view kClass = L"diSetOp";
    static constexpr SectionRow<Record> kPath{L"PATH=", read::Upper<&Record::Path>,
                                              write::Quoted<&Record::Path>};
    static constexpr auto kFlagWords = kSetOpFlags;
    static constexpr std::wstring_view kLines[] = {
        L"HELP=",      L"HELPWWW=",   L"PATH=",      L"TIPS=",     L"TIPSALIGN=", L"TIPSBUTTONS=",
        L"LARGEBUTT=", L"TOOLALIGN=", L"TIPSWIDTH=", L"TOOLTIPS=", L"FLAGS="};
    static constexpr std::array<Choice, 0> kFirstChoices{};
    static constexpr Move kPopupsMove = Move::Yes;
    static constexpr std::wstring_view kExport[] = {MenuShape::kCommands, MenuShape::kPopups,
                                                    MenuShape::kHtml, MenuShape::kTitles};
};

}  // namespace

bool diSetOp::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return MenuShape::SaveData<Form>(Tree(), Record(), At, NewItemKey, Buffer);
}

bool diSetOp::Save(RegData& Clsid) { return MenuShape::Save<Form>(Record(), Clsid); }

bool diSetOp::MoveData(Head& At, std::int32_t Direction) {
    return MenuShape::MoveData<Form>(Tree(), Record(), At, Direction);
}

bool diSetOp::LoadData(RegData& Clsid) { return MenuShape::LoadData<Form>(Tree(), Record_, Clsid); }

bool diSetOp::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return MenuShape::GetObjectInfo<Form>(Record(), Name, Desc, Version, Id);
}

bool diSetOp::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return MenuShape::ExportData<Form>(*this, Record_, Clsid, Buffer);
}

bool diSetOp::EditData(const Head& At, std::wstring& NewItemKey) {
    return MenuShape::EditData<Form>(Tree(), Record(), At, NewItemKey);
}

bool diSetOp::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                       std::int32_t Indent) {
    return MenuShape::DispData<Form>(Tree(), Record(), At, Buffer, ExternalTarget, Item, Indent);
}

bool diSetOp::CopyData(const Head&, bool, ClipItem& DataObj) {
    return MenuShape::CopyData<Form>(*this, DataObj);
}

bool diSetOp::DeleteData(const Head& At, bool Group) {
    return MenuShape::DeleteData<Form>(Tree(), Record(), At, Group);
}

}  // namespace kv
