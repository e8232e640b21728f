#include "host/desktop/SectionEditor.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QFontDatabase>
#include <QFontInfo>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextBlock>
#include <QTextEdit>
#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace kv::desktop {
namespace {

constexpr QChar kParagraph = QChar::ParagraphSeparator;  // how the document ends its lines
constexpr int kTabColumns = 4;
constexpr int kLeastDigits = 3;

QFont FixedFont() {
    QFont Font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    Font.setStyleHint(QFont::Monospace);
    if (!QFontInfo(Font).fixedPitch()) Font.setFamily(QStringLiteral("monospace"));
    return Font;
}

bool Printable(const QString& Text) {
    return !Text.isEmpty() && std::all_of(Text.begin(), Text.end(), [](QChar C) { return C.isPrint(); });
}

}  // namespace

// The area left of the text: the number of each line and the sign of the one that was refused.
class LineNumbers final : public QWidget {
  public:
    explicit LineNumbers(SectionEditor* Editor) : QWidget(Editor), Editor_(Editor) {}

    // Room for the sign, the digits of the last number and half a letter on either side.
    int Width() const {
        int Digits = 1;
        for (int Last = Editor_->blockCount(); Last >= 10; Last /= 10) ++Digits;
        return Letter() * (1 + std::max(Digits, kLeastDigits)) + Letter();
    }
    QSize sizeHint() const override { return {Width(), 0}; }

  protected:
    void paintEvent(QPaintEvent* Event) override {
        QPainter Painter(this);
        const SectionColours& C = Editor_->Colours_->Colours();
        Painter.fillRect(Event->rect(), C.CurrentLine);
        Painter.setFont(Editor_->font());
        const int Height = Editor_->fontMetrics().height();
        const int Current = Editor_->textCursor().blockNumber();
        QTextBlock Block = Editor_->firstVisibleBlock();
        QRectF Line = Editor_->blockBoundingGeometry(Block).translated(Editor_->contentOffset());
        while (Block.isValid() && Line.top() <= Event->rect().bottom()) {
            const int Number = Block.blockNumber();
            const bool Fault = Number + 1 == Editor_->FaultLine_;
            if (Fault) {
                Painter.fillRect(QRectF(0, Line.top(), width(), Line.height()), C.FaultLine);
                Sign(Painter, QRectF(Letter() * 0.25, Line.top(), Letter(), Height), C.FaultSign);
            }
            Painter.setPen(Fault               ? C.FaultSign
                           : Number == Current ? Editor_->palette().color(QPalette::Text)
                                               : C.Number);
            Painter.drawText(QRectF(0, Line.top(), width() - Letter() * 0.5, Height),
                             Qt::AlignRight | Qt::AlignVCenter, QString::number(Number + 1));
            Block = Block.next();
            Line.moveTop(Line.bottom());
            if (Block.isValid()) Line.setHeight(Editor_->blockBoundingRect(Block).height());
        }
    }

    void wheelEvent(QWheelEvent* Event) override { QApplication::sendEvent(Editor_->viewport(), Event); }

  private:
    int Letter() const { return Editor_->fontMetrics().horizontalAdvance(u'9'); }

    // A wedge that points at the line.
    static void Sign(QPainter& Painter, const QRectF& In, const QColor& Colour) {
        const double Half = In.width() / 2;
        const QPointF Middle = In.center();
        const std::array Corners{Middle + QPointF(-Half, -Half), Middle + QPointF(Half, 0),
                                 Middle + QPointF(-Half, Half)};
        Painter.save();
        Painter.setRenderHint(QPainter::Antialiasing);
        Painter.setPen(Qt::NoPen);
        Painter.setBrush(Colour);
        Painter.drawPolygon(Corners.data(), static_cast<int>(Corners.size()));
        Painter.restore();
    }

    SectionEditor* Editor_;
};

// What can be offered where the cursor stands, and what a word that is taken replaces.
struct SectionEditor::Place {
    enum class Kind { Nothing, Keyword, Value };
    Kind Is = Kind::Nothing;
    QString Keyword;     // of the line, empty where it has none
    QString Prefix;      // what is typed already, up to the cursor
    QStringList Others;  // what stands between the other bars
    int Begin = 0;       // in the document
    int End = 0;
};

