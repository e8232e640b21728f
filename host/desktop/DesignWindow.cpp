#include "host/desktop/DesignWindow.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "host/ObjectWindow.h"
#include "host/Text.h"
#include "host/desktop/ChangesDialog.h"
#include "host/desktop/ElidedLabel.h"
#include "host/desktop/NodesModel.h"
#include "host/desktop/ObjectTexts.h"
#include "host/desktop/Pictures.h"
#include "host/desktop/QtText.h"
#include "host/desktop/SectionEditor.h"

namespace kv::desktop {
namespace {

using window::Command;
using window::Phrase;
using window::TreeNode;

const QString kGeometry = QStringLiteral("object/geometry");
const QString kState = QStringLiteral("object/state");
const QString kSplit = QStringLiteral("object/split");
const QString kStrict = QStringLiteral("object/strict");

// The texts of window::kPhrases, which a test compares with them, where Qt's tools find them.
constexpr const char* kSources[] = {
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Sezioni dell'oggetto"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Cerca nell'albero"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Testo della sezione"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Messaggio"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Strumenti"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Versione %1"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Id %1"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Riga %1: %2"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Errore imprevisto."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Testo applicato."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Oggetto salvato."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Operazione non eseguita."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "\"%1\" non si trova nell'albero."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Gli appunti sono vuoti."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Negli appunti: un oggetto della classe %1."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Eliminare \"%1\"?"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Eliminare tutti gli elementi di \"%1\"? Sono %2."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow",
                      "Negli appunti va l'intero oggetto. Copiarlo ed eliminare \"%1\"?"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow",
                      "L'oggetto ha modifiche non salvate, che andranno perse. Incollare?"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow",
                      "Le modifiche non salvate andranno perse. Ricaricare l'oggetto?"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Salvare le modifiche all'oggetto \"%1\"?"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Il testo della sezione \"%1\" non è stato applicato."),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "&Applica"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "&Scarta"),
    QT_TRANSLATE_NOOP("kv::desktop::DesignWindow", "Annulla"),
};
static_assert(std::size(kSources) == std::size(window::kPhrases));

// What stands before "=" in the lines of a section that are no comments.
QStringList KeywordsIn(const QString& Text) {
    QStringList Found;
    for (QStringView Line : QStringView(Text).split(u'\n')) {
        while (Line.startsWith(u' ')) Line = Line.mid(1);
        const qsizetype Sign = Line.indexOf(u'=');
        if (Sign <= 0 || Line.front() == u'\'' || Line.front() == u';' || Line.front() == u'*') continue;
        const QString Keyword = Line.left(Sign).trimmed().toString() + u'=';
        if (!Found.contains(Keyword)) Found.append(Keyword);
    }
    return Found;
}

void TellBox(QWidget* Parent, const QString& Text) {
    QMessageBox::warning(Parent, QStringLiteral("kvdesign"), Text);
}

}  // namespace

// The window.

DesignWindow::DesignWindow(Desk& OnDesk, window::WindowCore& Core, host::RegistryObject& Object,
                           QWidget* Parent)
    : QMainWindow(Parent, Qt::Window), On_(OnDesk), Core_(Core), Object_(Object) {
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowModality(Qt::ApplicationModal);
    MakeBody();
    MakeActions();
    MakeToolButtons();
    On_.Platform().OnError = [this](const KvError& Error) { Desk_.ShowFault(Error); };

    const QSettings Kept;
    if (!restoreGeometry(Kept.value(kGeometry).toByteArray()))
        resize(fontMetrics().averageCharWidth() * 130, fontMetrics().height() * 40);
    restoreState(Kept.value(kState).toByteArray());
    if (!Split_->restoreState(Kept.value(kSplit).toByteArray()))
        Split_->setSizes({width() * 2 / 5, width() * 3 / 5});

    MakeStatus();
    Desk_.Show();
    View_->setFocus();
}

void DesignWindow::MakeStatus() {
    std::wstring Name, Desc, Id, Clsid, Users;
    std::int16_t Version = 0;
    if (Core_.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users)) return;
    statusBar()->addWidget(new QLabel(FromWide(Clsid)));
    statusBar()->addWidget(new ElidedLabel(Qt::ElideRight, FromWide(Desc)), 1);
    statusBar()->addPermanentWidget(new QLabel(Said(Phrase::kVersion).arg(Version)));
    statusBar()->addPermanentWidget(new QLabel(Said(Phrase::kId).arg(FromWide(Id))));
}

