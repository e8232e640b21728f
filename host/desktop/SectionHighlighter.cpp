#include "host/desktop/SectionHighlighter.h"

#include <QTextBlockUserData>
#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

namespace kv::desktop {
namespace {

constexpr QChar kBlank = u' ';
constexpr QChar kQuote = u'"';
constexpr QChar kBar = u'|';

// Hue and saturation of a colour; its lightness comes from the backgrounds.
struct Tint {
    float Hue;
    float Saturation;
};
constexpr Tint kKeywordTint{0.59F, 0.85F};
constexpr Tint kCommentTint{0.36F, 0.40F};
constexpr Tint kStringTint{0.06F, 0.80F};
constexpr Tint kWordTint{0.80F, 0.60F};
constexpr Tint kNumberTint{0.0F, 0.0F};
constexpr Tint kFaultTint{0.0F, 0.80F};

constexpr double kReadable = 4.5;          // contrast that text of this size needs
constexpr double kMiddleLuminance = 0.18;  // black and white stand out equally from it

double Linear(double Channel) {
    return Channel <= 0.04045 ? Channel / 12.92 : std::pow((Channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& C) {
    return 0.2126 * Linear(C.redF()) + 0.7152 * Linear(C.greenF()) + 0.0722 * Linear(C.blueF());
}

double Contrast(const QColor& A, const QColor& B) {
    const auto [Dark, Light] = std::minmax({Luminance(A), Luminance(B)});
    return (Light + 0.05) / (Dark + 0.05);
}

QColor Mix(const QColor& From, const QColor& To, float Share) {
    const auto Between = [Share](float A, float B) { return A + (B - A) * Share; };
    return QColor::fromRgbF(Between(From.redF(), To.redF()), Between(From.greenF(), To.greenF()),
                            Between(From.blueF(), To.blueF()));
}

// The tint as near to full colour as it reads well on all the backgrounds.
QColor Readable(Tint Of, std::span<const QColor> On) {
    constexpr int kSteps = 40;
    const bool Darker = Luminance(On.front()) > kMiddleLuminance;
    QColor Result;
    for (int Step = 0; Step <= kSteps; ++Step) {
        const float Away = 0.5F * static_cast<float>(Step) / kSteps;
        Result = QColor::fromHslF(Of.Hue, Of.Saturation, Darker ? 0.5F - Away : 0.5F + Away);
        if (std::all_of(On.begin(), On.end(),
                        [&](const QColor& C) { return Contrast(Result, C) >= kReadable; }))
            break;
    }
    return Result;
}

SectionLine::Span Trimmed(const QString& Text, qsizetype Begin, qsizetype End) {
    while (Begin < End && Text[Begin] == kBlank) ++Begin;
    while (End > Begin && Text[End - 1] == kBlank) --End;
    return {Begin, End};
}

// Quote marks pair up, but for a value that begins and ends with one: that is a string as it stands, whatever
// marks are inside, since there is no escape.
std::vector<SectionLine::Span> StringsIn(const QString& Text, SectionLine::Span Value, bool AsValue) {
    std::vector<SectionLine::Span> Result;
    if (AsValue && Value.End - Value.Begin >= 2 && Text[Value.Begin] == kQuote &&
        Text[Value.End - 1] == kQuote) {
        Result.push_back(Value);
        return Result;
    }
    for (qsizetype At = Text.indexOf(kQuote, Value.Begin); At >= 0;) {
        const qsizetype Close = Text.indexOf(kQuote, At + 1);
        if (Close < 0) {
            Result.push_back({At, Text.size(), false});
            break;
        }
        Result.push_back({At, Close + 1});
        At = Text.indexOf(kQuote, Close + 1);
    }
    return Result;
}

}  // namespace

bool IsTemplate(const QString& Word) { return Word.contains(u'<') || Word.endsWith(u'('); }

SectionLine::SectionLine(const QString& Text) {
    const Span Line = Trimmed(Text, 0, Text.size());
    Front = Line.Begin;
    if (Line.Begin == Line.End) {
        Front = Text.size();
        return;
    }
    const QChar First = Text[Front];
    Comment = First == u'\'' || First == u';' || First == u'*';
    if (Comment) return;
    if (First == kQuote) {  // a pair of strings, not a parameter
        Strings = StringsIn(Text, Line, false);
        return;
    }
    Equals = Text.indexOf(u'=', Front);
    if (Equals < 0) return;
    const Span Name = Trimmed(Text, Front, Equals);
    Keyword = Text.mid(Name.Begin, Name.End - Name.Begin).toUpper() + u'=';
    const Span Value = Trimmed(Text, Equals + 1, Text.size());
    Strings = StringsIn(Text, Value, true);
    for (qsizetype Begin = Equals + 1; Begin <= Text.size();) {
        const qsizetype Bar = Text.indexOf(kBar, Begin);
        const qsizetype End = Bar < 0 ? Text.size() : Bar;
        Values.push_back(Trimmed(Text, Begin, End));
        Begin = End + 1;
    }
}

bool SectionLine::InString(qsizetype Column) const noexcept {
    return std::any_of(Strings.begin(), Strings.end(),
                       [Column](const Span& S) { return S.Begin < Column && (Column < S.End || !S.Closed); });
}

SectionColours SectionColours::Of(const QPalette& Palette) {
    SectionColours C;
    C.Base = Palette.color(QPalette::Base);
    C.CurrentLine = Mix(C.Base, Palette.color(QPalette::Text), 0.06F);
    C.FaultLine = Mix(C.Base, QColor(Qt::red), 0.18F);
    const std::array On{C.Base, C.CurrentLine, C.FaultLine};
    C.Keyword = Readable(kKeywordTint, On);
    C.Comment = Readable(kCommentTint, On);
    C.String = Readable(kStringTint, On);
    C.Word = Readable(kWordTint, On);
    C.Number = Readable(kNumberTint, On);
    C.FaultSign = Readable(kFaultTint, On);
    return C;
}

// Hangs at a line and counts its keyword as long as the line is there.
class SectionHighlighter::KeywordOfLine final : public QTextBlockUserData {
  public:
    KeywordOfLine(QString Keyword, std::shared_ptr<Counts> In)
        : Keyword_(std::move(Keyword)), In_(std::move(In)) {
        ++(*In_)[Keyword_];
    }
    KeywordOfLine(const KeywordOfLine&) = delete;
    KeywordOfLine& operator=(const KeywordOfLine&) = delete;
    ~KeywordOfLine() override {
        const auto At = In_->find(Keyword_);
        if (--At.value() == 0) In_->erase(At);
    }
    const QString& Keyword() const noexcept { return Keyword_; }

  private:
    QString Keyword_;
    std::shared_ptr<Counts> In_;
};

SectionHighlighter::SectionHighlighter(QTextDocument* Document)
    : QSyntaxHighlighter(Document), Counts_(std::make_shared<Counts>()) {
    Keyword_.setFontWeight(QFont::Bold);
    Comment_.setFontItalic(true);
    SetPalette(QPalette());
}

void SectionHighlighter::SetWords(SectionWords Words) {
    Words_ = std::move(Words);
    Asked_.clear();
}

const QStringList& SectionHighlighter::WordsOf(const QString& Keyword) {
    static const QStringList None;
    if (!Words_.Values || Keyword.isEmpty()) return None;
    const auto At = Asked_.constFind(Keyword);
    if (At != Asked_.constEnd()) return At.value();
    // Any text in front of a "=" is asked for, so only what has words is remembered: a text of many thousand
    // different keywords does not fill the memory.
    QStringList Words;
    try {
        Words = Words_.Values(Keyword);
    } catch (...) {
        return None;  // the events of the window must see no exception; without words there is no offer
    }
    if (Words.isEmpty() && !Words_.Keywords.contains(Keyword)) return None;
    return Asked_.insert(Keyword, Words).value();
}

void SectionHighlighter::SetPalette(const QPalette& Palette) {
    Colours_ = SectionColours::Of(Palette);
    const bool Same = Keyword_.foreground() == Colours_.Keyword &&
                      Comment_.foreground() == Colours_.Comment && String_.foreground() == Colours_.String &&
                      Word_.foreground() == Colours_.Word;
    if (Same) return;
    Keyword_.setForeground(Colours_.Keyword);
    Comment_.setForeground(Colours_.Comment);
    String_.setForeground(Colours_.String);
    Word_.setForeground(Colours_.Word);
    rehighlight();
}

void SectionHighlighter::highlightBlock(const QString& Text) {
    const SectionLine Line(Text);
    Count(Line.Keyword);
    const auto Colour = [this](const SectionLine::Span& S, const QTextCharFormat& Format) {
        setFormat(static_cast<int>(S.Begin), static_cast<int>(S.End - S.Begin), Format);
    };
    if (Line.Comment) {
        Colour({Line.Front, Text.size()}, Comment_);
        return;
    }
    if (Line.Equals >= 0) Colour({Line.Front, Line.Equals + 1}, Keyword_);
    const QStringList& Words = WordsOf(Line.Keyword);
    if (!Words.isEmpty()) {
        for (const SectionLine::Span& S : Line.Values) {
            const QString Value = Text.mid(S.Begin, S.End - S.Begin);
            if (Words.contains(Value, Qt::CaseInsensitive) && !IsTemplate(Value)) Colour(S, Word_);
        }
    }
    for (const SectionLine::Span& S : Line.Strings) Colour(S, String_);
}

void SectionHighlighter::Count(const QString& Keyword) {
    const auto* Before = static_cast<const KeywordOfLine*>(currentBlockUserData());
    if (Before ? Before->Keyword() == Keyword : Keyword.isEmpty()) return;
    setCurrentBlockUserData(Keyword.isEmpty() ? nullptr : new KeywordOfLine(Keyword, Counts_));
}

}  // namespace kv::desktop
