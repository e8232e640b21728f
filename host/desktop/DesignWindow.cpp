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

using window::Selection;
using window::TreeNode;

const QString kGeometry = QStringLiteral("object/geometry");
const QString kState = QStringLiteral("object/state");
const QString kSplit = QStringLiteral("object/split");
const QString kStrict = QStringLiteral("object/strict");

Selection On(std::wstring_view Key) {
    return {.CurrItem = std::wstring(Key), .CurrFolder = {}, .Index = {}, .Key = {}};
}

// The captions that lead to a node, the root left out.
QString PathOf(const TreeNode& Node) {
    QStringList Captions;
    for (const TreeNode* N = &Node; N->Parent; N = N->Parent) Captions.prepend(FromWide(N->Text));
    return Captions.join(QStringLiteral(" › "));
}

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
    On_.Platform().OnError = [this](const KvError& Error) { ShowFault(Error); };

    const QSettings Kept;
    if (!restoreGeometry(Kept.value(kGeometry).toByteArray()))
        resize(fontMetrics().averageCharWidth() * 130, fontMetrics().height() * 40);
    restoreState(Kept.value(kState).toByteArray());
    if (!Split_->restoreState(Kept.value(kSplit).toByteArray()))
        Split_->setSizes({width() * 2 / 5, width() * 3 / 5});

    std::wstring Name, Desc, Id, Clsid, Users;
    std::int16_t Version = 0;
    if (!Core_.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users)) {
        statusBar()->addWidget(new QLabel(FromWide(Clsid)));
        statusBar()->addWidget(new ElidedLabel(Qt::ElideRight, FromWide(Desc)), 1);
        statusBar()->addPermanentWidget(new QLabel(tr("Versione %1").arg(Version)));
        statusBar()->addPermanentWidget(new QLabel(tr("Id %1").arg(FromWide(Id))));
    }
    AfterLoad({});
    View_->setFocus();
}

DesignWindow::~DesignWindow() {
    On_.Platform().OnError = nullptr;
    disconnect(View_->selectionModel(), nullptr, this, nullptr);
}

void DesignWindow::MakeBody() {
    Nodes_ = new NodesModel(Core_.Tree(), this);
    Nodes_->Movable = [this](const TreeNode& Node) { return OffersOn(Core_.Tree(), Node).Move; };
    connect(Nodes_, &NodesModel::MoveRequested, this, &DesignWindow::MoveTo);

    View_ = new QTreeView;
    View_->setAccessibleName(tr("Sezioni dell'oggetto"));
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
                if (Busy_ || !Node || Node->Key == Current_) return;
                // The view is still at work on the click: what it is told now it would overrule.
                QMetaObject::invokeMethod(
                    this, [this, Key = Node->Key] { Select(Key); }, Qt::QueuedConnection);
            });
    // A click beside the nodes selects nothing: what is worked on stays marked.
    connect(View_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (Busy_ || View_->selectionModel()->hasSelection()) return;
        QMetaObject::invokeMethod(
            this, [this] { MarkCurrent(); }, Qt::QueuedConnection);
    });

    Search_ = new QLineEdit;
    Search_->setAccessibleName(tr("Cerca nell'albero"));
    Search_->setPlaceholderText(tr("Cerca nell'albero"));
    Search_->setClearButtonEnabled(true);
    connect(Search_, &QLineEdit::returnPressed, this, [this] { FindNext(); });

    auto* const Left = new QWidget;
    auto* const LeftColumn = new QVBoxLayout(Left);
    LeftColumn->setContentsMargins(0, 0, 0, 0);
    LeftColumn->addWidget(Search_);
    LeftColumn->addWidget(View_, 1);

    Heading_ = new ElidedLabel(Qt::ElideMiddle);
    Editor_ = new SectionEditor;
    Editor_->setAccessibleName(tr("Testo della sezione"));
    connect(Editor_, &SectionEditor::ChangesChanged, this, [this] { UpdateOffers(); });

    Sign_ = new QLabel;
    Message_ = new QLabel;
    Message_->setTextFormat(Qt::PlainText);
    Message_->setWordWrap(true);
    Message_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Message_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Message_->setAccessibleName(tr("Messaggio"));
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
    QToolBar* const Bar = addToolBar(tr("Strumenti"));
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
        connect(Tool, &QAction::triggered, this, [this, Word] { RunTool(Word); });
        Bar->addAction(Tool);
        Tools_.emplace_back(Tool, Word);
    }
    QMenu* const Menu = menuBar()->addMenu(tr("&Strumenti"));
    for (const auto& [Tool, Word] : Tools_) Menu->addAction(Tool);
}