SectionEditor::SectionEditor(QWidget* Parent) : QPlainTextEdit(Parent) {
    Colours_ = new SectionHighlighter(document());
    Numbers_ = new LineNumbers(this);
    Offers_ = new QStringListModel(this);
    Completer_ = new QCompleter(Offers_, this);
    Completer_->setWidget(this);
    Completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    Completer_->setWrapAround(false);
    Completer_->popup()->setAccessibleName(tr("Parole proposte"));
    setAccessibleName(tr("Testo della sezione"));
    setLineWrapMode(NoWrap);
    setTabChangesFocus(true);

    connect(Completer_, QOverload<const QString&>::of(&QCompleter::activated), this,
            [this](const QString& Word) { TakeOffered(Word); });
    connect(document(), &QTextDocument::contentsChange, this,
            [this](int, int Removed, int Added) { Edited_ = Edited_ || Removed > 0 || Added > 0; });
    connect(this, &QPlainTextEdit::textChanged, this, &SectionEditor::TextChanged);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &SectionEditor::MarkLines);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &SectionEditor::FitNumbers);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& Part, int Scrolled) {
        if (Scrolled != 0)
            Numbers_->scroll(0, Scrolled);
        else
            Numbers_->update(0, Part.y(), Numbers_->width(), Part.height());
    });

    setFont(FixedFont());
    FitToFont();
    Colours_->SetPalette(palette());
    ShowNothing();
}

SectionEditor::~SectionEditor() = default;

void SectionEditor::ShowSection(const QString& Text, SectionWords Words) {
    SetText(Text, std::move(Words), false);
}

void SectionEditor::ShowNothing() { SetText({}, {}, true); }

void SectionEditor::SetText(const QString& Text, SectionWords Words, bool ReadOnly) {
    ClosePopup();
    Showing_ = true;
    FaultLine_ = 0;
    setAccessibleDescription({});
    Colours_->SetWords(std::move(Words));
    setPlainText(Text);
    document()->setModified(false);
    Given_ = Text;
    Shown_ = document()->toRawText();
    setReadOnly(ReadOnly);
    Showing_ = false;
    MarkLines();
    if (std::exchange(Changed_, false)) Q_EMIT ChangesChanged(false);
}

void SectionEditor::Replace(const QString& Raw) {
    if (document()->toRawText() == Raw) return;
    QTextCursor All(document());
    All.select(QTextCursor::Document);
    All.insertText(Raw);
}

void SectionEditor::Revert() {
    ClosePopup();
    Replace(Shown_);
}

void SectionEditor::Accept(const QString& Text) {
    ClosePopup();
    QTextDocument Other;
    Other.setPlainText(Text);
    Replace(Other.toRawText());
    MarkFault(0);
    Given_ = Text;
    Shown_ = document()->toRawText();
    if (std::exchange(Changed_, false)) Q_EMIT ChangesChanged(false);
}

QString SectionEditor::SectionText() const {
    if (!Changed_) return Given_;
    // Not toPlainText, which makes blanks of those that do not break.
    QString Text = document()->toRawText();
    Text.replace(kParagraph, QStringLiteral("\r\n"));
    return Text;
}

void SectionEditor::TextChanged() {
    // New colours, too, are told as a change of the text, but not where in it.
    if (!std::exchange(Edited_, false) || Showing_) return;
    if (FaultLine_ != 0) MarkFault(0);
    // The document knows when undo has come back to the beginning; what was typed back letter by letter, only
    // the letters tell. Texts of other lengths need no look.
    const bool Changed = document()->isModified() && (document()->characterCount() - 1 != Shown_.size() ||
                                                      document()->toRawText() != Shown_);
    if (std::exchange(Changed_, Changed) != Changed) Q_EMIT ChangesChanged(Changed);
}

void SectionEditor::MarkFault(int Line) {
    FaultLine_ = std::clamp(Line, 0, blockCount());
    if (FaultLine_ > 0) {
        ClosePopup();
        setTextCursor(QTextCursor(document()->findBlockByNumber(FaultLine_ - 1)));
        ensureCursorVisible();
        setAccessibleDescription(tr("Riga %1 rifiutata").arg(FaultLine_));
    } else {
        setAccessibleDescription({});
    }
    MarkLines();
}

void SectionEditor::MarkLines() {
    if (Showing_) return;
    const auto Marked = [](QTextCursor At, const QColor& Colour) {
        At.clearSelection();
        QTextEdit::ExtraSelection Line;
        Line.cursor = At;
        Line.format.setBackground(Colour);
        Line.format.setProperty(QTextFormat::FullWidthSelection, true);
        return Line;
    };
    const SectionColours& C = Colours_->Colours();
    QList<QTextEdit::ExtraSelection> Lines;
    if (!isReadOnly() && textCursor().blockNumber() + 1 != FaultLine_)
        Lines.append(Marked(textCursor(), C.CurrentLine));
    if (FaultLine_ > 0)
        Lines.append(Marked(QTextCursor(document()->findBlockByNumber(FaultLine_ - 1)), C.FaultLine));
    setExtraSelections(Lines);
    Numbers_->update();
}

void SectionEditor::FitToFont() {
    setTabStopDistance(kTabColumns * fontMetrics().horizontalAdvance(u' '));
    Completer_->popup()->setFont(font());
    FitNumbers();
}

