// The syntax colours of section text: how a line is taken apart, the colours, and the highlighter.
#pragma once

#include <QColor>
#include <QHash>
#include <QPalette>
#include <QString>
#include <QStringList>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <functional>
#include <memory>
#include <vector>

namespace kv::desktop {

/// What the editor knows of a section: the words of its language.
struct SectionWords {
    QStringList Keywords;  // in upper case and with "=", as the section renders them
    /// The words of a keyword, which comes in upper case and with "="; may be empty. Asked once a keyword and
    /// section, so what it answers must hold as long as the section is shown.
    std::function<QStringList(const QString&)> Values;
};

/// A word that is the beginning of free text and no value by itself: it holds "<" or ends with "(".
bool IsTemplate(const QString& Word);

/// One line as the parsers of sections take it: blanks in front do not count, tabs do.
struct SectionLine {
    /// Columns from Begin up to End.
    struct Span {
        qsizetype Begin = 0;
        qsizetype End = 0;
        bool Closed = true;  // false: a quote mark without its fellow, a string up to the end of the line
    };

    explicit SectionLine(const QString& Text);

    bool Comment = false;
    qsizetype Front = 0;    // the first column that is no blank
    qsizetype Equals = -1;  // where the keyword ends; -1 where the line has none
    QString Keyword;        // in upper case with "=", empty where there is none
    std::vector<Span> Strings;
    std::vector<Span> Values;  // what stands between the bars, without the blanks around it

    bool InString(qsizetype Column) const noexcept;
};

/// The colours of the editor, made so that each text colour reads well on each of the three backgrounds.
struct SectionColours {
    QColor Base, CurrentLine, FaultLine;
    QColor Keyword, Comment, String, Word;
    QColor Number, FaultSign;

    static SectionColours Of(const QPalette& Palette);
};

class SectionHighlighter final : public QSyntaxHighlighter {
    Q_OBJECT

  public:
    explicit SectionHighlighter(QTextDocument* Document);

    /// The words of the section whose text comes next: what stands is not coloured anew.
    void SetWords(SectionWords Words);
    const QStringList& Keywords() const noexcept { return Words_.Keywords; }
    /// The words of a keyword, upper case and with "=".
    const QStringList& WordsOf(const QString& Keyword);

    /// Colours the whole text anew where the colours become others.
    void SetPalette(const QPalette& Palette);
    const SectionColours& Colours() const noexcept { return Colours_; }

    /// In how many lines the keyword (upper case, with "=") stands. Kept as lines change, so the text is not
    /// gone through.
    int LinesWith(const QString& Keyword) const { return Counts_->value(Keyword); }

  protected:
    void highlightBlock(const QString& Text) override;

  private:
    using Counts = QHash<QString, int>;
    class KeywordOfLine;

    void Count(const QString& Keyword);

    SectionWords Words_;
    QHash<QString, QStringList> Asked_;  // what Words_.Values has answered
    std::shared_ptr<Counts> Counts_;     // shared with the lines, which may outlive the highlighter
    SectionColours Colours_;
    QTextCharFormat Keyword_, Comment_, String_, Word_;
};

}  // namespace kv::desktop