QAction* DesignWindow::ActionOf(const QString& Name) const { return findChild<QAction*>(Name); }

QString DesignWindow::Message() const { return Message_->text(); }

const TreeNode* DesignWindow::CurrentNode() const { return Core_.Tree().Find(Current_); }

window::Offers DesignWindow::CurrentOffers() const {
    const TreeNode* const Node = CurrentNode();
    return Node ? OffersOn(Core_.Tree(), *Node) : window::Offers{};
}

Selection DesignWindow::At() const { return On(Current_); }

// Messages.

void DesignWindow::Tell(const QString& Text, bool Fault) {
    Message_->setText(Text);
    const int Side = fontMetrics().height();
    const auto Icon = Fault ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
    Sign_->setPixmap(Text.isEmpty() ? QPixmap() : style()->standardIcon(Icon).pixmap(Side, Side));
    // A name hides the text from screen readers, so the text is the name; they tell it as it comes.
    Message_->setAccessibleName(Text.isEmpty() ? tr("Messaggio") : Text);
    QAccessibleEvent Told(Message_, QAccessible::Alert);
    if (!Text.isEmpty()) QAccessible::updateAccessibility(&Told);
    Sign_->setAccessibleName(Text.isEmpty() ? QString() : Fault ? tr("Errore") : tr("Informazione"));
}

void DesignWindow::ShowFault(const KvError& Error) {
    Faulty_ = true;
    FaultLine_ = Error.Line;
    QString Text = FromWide(Error.Description);
    if (Error.Line > 0) Text = tr("Riga %1: %2").arg(Error.Line).arg(Text);
    Tell(Text, true);
}

// Runs what the operator asked for. Nothing escapes; what fails without a word is told at least so.
bool DesignWindow::Guarded(const std::function<bool()>& Body) {
    Tell({}, false);
    Faulty_ = false;
    FaultLine_ = 0;
    bool Done = false;
    try {
        Done = Body();
    } catch (const Failure& Fault) {
        ShowFault(Fault.Error());
    } catch (const host::StoreError& Trouble) {
        Faulty_ = true;
        Tell(FromWide(Trouble.Text()), true);
    } catch (const std::exception& Trouble) {
        Faulty_ = true;
        Tell(QString::fromUtf8(Trouble.what()), true);
    }
    UpdateOffers();
    ShowTitle();
    return Done && !Faulty_;
}

void DesignWindow::ShowTitle() {
    const TreeNode* const Root = Core_.Tree().Root();
    setWindowTitle(
        tr("%1 - %2[*]")
            .arg(Root ? FromWide(Root->Text) : FromWide(Object_.Name()), FromWide(Object_.Clsid())));
    setWindowModified(Core_.Tree().Modified() || Editor_->HasChanges());
}

void DesignWindow::UpdateOffers() {
    const window::Offers Now = CurrentOffers();
    ActionOf(QStringLiteral("new"))->setEnabled(Now.NewIn != nullptr);
    ActionOf(QStringLiteral("delete"))->setEnabled(Now.Delete);
    ActionOf(QStringLiteral("deleteAll"))->setEnabled(Now.DeleteAll);
    ActionOf(QStringLiteral("moveUp"))->setEnabled(Now.Move);
    ActionOf(QStringLiteral("moveDown"))->setEnabled(Now.Move);
    const bool Changed = Editor_->HasChanges();
    ActionOf(QStringLiteral("apply"))->setEnabled(Changed);
    ActionOf(QStringLiteral("revert"))->setEnabled(Changed);
    ActionOf(QStringLiteral("complete"))->setEnabled(!Editor_->isReadOnly());
    setWindowModified(Core_.Tree().Modified() || Changed);
    const std::vector<std::wstring>& Served = Core_.Tree().Served();
    for (const auto& [Tool, Word] : Tools_)
        Tool->setEnabled(std::find(Served.begin(), Served.end(), Word) != Served.end());
}

// The text.

bool DesignWindow::Display(std::wstring_view Key) {
    Current_ = Key;
    const TreeNode* const Node = CurrentNode();
    Heading_->SetText(Node ? PathOf(*Node) : QString());
    std::wstring Buffer;
    if (!Node || !IsLeafKey(Current_) || Core_.DispData(At(), Buffer)) {
        Editor_->ShowNothing();
        return Node && !IsLeafKey(Current_);
    }
    const QString Text = FromWide(Buffer);
    if (Applied_) {
        Editor_->Accept(Text);
        return true;
    }
    const std::wstring Section(SectionWord(Current_));
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
    return true;
}

