#include "records/RepositoryRecord.h"

#include <array>

namespace kv {
namespace {

using R = RepositoryRecord;

constexpr std::array<Word, 0> kFlagWords{};

constexpr SectionRow<R> kParms[] = {
    {L"PATH=", read::Text<&R::Path>, write::Quoted<&R::Path>},
    {L"URL=", read::Text<&R::Url>, write::Quoted<&R::Url>},
    {L"TABLE=", read::Upper<&R::Table>, write::Quoted<&R::Table>},
    {L"KEYFIELD=", read::Upper<&R::KeyField>, write::Quoted<&R::KeyField>},
    {L"TEMPPATH=", read::Text<&R::TempPath>, write::Quoted<&R::TempPath>},
    {L"READONLY=", read::BoolOrIgnore<&R::ReadOnly>, write::Bool<&R::ReadOnly>},
    {L"FLAGS=", read::Flags<&R::Flags, kFlagWords>, write::Flags<&R::Flags, kFlagWords>},
    {L"MIRROROF=", read::Text<&R::MirrorOf>, write::Quoted<&R::MirrorOf>},
};

}  // namespace

bool RepositoryRecord::SaveParm(std::wstring_view Buffer, bool SyntaxOn) {
    SectionText Text(Buffer);
    return Trap(L"RepositoryRecord.SaveParm", Text, [&] {
        ClearParmCheck();
        return ReadLadder(Text, kParms, *this, SyntaxOn);
    });
}

bool RepositoryRecord::DispParm(std::wstring& Buffer, std::int32_t Indent) const {
    return Trap(L"RepositoryRecord.DispParm", [&] {
        LineWriter Out{Buffer, Indent};
        if (WriteLines(Out, kParms, *this)) return true;
        DispHeader(Buffer, *this, Indent);
        return false;
    });
}

}  // namespace kv
