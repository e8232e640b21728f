#include "records/RepositoryRecord.h"

#include "records/Sections.h"

namespace kv {
namespace {

using R = RepositoryRecord;

constexpr SectionRow<R> kParms[] = {
    {L"PATH=", read::Text<&R::Path>, write::Quoted<&R::Path>},
    {L"URL=", read::Text<&R::Url>, write::Quoted<&R::Url>},
    {L"TABLE=", read::Upper<&R::Table>, write::Quoted<&R::Table>},
    {L"KEYFIELD=", read::Upper<&R::KeyField>, write::Quoted<&R::KeyField>},
    {L"TEMPPATH=", read::Text<&R::TempPath>, write::Quoted<&R::TempPath>},
    {L"READONLY=", read::BoolOrIgnore<&R::ReadOnly>, write::Bool<&R::ReadOnly>},
    {L"FLAGS=", read::Flags<&R::Flags, kNoWords>, write::Flags<&R::Flags, kNoWords>},
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
    return DispSection(L"RepositoryRecord.DispParm", kParms, *this, Buffer, Indent);
}

}  // namespace kv