// The view and the text follow what the tree says is selected.
void DesignWindow::ShowSelected() {
    const TreeNode* Node = Core_.Tree().Find(Core_.Tree().Selected());
    if (!Node) Node = Core_.Tree().Root();
    const std::wstring Key = Node ? Node->Key : std::wstring();
    {
        const QScopedValueRollback<bool> Quiet(Busy_, true);
        const QModelIndex Index = Nodes_->IndexOf(Key);
        View_->setCurrentIndex(Index);
        View_->scrollTo(Index);
    }
    Display(Key);
}

void DesignWindow::AfterLoad(const Places& Selected) {
    if (const TreeNode* const Root = Core_.Tree().Root()) {
        View_->expand(Nodes_->index(0, 0));
        Core_.Tree().SelectNode(Below(Root, Selected)->Key);
    }
    ShowSelected();
    UpdateOffers();
    ShowTitle();
}

// Runs what builds the whole tree anew.
bool DesignWindow::Replaced(const std::function<bool()>& Operation) {
    const std::vector<Places> Open = OpenBelow(Core_.Tree().Root());
    const Places Selected = PlacesOf(CurrentNode());
    bool Failed = false;
    {
        const Wait Waiting(On_.Platform());
        const QScopedValueRollback<bool> Quiet(Busy_, true);
        const NodesModel::Reloading While(*Nodes_);
        Failed = Operation();
    }
    {
        const QScopedValueRollback<bool> Quiet(Busy_, true);
        OpenAgain(Core_.Tree().Root(), Open);
    }
    AfterLoad(Selected);
    return !Failed;
}

// Loads what lies in the store. Where that fails the object stays as it was, and so does what it counts as
// seen of the store: a later save must not go over what was never shown.
bool DesignWindow::LoadAnew(host::RegistryObject::State Stored) {
    host::RegistryObject::State Before{Object_.Read(), Object_.Revision()};
    Object_.TakeOver(std::move(Stored));
    if (!Replaced([&] { return Core_.LoadData(); })) {
        Object_.TakeOver(std::move(Before));
        return false;
    }
    Core_.Tree().MarkModified(false);
    return true;
}

DesignWindow::Leave DesignWindow::LeaveText() {
    if (!Editor_->HasChanges()) return Leave::Applied;
    QMessageBox Question(QMessageBox::Question, QStringLiteral("kvdesign"),
                         tr("Il testo della sezione \"%1\" non è stato applicato.").arg(Heading_->text()),
                         QMessageBox::NoButton, this);
    Question.setTextFormat(Qt::PlainText);
    QPushButton* const Applying = Question.addButton(tr("&Applica"), QMessageBox::AcceptRole);
    QPushButton* const Dropping = Question.addButton(tr("&Scarta"), QMessageBox::DestructiveRole);
    Question.addButton(tr("Annulla"), QMessageBox::RejectRole);
    Question.setDefaultButton(Applying);
    Question.exec();
    if (Question.clickedButton() == Applying) return Apply() ? Leave::Applied : Leave::Stay;
    if (Question.clickedButton() != Dropping) return Leave::Stay;
    Display(std::wstring(Current_));
    return Leave::Dropped;
}

// The view marks the node that is worked on.
void DesignWindow::MarkCurrent() {
    const QScopedValueRollback<bool> Quiet(Busy_, true);
    const QModelIndex Index = Nodes_->IndexOf(Current_);
    View_->selectionModel()->setCurrentIndex(Index, QItemSelectionModel::ClearAndSelect);
}

bool DesignWindow::Select(std::wstring_view Key) {
    const std::wstring Wanted(Key);
    const bool Gone = Guarded([&] {
        if (LeaveText() == Leave::Stay || !Core_.Tree().HasNode(Wanted)) return false;
        Core_.Tree().SelectNode(Wanted);
        return true;
    });
    if (!Gone) {
        MarkCurrent();
        return false;
    }
    return Guarded([&] {
        ShowSelected();
        return true;
    });
}

