#include "host/desktop/QtPlatform.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <vector>

#include "host/CommandsSession.h"
#include "host/desktop/QtText.h"

namespace kv::desktop {
namespace {

/// The translator's context of this file.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(QtPlatform)
};

struct IconRow {
    std::int32_t Style;
    QMessageBox::Icon Icon;
};
constexpr IconRow kIcons[] = {
    {box::kCritical, QMessageBox::Critical},
    {box::kQuestion, QMessageBox::Question},
    {box::kExclamation, QMessageBox::Warning},
    {box::kInformation, QMessageBox::Information},
};

struct ButtonRow {
    Answer Means;
    QMessageBox::ButtonRole Role;
    const char* Label;
};
constexpr ButtonRow kOkButtons[] = {
    {Answer::Ok, QMessageBox::AcceptRole, QT_TRANSLATE_NOOP("QtPlatform", "OK")},
};
constexpr ButtonRow kYesNoButtons[] = {
    {Answer::Yes, QMessageBox::YesRole, QT_TRANSLATE_NOOP("QtPlatform", "&Sì")},
    {Answer::No, QMessageBox::NoRole, QT_TRANSLATE_NOOP("QtPlatform", "&No")},
};
constexpr ButtonRow kYesNoCancelButtons[] = {
    {Answer::Yes, QMessageBox::YesRole, QT_TRANSLATE_NOOP("QtPlatform", "&Sì")},
    {Answer::No, QMessageBox::NoRole, QT_TRANSLATE_NOOP("QtPlatform", "&No")},
    {Answer::Cancel, QMessageBox::RejectRole, QT_TRANSLATE_NOOP("QtPlatform", "&Annulla")},
};

std::span<const ButtonRow> ButtonsOf(std::int32_t Style) {
    switch (Style & box::kButtons) {
        case box::kYesNo:
            return kYesNoButtons;
        case box::kYesNoCancel:
            return kYesNoCancelButtons;
        default:
            return kOkButtons;
    }
}

// The label and the patterns of a filter, as Qt wants them. A pattern for all files has no dot that a name
// must hold here.
struct FileKind {
    QString Filter;
    QString Suffix;
};

std::vector<FileKind> FileKinds(std::wstring_view Filter) {
    const QStringList Parts = FromWide(Filter).split(QLatin1Char('|'));
    std::vector<FileKind> Kinds;
    for (qsizetype I = 0; I + 1 < Parts.size(); I += 2) {
        QStringList Patterns = Parts[I + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& Pattern : Patterns)
            if (Pattern == QLatin1String("*.*")) Pattern = QStringLiteral("*");
        const QString First = Patterns.value(0);
        const bool Plain = First.startsWith(QLatin1String("*.")) && First.count(QLatin1Char('*')) == 1;
        // The brackets around the patterns are Qt's; others would be taken for them.
        QString Label = Parts[I];
        Label.replace(QLatin1Char('('), QLatin1Char('[')).replace(QLatin1Char(')'), QLatin1Char(']'));
        Kinds.push_back({Label + QLatin1String(" (") + Patterns.join(QLatin1Char(' ')) + QLatin1Char(')'),
                         Plain ? First.mid(2) : QString()});
    }
    return Kinds;
}

constexpr std::int32_t kAskOverwrite = 2;  // flag of the file dialog

}  // namespace

/// While it lives the pointer is the plain one: what the operator is asked is not waited for.
class QtPlatform::PlainPointer {
  public:
    explicit PlainPointer(bool Waiting) : Waiting_(Waiting) {
        if (Waiting_) QGuiApplication::restoreOverrideCursor();
    }
    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;
    ~PlainPointer() {
        if (Waiting_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }

  private:
    bool Waiting_;
};

QtPlatform::~QtPlatform() { SetPointer(kPointerDefault); }

void QtPlatform::ShowError(const KvError& Error) {
    if (OnError)
        OnError(Error);
    else
        static_cast<void>(MessageBox(host::ErrorText(Error), box::kOk + box::kCritical));
}

Answer QtPlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    const PlainPointer Shown(Waiting_);
    QMessageBox Box(QApplication::activeWindow());
    Box.setWindowTitle(QGuiApplication::applicationDisplayName());
    Box.setTextFormat(Qt::PlainText);
    Box.setText(FromWide(Text));
    for (const IconRow& Row : kIcons)
        if (Row.Style == (Style & box::kIcons)) Box.setIcon(Row.Icon);
    if ((Style & box::kForeground) != 0) Box.setWindowFlag(Qt::WindowStaysOnTopHint);

    const std::span<const ButtonRow> Row = ButtonsOf(Style);
    const Answer Default = DefaultAnswer(Style);
    std::vector<QAbstractButton*> Buttons;
    for (const ButtonRow& Each : Row) {
        QPushButton* const Button = Box.addButton(Words::tr(Each.Label), Each.Role);
        if (Each.Means == Default) Box.setDefaultButton(Button);
        Buttons.push_back(Button);
    }
    // Escape and the window's own button stand for the last, which does nothing.
    Box.setEscapeButton(Buttons.back());
    Box.exec();
    const auto Clicked = std::find(Buttons.begin(), Buttons.end(), Box.clickedButton());
    return Clicked == Buttons.end() ? Row.back().Means
                                    : Row[static_cast<std::size_t>(Clicked - Buttons.begin())].Means;
}

