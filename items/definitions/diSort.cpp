#include "items/definitions/diSort.h"

#include <optional>
#include <utility>

#include "frame/SectionTable.h"
#include "frame/vdbInclude.h"
#include "frame/vdbcModule.h"

namespace kv {

using vdbShared::kParms;
namespace {

/// Key of the leaf that stands for the collating table.
constexpr std::wstring_view kTableKey = L"PARMS 0";
constexpr int kCodes = 256;

// A switch counts as set only by a true word; in lax mode an unknown one leaves it clear.
template <std::int32_t Bit>
bool ReadSwitch(SortRecord& Into, Parm& P) {
    const int Word = P.Bool();
    if (Word == 1) P.BadIfStrict();
    if (Word == -1) Into.Switches |= Bit;
    return false;
}

template <std::int32_t Bit>
bool WriteSwitch(const SortRecord& From, std::wstring_view Keyword, LineWriter& Out) {
    Out.Bool(Keyword, (From.Switches & Bit) != 0);
    return false;
}

bool Refuse(SortRecord&, Parm& P) {
    std::wstring Text(L"Parametro non consentito in questa sezione");
    Text.append(P.Keyword).append(L"(").append(P.Value).append(L")");
    Raise(Text);
}

constexpr LadderRow<SortRecord> kParmLadder[] = {
    {L"MIRROROF=", read::Text<&SortRecord::MirrorOf>},
    {L"NOMASK=", ReadSwitch<sort_switch::kNoMask>},
    {L"NONUMERIC=", ReadSwitch<sort_switch::kNoNumeric>},
    {L"NOSPACES=", ReadSwitch<sort_switch::kNoSpaces>},
    {L"NOTABLE=", ReadSwitch<sort_switch::kNoTable>},
    {L"FLAGS=", read::Flags<&SortRecord::Flags, kNoWords>},
};

// The table section refuses the parameters before it asks whether they are repeated.
constexpr LadderRow<SortRecord> kTableLadder[] = {
    {L"MIRROROF=", read::Text<&SortRecord::MirrorOf>},
    {L"NOMASK=", Refuse, Repeat::Any},
    {L"NONUMERIC=", Refuse, Repeat::Any},
    {L"NOSPACES=", Refuse, Repeat::Any},
    {L"NOTABLE=", Refuse, Repeat::Any},
    {L"FLAGS=", Refuse, Repeat::Any},
};

constexpr LineRow<const SortRecord> kParmLines[] = {
    {L"NONUMERIC=", WriteSwitch<sort_switch::kNoNumeric>},
    {L"NOTABLE=", WriteSwitch<sort_switch::kNoTable>},
    {L"NOMASK=", WriteSwitch<sort_switch::kNoMask>},
    {L"NOSPACES=", WriteSwitch<sort_switch::kNoSpaces>},
    {L"FLAGS=", write::Constant<kNone>},
    {L"MIRROROF=", write::Quoted<&SortRecord::MirrorOf>},
};

constexpr LineRow<const SortRecord> kTableEnd[] = {
    {L"MIRROROF=", write::Quoted<&SortRecord::MirrorOf>},
};

constexpr std::array<std::wstring_view, 2> kTableNotes{
    L"'In questa sezione sono significative solo le cifre esadecimali",
    L"'I codici di carattere assenti si assumono =0",
};

constexpr Choice kChoices[] = {
    {kParms, L"NONUMERIC=", kBooleanWords},
    {kParms, L"NOMASK=", kBooleanWords},
    {kParms, L"NOTABLE=", kBooleanWords},
    {kParms, L"FLAGS=", kNoneOnly},
};

/// Every character collates as a digit, an upper-case letter, a blank, or not at all.
constexpr bool IsWeight(int Weight) noexcept {
    return Weight == 0x00 || Weight == 0x20 || (Weight >= 0x30 && Weight <= 0x39) ||
           (Weight >= 0x41 && Weight <= 0x5A);
}

std::wstring_view BeforeBlank(std::wstring_view Text) noexcept { return Text.substr(0, Text.find(L' ')); }

// Two upper-case hexadecimal digits: read as a number and written back they must give the same text.
std::optional<std::uint8_t> HexByte(std::wstring_view Digits) {
    if (Digits.size() != 2) return std::nullopt;
    const auto Code = static_cast<std::uint8_t>(StrUtil::HexNumber(Digits));
    if (StrUtil::Hex2(Code) != Digits) return std::nullopt;
    return Code;
}

// One line `61 = 41  [a] [A]`: the weight of a character code. What follows a blank is for the eye only.
bool ReadWeight(SortRecord& Into, Parm& P) {
    std::wstring Code = StrUtil::UpperCase(P.Keyword);
    P.Fold();
    Code.resize(BeforeBlank(Code).size());
    CoreUtil::TrimEnd(Code, L"=");
    const std::optional<std::uint8_t> Place = HexByte(Code);
    if (!Place) UnknownParm(Code, P.Value);
    CheckParmOnce(Code);
    P.Value = BeforeBlank(P.Value);
    const std::optional<std::uint8_t> Weight = HexByte(P.Value);
    if (!Weight) UnknownParm(Code, P.Value);
    if (!IsWeight(*Weight))
        Raise(
            L"Il peso dev'essere equivalente al codice di un carattere alfanumerico (30-39, 41-5A) o dello "
            L"spazio (20) oppure nullo (00). (Carattere" +
            Code + L".)");
    Into.Table[*Place] = static_cast<wchar_t>(*Weight);
    return false;
}

wchar_t Printable(std::uint8_t Code) noexcept {
    return Code < 32 || Code == 127 ? L' ' : StrUtil::FromWindows1252(Code);
}

// The weight of a code in a stored table; one that is too short counts as 00 from there on.
std::uint8_t WeightAt(const std::wstring& Table, int Code) noexcept {
    const auto Place = static_cast<std::size_t>(Code);
    if (Place >= Table.size()) return 0;
    const wchar_t Stored = Table[Place];
    if (static_cast<std::uint32_t>(Stored) <= 0xFF) return static_cast<std::uint8_t>(Stored);
    const int Byte = StrUtil::ToWindows1252(Stored);
    return Byte < 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(Byte);
}

void WriteWeights(const std::wstring& Table, LineWriter& Out) {
    std::wstring Line;
    for (int Code = 0; Code < kCodes; ++Code) {
        const auto Character = static_cast<std::uint8_t>(Code);
        const std::uint8_t Weight = WeightAt(Table, Code);
        Line = StrUtil::Hex2(Character);
        Line.append(L" = ").append(StrUtil::Hex2(Weight)).append(L"  [").push_back(Printable(Character));
        Line.append(L"] [").push_back(Printable(Weight));
        Line.push_back(L']');
        Out.Line(Line);
    }
}

}  // namespace

bool diSort::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diSort.SaveData", [&] {
        if (At.Key == kParms) return SaveParm(Buffer, At.CurrItem, Tree().SyntaxOn());
        return !At.Key.empty();
    });
}