bool DesignWindow::Apply() {
    if (!Editor_->HasChanges()) return true;
    return Guarded([&] {
        std::wstring Buffer = ToWide(Editor_->SectionText());
        std::wstring NewItemKey;
        {
            const QScopedValueRollback<bool> Quiet(Busy_, true);
            if (Core_.SaveData(At(), Buffer, NewItemKey)) {
                View_->setCurrentIndex(Nodes_->IndexOf(Current_));
                Editor_->MarkFault(FaultLine_);
                Editor_->setFocus();
                return false;
            }
        }
        const int Cursor = Editor_->textCursor().position();
        Applied_ = Core_.Tree().Selected() == Current_;
        ShowSelected();
        Applied_ = false;
        QTextCursor Back = Editor_->textCursor();
        Back.setPosition(std::min(Cursor, Editor_->document()->characterCount() - 1));
        Editor_->setTextCursor(Back);
        if (!Faulty_) Tell(tr("Testo applicato."), false);
        return true;
    });
}

bool DesignWindow::Revert() {
    if (!Editor_->HasChanges()) return true;
    return Guarded([&] {
        Editor_->Revert();
        return true;
    });
}

// The tree.

// An operation that changes nodes: the text is settled first, and afterwards the view follows the tree.
bool DesignWindow::Structural(const std::function<bool()>& Operation) {
    return Guarded([&] {
        if (LeaveText() == Leave::Stay) return false;
        bool Failed = false;
        {
            const QScopedValueRollback<bool> Quiet(Busy_, true);
            Failed = Operation();
        }
        const bool Silent = Failed && !Faulty_;
        if (Failed)
            Core_.Tree().SelectNode(Core_.Tree().HasNode(Current_) ? Current_ : Core_.Tree().Selected());
        ShowSelected();
        if (!Silent) return !Failed;
        On_.Platform().Beep();
        Tell(tr("Operazione non eseguita."), true);
        return false;
    });
}

bool DesignWindow::NewElement() {
    const window::Offers Now = CurrentOffers();
    if (!Now.NewIn) return false;
    const std::wstring Folder = Now.NewIn->Key;
    return Structural([&] {
        std::wstring NewItemKey;
        return Core_.EditData(On(Folder), NewItemKey);
    });
}

bool DesignWindow::Ask(const QString& Text, std::int32_t Style) {
    return On_.Platform().MessageBox(ToWide(Text), box::kYesNo + box::kQuestion + Style) == Answer::Yes;
}

bool DesignWindow::DeleteElement() {
    if (!CurrentOffers().Delete || LeaveText() == Leave::Stay || !CurrentOffers().Delete) return false;
    const QString Caption = FromWide(CurrentNode()->Text);
    if (!Ask(tr("Eliminare \"%1\"?").arg(Caption), box::kDefaultSecond)) return false;
    return Structural([&] { return Core_.DeleteData(At(), false); });
}

bool DesignWindow::DeleteAll() {
    if (!CurrentOffers().DeleteAll) return false;
    const TreeNode& Folder = *CurrentNode();
    const QString Question = tr("Eliminare tutti gli elementi di \"%1\"? Sono %2.")
                                 .arg(FromWide(Folder.Text))
                                 .arg(Folder.Children.Count());
    if (!Ask(Question, box::kDefaultSecond)) return false;
    return Structural([&] { return Core_.DeleteData(At(), true); });
}

bool DesignWindow::Move(std::int32_t Direction, int Steps) {
    if (!CurrentOffers().Move) return false;
    return Structural([&] {
        const std::vector<Places> Open = OpenBelow(CurrentNode());
        for (int Step = 0; Step < Steps; ++Step) {
            std::wstring NewKey;
            if (Core_.MoveData(At(), Direction, NewKey)) return true;
            if (Core_.Tree().HasNode(NewKey)) Current_ = NewKey;
        }
        Core_.Tree().SelectNode(Current_);
        OpenAgain(CurrentNode(), Open);
        return false;
    });
}

// A place of the list that holds the node, as it was before the move.
void DesignWindow::MoveTo(const QString& Key, int Place) {
    if (!Select(ToWide(Key))) return;
    const TreeNode* const Node = CurrentNode();
    if (!Node || !Node->Parent) return;
    const int Now = window::SiblingOrder<TreeNode>::PlaceOf(Node);
    if (Place < Now)
        Move(+1, Now - Place);
    else if (Place > Now + 1)
        Move(-1, Place - 1 - Now);
}