DesignWindow::~DesignWindow() {
    On_.Platform().OnError = nullptr;
    disconnect(View_->selectionModel(), nullptr, this, nullptr);
}

void DesignWindow::MakeBody() {
    Nodes_ = new NodesModel(Core_.Tree(), this);
    Nodes_->Movable = [this](const TreeNode& Node) { return OffersOn(Core_.Tree(), Node).Move; };
    connect(Nodes_, &NodesModel::MoveRequested, this,
            [this](const QString& Key, int Place) { Desk_.MoveTo(ToWide(Key), Place); });

    View_ = new QTreeView;
    View_->setAccessibleName(Said(Phrase::kTree));
    View_->setHeaderHidden(true);
    View_->setUniformRowHeights(true);
    View_->setModel(Nodes_);
    View_->setSelectionMode(QAbstractItemView::SingleSelection);
    View_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    View_->setDragDropMode(QAbstractItemView::InternalMove);
    View_->setDefaultDropAction(Qt::MoveAction);
    View_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(View_, &QWidget::customContextMenuRequested, this, &DesignWindow::TreeMenu);
    connect(View_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& Now, const QModelIndex&) {
                const TreeNode* const Node = NodesModel::NodeOf(Now);
                if (Desk_.Busy() || !Node || Node->Key == Current()) return;
                // The view is still at work on the click: what it is told now it would overrule.
                QMetaObject::invokeMethod(
                    this, [this, Key = Node->Key] { Select(Key); }, Qt::QueuedConnection);
            });
    // A click beside the nodes selects nothing: what is worked on stays marked.
    connect(View_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (Desk_.Busy() || View_->selectionModel()->hasSelection()) return;
        QMetaObject::invokeMethod(
            this, [this] { Desk_.MarkCurrent(); }, Qt::QueuedConnection);
    });

    Search_ = new QLineEdit;
    Search_->setAccessibleName(Said(Phrase::kSearch));
    Search_->setPlaceholderText(Said(Phrase::kSearch));
    Search_->setClearButtonEnabled(true);
    connect(Search_, &QLineEdit::returnPressed, this, [this] { FindNext(); });

    auto* const Left = new QWidget;
    auto* const LeftColumn = new QVBoxLayout(Left);
    LeftColumn->setContentsMargins(0, 0, 0, 0);
    LeftColumn->addWidget(Search_);
    LeftColumn->addWidget(View_, 1);

    Heading_ = new ElidedLabel(Qt::ElideMiddle);
    Editor_ = new SectionEditor;
    Editor_->setAccessibleName(Said(Phrase::kSectionText));
    connect(Editor_, &SectionEditor::ChangesChanged, this, [this] { ShowState(); });

    Sign_ = new QLabel;
    Message_ = new QLabel;
    Message_->setTextFormat(Qt::PlainText);
    Message_->setWordWrap(true);
    Message_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Message_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Message_->setAccessibleName(Said(Phrase::kMessage));
    auto* const Line = new QWidget;
    auto* const LineRow = new QHBoxLayout(Line);
    LineRow->setContentsMargins(0, 0, 0, 0);
    LineRow->addWidget(Sign_, 0, Qt::AlignTop);
    LineRow->addWidget(Message_, 1);
    Line->setMinimumHeight(fontMetrics().height() * 2);

    auto* const Right = new QWidget;
    auto* const RightColumn = new QVBoxLayout(Right);
    RightColumn->setContentsMargins(0, 0, 0, 0);
    // The text begins where the tree does.
    Heading_->setMinimumHeight(Search_->sizeHint().height());
    RightColumn->addWidget(Heading_);
    RightColumn->addWidget(Editor_, 1);
    RightColumn->addWidget(Line);

    Split_ = new QSplitter;
    Split_->addWidget(Left);
    Split_->addWidget(Right);
    Split_->setStretchFactor(0, 2);
    Split_->setStretchFactor(1, 3);
    const int Edge = style()->pixelMetric(QStyle::PM_LayoutLeftMargin) / 2;
    Split_->setContentsMargins(Edge, Edge, Edge, 0);
    Split_->setChildrenCollapsible(false);
    setCentralWidget(Split_);
}

