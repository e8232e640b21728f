// The editor of a section's text: fixed-width, with line numbers, colours, completion and the mark of a
// fault.
#pragma once

#include <QPlainTextEdit>
#include <QString>

#include "host/desktop/SectionHighlighter.h"

class QCompleter;
class QStringListModel;

namespace kv::desktop {

class LineNumbers;

class SectionEditor final : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit SectionEditor(QWidget* Parent = nullptr);
    ~SectionEditor() override;

    /// Another section: its text (lines end with CR LF or LF), which has no changes and no history of undo,
    /// and its words. The cursor stands at the front.
    void ShowSection(const QString& Text, SectionWords Words);
    /// Back to the text that ShowSection or Accept was given; undo brings back what was typed.
    void Revert();
    /// The text of the same section as it was taken in: it has no changes now, and its history of undo stays.
    void Accept(const QString& Text);
    /// Nothing to edit: an empty text that cannot be written to.
    void ShowNothing();
    /// The text as sections are parsed: lines end with CR LF. While there are no changes it is what
    /// ShowSection was given, letter by letter.
    QString SectionText() const;
    /// Whether the text differs from what ShowSection was given (undo back to it counts as no change).
    bool HasChanges() const noexcept { return Changed_; }

    /// Marks the 1-based line where a text was refused and puts the cursor there; 0 only takes the mark away,
    /// a line behind the last marks the last. The mark goes with the next change of the text.
    void MarkFault(int Line);
    int FaultLine() const noexcept { return FaultLine_; }

    /// Offers the words for the place of the cursor: keywords at the front of a line (those that the text has
    /// already come last), value words behind "=" and behind each "|" (without those that stand between other
    /// bars). Nothing happens where there are none, in a comment and in a string.
    ///
    /// A word that is taken replaces the whole of what stands between its bars, or the whole keyword; a
    /// keyword comes with the blank behind its "=", and the value words are offered at once where it has no
    /// value. Of a template (IsTemplate) the first "<...>" becomes the selection.
    void Complete();
    /// Its popup, for those who drive it.
    QCompleter* Completer() const noexcept { return Completer_; }
    SectionHighlighter* Highlighter() const noexcept { return Colours_; }

  Q_SIGNALS:
    void ChangesChanged(bool HasChanges);

  protected:
    void keyPressEvent(QKeyEvent* Event) override;
    void inputMethodEvent(QInputMethodEvent* Event) override;
    void resizeEvent(QResizeEvent* Event) override;
    void changeEvent(QEvent* Event) override;
    /// Tab moves the focus, for those who work by keyboard (a text has no tabs of its own: they would stand
    /// before a keyword or in a value); while the popup is open it takes the offered word.
    bool focusNextPrevChild(bool Next) override;
    /// Letter by letter: Qt's own makes blanks of those that do not break.
    QMimeData* createMimeDataFromSelection() const override;

  private:
    friend class LineNumbers;
    struct Place;

    void Replace(const QString& Raw);
    void SetText(const QString& Text, SectionWords Words, bool ReadOnly);
    void TextChanged();
    void MarkLines();
    void FitToFont();
    void FitNumbers();

    Place PlaceOfCursor() const;
    QStringList OffersAt(const Place& At) const;
    bool PopupOpen() const;
    void ClosePopup();
    void Offer(bool WithoutPrefix, bool Select, bool Asked);
    void OfferAfter(const QString& Typed, bool WasOpen);
    bool TakeOffered(const QString& Word);
    bool PopupTakes(QKeyEvent* Event);

    QStringListModel* Offers_ = nullptr;
    QCompleter* Completer_ = nullptr;
    SectionHighlighter* Colours_ = nullptr;
    LineNumbers* Numbers_ = nullptr;
    QString Given_;  // the text as it came
    QString Shown_;  // the same as the document holds it, with its own line ends
    bool Showing_ = false;
    bool Edited_ = false;  // since TextChanged
    bool Changed_ = false;
    int FaultLine_ = 0;
};

}  // namespace kv::desktop