std::optional<std::wstring> QtPlatform::SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                                 std::int32_t FilterIndex, std::int32_t Flags) {
    const PlainPointer Shown(Waiting_);
    QFileDialog Dialog(QApplication::activeWindow(), FromWide(Title));
    Dialog.setAcceptMode(QFileDialog::AcceptSave);
    Dialog.setFileMode(QFileDialog::AnyFile);
    const std::vector<FileKind> Kinds = FileKinds(Filter);
    QStringList Filters;
    for (const FileKind& Kind : Kinds) Filters.append(Kind.Filter);
    const auto Chosen = [&](const QString& Name) {
        for (const FileKind& Kind : Kinds)
            if (Kind.Filter == Name) Dialog.setDefaultSuffix(Kind.Suffix);
    };
    QObject::connect(&Dialog, &QFileDialog::filterSelected, &Dialog, Chosen);
    if (!Kinds.empty()) {
        Dialog.setNameFilters(Filters);
        const auto Last = static_cast<std::int32_t>(Kinds.size());
        const QString First = Kinds[static_cast<std::size_t>(std::clamp(FilterIndex, 1, Last) - 1)].Filter;
        Dialog.selectNameFilter(First);
        Chosen(First);
    }
    const QString File = RunDialog(Dialog, (Flags & kAskOverwrite) != 0);
    if (File.isEmpty()) return std::nullopt;
    return ToWide(File);
}

// Qt's own question would have Yes as its default.
QString QtPlatform::RunDialog(QFileDialog& Dialog, bool AskBefore) {
    const bool Saves = Dialog.acceptMode() == QFileDialog::AcceptSave;
    Dialog.setOption(QFileDialog::DontConfirmOverwrite);
    Dialog.setLabelText(QFileDialog::LookIn, Words::tr("Cartella:"));
    Dialog.setLabelText(QFileDialog::FileName, Words::tr("&Nome del file:"));
    Dialog.setLabelText(QFileDialog::FileType, Words::tr("Tipo di file:"));
    Dialog.setLabelText(QFileDialog::Accept, Saves ? Words::tr("&Salva") : Words::tr("&Apri"));
    Dialog.setLabelText(QFileDialog::Reject, Words::tr("A&nnulla"));
    while (Dialog.exec() == QDialog::Accepted) {
        const QString File = Dialog.selectedFiles().value(0);
        if (!AskBefore || !QFileInfo::exists(File)) return File;
        const QString Question = Words::tr("Il file %1 esiste già.\nSostituirlo?").arg(File);
        if (MessageBox(ToWide(Question), box::kYesNo + box::kExclamation + box::kDefaultSecond) ==
            Answer::Yes)
            return File;
    }
    return {};
}

void QtPlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    const PlainPointer Shown(Waiting_);
    QStringList Lines;
    Lines.reserve(static_cast<qsizetype>(Items.size()));
    for (const std::wstring& Item : Items) Lines.append(FromWide(Item));

    QDialog Form(QApplication::activeWindow());
    Form.setWindowTitle(FromWide(Caption));
    QStringListModel Model(Lines);
    QListView* const List = new QListView;
    List->setModel(&Model);
    List->setAccessibleName(FromWide(Caption));
    List->setUniformItemSizes(true);
    List->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List->setSelectionMode(QAbstractItemView::ExtendedSelection);

    // What is selected, or all where nothing is.
    QAction* const Copy = new QAction(Words::tr("&Copia"), List);
    Copy->setShortcut(QKeySequence::Copy);
    Copy->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(Copy, &QAction::triggered, List, [List, &Lines] {
        QModelIndexList Rows = List->selectionModel()->selectedRows();
        std::sort(Rows.begin(), Rows.end());
        QStringList Taken;
        for (const QModelIndex& Row : Rows) Taken.append(Row.data().toString());
        QGuiApplication::clipboard()->setText((Taken.isEmpty() ? Lines : Taken).join(QLatin1Char('\n')));
    });
    List->addAction(Copy);
    List->setContextMenuPolicy(Qt::ActionsContextMenu);

    QDialogButtonBox* const Buttons = new QDialogButtonBox;
    QPushButton* const CopyButton = Buttons->addButton(Words::tr("&Copia"), QDialogButtonBox::ActionRole);
    CopyButton->setAutoDefault(false);
    QObject::connect(CopyButton, &QPushButton::clicked, Copy, &QAction::trigger);
    Buttons->addButton(Words::tr("C&hiudi"), QDialogButtonBox::RejectRole)->setDefault(true);
    QObject::connect(Buttons, &QDialogButtonBox::rejected, &Form, &QDialog::reject);

    QVBoxLayout* const Column = new QVBoxLayout(&Form);
    Column->addWidget(List);
    Column->addWidget(Buttons);
    const QFontMetrics Font = Form.fontMetrics();
    Form.resize(std::max(Form.sizeHint().width(), 40 * Font.averageCharWidth()), 22 * Font.height());
    List->setFocus();
    Form.exec();
}

void QtPlatform::Beep() { QApplication::beep(); }

void QtPlatform::SetPointer(std::int32_t Pointer) {
    const bool Wait = Pointer == kPointerWait;
    if (Wait == Waiting_) return;
    Waiting_ = Wait;
    if (Wait)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

}  // namespace kv::desktop