QAction* DesignWindow::Make(const char* Name, const QString& Text, const QKeySequence& Key,
                            const char* Picture, bool (DesignWindow::*Do)()) {
    auto* const Made = new QAction(Text, this);
    Made->setObjectName(QString::fromLatin1(Name));
    Made->setShortcut(Key);
    if (*Picture) Made->setIcon(PictureOf(QString::fromLatin1(Picture)));
    QString Tip = Text;
    Tip.remove(u'&');
    if (!Key.isEmpty()) Tip += QStringLiteral(" (%1)").arg(Key.toString(QKeySequence::NativeText));
    Made->setToolTip(Tip);
    if (Do) connect(Made, &QAction::triggered, this, [this, Do] { (this->*Do)(); });
    addAction(Made);
    return Made;
}

void DesignWindow::MakeActions() {
    using W = DesignWindow;
    const auto Keys = [](const char* Text) { return QKeySequence(QString::fromLatin1(Text)); };
    QAction* const Saving = Make("save", tr("&Salva"), QKeySequence::Save, "save", &W::Save);
    QAction* const Reloading = Make("reload", tr("&Ricarica"), QKeySequence::Refresh, "", &W::Reload);
    QAction* const Changes = Make("changes", tr("&Modifiche..."), Keys("Ctrl+D"), "changes", &W::ShowChanges);
    QAction* const Closing = Make("close", tr("&Chiudi"), Keys("Ctrl+W"), "", nullptr);
    connect(Closing, &QAction::triggered, this, &QWidget::close);

    QAction* const Applying = Make("apply", tr("&Applica il testo"), Keys("Ctrl+Return"), "apply", &W::Apply);
    QAction* const Reverting = Make("revert", tr("A&nnulla il testo"), Keys("Ctrl+R"), "revert", &W::Revert);
    QAction* const Completing = Make("complete", tr("C&ompleta"), {}, "", nullptr);
    connect(Completing, &QAction::triggered, Editor_, &SectionEditor::Complete);
    QAction* const Strict = Make("strict", tr("Controllo &sintassi"), Keys("Ctrl+K"), "strict", nullptr);
    Strict->setCheckable(true);
    Strict->setChecked(Core_.Tree().SyntaxOn());
    connect(Strict, &QAction::toggled, this, [this](bool Checked) {
        Core_.Tree().SetSyntaxOn(Checked);
        QSettings().setValue(kStrict, Checked);
    });

    QAction* const Copying = Make("copy", tr("&Copia"), QKeySequence::Copy, "copy", &W::Copy);
    QAction* const Cutting = Make("cut", tr("&Taglia"), QKeySequence::Cut, "cut", &W::Cut);
    QAction* const Pasting = Make("paste", tr("&Incolla"), QKeySequence::Paste, "paste", &W::Paste);
    QAction* const Adding = Make("new", tr("&Nuovo elemento"), Keys("Ins"), "new", &W::NewElement);
    QAction* const Deleting =
        Make("delete", tr("&Elimina"), QKeySequence::Delete, "delete", &W::DeleteElement);
    QAction* const Emptying =
        Make("deleteAll", tr("Elimina t&utti"), Keys("Ctrl+Shift+Del"), "", &W::DeleteAll);
    QAction* const Up = Make("moveUp", tr("Sposta &su"), Keys("Alt+Up"), "up", &W::MoveUp);
    QAction* const Down = Make("moveDown", tr("Sposta &giù"), Keys("Alt+Down"), "down", &W::MoveDown);
    QAction* const Properties = Make("properties", tr("&Proprietà"), Keys("F4"), "", &W::ShowProperties);
    // These keys belong to the text while it is being written.
    for (QAction* const OfTree : {Adding, Deleting}) {
        OfTree->setShortcutContext(Qt::WidgetShortcut);
        removeAction(OfTree);
        View_->addAction(OfTree);
    }

    QAction* const Finding = Make("find", tr("&Trova nell'albero"), QKeySequence::Find, "find", nullptr);
    connect(Finding, &QAction::triggered, this, [this] {
        Search_->setFocus(Qt::ShortcutFocusReason);
        Search_->selectAll();
    });
    QAction* const Further =
        Make("findNext", tr("Trova &successivo"), QKeySequence::FindNext, "", &W::FindNext);
    QAction* const Other = Make("otherPane", tr("Albero o t&esto"), Keys("F6"), "", nullptr);
    connect(Other, &QAction::triggered, this, [this] {
        QWidget* const To = Editor_->hasFocus() ? static_cast<QWidget*>(View_) : Editor_;
        To->setFocus(Qt::ShortcutFocusReason);
    });

    menuBar()->addMenu(tr("&Oggetto"))->addActions({Saving, Reloading, Changes, Closing});
    menuBar()
        ->addMenu(tr("&Modifica"))
        ->addActions({Copying, Cutting, Pasting, Adding, Deleting, Emptying, Up, Down, Properties});
    menuBar()->addMenu(tr("&Testo"))->addActions({Applying, Reverting, Completing, Strict});
    menuBar()->addMenu(tr("&Vai"))->addActions({Finding, Further, Other});

    QToolBar* const Bar = addToolBar(tr("Oggetto e testo"));
    Bar->setObjectName(QStringLiteral("objectBar"));
    Bar->addActions({Saving, Applying, Reverting, Strict});
    Bar->addSeparator();
    Bar->addActions({Adding, Deleting, Up, Down});
    Bar->addSeparator();
    Bar->addActions({Changes});
}