// What is open at and below a node, each as the places that lead to it: keys are other ones when nodes are
// built anew.
std::vector<DesignWindow::Places> DesignWindow::OpenBelow(const TreeNode* Top) const {
    std::vector<Places> Open;
    std::vector<std::pair<const TreeNode*, Places>> Waiting{{Top, {}}};
    while (!Waiting.empty()) {
        const auto [Node, Where] = std::move(Waiting.back());
        Waiting.pop_back();
        if (!Node || !View_->isExpanded(Nodes_->IndexOf(Node->Key))) continue;
        Open.push_back(Where);
        for (std::int32_t Place = 1; const TreeNode* const Child = Node->Children.At(Place); ++Place) {
            if (Child->Children.Count() == 0) continue;
            Waiting.emplace_back(Child, Where);
            Waiting.back().second.push_back(Place);
        }
    }
    return Open;
}

void DesignWindow::OpenAgain(const TreeNode* Top, const std::vector<Places>& Open) {
    for (const Places& Where : Open)
        if (const TreeNode* const Node = Below(Top, Where); Node && Node->Children.Count() > 0)
            View_->expand(Nodes_->IndexOf(Node->Key));
}

// The node to which the places lead, or the last one on the way that is there.
const TreeNode* DesignWindow::Below(const TreeNode* Top, const Places& Where) {
    for (const std::int32_t Place : Where) {
        const TreeNode* const Child = Top ? Top->Children.At(Place) : nullptr;
        if (!Child) break;
        Top = Child;
    }
    return Top;
}

DesignWindow::Places DesignWindow::PlacesOf(const TreeNode* Node) {
    Places Where;
    for (; Node && Node->Parent; Node = Node->Parent)
        Where.insert(Where.begin(), window::SiblingOrder<TreeNode>::PlaceOf(Node));
    return Where;
}

bool DesignWindow::FindNext() {
    const QString Wanted = Search_->text();
    if (Wanted.isEmpty()) return false;
    std::wstring First, Next;
    bool Behind = false;
    Core_.Tree().ForEach([&](const TreeNode& Node) {
        const bool Here = Node.Key == Current_;
        if ((!Behind && First.empty()) || (Behind && Next.empty()))
            if (FromWide(Node.Text).contains(Wanted, Qt::CaseInsensitive)) {
                if (Behind)
                    Next = Node.Key;
                else if (First.empty())
                    First = Node.Key;
            }
        Behind = Behind || Here;
    });
    const std::wstring& Found = Next.empty() ? First : Next;
    if (Found.empty()) {
        Tell(tr("\"%1\" non si trova nell'albero.").arg(Wanted), true);
        On_.Platform().Beep();
        return false;
    }
    return Select(Found);
}

void DesignWindow::TreeMenu(const QPoint& Where) {
    if (const TreeNode* const Node = NodesModel::NodeOf(View_->indexAt(Where)))
        if (Node->Key != Current_ && !Select(std::wstring(Node->Key))) return;
    QMenu Menu(this);
    for (const char* const Name : {"new", "delete", "deleteAll", "moveUp", "moveDown"})
        if (QAction* const Offered = ActionOf(QString::fromLatin1(Name)); Offered->isEnabled())
            Menu.addAction(Offered);
    Menu.addSeparator();
    for (const char* const Name : {"copy", "paste", "properties"})
        Menu.addAction(ActionOf(QString::fromLatin1(Name)));
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
    if (InText([](auto& Text) { Text.copy(); })) return true;
    return Guarded([&] {
        std::wstring ClassWord;
        if (LeaveText() == Leave::Stay || Core_.CopyData(At(), false, ClassWord)) return false;
        Tell(ClassWord.empty() ? tr("Gli appunti sono vuoti.")
                               : tr("Negli appunti: un oggetto della classe %1.").arg(FromWide(ClassWord)),
             false);
        return true;
    });
}

// The clipboard knows whole objects: with an element that is cut goes a copy of the object that it stood in.
bool DesignWindow::Cut() {
    if (InText([](auto& Text) { Text.cut(); })) return true;
    if (!CurrentOffers().Delete || LeaveText() == Leave::Stay || !CurrentOffers().Delete) return false;
    const QString Question = tr("Negli appunti va l'intero oggetto. Copiarlo ed eliminare \"%1\"?")
                                 .arg(FromWide(CurrentNode()->Text));
    if (!Ask(Question, box::kDefaultSecond)) return false;
    return Structural([&] {
        const std::shared_ptr<RegData> Before = Core_.Clipboard().DataObj;
        std::wstring ClassWord;
        if (Core_.CopyData(At(), false, ClassWord) || Core_.Clipboard().DataObj == Before) return true;
        return Core_.DeleteData(At(), false);
    });
}

