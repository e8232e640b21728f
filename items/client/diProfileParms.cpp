// The parameters of a display profile.
#include <algorithm>
#include <utility>

#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "items/client/diProfile.h"
#include "records/Sections.h"

namespace kv {
namespace {

using R = ProfileRecord;

// Unquoted, every double bar made a single one in one pass from the left.
template <auto Member>
bool ReadBars(R& Into, Parm& P) {
    P.Unquote();
    std::wstring& Text = Into.*Member;
    Text.clear();
    for (std::size_t At = 0; At < P.Value.size(); ++At) {
        Text.push_back(P.Value[At]);
        if (P.Value.substr(At, 2) == L"||") ++At;
    }
    return false;
}

// A percentage; one outside 0 to 100 is passed over in lax mode.
template <auto Member>
bool ReadPercent(R& Into, Parm& P) {
    const std::int32_t Percent = StrUtil::ToLong(StrUtil::Number(P.Value));
    if (Percent < 0 || Percent > 100)
        P.BadIfStrict();
    else
        Into.*Member = Percent;
    return false;
}

// One alignment and LINKS. In lax mode several alignments are joined bit by bit, whatever that makes.
bool ReadImageOption(R& Into, Parm& P) {
    P.Fold();
    if (P.Value.empty() || P.Value == kNone) {
        Into.ImageOption = 0;
        return false;
    }
    while (!P.Value.empty()) {
        const std::wstring_view Option = P.NextFlag();
        if (Option == kImageLinks.Text) {
            Into.ImageOption |= kImageLinks.Value;
        } else if (const Word* const Align = FindWord(kImageAligns, Option)) {
            if (P.Strict && (Into.ImageOption & kImageAlignBits) != 0)
                Raise(L"Conflitto nei parametri di IMAGEOPTION=");
            Into.ImageOption |= Align->Value;
        } else {
            P.BadIfStrict();
        }
    }
    return false;
}

// The value is a parameter line of its own, `<name>=<text>`; an empty one is none.
bool ReadMaster(R& Into, Parm& P) {
    const std::wstring Work = StrUtil::UpperCase(P.Value);
    if (Work.empty()) return false;
    SectionText Line(Work, P.Line);
    std::wstring_view Keyword;
    std::wstring_view Text;
    if (GetFieldValue(Line, Keyword, Text)) return true;
    std::wstring Name(Keyword);
    CoreUtil::TrimEnd(Name, L"=");
    Name = StrUtil::TrimRight(Name);
    Text = Keyword.empty() ? std::wstring_view() : Unquote(Text);
    if (Name.empty() || Text.empty()) {
        P.BadIfStrict();
        return false;
    }
    if (Into.Masters.Exists(Name)) Raise(L"Il master " + Name + L" viene specificata più di una volta.");
    ParmItem Master;
    Master.Id = CoreUtil::Instance().NextNodeId();
    Master.Name = Name;
    Master.Text = Text;
    Into.Masters.Add(std::move(Master), Name);
    return false;
}

bool ReadWidth(R& Into, Parm& P) {
    P.Fold();
    if (const Word* const Known = FindWord(kProfileWidths, P.Value)) {
        Into.Width = Known->Value;
        return false;
    }
    const double Width = StrUtil::Number(P.Value);
    if (Width > 0)
        Into.Width = StrUtil::ToLong(Width);
    else
        P.BadIfStrict();
    return false;
}

constexpr LadderRow<R> kParmLadder[] = {
    {L"IMAGEEXT=", read::Text<&R::ImageExt>},
    {L"IMAGEFILTER=", read::Upper<&R::ImageFilter>},
    {L"IMAGEFORMAT=", read::Text<&R::ImageFormat>},
    {L"IMAGEKEYFIELD=", read::Text<&R::ImageKeyField>},
    {L"IMAGELISTFILE=", read::Text<&R::ImageListFile>},
    {L"IMAGEMAXHEIGHT=", read::Long<&R::ImageMaxHeight>},
    {L"IMAGEMAXWIDTH=", read::Long<&R::ImageMaxWidth>},
    {L"IMAGEOPTION=", ReadImageOption},
    {L"IMAGERANGE=", read::Long<&R::ImageRange>},
    {L"IMAGEROOT=", read::Text<&R::ImageRoot>},
    {L"IMAGESFULLTEMPL=", read::Text<&R::ImagesFullTempl>},
    {L"IMAGESLIMIT=", read::Long<&R::ImagesLimit>},
    {L"IMAGESPERPAGE=", read::Long<&R::ImagesPerPage>},
    {L"IMAGESPERREC=", read::Long<&R::ImagesPerRec>},
    {L"IMAGESTEMPL=", read::Text<&R::ImagesTempl>},
    {L"IMAGESTEMPLBUTT=", read::Text<&R::ImagesTemplButt>},
    {L"IMAGESTEMPLBUTT2=", read::Text<&R::ImagesTemplButt2>},
    {L"IMAGETHUMB=", read::Text<&R::ImageThumb>},
    {L"IMAGEURL=", read::Text<&R::ImageUrl>},
    {L"IMAGEZOOM=",
     [](R& Into, Parm& P) {
         P.Unquote();
         Into.ImageZoom = StrUtil::Trim(P.Value);
         return false;
     }},
    {L"LARGEBUTT=", read::BoolOrTrue<&R::LargeButt>},
    {L"LINKEDPAGE=", read::Upper<&R::LinkedPage>},
    {L"LINKEDSERVER=", read::Text<&R::LinkedServer>},
    {L"LOANLINKSONLY=", ReadBars<&R::LoanLinksOnly>},
    {L"LOANQUIT=", read::BoolOrTrue<&R::LoanQuit>},
    {L"LOANSORTBY=", ReadBars<&R::LoanSortBy>},
    {L"MASTER=", ReadMaster, Repeat::Any},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
    {L"TABLE=", read::Upper<&R::Table>},
    {L"HELP=", read::Upper<&R::Help>},
    {L"HELPWWW=", read::Upper<&R::HelpWww>},
    {L"TIPS=", read::Upper<&R::Tips>},
    // A bad word is told as one of TIPSALIGN=.
    {L"LOANALIGN=", [](R& Into, Parm& P) { return TipsSetAlignment(P.Value, Into.LoanAlign); }},
    {L"TIPSALIGN=", read::Align<&R::TipsAlign, R>},
    {L"TOOLTIPS=", [](R& Into, Parm& P) { return ToolTipsSet(P.Value, Into.ToolTips); }},
    {L"LOANHELP=", read::Upper<&R::LoanHelp>},
    {L"LOANTIPS=", read::Upper<&R::LoanTips>},
    {L"LOANWIDTH=", ReadPercent<&R::LoanWidth>},
    {L"TIPSBUTTONS=", [](R& Into, Parm& P) { return TipsSetButtons(P.Value, Into.TipsButtons); }},
    {L"TIPSWIDTH=", ReadPercent<&R::TipsWidth>},
    {L"TOOLALIGN=", read::Align<&R::ToolAlign, R>},
    {L"FLAGS=", read::Flags<&R::Flags, kProfileFlags>},
    {L"ALIGN=", read::FoldedWord<&R::Align, kProfileAligns>},
    {L"WIDTH=", ReadWidth},
};

constexpr std::int32_t kNarrowest = 10;  // percent

template <auto Member>
bool WritePercent(R& From, std::wstring_view Keyword, LineWriter& Out) {
    From.*Member = std::max(From.*Member, kNarrowest);
    Out.Number(Keyword, From.*Member);
    return false;
}

bool WriteMasters(R& From, std::wstring_view Keyword, LineWriter& Out) {
    if (From.Masters.Count() == 0) Out.Plain(Keyword, {});
    for (std::int32_t I = 1; I <= From.Masters.Count(); ++I) {
        const ParmItem& Master = From.Masters.Item(I);
        std::wstring Value = Master.Name + L"=";
        Value.append(1, StrUtil::QuoteChar()).append(Master.Text).append(1, StrUtil::QuoteChar());
        Out.Plain(Keyword, Value);
    }
    return false;
}

// LINKS without an alignment does not show.
bool WriteImageOption(R& From, std::wstring_view Keyword, LineWriter& Out) {
    const std::wstring_view Align = WordOf(kImageAligns, From.ImageOption & kImageAlignBits);
    std::wstring Value(Align.empty() ? kNone : Align);
    if (!Align.empty() && (From.ImageOption & kImageLinks.Value) != 0)
        Value.append(L"|").append(kImageLinks.Text);
    Out.Plain(Keyword, Value);
    return false;
}

constexpr LineRow<R> kParmLines[] = {
    {L"ALIGN=",
     [](R& From, std::wstring_view Keyword, LineWriter& Out) {
         // Anything but the first of the two shows as the second.
         const bool First = From.Align == kProfileAligns[0].Value;
         Out.Plain(Keyword, kProfileAligns[First ? 0 : 1].Text);
         return false;
     }},
    {L"WIDTH=",
     [](R& From, std::wstring_view Keyword, LineWriter& Out) {
         const std::wstring_view Known = WordOf(kProfileWidths, From.Width);
         Out.Plain(Keyword, Known.empty() ? std::to_wstring(From.Width) : std::wstring(Known));
         return false;
     }},
    {L"LARGEBUTT=", write::Bool<&R::LargeButt>},
    {L"FLAGS=", write::Flags<&R::Flags, kProfileFlags>},
    {L"TABLE=", write::Quoted<&R::Table>},
    {L"HELP=", write::Quoted<&R::Help>},
    {L"HELPWWW=", write::Quoted<&R::HelpWww>},
    {L"TIPS=", write::Quoted<&R::Tips>},
    {L"TIPSALIGN=", write::Align<&R::TipsAlign, R>},
    {L"TIPSWIDTH=", WritePercent<&R::TipsWidth>},
    {L"TIPSBUTTONS=",
     [](R& From, std::wstring_view, LineWriter& Out) {
         return TipsGetButtons(From.TipsButtons, Out.Buffer, Out.Indent);
     }},
    {L"TOOLALIGN=", write::Align<&R::ToolAlign, R>},
    {L"TOOLTIPS=", [](R& From, std::wstring_view,
                      LineWriter& Out) { return ToolTipsGet(From.ToolTips, Out.Buffer, Out.Indent); }},
    {L"LOANHELP=", write::Quoted<&R::LoanHelp>},
    {L"LOANTIPS=", write::Quoted<&R::LoanTips>},
    {L"LOANALIGN=", write::Align<&R::LoanAlign, R>},
    {L"LOANWIDTH=", WritePercent<&R::LoanWidth>},
    {L"LOANQUIT=", write::Bool<&R::LoanQuit>},
    {L"LINKEDPAGE=", write::Quoted<&R::LinkedPage>},
    {L"LINKEDSERVER=", write::Quoted<&R::LinkedServer>},
    {L"LOANLINKSONLY=", write::Quoted<&R::LoanLinksOnly>},
    {L"LOANSORTBY=", write::Quoted<&R::LoanSortBy>},
    {L"MASTER=", WriteMasters},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
    {L"'----- Gestione immagini -----", write::Note},
    {L"IMAGEOPTION=", WriteImageOption},
    {L"IMAGELISTFILE=", write::Quoted<&R::ImageListFile>},
    {L"IMAGEFILTER=", write::Quoted<&R::ImageFilter>},
    {L"IMAGETHUMB=", write::Quoted<&R::ImageThumb>},
    {L"IMAGEKEYFIELD=", write::Quoted<&R::ImageKeyField>},
    {L"IMAGERANGE=", write::Number<&R::ImageRange>},
    {L"IMAGEROOT=", write::Quoted<&R::ImageRoot>},
    {L"IMAGEURL=", write::Quoted<&R::ImageUrl>},
    {L"IMAGESPERPAGE=", write::Number<&R::ImagesPerPage>},
    {L"IMAGESPERREC=", write::Number<&R::ImagesPerRec>},
    {L"IMAGEEXT=", write::Quoted<&R::ImageExt>},
    {L"IMAGESTEMPL=", write::Quoted<&R::ImagesTempl>},
    {L"IMAGESTEMPLBUTT=", write::Quoted<&R::ImagesTemplButt>},
    {L"IMAGESTEMPLBUTT2=", write::Quoted<&R::ImagesTemplButt2>},
    {L"IMAGESFULLTEMPL=", write::Quoted<&R::ImagesFullTempl>},
    {L"IMAGEMAXWIDTH=", write::Number<&R::ImageMaxWidth>},
    {L"IMAGEMAXHEIGHT=", write::Number<&R::ImageMaxHeight>},
    {L"IMAGEZOOM=", write::Quoted<&R::ImageZoom>},
    {L"IMAGESLIMIT=", write::Number<&R::ImagesLimit>},
    {L"IMAGEFORMAT=", write::Quoted<&R::ImageFormat>},
    {L"'-----------------------------", write::Note},
};

}  // namespace

bool diProfile::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diProfile.SaveParm", Scratch::Header, kParmLadder, Record(), Buffer, SyntaxOn,
                       [&](const R& Read) {
                           if (!SyntaxOn) return false;
                           if (Read.Table.empty()) Raise(L"Non è stato specificato il nome di una TABLE.");
                           return TipsAlignCheck(Read.Tips, Read.TipsAlign, Read.TipsWidth) ||
                                  TipsAlignCheck(Read.LoanTips, Read.LoanAlign, Read.LoanWidth);
                       });
}

bool diProfile::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diProfile.DispParm", kParmLines, Record(), Buffer, Indent);
}

}  // namespace kv