// The buttons that the server handed over, in its order.
void DesignWindow::MakeToolButtons() {
    QToolBar* const Bar = addToolBar(Said(Phrase::kTools));
    Bar->setObjectName(QStringLiteral("toolBar"));
    const std::vector<window::ToolButton>& Buttons = Core_.Tree().Buttons();
    for (const std::wstring& Word : Core_.Tree().Tools()) {
        if (Word.empty()) {
            Bar->addSeparator();
            continue;
        }
        const QString Name = FromWide(Word).toLower();
        if (QAction* const Known = ActionOf(Name)) {
            Bar->addAction(Known);
            continue;
        }
        const auto Button = std::find_if(Buttons.begin(), Buttons.end(),
                                         [&](const window::ToolButton& Of) { return Of.Key == Word; });
        const QString Tip = Button == Buttons.end() ? FromWide(Word) : FromWide(Button->ToolTip);
        QAction* const Tool =
            Make(Name.toLatin1().constData(), Tip, {}, Name.toLatin1().constData(), nullptr);
        connect(Tool, &QAction::triggered, this, [this, Word] { Desk_.RunTool(Word); });
        Bar->addAction(Tool);
        Tools_.emplace_back(Tool, Word);
    }
    QMenu* const Menu = menuBar()->addMenu(tr("&Strumenti"));
    for (const auto& [Tool, Word] : Tools_) Menu->addAction(Tool);
}

QAction* DesignWindow::ActionOf(const QString& Name) const { return findChild<QAction*>(Name); }

