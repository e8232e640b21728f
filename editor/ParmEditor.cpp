#include "editor/ParmEditor.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "records/MessageSection.h"
#include "records/Sections.h"

namespace kv::ParmEditor {
namespace {

template <class C>
constexpr SectionRow<C> kCatalogue[] = {
    {L"RETRIEVAL=", read::Upper<&C::Retrieval>, write::Quoted<&C::Retrieval>},
    {L"TABLE=", read::Upper<&C::Table>, write::Quoted<&C::Table>},
    {L"PROFILE=", read::Upper<&C::Profile>, write::Quoted<&C::Profile>},
    {L"QUERY=", read::Upper<&C::Query>, write::Quoted<&C::Query>},
    {L"BROWSE=", read::Upper<&C::Browse>, write::Quoted<&C::Browse>},
    {L"PATH=", read::Text<&C::Path>, write::Quoted<&C::Path>},
    {L"HELP=", read::Upper<&C::Help>, write::Quoted<&C::Help>},
    {L"HELPWWW=", read::Upper<&C::HelpWww>, write::Quoted<&C::HelpWww>},
    {L"FLAGS=", read::Flags<&C::Flags, kNoWords>, write::Flags<&C::Flags, kNoWords>},
    {L"MIRROROF=", read::Text<&C::MirrorOf>, write::Quoted<&C::MirrorOf>},
};

using F = FilterRecord;
constexpr SectionRow<F> kFilter[] = {
    {L"TABLE=", read::Upper<&F::Table>, write::Quoted<&F::Table>},
    {L"EXPRESSION=", read::Text<&F::Expression>, write::Quoted<&F::Expression>},
    {L"AUTOMATIC=", read::BoolOrIgnore<&F::Automatic>, write::Bool<&F::Automatic>},
    {L"MERGEWITH=", read::OneWord<&F::MergeWith, kMergeWords>, write::OneWord<&F::MergeWith, kMergeWords>},
    {L"HELP=", read::Upper<&F::Help>, write::Quoted<&F::Help>},
    {L"FLAGS=", read::Flags<&F::Flags, kNoWords>, write::Flags<&F::Flags, kNoWords>},
    {L"MIRROROF=", read::Text<&F::MirrorOf>, write::Quoted<&F::MirrorOf>},
};

// A filter of a browse bears its name in its text.
constexpr auto kBrowseFilter = [] {
    std::array<SectionRow<F>, 1 + std::size(kFilter)> Rows{
        {{L"NAME=", read::Upper<&F::Name>, write::Quoted<&F::Name>}}};
    std::copy(std::begin(kFilter), std::end(kFilter), Rows.begin() + 1);
    return Rows;
}();

using I = ImportRecord;
constexpr SectionRow<I> kImport[] = {
    {L"PROCEDURE=", read::Upper<&I::Procedure>, write::Quoted<&I::Procedure>},
    {L"RETRIEVAL=", read::Upper<&I::Retrieval>, write::Quoted<&I::Retrieval>},
    {L"SOURCEPATH=", read::Text<&I::SourcePath>, write::Quoted<&I::SourcePath>},
    {L"TARGETPATH=", read::Text<&I::TargetPath>, write::Quoted<&I::TargetPath>},
    {L"LOGFILE=", read::Text<&I::LogFile>, write::Quoted<&I::LogFile>},
    {L"PROCTYPE=", read::Flags<&I::ProcType, kImportProcTypes>, write::Flags<&I::ProcType, kImportProcTypes>},
    {L"FLAGS=", read::Flags<&I::Flags, kImportFlags>, write::Flags<&I::Flags, kImportFlags>},
    {L"LOCKED=", read::BoolOrIgnore<&I::Locked>, write::Bool<&I::Locked>},
    {L"MIRROROF=", read::Text<&I::MirrorOf>, write::Quoted<&I::MirrorOf>},
};

using L = ImportProcRecord;
constexpr SectionRow<L> kImportProc[] = {
    {L"TABLE=", read::Upper<&L::Table>, write::Quoted<&L::Table>},
    {L"SOURCEPATH=", read::Text<&L::SourcePath>, write::Quoted<&L::SourcePath>},
    {L"TARGETPATH=", read::Text<&L::TargetPath>, write::Quoted<&L::TargetPath>},
    {L"LOGFILE=", read::Text<&L::LogFile>, write::Quoted<&L::LogFile>},
    {L"FLAGS=", read::Flags<&L::Flags, kImportProcFlags>, write::Flags<&L::Flags, kImportProcFlags>},
    {L"SELECTED=", read::BoolOrIgnore<&L::Selected>, write::Bool<&L::Selected>},
    {L"LOCKED=", read::BoolOrIgnore<&L::Locked>, write::Bool<&L::Locked>},
    {L"INCLUDEDLIB=", read::Text<&L::IncludedLib>, write::Quoted<&L::IncludedLib>},
    {L"EXCLUDEDLIB=", read::Text<&L::ExcludedLib>, write::Quoted<&L::ExcludedLib>},
    {L"INCLUDEDLIBISBD=", read::Text<&L::IncludedLibIsbd>, write::Quoted<&L::IncludedLibIsbd>},
    {L"EXCLUDEDLIBISBD=", read::Text<&L::ExcludedLibIsbd>, write::Quoted<&L::ExcludedLibIsbd>},
    {L"LIBRARYORDER=", read::Text<&L::LibraryOrder>, write::Quoted<&L::LibraryOrder>},
    {L"PROCTYPE=", read::Flags<&L::ProcType, kProcTypes>, write::Flags<&L::ProcType, kProcTypes>},
    {L"ACTION=", read::Flags<&L::Action, kImportProcActions>, write::Flags<&L::Action, kImportProcActions>},
    {L"MIRROROF=", read::Text<&L::MirrorOf>, write::Quoted<&L::MirrorOf>},
};

using E = ImportFieldRecord;
constexpr SectionRow<E> kImportField[] = {
    {L"NAME=", read::Upper<&E::Name>, write::Quoted<&E::Name>},
    {L"TAG=", read::Long<&E::Tag>, write::Number<&E::Tag>},
    {L"POSITION=", read::Long<&E::Position>, write::Number<&E::Position>},
    {L"KIND=", read::Long<&E::Kind>, write::Number<&E::Kind>},
    {L"FLAGS=", read::Flags<&E::Flags, kImportFieldFlags>, write::Flags<&E::Flags, kImportFieldFlags>},
    {L"ACTION=", read::OneWord<&E::Action, kImportFieldActions>,
     write::OneWord<&E::Action, kImportFieldActions>},
    {L"SCRIPT=", read::Upper<&E::Script>, write::Quoted<&E::Script>},
};

using X = ImportIndexRecord;
constexpr SectionRow<X> kImportIndex[] = {
    {L"TABLE=", read::Upper<&X::Table>, write::Quoted<&X::Table>},
    {L"KEY=",
     [](X& Into, Parm& P) {
         P.Unquote();
         const std::wstring Folded = StrUtil::UpperCase(P.Value);
         for (const std::wstring_view Form : kKeyForms) {
             const bool Begins = Form.back() == L'(' && Folded.starts_with(Form);
             if (!Begins && Folded != Form) continue;
             Into.Key = Begins ? std::wstring(P.Value) : Folded;
             return false;
         }
         if (P.Value.empty())
             Into.Key.clear();
         else
             P.BadIfStrict();
         return false;
     },
     write::Quoted<&X::Key>},
    {L"FLAGS=", read::Flags<&X::Flags, kImportIndexFlags>, write::Flags<&X::Flags, kImportIndexFlags>},
};

using T = ParmItem;
constexpr SectionRow<T> kImportScript[] = {
    {L"NAME=", read::Upper<&T::Name>, write::Quoted<&T::Name>},
    {L"LANG=",
     [](T& Into, Parm& P) {
         P.Unquote();
         P.Fold();
         if (!P.Value.empty() && !FindWord(kScriptLanguages, P.Value))
             P.BadIfStrict();
         else
             Into.Language = P.Value;
         return false;
     },
     [](const T& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Plain(Keyword, From.Language);
         return false;
     }},
    {L"FILENAME=", read::Text<&T::Text>, write::Quoted<&T::Text>},
};
constexpr SectionRow<T> kText[] = {
    {L"TEXT=", read::Text<&T::Text>, write::Quoted<&T::Text>},
    {L"LANG=", read::Upper<&T::Language>, write::Quoted<&T::Language>},
};

using H = HtmlRecord;
constexpr SectionRow<H> kHtml[] = {
    {L"FILENAME=", read::Text<&H::FileName>, write::Quoted<&H::FileName>},
    {L"LANG=", read::Upper<&H::Language>, write::Quoted<&H::Language>},
    {L"ACTION=", read::OneWord<&H::Action, kActionWords>, write::OneWord<&H::Action, kActionWords>},
};

using N = FontRecord;
constexpr SectionRow<N> kFont[] = {
    {L"NAME=", read::Text<&N::Name>, write::Quoted<&N::Name>},
    {L"SIZE=", read::Long<&N::Size>, write::Number<&N::Size>},
    {L"BOLD=", read::BoolOrIgnore<&N::Bold>, write::Bool<&N::Bold>},
    {L"ITALIC=", read::BoolOrIgnore<&N::Italic>, write::Bool<&N::Italic>},
    {L"UNDERLINE=", read::BoolOrIgnore<&N::Underline>, write::Bool<&N::Underline>},
};

using B = CommandRecord;
constexpr SectionRow<B> kCommand[] = {
    {L"CODE=", read::Upper<&B::Code>, write::Quoted<&B::Code>},
    {L"ACTION=", read::OneWord<&B::Action, kActionWords>, write::OneWord<&B::Action, kActionWords>},
    {L"ENABLED=", read::BoolOrIgnore<&B::Enabled>, write::Bool<&B::Enabled>},
    {L"VISIBLE=", read::BoolOrIgnore<&B::Visible>, write::Bool<&B::Visible>},
};

using U = PopupRecord;
constexpr SectionRow<U> kPopup[] = {
    {L"TEXT=", read::Text<&U::Text>, write::Quoted<&U::Text>},
    {L"LANG=", read::Upper<&U::Language>, write::Quoted<&U::Language>},
    {L"CODE=", read::Upper<&U::Code>, write::Quoted<&U::Code>},
    {L"ACTION=", read::OneWord<&U::Action, kActionWords>, write::OneWord<&U::Action, kActionWords>},
};

// Bits of which one word of the table stands for none set: it adds nothing to the others.
template <auto Member, const auto& Words, class Record>
bool ReadBits(Record& Into, Parm& P) {
    P.Unquote();
    P.Fold();
    P.AddWords(Words, Into.*Member);
    return false;
}

// Bits by their words; the word at `None` in the table where none is set.
template <auto Member, const auto& Words, std::size_t None, class Record>
bool WriteBits(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
    const std::wstring Set = JoinSetWords(Words, From.*Member);
    Out.Plain(Keyword, Set.empty() ? Words[None].Text : std::wstring_view(Set));
    return false;
}

// NONE or a number that begins with a digit; anything else is refused in strict mode and passed over in lax.
template <auto Member, class Record>
bool ReadCeiling(Record& Into, Parm& P) {
    P.Fold();
    const wchar_t First = P.Value.empty() ? L'0' : P.Value.front();
    if (P.Value == kNone)
        Into.*Member = -1;
    else if (First >= L'0' && First <= L'9')
        Into.*Member = StrUtil::ToLong(StrUtil::Number(P.Value));
    else
        P.BadIfStrict();
    return false;
}
template <auto Member, class Record>
bool WriteCeiling(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
    Out.Ceiling(Keyword, From.*Member);
    return false;
}

using A = ApplicationRecord;
// clang-format off
constexpr SectionRow<A> kApplication[] = {
    {L"RETRIEVAL=", read::Upper<&A::Retrieval>, write::Quoted<&A::Retrieval>},
    {L"LANG=", read::Upper<&A::Language>, write::Quoted<&A::Language>},
    {L"HELP=", read::Upper<&A::Help>, write::Quoted<&A::Help>},
    {L"HELPWWW=", read::Upper<&A::HelpWww>, write::Quoted<&A::HelpWww>},
    {L"STARTACTION=", read::OneWord<&A::StartAction, kActionWords>, write::OneWord<&A::StartAction, kActionWords>},
    {L"STARTOBJECT=", read::Upper<&A::StartObject>, write::Quoted<&A::StartObject>},
    {L"STARTUPMODE=", ReadBits<&A::StartupMode, kStartupModes, A>,
     WriteBits<&A::StartupMode, kStartupModes, 4, A>},
    {L"ALLOWSHUTDOWN=", read::BoolOrIgnore<&A::AllowShutdown>, write::Bool<&A::AllowShutdown>},
    {L"IDLEACTION=", read::OneWord<&A::IdleAction, kIdleActions>, write::OneWord<&A::IdleAction, kIdleActions>},
    {L"IDLETIME=", read::Long<&A::IdleTime>, write::Number<&A::IdleTime>},
    {L"PASSWORD=", read::Text<&A::Password>, write::Quoted<&A::Password>},
    {L"MSIEFLAGS=", read::Flags<&A::MsieFlags, kMsieFlags>, write::Flags<&A::MsieFlags, kMsieFlags>},
    {L"REMOTEDB=", read::BoolOrIgnore<&A::RemoteDb>, write::Bool<&A::RemoteDb>},
    {L"LOANENABLE=", ReadBits<&A::LoanEnable, kClientLoanWords, A>,
     [](const A& From, std::wstring_view Keyword, LineWriter& Out) {
         // That the loans are not enabled is said, whatever else is set.
         constexpr const Word& kEnabled = kClientLoanWords[1];
         std::wstring Words = JoinSetWords(kClientLoanWords, From.LoanEnable | kEnabled.Value);
         if ((From.LoanEnable & kEnabled.Value) == 0)
             Words.replace(0, kEnabled.Text.size(), kClientLoanWords[0].Text);
         Out.Plain(Keyword, Words);
         return false;
     }},
    {L"LOANPATH=", read::Text<&A::LoanPath>, write::Quoted<&A::LoanPath>},
    {L"FORMAT=", read::OneWord<&A::Format, kClientFormats>, write::OneWord<&A::Format, kClientFormats>},
    {L"PRINTERFLAGS=", read::Flags<&A::PrinterFlags, kPrinterFlags>, write::Flags<&A::PrinterFlags, kPrinterFlags>},
    {L"PRNMAXITEMS=", ReadCeiling<&A::PrnMaxItems, A>, WriteCeiling<&A::PrnMaxItems, A>},
    {L"PRNMAXRECS=", ReadCeiling<&A::PrnMaxRecs, A>, WriteCeiling<&A::PrnMaxRecs, A>},
    {L"FILEFLAGS=", read::Flags<&A::FileFlags, kFileFlags>, write::Flags<&A::FileFlags, kFileFlags>},
    {L"FILEMAXITEMS=", ReadCeiling<&A::FileMaxItems, A>, WriteCeiling<&A::FileMaxItems, A>},
    {L"FILEMAXRECS=", ReadCeiling<&A::FileMaxRecs, A>, WriteCeiling<&A::FileMaxRecs, A>},
    {L"OUTPUTUSERLOG=", read::BoolOrIgnore<&A::OutputUserLog>, write::Bool<&A::OutputUserLog>},
    {L"LOGFILE=", read::Text<&A::LogFile>, write::Quoted<&A::LogFile>},
    {L"MIRROROF=", read::Text<&A::MirrorOf>, write::Quoted<&A::MirrorOf>},
};
// clang-format on

using W = BrowseRecord;
// clang-format off
constexpr SectionRow<W> kBrowse[] = {
    {L"TABLE=", read::Upper<&W::Table>, write::Quoted<&W::Table>},
    {L"PROFILE=", read::Upper<&W::Profile>, write::Quoted<&W::Profile>},
    {L"HELP=", read::Upper<&W::Help>, write::Quoted<&W::Help>},
    {L"HELPWWW=", read::Upper<&W::HelpWww>, write::Quoted<&W::HelpWww>},
    {L"STEM=", read::Upper<&W::Stem>, write::Quoted<&W::Stem>},
    {L"TIPS=", read::Upper<&W::Tips>, write::Quoted<&W::Tips>},
    {L"TIPSWIDTH=", read::Long<&W::TipsWidth>, write::Number<&W::TipsWidth>},
    {L"ROWS=", read::Long<&W::Rows>, write::Number<&W::Rows>},
    {L"ICONS=", read::OneWord<&W::Icons, kBrowseIcons>, write::OneWord<&W::Icons, kBrowseIcons>},
    {L"ACTION=", read::OneWord<&W::Action, kActionWords>, write::OneWord<&W::Action, kActionWords>},
    {L"USECOOKED=", read::BoolOrIgnore<&W::UseCooked>, write::Bool<&W::UseCooked>},
    {L"OPENRECORD=", read::BoolOrIgnore<&W::OpenRecord>, write::Bool<&W::OpenRecord>},
    {L"REFERENCE=", read::OneWord<&W::Reference, kBrowseReferences>, write::OneWord<&W::Reference, kBrowseReferences>},
    {L"AUTORUN=", read::BoolOrIgnore<&W::AutoRun>, write::Bool<&W::AutoRun>},
    {L"MULTISEL=", read::BoolOrIgnore<&W::MultiSel>, write::Bool<&W::MultiSel>},
    {L"TIPSALIGN=", read::OneWord<&W::TipsAlign, kAlignWords>, write::OneWord<&W::TipsAlign, kAlignWords>},
    {L"TIPSBUTTONS=", read::Flags<&W::TipsButtons, kTipsButtonWords>, write::Flags<&W::TipsButtons, kTipsButtonWords>},
    {L"TOOLTIPS=", read::Flags<&W::ToolTips, kToolTipWords>, write::Flags<&W::ToolTips, kToolTipWords>},
    {L"BOOLOPS=", read::OneWord<&W::BoolOps, kBrowseBoolOps>, write::OneWord<&W::BoolOps, kBrowseBoolOps>},
    {L"LARGEBUTT=", read::BoolOrIgnore<&W::LargeButt>, write::Bool<&W::LargeButt>},
    {L"SHOWOCCS=", read::BoolOrIgnore<&W::ShowOccs>, write::Bool<&W::ShowOccs>},
    {L"STEMAUTO=", read::BoolOrIgnore<&W::StemAuto>, write::Bool<&W::StemAuto>},
    {L"FLAGS=", read::Flags<&W::Flags, kNoWords>, write::Flags<&W::Flags, kNoWords>},
    {L"NOPOPUP=", read::BoolOrIgnore<&W::NoPopup>, write::Bool<&W::NoPopup>},
    {L"STEMALIGN=", read::OneWord<&W::StemAlign, kAlignWords>, write::OneWord<&W::StemAlign, kAlignWords>},
    {L"STEMDOCKED=", read::BoolOrIgnore<&W::StemDocked>, write::Bool<&W::StemDocked>},
    {L"STEMIMMEDIATE=", read::BoolOrIgnore<&W::StemImmediate>, write::Bool<&W::StemImmediate>},
    {L"STEMSIZABLE=", read::BoolOrIgnore<&W::StemSizable>, write::Bool<&W::StemSizable>},
    {L"TIPSSIZABLE=", read::BoolOrIgnore<&W::TipsSizable>, write::Bool<&W::TipsSizable>},
    {L"TOOLALIGN=", read::OneWord<&W::ToolAlign, kAlignWords>, write::OneWord<&W::ToolAlign, kAlignWords>},
    {L"MIRROROF=", read::Text<&W::MirrorOf>, write::Quoted<&W::MirrorOf>},
};
// clang-format on

// A tool command: the record of a button with what the keyboard and the look ask for.
// clang-format off
constexpr SectionRow<B> kToolCommand[] = {
    {L"CODE=", read::Upper<&B::Code>, write::Quoted<&B::Code>},
    {L"COMMAND=", read::OneWord<&B::Action, kActionWords>, write::OneWord<&B::Action, kActionWords>},
    {L"ENABLED=", read::BoolOrIgnore<&B::Enabled>, write::Bool<&B::Enabled>},
    {L"KBENABLED=", read::BoolOrIgnore<&B::KbEnabled>, write::Bool<&B::KbEnabled>},
    {L"VISIBLE=", read::BoolOrIgnore<&B::Visible>, write::Bool<&B::Visible>},
    {L"KBCODE=", read::OneWord<&B::KbCode, kKeyCodes>, write::OneWord<&B::KbCode, kKeyCodes>},
    {L"KBSHIFT=", read::OneWord<&B::KbShift, kKeyShifts>, write::OneWord<&B::KbShift, kKeyShifts>},
    {L"STYLE=", read::OneWord<&B::Style, kCommandStyles>, write::OneWord<&B::Style, kCommandStyles>},
    {L"HELP=", read::Upper<&B::Help>, write::Quoted<&B::Help>},
    {L"MIRROROF=", read::Text<&B::MirrorOf>, write::Quoted<&B::MirrorOf>},
};

using G = LoanRecord;
constexpr SectionRow<G> kLoan[] = {
    {L"RETRIEVAL=", read::Upper<&G::Retrieval>, write::Quoted<&G::Retrieval>},
    {L"PATH=", read::Text<&G::Path>, write::Quoted<&G::Path>},
    {L"LOGFILE=", read::Text<&G::LogFile>, write::Quoted<&G::LogFile>},
    {L"ASKUSER=", read::BoolOrIgnore<&G::AskUser>, write::Bool<&G::AskUser>},
    {L"HELP=", read::Upper<&G::Help>, write::Quoted<&G::Help>},
    {L"MIRROROF=", read::Text<&G::MirrorOf>, write::Quoted<&G::MirrorOf>},
};

using K = LoanClientRecord;
constexpr SectionRow<K> kLoanClient[] = {
    {L"LOAN=", read::Upper<&K::Loan>, write::Quoted<&K::Loan>},
    {L"MENU=", read::Upper<&K::Menu>, write::Quoted<&K::Menu>},
    {L"REQUESTOPTIONS=", ReadBits<&K::RequestOptions, kLoanRequests, K>,
     WriteBits<&K::RequestOptions, kLoanRequests, 0, K>},
    {L"DELIVERLIB=", read::OneWord<&K::DeliverLib, kDeliverLibs>, write::OneWord<&K::DeliverLib, kDeliverLibs>},
    {L"WEBDELIVERLIB=", read::OneWord<&K::WebDeliverLib, kDeliverLibs>, write::OneWord<&K::WebDeliverLib, kDeliverLibs>},
    {L"PWDOPTIONS=", read::Flags<&K::PwdOptions, kPasswordOptions>, write::Flags<&K::PwdOptions, kPasswordOptions>},
    {L"PWDLENGTH=", read::Long<&K::PwdLength>, write::Number<&K::PwdLength>},
    {L"HELP=", read::Upper<&K::Help>, write::Quoted<&K::Help>},
    {L"MIRROROF=", read::Text<&K::MirrorOf>, write::Quoted<&K::MirrorOf>},
};

using M = LoanMenuRecord;
constexpr SectionRow<M> kLoanMenu[] = {
    {L"USERNEW=", read::BoolOrIgnore<&M::UserNew>, write::Bool<&M::UserNew>},
    {L"USERMOD=", read::BoolOrIgnore<&M::UserMod>, write::Bool<&M::UserMod>},
    {L"USERDEL=", read::BoolOrIgnore<&M::UserDel>, write::Bool<&M::UserDel>},
    {L"USERPRN=", read::BoolOrIgnore<&M::UserPrn>, write::Bool<&M::UserPrn>},
    {L"LOANLOAN=", read::BoolOrIgnore<&M::LoanLoan>, write::Bool<&M::LoanLoan>},
    {L"LOANDEP=", read::BoolOrIgnore<&M::LoanDep>, write::Bool<&M::LoanDep>},
    {L"LOANPREN=", read::BoolOrIgnore<&M::LoanPren>, write::Bool<&M::LoanPren>},
    {L"LOANSOLLE=", read::BoolOrIgnore<&M::LoanSolle>, write::Bool<&M::LoanSolle>},
    {L"STATACTIVE=", read::BoolOrIgnore<&M::StatActive>, write::Bool<&M::StatActive>},
    {L"PARMACTIVE=", read::BoolOrIgnore<&M::ParmActive>, write::Bool<&M::ParmActive>},
    {L"SERVACTIVE=", read::BoolOrIgnore<&M::ServActive>, write::Bool<&M::ServActive>},
    {L"USERACTIVE=", read::BoolOrIgnore<&M::UserActive>, write::Bool<&M::UserActive>},
    {L"LOANACTIVE=", read::BoolOrIgnore<&M::LoanActive>, write::Bool<&M::LoanActive>},
    {L"CHANGEBIB=", read::BoolOrIgnore<&M::ChangeBib>, write::Bool<&M::ChangeBib>},
    {L"BUTTLETT=", read::BoolOrIgnore<&M::ButtLett>, write::Bool<&M::ButtLett>},
    {L"BUTTPREST=", read::BoolOrIgnore<&M::ButtPrest>, write::Bool<&M::ButtPrest>},
    {L"BUTTRESO=", read::BoolOrIgnore<&M::ButtReso>, write::Bool<&M::ButtReso>},
    {L"BUTTRINNO=", read::BoolOrIgnore<&M::ButtRinno>, write::Bool<&M::ButtRinno>},
    {L"BUTTPRENO=", read::BoolOrIgnore<&M::ButtPreno>, write::Bool<&M::ButtPreno>},
    {L"BUTTCONSE=", read::BoolOrIgnore<&M::ButtConse>, write::Bool<&M::ButtConse>},
    {L"BUTTCANCE=", read::BoolOrIgnore<&M::ButtCance>, write::Bool<&M::ButtCance>},
    {L"BUTTDEPOS=", read::BoolOrIgnore<&M::ButtDepos>, write::Bool<&M::ButtDepos>},
    {L"BUTTENDDE=", read::BoolOrIgnore<&M::ButtEndDe>, write::Bool<&M::ButtEndDe>},
    {L"BUTTCOMPRA=", read::BoolOrIgnore<&M::ButtCompra>, write::Bool<&M::ButtCompra>},
    {L"MIRROROF=", read::Text<&M::MirrorOf>, write::Quoted<&M::MirrorOf>},
};
// clang-format on

using J = CatProcRecord;
constexpr SectionRow<J> kCatProc[] = {
    {L"CATALOGUE=", read::Upper<&J::Catalogue>, write::Quoted<&J::Catalogue>},
    {L"RETRIEVAL=", read::Upper<&J::Retrieval>, write::Quoted<&J::Retrieval>},
    {L"SOURCEPATH=", read::Text<&J::SourcePath>, write::Quoted<&J::SourcePath>},
    {L"TARGETPATH=", read::Text<&J::TargetPath>, write::Quoted<&J::TargetPath>},
    {L"LOGFILE=", read::Text<&J::LogFile>, write::Quoted<&J::LogFile>},
    {L"MIRROROF=", read::Text<&J::MirrorOf>, write::Quoted<&J::MirrorOf>},
};
constexpr SectionRow<T> kCatProcField[] = {
    {L"NAME=", read::Text<&T::Name>, write::Quoted<&T::Name>},
};

constexpr SectionRow<T> kAlias[] = {
    {L"NAME=", read::Text<&T::Name>, write::Quoted<&T::Name>},
    {L"TEXT=", read::Text<&T::Text>, write::Quoted<&T::Text>},
};

template <class Element>
void NeedsLanguage(const Element& Read) {
    if (Read.Language.empty()) Raise(L"Non è stato specificato un codice LANG valido.");
}

// A section by its table; `Check` looks at the whole of it in strict mode.
template <class Record, class Rows, class Check>
bool Save(std::wstring_view Source, const Rows& Table, Record& Into, std::wstring_view Buffer,
          const SaveFlags& Flags, Check&& AtEnd) {
    const bool Strict = StrictFlag(Flags);
    return SaveSection(Source, Scratch::Header, Table, Into, Buffer, Strict, [&](const Record& Read) {
        if (Strict) AtEnd(Read);
    });
}
template <class Record, class Rows>
bool Save(std::wstring_view Source, const Rows& Table, Record& Into, std::wstring_view Buffer,
          const SaveFlags& Flags) {
    return SaveSection(Source, Scratch::Header, Table, Into, Buffer, StrictFlag(Flags));
}

// The sections here stand at the left margin: those who render through ParmEditor pass no indent.
template <class Record, class Rows>
bool Disp(std::wstring_view Source, const Rows& Table, const Record& From, std::wstring& Buffer) {
    return DispSection(Source, Table, From, Buffer, 0);
}

}  // namespace

template <class Record>
bool SaveCatalogue(Record& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveCatalogue", kCatalogue<Record>, Into, Buffer, Flags);
}
template <class Record>
bool DispCatalogue(const Record& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispCatalogue", kCatalogue<Record>, From, Buffer);
}
template bool SaveCatalogue(CatalogueRecord&, std::wstring&, const SaveFlags&);
template bool SaveCatalogue(ImportRecord&, std::wstring&, const SaveFlags&);
template bool DispCatalogue(const CatalogueRecord&, std::wstring&, const SaveFlags&);
template bool DispCatalogue(const ImportRecord&, std::wstring&, const SaveFlags&);

bool SaveFilter(FilterRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveFilter", kFilter, Into, Buffer, Flags);
}
bool DispFilter(const FilterRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispFilter", kFilter, From, Buffer);
}

bool SaveImport(ImportRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveImport", kImport, Into, Buffer, Flags);
}
bool DispImport(const ImportRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispImport", kImport, From, Buffer);
}

bool SaveImportProc(ImportProcRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveImportProc", kImportProc, Into, Buffer, Flags);
}
bool DispImportProc(const ImportProcRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispImportProc", kImportProc, From, Buffer);
}

bool SaveImportScript(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveImportScript", kImportScript, Into, Buffer, Flags);
}
bool DispImportScript(const ParmItem& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispImportScript", kImportScript, From, Buffer);
}

bool SaveImportIndex(ImportIndexRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveImportIndex", kImportIndex, Into, Buffer, Flags);
}
bool DispImportIndex(const ImportIndexRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispImportIndex", kImportIndex, From, Buffer);
}

bool SaveImportField(ImportFieldRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveImportField", kImportField, Into, Buffer, Flags);
}
bool DispImportField(const ImportFieldRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispImportField", kImportField, From, Buffer);
}

bool SaveApplication(ApplicationRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveApplication", kApplication, Into, Buffer, Flags);
}
bool DispApplication(const ApplicationRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispApplication", kApplication, From, Buffer);
}

bool SaveFormFont(FontRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveFormFont", kFont, Into, Buffer, Flags);
}
bool DispFormFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispFormFont", kFont, From, Buffer);
}
bool SaveTitleFont(FontRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveTitleFont", kFont, Into, Buffer, Flags);
}
bool DispTitleFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispTitleFont", kFont, From, Buffer);
}
bool DispMessageFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispMessageFont", kFont, From, Buffer);
}