void SectionEditor::FitNumbers() {
    const int Width = Numbers_->Width();
    const QRect In = contentsRect();
    const bool FromRight = isRightToLeft();
    setViewportMargins(FromRight ? 0 : Width, 0, FromRight ? Width : 0, 0);
    Numbers_->setGeometry(FromRight ? In.right() + 1 - Width : In.left(), In.top(), Width, In.height());
}

void SectionEditor::resizeEvent(QResizeEvent* Event) {
    QPlainTextEdit::resizeEvent(Event);
    FitNumbers();
}

void SectionEditor::changeEvent(QEvent* Event) {
    QPlainTextEdit::changeEvent(Event);
    switch (Event->type()) {
        case QEvent::PaletteChange:
        case QEvent::StyleChange:
            Colours_->SetPalette(palette());
            MarkLines();
            break;
        case QEvent::FontChange:
            FitToFont();
            break;
        default:
            break;
    }
}

bool SectionEditor::focusNextPrevChild(bool Next) {
    if (PopupOpen()) return false;
    return QPlainTextEdit::focusNextPrevChild(Next);
}

QMimeData* SectionEditor::createMimeDataFromSelection() const {
    auto Data = std::make_unique<QMimeData>();
    QString Text = textCursor().selectedText();
    Text.replace(kParagraph, u'\n');
    Data->setText(Text);
    return Data.release();
}

SectionEditor::Place SectionEditor::PlaceOfCursor() const {
    Place At;
    const QTextCursor Cursor = textCursor();
    const QString Text = Cursor.block().text();
    const SectionLine Line(Text);
    const qsizetype Column = Cursor.positionInBlock();
    if (isReadOnly() || Line.Comment || Line.InString(Column)) return At;

    qsizetype Begin = Line.Front;
    qsizetype End = Column;
    if (Column <= Line.Equals || Line.Equals < 0) {
        if (Line.Equals < 0 && !Line.Strings.empty()) return At;
        At.Is = Place::Kind::Keyword;
        if (Line.Equals >= 0) {
            End = Line.Equals + 1;
        } else {
            End = std::max(Begin, Column);
            while (End < Text.size() && !Text[End].isSpace()) ++End;
        }
    } else {
        At.Is = Place::Kind::Value;
        // The bars stand in order, and a word belongs to the first whose bar is not before the cursor.
        bool Found = false;
        for (const SectionLine::Span& S : Line.Values) {
            const qsizetype Bar = Text.indexOf(u'|', S.End);
            if (!Found && (Bar < 0 || Column <= Bar)) {
                Found = true;
                Begin = S.Begin < S.End ? S.Begin : Column;
                End = std::max(S.End, Column);
                if (S.Begin == S.End) End = Column;
            } else {
                At.Others.append(Text.mid(S.Begin, S.End - S.Begin));
            }
        }
    }
    At.Keyword = Line.Keyword;
    At.Prefix = Text.mid(Begin, std::max<qsizetype>(0, Column - Begin));
    At.Begin = Cursor.block().position() + static_cast<int>(Begin);
    At.End = Cursor.block().position() + static_cast<int>(End);
    return At;
}

QStringList SectionEditor::OffersAt(const Place& At) const {
    QStringList First;
    QStringList Last;
    switch (At.Is) {
        case Place::Kind::Nothing:
            break;
        case Place::Kind::Keyword:
            for (const QString& Word : Colours_->Keywords()) {
                if (!Word.startsWith(At.Prefix, Qt::CaseInsensitive)) continue;
                const bool Stands = Colours_->LinesWith(Word) > (Word == At.Keyword ? 1 : 0);
                (Stands ? Last : First).append(Word);
            }
            break;
        case Place::Kind::Value:
            for (const QString& Word : Colours_->WordsOf(At.Keyword)) {
                if (Word.startsWith(At.Prefix, Qt::CaseInsensitive) &&
                    !At.Others.contains(Word, Qt::CaseInsensitive))
                    First.append(Word);
            }
            break;
    }
    return First + Last;
}

bool SectionEditor::PopupOpen() const { return Completer_->popup()->isVisible(); }

void SectionEditor::ClosePopup() { Completer_->popup()->hide(); }

void SectionEditor::Complete() { Offer(true, true, true); }

// Without `Asked`, a word that is there already in full is not worth an offer.
void SectionEditor::Offer(bool WithoutPrefix, bool Select, bool Asked) {
    const Place At = PlaceOfCursor();
    if (At.Is == Place::Kind::Nothing || (At.Prefix.isEmpty() && !WithoutPrefix)) return ClosePopup();
    const QStringList Words = OffersAt(At);
    if (Words.isEmpty() || (!Asked && Words == QStringList{At.Prefix})) return ClosePopup();

    QAbstractItemView* Popup = Completer_->popup();
    if (Offers_->stringList() != Words) Offers_->setStringList(Words);
    QTextCursor Front(document());
    Front.setPosition(At.Begin);
    QRect Where = cursorRect(Front).translated(viewport()->pos());
    Where.setWidth(Popup->sizeHintForColumn(0) + Popup->verticalScrollBar()->sizeHint().width() +
                   2 * Popup->frameWidth());
    Completer_->complete(Where);
    Popup->setCurrentIndex(Select ? Completer_->completionModel()->index(0, 0) : QModelIndex());
}