QString DesignWindow::Message() const { return Message_->text(); }

const char* DesignWindow::SourceOf(Phrase Of) { return kSources[static_cast<std::size_t>(Of)]; }

QString DesignWindow::Said(Phrase Of) const { return tr(SourceOf(Of)); }

// The window as window::ObjectDesk works on it.

std::wstring DesignWindow::Say(Phrase Of) const { return ToWide(Said(Of)); }

std::wstring DesignWindow::Widened(const char* What) const { return ToWide(QString::fromUtf8(What)); }

void DesignWindow::Said(const QString& Text, bool Fault) {
    Message_->setText(Text);
    const int Side = fontMetrics().height();
    const auto Icon = Fault ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
    Sign_->setPixmap(Text.isEmpty() ? QPixmap() : style()->standardIcon(Icon).pixmap(Side, Side));
    // A name hides the text from screen readers, so the text is the name; they tell it as it comes.
    Message_->setAccessibleName(Text.isEmpty() ? Said(Phrase::kMessage) : Text);
    QAccessibleEvent Told(Message_, QAccessible::Alert);
    if (!Text.isEmpty()) QAccessible::updateAccessibility(&Told);
    Sign_->setAccessibleName(Text.isEmpty() ? QString() : Fault ? tr("Errore") : tr("Informazione"));
}

void DesignWindow::Tell(const std::wstring& Text, bool Fault) { Said(FromWide(Text), Fault); }

void DesignWindow::ShowState() {
    setWindowTitle(tr("%1 - %2[*]").arg(FromWide(Desk_.Name()), FromWide(Object_.Clsid())));
    setWindowModified(Desk_.Unsaved());
    Heading_->SetText(FromWide(Desk_.Heading()));
    for (const window::CommandRow& Each : window::kCommands)
        ActionOf(QString::fromLatin1(Each.Name))->setEnabled(Desk_.IsOffered(Each.Id));
    ActionOf(QStringLiteral("complete"))->setEnabled(!Editor_->isReadOnly());
    for (const auto& [Tool, Word] : Tools_) Tool->setEnabled(Desk_.Serves(Word));
}

bool DesignWindow::TextChanged() const { return Editor_->HasChanges(); }

std::wstring DesignWindow::Text() const { return ToWide(Editor_->SectionText()); }

void DesignWindow::ShowText(const std::wstring& Shown, bool Applied) {
    const QString Text = FromWide(Shown);
    if (Applied) {
        Editor_->Accept(Text);
        return;
    }
    const std::wstring Section(SectionWord(Current()));
    QStringList Keywords = KeywordsIn(Text);
    for (const window::ValueWords& Row : Core_.Tree().Choices())
        if (Row.Section == Section && !Keywords.contains(FromWide(Row.Keyword)))
            Keywords.append(FromWide(Row.Keyword));
    Editor_->ShowSection(
        Text, {Keywords, [this, Section](const QString& Keyword) {
                   QStringList Words;
                   for (const std::wstring& Word : Core_.Tree().ChoicesOf(Section, ToWide(Keyword)))
                       Words.append(FromWide(Word));
                   return Words;
               }});
}

void DesignWindow::ShowNoText() { Editor_->ShowNothing(); }

void DesignWindow::RevertText() { Editor_->Revert(); }

int DesignWindow::TextPosition() const { return Editor_->textCursor().position(); }

void DesignWindow::SetTextPosition(int Position) {
    QTextCursor There = Editor_->textCursor();
    There.setPosition(std::min(Position, Editor_->document()->characterCount() - 1));
    Editor_->setTextCursor(There);
}

void DesignWindow::ShowRefused(int Line) {
    Editor_->MarkFault(Line);
    Editor_->setFocus();
}

void DesignWindow::Mark(std::wstring_view Key) {
    const QModelIndex Index = Nodes_->IndexOf(Key);
    View_->selectionModel()->setCurrentIndex(Index, QItemSelectionModel::ClearAndSelect);
    View_->scrollTo(Index);
}