bool DesignWindow::Paste() {
    if (InText([](auto& Text) { Text.paste(); })) return true;
    if (Core_.Tree().Modified() &&
        !Ask(tr("L'oggetto ha modifiche non salvate, che andranno perse. Incollare?"), box::kDefaultSecond))
        return false;
    return Guarded([&] {
        if (LeaveText() == Leave::Stay) return false;
        std::wstring NewItemKey;
        return Replaced([&] { return Core_.PasteData(At(), std::nullopt, NewItemKey); });
    });
}

// The object.

bool DesignWindow::ShowProperties() {
    return Guarded([&] { return !Core_.ShowPropTable(At()); });
}

void DesignWindow::RunTool(const std::wstring& Word) {
    Structural([&] {
        Core_.TlbrButtonClick(Word, At());
        return Faulty_;
    });
}

std::vector<SectionChange> DesignWindow::ChangesSince(const host::RegistryObject::State& Stored) {
    const Wait Waiting(On_.Platform());
    return Compare(TextsOf(Object_.Clsid(), Stored.Content), TextsOf(Core_));
}

// Another program has deleted the object.
bool DesignWindow::MadeAnew() {
    if (!Ask(tr("L'oggetto \"%1\" è stato eliminato da un altro programma. Ricrearlo con le proprie "
                "modifiche?")
                 .arg(FromWide(Object_.Name()))))
        return false;
    host::KvRegSvr& Registry = On_.Registry();
    Registry.Create(Object_.Clsid(), Object_.Name(), Object_.Read().Desc);
    const auto Fresh = Registry.Open(Object_.Clsid(), Object_.Name());
    Object_.Outrank({Fresh->Read(), Fresh->Revision()});
    return true;
}

// Another program may have saved the object. False: the save is called off, or (`Saved`) not needed any more.
bool DesignWindow::SettleOvertaken(bool& Saved) {
    std::optional<host::RegistryObject::State> Stored = Object_.Stored();
    if (!Stored) return MadeAnew();
    if (Stored->Revision == Object_.Revision()) return true;
    switch (ChangesDialog::AskOvertaken(ChangesSince(*Stored), this)) {
        case Overtaken::Keep:
            Object_.Outrank(*Stored);
            return true;
        case Overtaken::TakeOver:
            Saved = LoadAnew(std::move(*Stored));
            if (Saved) Tell(tr("La versione salvata ha preso il posto della propria."), false);
            return false;
        case Overtaken::Cancel:
            break;
    }
    return false;
}

bool DesignWindow::Save() {
    return Guarded([&] {
        if (Editor_->HasChanges() && !Apply()) return false;
        bool Saved = false;
        if (!SettleOvertaken(Saved)) return Saved;
        if (Core_.Save()) return false;
        Tell(tr("Oggetto salvato."), false);
        return true;
    });
}

bool DesignWindow::Reload() {
    if ((Core_.Tree().Modified() || Editor_->HasChanges()) &&
        !Ask(tr("Le modifiche non salvate andranno perse. Ricaricare l'oggetto?"), box::kDefaultSecond))
        return false;
    return Guarded([&] {
        std::optional<host::RegistryObject::State> Stored = Object_.Stored();
        if (!Stored) {
            Tell(tr("L'oggetto non è più nell'archivio."), true);
            return false;
        }
        return LoadAnew(std::move(*Stored));
    });
}

bool DesignWindow::ShowChanges() {
    return Guarded([&] {
        if (LeaveText() == Leave::Stay) return false;
        const std::optional<host::RegistryObject::State> Stored = Object_.Stored();
        if (!Stored) {
            Tell(tr("L'oggetto non è più nell'archivio."), true);
            return false;
        }
        ChangesDialog(tr("Modifiche non salvate"), ChangesSince(*Stored), this).exec();
        return true;
    });
}

void DesignWindow::closeEvent(QCloseEvent* Event) {
    bool Stay = LeaveText() == Leave::Stay;
    if (!Stay && Core_.Tree().Modified()) {
        const QString Question = tr("Salvare le modifiche all'oggetto \"%1\"?").arg(FromWide(Object_.Name()));
        const Answer Given = On_.Platform().MessageBox(ToWide(Question), box::kYesNoCancel + box::kQuestion);
        Stay = Given == Answer::Yes ? !Save() : Given != Answer::No;
    }
    if (Stay) {
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