void SectionEditor::OfferAfter(const QString& Typed, bool WasOpen) {
    const bool Separator = Typed.endsWith(u'=') || Typed.endsWith(u'|');
    // The blank between "=" and the value does not close what the "=" has opened.
    const Place At = PlaceOfCursor();
    const bool Opened = WasOpen && Typed.endsWith(u' ') && At.Is == Place::Kind::Value;
    Offer(Separator || Opened, !At.Prefix.isEmpty(), false);
}

// False where nothing came of it: the word stands there already, with the cursor behind it.
bool SectionEditor::TakeOffered(const QString& Word) {
    ClosePopup();
    const Place At = PlaceOfCursor();
    if (At.Is == Place::Kind::Nothing) return false;
    QTextCursor Cursor = textCursor();
    const int Before = Cursor.position();
    Cursor.setPosition(At.Begin);
    Cursor.setPosition(At.End, QTextCursor::KeepAnchor);
    const bool New = Cursor.selectedText() != Word;
    Cursor.beginEditBlock();
    if (New) Cursor.insertText(Word);
    Cursor.setPosition(At.Begin + static_cast<int>(Word.size()));
    if (At.Is == Place::Kind::Keyword) {
        if (document()->characterAt(Cursor.position()) != u' ')
            Cursor.insertText(QStringLiteral(" "));
        else
            Cursor.movePosition(QTextCursor::NextCharacter);
    }
    Cursor.endEditBlock();
    const qsizetype Open = Word.indexOf(u'<');
    const qsizetype Close = Open < 0 ? -1 : Word.indexOf(u'>', Open);
    if (Close >= 0) {
        Cursor.setPosition(At.Begin + static_cast<int>(Open));
        Cursor.setPosition(At.Begin + static_cast<int>(Close) + 1, QTextCursor::KeepAnchor);
    }
    setTextCursor(Cursor);
    if (At.Is == Place::Kind::Keyword) {
        const Place Value = PlaceOfCursor();
        if (Value.Begin == Value.End) Offer(true, false, false);
    }
    return New || Cursor.position() != Before;
}

// The keys of the open popup. Those that Qt leaves to the popup come here only from a program.
bool SectionEditor::PopupTakes(QKeyEvent* Event) {
    QAbstractItemView* Popup = Completer_->popup();
    const QModelIndex Current = Popup->currentIndex();
    switch (Event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QApplication::sendEvent(Popup, Event);
            return true;
        case Qt::Key_Escape:
            ClosePopup();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            // Where nothing is chosen, or what is there already, it ends the line as ever.
            if (!Current.isValid() || (Event->modifiers() & ~Qt::KeypadModifier) != 0) {
                ClosePopup();
                return false;
            }
            return TakeOffered(Current.data().toString());
        case Qt::Key_Tab:
            TakeOffered(Completer_->completionModel()
                            ->index(Current.isValid() ? Current.row() : 0, 0)
                            .data()
                            .toString());
            return true;
        case Qt::Key_Backtab:
            ClosePopup();
            QPlainTextEdit::focusNextPrevChild(false);
            return true;
        default:
            return false;
    }
}

void SectionEditor::keyPressEvent(QKeyEvent* Event) {
    if (Event->key() == Qt::Key_Space && Event->modifiers() == Qt::ControlModifier) {
        Complete();
        Event->accept();
        return;
    }
    const bool WasOpen = PopupOpen();
    if (WasOpen && PopupTakes(Event)) {
        Event->accept();
        return;
    }
    const int Revision = document()->revision();
    const int Position = textCursor().position();
    QPlainTextEdit::keyPressEvent(Event);
    const bool Edited = document()->revision() != Revision;
    const bool Erased = Event->key() == Qt::Key_Backspace || Event->key() == Qt::Key_Delete;
    if (Edited && (Printable(Event->text()) || (WasOpen && Erased)))
        OfferAfter(Printable(Event->text()) ? Event->text() : QString(), WasOpen);
    else if (Edited || textCursor().position() != Position)
        ClosePopup();
}

void SectionEditor::inputMethodEvent(QInputMethodEvent* Event) {
    const bool WasOpen = PopupOpen();
    const QString Typed = Event->commitString();
    QPlainTextEdit::inputMethodEvent(Event);
    if (!Typed.isEmpty() && !isReadOnly()) OfferAfter(Typed, WasOpen);
}

}  // namespace kv::desktop