bool DesignWindow::IsOpen(const TreeNode& Node) const { return View_->isExpanded(Nodes_->IndexOf(Node.Key)); }

void DesignWindow::Open(const TreeNode& Node) { View_->expand(Nodes_->IndexOf(Node.Key)); }

void DesignWindow::Rebuild(const std::function<void()>& Build) {
    const NodesModel::Reloading While(*Nodes_);
    Build();
}

std::size_t DesignWindow::AskLeaving(const std::wstring& Text) {
    QMessageBox Question(QMessageBox::Question, QStringLiteral("kvdesign"), FromWide(Text),
                         QMessageBox::NoButton, this);
    Question.setTextFormat(Qt::PlainText);
    QPushButton* const Applying = Question.addButton(Said(Phrase::kApplyIt), QMessageBox::AcceptRole);
    QPushButton* const Dropping = Question.addButton(Said(Phrase::kDropIt), QMessageBox::DestructiveRole);
    Question.addButton(Said(Phrase::kCancel), QMessageBox::RejectRole);
    Question.setDefaultButton(Applying);
    Question.exec();
    return Question.clickedButton() == Applying ? 0 : Question.clickedButton() == Dropping ? 1 : 2;
}

// The tree.

bool DesignWindow::FindNext() { return Desk_.FindNext(ToWide(Search_->text())); }

void DesignWindow::TreeMenu(const QPoint& Where) {
    if (const TreeNode* const Node = NodesModel::NodeOf(View_->indexAt(Where)))
        if (Node->Key != Current() && !Select(std::wstring(Node->Key))) return;
    QMenu Menu(this);
    for (const Command Each : window::kNodeMenu)
        if (Desk_.IsOffered(Each)) Menu.addAction(ActionOf(QString::fromLatin1(window::RowOf(Each).Name)));
    Menu.addSeparator();
    for (const Command Each : window::kObjectMenu)
        Menu.addAction(ActionOf(QString::fromLatin1(window::RowOf(Each).Name)));
    Menu.exec(View_->viewport()->mapToGlobal(Where));
}

// The clipboard: the text's while the text is being written, else that of the objects.

// What is done to the text that is being written, if one is; else it is meant for the object.
template <class Work>
bool DesignWindow::InText(Work&& Do) {
    if (Editor_->hasFocus())
        Do(*Editor_);
    else if (Search_->hasFocus())
        Do(*Search_);
    else
        return false;
    return true;
}

bool DesignWindow::Copy() {
    return InText([](auto& Text) { Text.copy(); }) || Desk_.Copy();
}

bool DesignWindow::Cut() {
    return InText([](auto& Text) { Text.cut(); }) || Desk_.Cut();
}

bool DesignWindow::Paste() {
    return InText([](auto& Text) { Text.paste(); }) || Desk_.Paste();
}

// The object.

std::vector<SectionChange> DesignWindow::ChangesSince(const host::RegistryObject::State& Stored) {
    const Wait Waiting(On_.Platform());
    return Compare(TextsOf(Object_.Clsid(), Stored.Content), TextsOf(Core_));
}

// Another program has deleted the object.
bool DesignWindow::MadeAnew() {
    const QString Question =
        tr("L'oggetto \"%1\" è stato eliminato da un altro programma. Ricrearlo con le proprie modifiche?")
            .arg(FromWide(Object_.Name()));
    if (On_.Platform().MessageBox(ToWide(Question), box::kYesNo + box::kQuestion) != Answer::Yes)
        return false;
    host::KvRegSvr& Registry = On_.Registry();
    Registry.Create(Object_.Clsid(), Object_.Name(), Object_.Read().Desc);
    const auto Fresh = Registry.Open(Object_.Clsid(), Object_.Name());
    Object_.Outrank({Fresh->Read(), Fresh->Revision()});
    return true;
}