bool SaveBrowse(BrowseRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveBrowse", kBrowse, Into, Buffer, Flags);
}
bool DispBrowse(const BrowseRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispBrowse", kBrowse, From, Buffer);
}
bool SaveBrowseFilter(FilterRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveBrowseFilter", kBrowseFilter, Into, Buffer, Flags);
}
bool DispBrowseFilter(const FilterRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispBrowseFilter", kBrowseFilter, From, Buffer);
}

bool SaveToolCommand(CommandRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveToolCommand", kToolCommand, Into, Buffer, Flags);
}
bool DispToolCommand(const CommandRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispToolCommand", kToolCommand, From, Buffer);
}
bool SaveLoan(LoanRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveLoan", kLoan, Into, Buffer, Flags);
}
bool DispLoan(const LoanRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispLoan", kLoan, From, Buffer);
}
bool SaveLoanClient(LoanClientRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveLoanClient", kLoanClient, Into, Buffer, Flags);
}
bool DispLoanClient(const LoanClientRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispLoanClient", kLoanClient, From, Buffer);
}
bool SaveLoanMenu(LoanMenuRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveLoanMenu", kLoanMenu, Into, Buffer, Flags);
}
bool DispLoanMenu(const LoanMenuRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispLoanMenu", kLoanMenu, From, Buffer);
}