bool diSort::Save(RegData& Clsid) {
    return Trap(L"diSort.Save", [&] { return Record().Save(Clsid); });
}

bool diSort::MoveData(Head&, std::int32_t) { return true; }

bool diSort::LoadData(RegData& Clsid) {
    return Trap(L"diSort.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        Tree().AddNode(
            {.Relative = kParms, .Relationship = relation::kChild, .Key = kTableKey, .Text = L"Tabella"});
        return AddChoices(Tree(), kChoices);
    });
}

bool diSort::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diSort.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diSort::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diSort.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diSort::EditData(const Head&, std::wstring&) { return false; }

bool diSort::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                      std::int32_t Indent) {
    return Trap(L"diSort.DispData", [&] {
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            return At.Key == kParms && DispParm(Buffer, At.CurrItem, vdbShared::InnerIndent(Indent));
        });
    });
}

bool diSort::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diSort.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diSort::DeleteData(const Head&, bool) { return false; }

bool diSort::SaveParm(std::wstring& Buffer, const std::wstring& NodeKey, bool SyntaxOn) {
    SectionText Text(Buffer);
    return Trap(L"diSort.SaveParm", Text, [&] {
        SortRecord Scratch;
        ClearParmCheck();
        if (NodeKey == kTableKey) {
            Scratch.Table.assign(kCodes, L'\0');
            if (ReadLadder(Text, kTableLadder, Scratch, SyntaxOn, ReadWeight)) return true;
            Record().Table = std::move(Scratch.Table);
        } else {
            if (ReadLadder(Text, kParmLadder, Scratch, SyntaxOn)) return true;
            // MIRROROF= is read and checked, and goes no further: what the record mirrors is not edited here.
            Record().Switches = Scratch.Switches;
            Record().Flags = Scratch.Flags;
        }
        return false;
    });
}

bool diSort::DispParm(std::wstring& Buffer, const std::wstring& NodeKey, std::int32_t Indent) {
    return Trap(L"diSort.DispParm", [&] {
        LineWriter Out{Buffer, Indent};
        if (NodeKey == kTableKey) {
            Buffer.clear();  // the table replaces whatever stood in the text, an opening line too
            for (const std::wstring_view Note : kTableNotes) Out.Line(Note);
            if (Record().Table.empty() && DefaultSortLoad(Record().Table)) return true;
            if (Record().Table.empty()) return false;
            WriteWeights(Record().Table, Out);
            if (WriteLines(Out, kTableEnd, std::as_const(Record()))) return true;
        } else {
            if (WriteLines(Out, kParmLines, std::as_const(Record()))) return true;
        }
        DispHeader(Buffer, Record(), Indent);
        return false;
    });
}

}  // namespace kv