// Loads what lies in the store. Where that fails the object stays as it was, and so does what it counts as
// seen of the store: a later save must not go over what was never shown.
bool DesignWindow::LoadAnew(host::RegistryObject::State Stored) {
    host::RegistryObject::State Before{Object_.Read(), Object_.Revision()};
    Object_.TakeOver(std::move(Stored));
    if (!Desk_.Replaced([&] { return Core_.LoadData(); })) {
        Object_.TakeOver(std::move(Before));
        return false;
    }
    Core_.Tree().MarkModified(false);
    return true;
}

// Another program may have saved the object meanwhile.
std::optional<bool> DesignWindow::BeforeSave() {
    std::optional<host::RegistryObject::State> Stored = Object_.Stored();
    if (!Stored) return MadeAnew() ? std::nullopt : std::optional(false);
    if (Stored->Revision == Object_.Revision()) return std::nullopt;
    switch (ChangesDialog::AskOvertaken(ChangesSince(*Stored), this)) {
        case Overtaken::Keep:
            Object_.Outrank(*Stored);
            return std::nullopt;
        case Overtaken::TakeOver:
            if (!LoadAnew(std::move(*Stored))) return false;
            Said(tr("La versione salvata ha preso il posto della propria."), false);
            return true;
        case Overtaken::Cancel:
            break;
    }
    return false;
}

bool DesignWindow::Reload() {
    return Desk_.Reload([&] {
        std::optional<host::RegistryObject::State> Stored = Object_.Stored();
        if (Stored) return LoadAnew(std::move(*Stored));
        Said(tr("L'oggetto non è più nell'archivio."), true);
        return false;
    });
}

bool DesignWindow::ShowChanges() {
    return Desk_.Guarded([&] {
        if (!Desk_.Settled()) return false;
        const std::optional<host::RegistryObject::State> Stored = Object_.Stored();
        if (!Stored) {
            Said(tr("L'oggetto non è più nell'archivio."), true);
            return false;
        }
        ChangesDialog(tr("Modifiche non salvate"), ChangesSince(*Stored), this).exec();
        return true;
    });
}

void DesignWindow::closeEvent(QCloseEvent* Event) {
    if (!Desk_.MayClose()) {
        Event->ignore();
        return;
    }
    QSettings Kept;
    Kept.setValue(kGeometry, saveGeometry());
    Kept.setValue(kState, saveState());
    Kept.setValue(kSplit, Split_->saveState());
    Event->accept();
    Q_EMIT Closed();
}

void ShowObject(Desk& OnDesk, QWidget* Parent, const std::wstring& Clsid, const std::wstring& Name) {
    try {
        const std::shared_ptr<host::RegistryObject> Object = OnDesk.Registry().Open(Clsid, Name);
        host::ObjectWindow Shown(&OnDesk.Registry(), Object, OnDesk.Clipboard());
        DesignWindow* Open = nullptr;
        Shown.OnModified = [&](bool Modified) {
            if (Open) Open->setWindowModified(Modified);
        };
        const bool Failed =
            Shown.Show(QSettings().value(kStrict, true).toBool(), [&](window::WindowCore& Core) {
                DesignWindow Window(OnDesk, Core, *Object, Parent);
                Open = &Window;
                QEventLoop Modal;
                QObject::connect(&Window, &DesignWindow::Closed, &Modal, &QEventLoop::quit);
                Window.show();
                Modal.exec();
                Open = nullptr;
            });
        // What LoadData met has been shown; an unknown class waits in the error store.
        if (Failed) CoreUtil::Instance().ShowLastError();
    } catch (const Failure& Fault) {
        TellBox(Parent, FromWide(Fault.Error().Description));
    } catch (const host::StoreError& Trouble) {
        TellBox(Parent, FromWide(Trouble.Text()));
    } catch (const std::exception& Trouble) {
        TellBox(Parent, QString::fromUtf8(Trouble.what()));
    }
}

}  // namespace kv::desktop
