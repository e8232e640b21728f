#include "host/desktop/ChangesDialog.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "host/desktop/QtText.h"

namespace kv::desktop {
namespace {

// Lines that stand unchanged before and behind a change.
constexpr std::size_t kAround = 3;

// A colour laid over the palette's own, so thin that its text stays readable.
QColor Laid(const QColor& Over, const QColor& Base) {
    constexpr int kShare = 24;  // of a hundred
    const auto Mix = [](int Top, int Below) { return (Top * kShare + Below * (100 - kShare)) / 100; };
    return {Mix(Over.red(), Base.red()), Mix(Over.green(), Base.green()), Mix(Over.blue(), Base.blue())};
}

struct Look {
    QChar Sign;
    QTextBlockFormat Block;
};

// Which lines are shown: those that changed and some around them.
std::vector<bool> Shown(const std::vector<LineChange>& Lines) {
    std::vector<bool> Shown(Lines.size(), false);
    for (std::size_t I = 0; I < Lines.size(); ++I) {
        if (Lines[I].Is == Line::Same) continue;
        const std::size_t First = I > kAround ? I - kAround : 0;
        const std::size_t Last = std::min(Lines.size() - 1, I + kAround);
        for (std::size_t N = First; N <= Last; ++N) Shown[N] = true;
    }
    return Shown;
}

}  // namespace

ChangesDialog::ChangesDialog(const QString& Title, std::vector<SectionChange> Changes, QWidget* Parent)
    : QDialog(Parent),
      Changes_(std::move(Changes)),
      Question_(new QLabel(this)),
      Text_(new QTextBrowser(this)),
      Buttons_(new QDialogButtonBox(this)) {
    setWindowTitle(Title);
    setSizeGripEnabled(true);
    Question_->setWordWrap(true);
    Question_->hide();
    Text_->setAccessibleName(tr("Differenze, sezione per sezione"));
    Text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Text_->setTabChangesFocus(true);
    Text_->setUndoRedoEnabled(false);
    Text_->setLineWrapMode(QTextEdit::NoWrap);
    QPushButton* const Close = Buttons_->addButton(tr("&Chiudi"), QDialogButtonBox::RejectRole);
    Close->setObjectName(QStringLiteral("Close"));
    Close->setDefault(true);
    connect(Buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const Layout = new QVBoxLayout(this);
    Layout->addWidget(Question_);
    Layout->addWidget(Text_, 1);
    Layout->addWidget(Buttons_);
    resize(fontMetrics().averageCharWidth() * 96, fontMetrics().lineSpacing() * 32);
    Fill();
    Text_->setFocus();
}

void ChangesDialog::AskWhich() {
    Question_->setText(
        tr("Un altro programma ha salvato questo oggetto dopo che è stato aperto.") + u'\n' +
        tr("Le righe con «-» sono della versione salvata, quelle con «+» di questa finestra."));
    Question_->show();
    setAccessibleDescription(Question_->text());
    Buttons_->clear();
    const auto Add = [&](const QString& Text, const char* Name, QDialogButtonBox::ButtonRole Role,
                         Overtaken Means) {
        QPushButton* const Button = Buttons_->addButton(Text, Role);
        Button->setObjectName(QLatin1String(Name));
        connect(Button, &QPushButton::clicked, this, [this, Means] { Answer_ = Means; });
        return Button;
    };
    Add(tr("&Prendi la versione salvata"), "TakeOver", QDialogButtonBox::AcceptRole, Overtaken::TakeOver);
    Add(tr("&Mantieni la mia"), "Keep", QDialogButtonBox::AcceptRole, Overtaken::Keep);
    Add(tr("&Annulla"), "Cancel", QDialogButtonBox::RejectRole, Overtaken::Cancel)->setDefault(true);
    connect(Buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
}

Overtaken ChangesDialog::AskOvertaken(std::vector<SectionChange> Changes, QWidget* Parent) {
    ChangesDialog Dialog(tr("Oggetto salvato da altri"), std::move(Changes), Parent);
    Dialog.AskWhich();
    return Dialog.exec() == QDialog::Accepted ? Dialog.Answer_ : Overtaken::Cancel;
}

void ChangesDialog::Fill() {
    const QColor Base = palette().color(QPalette::Base);
    const QColor Ink = palette().color(QPalette::Text);

    QFont Fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font().pointSizeF() > 0) Fixed.setPointSizeF(font().pointSizeF());
    QTextCharFormat LineText;
    LineText.setFont(Fixed);
    LineText.setForeground(Ink);
    QTextCharFormat Faint;
    Faint.setFont(font());
    Faint.setForeground(palette().color(QPalette::PlaceholderText));
    QTextCharFormat Heading;
    Heading.setFont(font());
    Heading.setFontWeight(QFont::Bold);
    Heading.setForeground(Ink);
    QTextCharFormat Note;
    Note.setFont(font());
    Note.setForeground(Ink);

    const Look Same{u' ', {}};
    Look Removed{u'-', {}};
    Removed.Block.setBackground(Laid(QColor(220, 40, 40), Base));
    Look Added{u'+', {}};
    Added.Block.setBackground(Laid(QColor(30, 160, 60), Base));
    QTextBlockFormat Above;
    Above.setHeadingLevel(2);
    Above.setTopMargin(fontMetrics().lineSpacing() * 0.8);
    Above.setBottomMargin(fontMetrics().lineSpacing() * 0.2);

    const auto KindText = [](SectionChange::Kind Is) {
        switch (Is) {
            case SectionChange::Kind::Removed:
                return tr("tolta");
            case SectionChange::Kind::Added:
                return tr("aggiunta");
            case SectionChange::Kind::Moved:
                return tr("spostata");
            case SectionChange::Kind::Changed:
                break;
        }
        return tr("modificata");
    };

    Text_->clear();
    QTextCursor At(Text_->document());
    At.beginEditBlock();
    const auto Put = [&](const QTextBlockFormat& Block, const QTextCharFormat& Text, const QString& What) {
        if (At.atStart())
            At.setBlockFormat(Block);
        else
            At.insertBlock(Block);
        At.insertText(What, Text);
    };
    if (Changes_.empty()) Put({}, Note, tr("Nessuna differenza nel testo delle sezioni."));
    for (const SectionChange& Section : Changes_) {
        Put(Above, Heading, FromWide(Section.Caption));
        At.insertText(QStringLiteral(" (%1)").arg(KindText(Section.Is)), Note);
        const std::vector<bool> Visible = Shown(Section.Lines);
        for (std::size_t I = 0; I < Section.Lines.size(); ++I) {
            if (!Visible[I]) {
                const std::size_t From = I;
                while (I + 1 < Section.Lines.size() && !Visible[I + 1]) ++I;
                Put({}, Faint, tr("⋯ righe uguali: %1").arg(I - From + 1));
                continue;
            }
            const LineChange& Each = Section.Lines[I];
            const Look& As = Each.Is == Line::Removed ? Removed : Each.Is == Line::Added ? Added : Same;
            Put(As.Block, LineText, As.Sign + u' ' + FromWide(Each.Text));
        }
    }
    At.endEditBlock();
    At.movePosition(QTextCursor::Start);
    Text_->setTextCursor(At);
}

void ChangesDialog::changeEvent(QEvent* Event) {
    QDialog::changeEvent(Event);
    if (Text_ && (Event->type() == QEvent::PaletteChange || Event->type() == QEvent::FontChange)) Fill();
}

}  // namespace kv::desktop