bool SaveCatProc(CatProcRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveCatProc", kCatProc, Into, Buffer, Flags);
}
bool DispCatProc(const CatProcRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispCatProc", kCatProc, From, Buffer);
}
bool SaveCatProcField(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveCatProcField", kCatProcField, Into, Buffer, Flags);
}
bool DispCatProcField(const ParmItem& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispCatProcField", kCatProcField, From, Buffer);
}

bool SaveAlias(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveAlias", kAlias, Into, Buffer, Flags);
}
bool DispAlias(const ParmItem& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispAlias", kAlias, From, Buffer);
}

bool SaveMessage(ParmList<MessageRecord>& Messages, std::int32_t Index, std::wstring& Buffer,
                 const SaveFlags& Flags) {
    return SaveMessageParms(L"ParmEditor.SaveMessage", Messages, Index, Buffer, StrictFlag(Flags));
}
bool DispMessage(const MessageRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispMessage", kMessageRows, From, Buffer);
}

bool SaveMessageText(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveMessageText", kText, Into, Buffer, Flags, NeedsLanguage<ParmItem>);
}
bool DispMessageText(const ParmItem& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispMessageText", kText, From, Buffer);
}

bool SaveCaption(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveCaption", kText, Into, Buffer, Flags, NeedsLanguage<ParmItem>);
}
bool DispCaption(const ParmItem& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispCaption", kText, From, Buffer);
}

bool SaveTitle(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveTitle", kText, Into, Buffer, Flags, NeedsLanguage<ParmItem>);
}
bool DispTitle(const ParmItem& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispTitle", kText, From, Buffer);
}

bool SaveHtml(HtmlRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveHtml", kHtml, Into, Buffer, Flags, NeedsLanguage<HtmlRecord>);
}
bool DispHtml(const HtmlRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispHtml", kHtml, From, Buffer);
}

bool SaveFont(FontRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveFont", kFont, Into, Buffer, Flags);
}
bool DispFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispFont", kFont, From, Buffer);
}

bool SaveCommand(CommandRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SaveCommand", kCommand, Into, Buffer, Flags);
}
bool DispCommand(const CommandRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispCommand", kCommand, From, Buffer);
}

bool SavePopup(PopupRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return Save(L"ParmEditor.SavePopup", kPopup, Into, Buffer, Flags, NeedsLanguage<PopupRecord>);
}
bool DispPopup(const PopupRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return Disp(L"ParmEditor.DispPopup", kPopup, From, Buffer);
}

}  // namespace kv::ParmEditor

namespace kv {

bool CaptionSave(std::wstring& Section, ParmItem& Item, std::wstring& Caption, const SaveFlags& Flags) {
    return Trap(L"vDesignPar.CaptionSave", [&] {
        if (ParmEditor::SaveCaption(Item, Section, Flags)) return true;
        Caption = CaptionNode(Item);
        return false;
    });
}

}  // namespace kv
