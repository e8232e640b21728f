#include "host/desktop/BrowserWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSaveFile>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "host/CommandsSession.h"
#include "host/References.h"
#include "host/Text.h"
#include "host/WholeObject.h"
#include "host/desktop/DesignWindow.h"
#include "host/desktop/Desk.h"
#include "host/desktop/ElidedLabel.h"
#include "host/desktop/ObjectDialog.h"
#include "host/desktop/Pictures.h"
#include "host/desktop/QtText.h"

namespace kv::desktop {
namespace {

constexpr const char* kGeometry = "browser/geometry";
constexpr const char* kColumns = "browser/columns";
constexpr const char* kStore = "browser/store";
constexpr const char* kFolder = "browser/folder";

// How many of those that name an object the question about it lists.
constexpr std::size_t kMostUsers = 12;

QString PathText(const std::filesystem::path& Path) { return QString::fromStdString(Path.string()); }

std::filesystem::path PathOf(const QString& Text) { return QFile::encodeName(Text).toStdString(); }

QString Called(const ObjectKey& Key) { return FromWide(Key.Clsid + L"/" + Key.Name); }
}  // namespace

// How it is made.

BrowserWindow::BrowserWindow(Desk& On, QWidget* Parent) : QMainWindow(Parent), Show(ShowObject), On_(On) {
    setWindowTitle(tr("Oggetti di configurazione"));
    Objects_ = new ObjectsModel(this);
    Filter_ = new ObjectsFilter(this);
    Filter_->setSourceModel(Objects_);
    MakeActions();
    MakeCentre();
    Connect();

    resize(125 * fontMetrics().averageCharWidth(), 38 * fontMetrics().height());
    const QSettings Kept;
    restoreGeometry(Kept.value(QLatin1String(kGeometry)).toByteArray());
    QHeaderView* const Header = View_->header();
    Header->setSortIndicatorShown(true);  // which takes room, too
    if (!Header->restoreState(Kept.value(QLatin1String(kColumns)).toByteArray())) {
        const int Letter = fontMetrics().averageCharWidth();
        Header->resizeSection(ObjectsModel::kName, 32 * Letter);
        for (const int Number : {ObjectsModel::kVersion, ObjectsModel::kRevision})
            Header->resizeSection(Number, std::max(12 * Letter, Header->sectionSizeHint(Number)));
        Header->setSortIndicator(ObjectsModel::kName, Qt::AscendingOrder);
    }
    Header->setSectionResizeMode(ObjectsModel::kDesc, QHeaderView::Stretch);
    View_->setSortingEnabled(true);
    ShowState();
    Search_->setFocus();
}

QAction* BrowserWindow::Act(const char* Name, const QString& Text, const QString& Tip,
                            void (BrowserWindow::*Does)()) {
    QAction* const Made = new QAction(Text, this);
    Made->setObjectName(QLatin1String(Name));
    Made->setStatusTip(Tip);
    if (Does) connect(Made, &QAction::triggered, this, Does);
    return Made;
}

void BrowserWindow::MakeActions() {
    OpenStore_ = Act("openStore", tr("&Apri archivio..."), tr("Lavora su un altro archivio"),
                     &BrowserWindow::ChooseStore);
    NewStore_ = Act("newStore", tr("&Nuovo archivio..."), tr("Crea un archivio vuoto"),
                    &BrowserWindow::ChooseNewStore);
    Reload_ = Act("reload", tr("A&ggiorna"), tr("Rilegge l'elenco degli oggetti"), &BrowserWindow::Reload);
    Quit_ = Act("quit", tr("&Esci"), tr("Chiude il programma"), nullptr);
    New_ = Act("new", tr("&Nuovo..."), tr("Crea un oggetto vuoto"), &BrowserWindow::MakeNew);
    Open_ = Act("open", tr("&Apri"), tr("Apre l'oggetto selezionato"), &BrowserWindow::OpenSelected);
    Copy_ = Act("copy", tr("&Copia con nome..."),
                tr("Crea un oggetto con il contenuto di quello selezionato"), &BrowserWindow::CopySelected);
    Delete_ =
        Act("delete", tr("&Elimina..."), tr("Elimina l'oggetto selezionato"), &BrowserWindow::DeleteSelected);
    Export_ = Act("export", tr("E&sporta..."), tr("Scrive l'oggetto selezionato in un file di testo"),
                  &BrowserWindow::ExportSelected);
    Import_ = Act("import", tr("&Importa..."), tr("Legge l'oggetto selezionato da un file di testo"),
                  &BrowserWindow::ImportIntoSelected);
    Find_ = Act("find", tr("&Cerca"), tr("Cerca per classe, nome o descrizione"), nullptr);
    EndSearch_ =
        Act("endSearch", tr("&Annulla la ricerca"), tr("Mostra di nuovo tutti gli oggetti"), nullptr);
    UnfoldAll_ = Act("unfoldAll", tr("&Espandi tutto"), tr("Mostra gli oggetti di tutte le classi"), nullptr);
    FoldAll_ = Act("foldAll", tr("Co&mprimi tutto"), tr("Mostra solo le classi"), nullptr);
    About_ = Act("about", tr("&Informazioni"), tr("Versione del programma"), &BrowserWindow::TellAbout);

    OpenStore_->setShortcut(QKeySequence::Open);
    NewStore_->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_N);
    Reload_->setShortcut(Qt::Key_F5);
    Quit_->setShortcut(Qt::CTRL | Qt::Key_Q);
    New_->setShortcuts({Qt::CTRL | Qt::Key_N, Qt::Key_Insert});
    Copy_->setShortcut(Qt::CTRL | Qt::Key_D);
    Export_->setShortcut(Qt::CTRL | Qt::Key_E);
    Import_->setShortcut(Qt::CTRL | Qt::Key_I);
    Find_->setShortcut(QKeySequence::Find);
    // In the search line these keys have another use.
    Open_->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    Open_->setShortcutContext(Qt::WidgetShortcut);
    Delete_->setShortcut(QKeySequence::Delete);
    Delete_->setShortcutContext(Qt::WidgetShortcut);

    const auto Icon = [this](QStyle::StandardPixmap Pixmap) { return style()->standardIcon(Pixmap); };
    OpenStore_->setIcon(Icon(QStyle::SP_DirOpenIcon));
    Reload_->setIcon(Icon(QStyle::SP_BrowserReload));
    New_->setIcon(PictureOf(QStringLiteral("new")));
    Open_->setIcon(PictureOf(QStringLiteral("folderopen")));
    Delete_->setIcon(PictureOf(QStringLiteral("delete")));

    QMenu* const Store = menuBar()->addMenu(tr("&Archivio"));
    Store->addActions({OpenStore_, NewStore_});
    Store->addSeparator();
    Store->addAction(Reload_);
    Store->addSeparator();
    Store->addAction(Quit_);
    QMenu* const Object = menuBar()->addMenu(tr("&Oggetto"));
    Object->addActions({New_, Open_, Copy_, Delete_});
    Object->addSeparator();
    Object->addActions({Export_, Import_});
    QMenu* const Look = menuBar()->addMenu(tr("&Visualizza"));
    Look->addActions({Find_, EndSearch_});
    Look->addSeparator();
    Look->addActions({UnfoldAll_, FoldAll_});
    menuBar()->addMenu(tr("&?"))->addAction(About_);

    QToolBar* const Bar = addToolBar(tr("Strumenti"));
    Bar->setObjectName(QStringLiteral("tools"));
    Bar->setMovable(false);
    Bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    Bar->setContextMenuPolicy(Qt::PreventContextMenu);
    Bar->addActions({New_, Open_, Delete_});
    Bar->addSeparator();
    Bar->addActions({OpenStore_, Reload_});
    setContextMenuPolicy(Qt::NoContextMenu);
}

void BrowserWindow::MakeCentre() {
    Search_ = new QLineEdit;
    Search_->setObjectName(QStringLiteral("search"));
    Search_->setAccessibleName(tr("Cerca per classe, nome o descrizione"));
    Search_->setPlaceholderText(tr("Cerca per classe, nome o descrizione"));
    Search_->setClearButtonEnabled(true);
    Search_->installEventFilter(this);

    View_ = new QTreeView;
    View_->setObjectName(QStringLiteral("objects"));
    View_->setAccessibleName(tr("Oggetti per classe"));
    View_->setModel(Filter_);
    View_->setUniformRowHeights(true);
    View_->setAlternatingRowColors(true);
    View_->setAllColumnsShowFocus(true);
    View_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    View_->header()->setStretchLastSection(false);
    View_->addActions({Open_, New_, Copy_, Delete_, Export_, Import_});
    View_->setContextMenuPolicy(Qt::ActionsContextMenu);

    QWidget* const Empty = new QWidget;
    Nothing_ = new QLabel;
    Nothing_->setObjectName(QStringLiteral("nothing"));
    Nothing_->setAlignment(Qt::AlignCenter);
    Nothing_->setWordWrap(true);
    Nothing_->setTextFormat(Qt::PlainText);
    NothingButton_ = new QPushButton;
    NothingButton_->setObjectName(QStringLiteral("nothingButton"));
    QVBoxLayout* const Middle = new QVBoxLayout(Empty);
    Middle->addStretch();
    Middle->addWidget(Nothing_);
    Middle->addWidget(NothingButton_, 0, Qt::AlignHCenter);
    Middle->addStretch();

    Centre_ = new QStackedWidget;
    Centre_->addWidget(View_);
    Centre_->addWidget(Empty);
    QWidget* const Whole = new QWidget;
    QVBoxLayout* const Column = new QVBoxLayout(Whole);
    Column->addWidget(Search_);
    Column->addWidget(Centre_);
    setCentralWidget(Whole);

    Where_ = new ElidedLabel(Qt::ElideMiddle);
    Where_->setObjectName(QStringLiteral("where"));
    Counts_ = new QLabel;
    Counts_->setObjectName(QStringLiteral("counts"));
    statusBar()->addWidget(Where_, 1);
    statusBar()->addPermanentWidget(Counts_);
}

void BrowserWindow::Connect() {
    connect(Quit_, &QAction::triggered, this, &BrowserWindow::close);
    connect(Find_, &QAction::triggered, this, [this] {
        Search_->setFocus(Qt::ShortcutFocusReason);
        Search_->selectAll();
    });
    connect(EndSearch_, &QAction::triggered, this, [this] {
        Search_->clear();
        Search_->setFocus();
    });
    connect(UnfoldAll_, &QAction::triggered, View_, &QTreeView::expandAll);
    connect(FoldAll_, &QAction::triggered, View_, &QTreeView::collapseAll);
    connect(NothingButton_, &QPushButton::clicked, this, [this] {
        if (NothingAction_) NothingAction_->trigger();
    });
    connect(Search_, &QLineEdit::textChanged, this, &BrowserWindow::ApplySearch);
    connect(Search_, &QLineEdit::returnPressed, this, &BrowserWindow::OpenSelected);
    connect(View_, &QTreeView::doubleClicked, this, &BrowserWindow::OpenSelected);
    connect(View_->selectionModel(), &QItemSelectionModel::currentChanged, this, &BrowserWindow::ShowState);
    connect(View_, &QTreeView::collapsed, this, [this](const QModelIndex& At) {
        if (!Unfolding_ && !Filter_->Searching()) Folded_.append(At.data().toString());
    });
    connect(View_, &QTreeView::expanded, this, [this](const QModelIndex& At) {
        if (!Unfolding_ && !Filter_->Searching()) Folded_.removeAll(At.data().toString());
    });
}

void BrowserWindow::closeEvent(QCloseEvent* Event) {
    QSettings Kept;
    Kept.setValue(QLatin1String(kGeometry), saveGeometry());
    Kept.setValue(QLatin1String(kColumns), View_->header()->saveState());
    QMainWindow::closeEvent(Event);
}

// From the search line the arrows go into the list, and Escape ends the search.
bool BrowserWindow::eventFilter(QObject* Watched, QEvent* Event) {
    if (Watched == Search_ && Event->type() == QEvent::KeyPress) {
        const auto* const Key = static_cast<QKeyEvent*>(Event);
        if (Key->key() == Qt::Key_Down && Centre_->currentWidget() == View_) {
            View_->setFocus(Qt::OtherFocusReason);
            return true;
        }
        if (Key->key() == Qt::Key_Escape && !Search_->text().isEmpty()) {
            Search_->clear();
            return true;
        }
    }
    return QMainWindow::eventFilter(Watched, Event);
}

// What is told to the operator.

// Runs what may fail; tells the sentence then and answers False.
template <class Body>
bool BrowserWindow::Told(Body&& Run) {
    try {
        Run();
        return true;
    } catch (const Failure& Raised) {
        Tell(host::ErrorText(Raised.Error()), box::kExclamation);
    } catch (const host::StoreError& Trouble) {
        Tell(Trouble.Text(), box::kCritical);
    } catch (const std::filesystem::filesystem_error& Trouble) {
        Tell(host::FromUtf8Lossy(Trouble.path1().string() + ": " + Trouble.code().message()), box::kCritical);
    } catch (const std::exception& Trouble) {
        Tell(host::FromUtf8Lossy(Trouble.what()), box::kCritical);
    }
    return false;
}

void BrowserWindow::Tell(const std::wstring& Sentence, std::int32_t Icon) {
    static_cast<void>(On_.Platform().MessageBox(Sentence, box::kOk + Icon));
}

bool BrowserWindow::Ask(const QString& Question) {
    return On_.Platform().MessageBox(ToWide(Question), box::kYesNo + box::kQuestion + box::kDefaultSecond) ==
           Answer::Yes;
}

void BrowserWindow::TellAbout() {
    Tell(ToWide(tr("KvDesign %1\nProgettazione degli oggetti di configurazione di un archivio bibliografico.")
                    .arg(QStringLiteral(KVDESIGN_VERSION))),
         box::kInformation);
}

// The list.

void BrowserWindow::Reload() {
    if (!On_.HasStore()) return;
    const ObjectKey Before = Selected();
    std::vector<host::RegistryEntry> All;
    if (!Told([&] { All = On_.Registry().List(); })) return;
    Objects_->SetObjects(std::move(All));
    Unfold();
    Select(Before);
    ShowState();
}

void BrowserWindow::ApplySearch() {
    const ObjectKey Before = Selected();
    Filter_->Search(Search_->text());
    Unfold();
    Select(Before);
    // So that Return opens what has been found.
    if (Filter_->Searching() && Selected().Name.empty() && Filter_->rowCount() != 0)
        View_->setCurrentIndex(Filter_->index(0, 0, Filter_->index(0, 0)));
    ShowState();
}

// A search shows all that it found; else a class is as the operator left it.
void BrowserWindow::Unfold() {
    Unfolding_ = true;
    View_->expandAll();
    if (!Filter_->Searching())
        for (int Row = 0; Row < Filter_->rowCount(); ++Row) {
            const QModelIndex Class = Filter_->index(Row, 0);
            if (Folded_.contains(Class.data().toString())) View_->collapse(Class);
        }
    Unfolding_ = false;
}

void BrowserWindow::ShowState() {
    const bool Store = On_.HasStore();
    const bool Object = Store && !Selected().Name.empty();
    for (QAction* const Each : {Open_, Copy_, Delete_, Export_, Import_}) Each->setEnabled(Object);
    for (QAction* const Each : {New_, Reload_}) Each->setEnabled(Store);
    EndSearch_->setEnabled(Filter_->Searching());

    NothingAction_ = nullptr;
    if (!Store) {
        Nothing_->setText(tr("Nessun archivio aperto."));
        NothingAction_ = OpenStore_;
    } else if (Objects_->Objects() == 0) {
        Nothing_->setText(tr("Nessun oggetto: crearne uno con Oggetto, Nuovo, o aprire un altro archivio."));
        NothingAction_ = New_;
    } else if (Filter_->rowCount() == 0) {
        Nothing_->setText(tr("Nessun oggetto: nessuno corrisponde a «%1».").arg(Search_->text()));
        NothingAction_ = EndSearch_;
    }
    if (NothingAction_) NothingButton_->setText(NothingAction_->text());
    Centre_->setCurrentIndex(NothingAction_ ? 1 : 0);
    Search_->setEnabled(Store && Objects_->Objects() != 0);

    Where_->SetText(Store ? PathText(On_.Store()) : QString());
    QStringList Counts;
    if (Store) {
        Counts.append(tr("Oggetti: %1").arg(Objects_->Objects()));
        Counts.append(tr("Classi: %1").arg(Objects_->ClassesInUse()));
        if (Objects_->LeftOut() != 0) Counts.append(tr("Di classe sconosciuta: %1").arg(Objects_->LeftOut()));
    }
    Counts_->setText(Counts.join(QStringLiteral("   ")));
    setWindowTitle(Store ? tr("Oggetti di %1").arg(PathText(On_.Store().filename()))
                         : tr("Oggetti di configurazione"));
}

ObjectKey BrowserWindow::Selected() const {
    return Objects_->KeyOf(Filter_->mapToSource(View_->currentIndex()).siblingAtColumn(0));
}

void BrowserWindow::Select(const ObjectKey& Key) {
    const QModelIndex At = Filter_->mapFromSource(Objects_->IndexOf(Key));
    if (!At.isValid()) return;
    View_->setCurrentIndex(At);
    View_->scrollTo(At);
}

// Stores.

std::optional<std::filesystem::path> BrowserWindow::LastStore() {
    const QString Kept = QSettings().value(QLatin1String(kStore)).toString();
    if (Kept.isEmpty() || !QFileInfo(Kept).isFile()) return std::nullopt;
    return PathOf(Kept);
}

bool BrowserWindow::OpenStore(const std::filesystem::path& File) {
    if (!Told([&] { On_.OpenStore(File); })) return false;
    QSettings().setValue(QLatin1String(kStore), PathText(On_.Store()));
    Folded_.clear();
    Objects_->SetObjects({});
    Search_->clear();
    Reload();
    ShowState();
    if (Centre_->currentWidget() == View_) View_->setFocus();
    return true;
}

QString BrowserWindow::FolderOfFiles() const {
    return On_.HasStore() ? PathText(On_.Store().parent_path()) : QString();
}

void BrowserWindow::ChooseStore() {
    QFileDialog Dialog(this, tr("Apri archivio"), FolderOfFiles(),
                       tr("Archivi (*.db)") + QStringLiteral(";;") + tr("Tutti i file (*)"));
    Dialog.setFileMode(QFileDialog::ExistingFile);
    const QString File = On_.Platform().RunDialog(Dialog);
    if (!File.isEmpty()) OpenStore(PathOf(File));
}

void BrowserWindow::ChooseNewStore() {
    QFileDialog Dialog(this, tr("Nuovo archivio"), FolderOfFiles(),
                       tr("Archivi (*.db)") + QStringLiteral(";;") + tr("Tutti i file (*)"));
    Dialog.setAcceptMode(QFileDialog::AcceptSave);
    Dialog.setDefaultSuffix(QStringLiteral("db"));
    const QString File = On_.Platform().RunDialog(Dialog);
    if (File.isEmpty()) return;
    if (QFileInfo::exists(File)) {
        Tell(ToWide(tr("Il file %1 esiste già. Per lavorarci, scegliere Apri archivio.").arg(File)),
             box::kExclamation);
        return;
    }
    OpenStore(PathOf(File));
}

// Objects.

// Shows and selects an object that was made.
void BrowserWindow::ShowMade(const ObjectKey& Made) {
    Search_->clear();
    Folded_.removeAll(FromWide(Made.Clsid));
    Reload();
    Select(Made);
    if (Centre_->currentWidget() == View_) View_->setFocus();
}

void BrowserWindow::MakeNew() {
    const auto Make = [this](const NewObject& Wanted) {
        return Told([&] { On_.Registry().Create(Wanted.Clsid, Wanted.Name, Wanted.Desc); });
    };
    ObjectDialog Form(tr("Nuovo oggetto"), {Selected().Clsid, {}, {}}, false, Make, this);
    if (Form.exec() == QDialog::Accepted) ShowMade({Form.Filled().Clsid, Form.Filled().Name});
}

void BrowserWindow::OpenSelected() {
    const ObjectKey Chosen = Selected();
    if (Chosen.Name.empty() || !On_.HasStore()) return;
    Show(On_, this, Chosen.Clsid, Chosen.Name);
    Reload();
}

void BrowserWindow::CopySelected() {
    const ObjectKey Chosen = Selected();
    const host::RegistryEntry* const Entry =
        Objects_->EntryAt(Filter_->mapToSource(View_->currentIndex()).siblingAtColumn(0));
    if (!Entry) return;
    const auto Make = [&](const NewObject& Wanted) {
        return Told(
            [&] { host::CopyObject(On_.Registry(), Chosen.Clsid, Chosen.Name, Wanted.Name, Wanted.Desc); });
    };
    ObjectDialog Form(tr("Copia di %1").arg(Called(Chosen)), {Chosen.Clsid, Chosen.Name, Entry->Desc}, true,
                      Make, this);
    if (Form.exec() == QDialog::Accepted) ShowMade({Chosen.Clsid, Form.Filled().Name});
}

void BrowserWindow::DeleteSelected() {
    const ObjectKey Chosen = Selected();
    if (Chosen.Name.empty()) return;
    QStringList Users;
    const bool Known = Told([&] {
        const Wait Waiting(On_.Platform());
        std::vector<host::ObjectName> Unread;
        for (const host::Use& Use :
             host::References(On_.Registry()).UsersOf(Chosen.Clsid, Chosen.Name, &Unread)) {
            const ObjectKey By{Use.Clsid, Use.Name};
            if (By != Chosen && !Users.contains(Called(By))) Users.append(Called(By));
        }
        for (const auto& Each : Unread) {
            const ObjectKey By{Each.Clsid, Each.Name};
            if (By != Chosen) Users.append(tr("%1 (illeggibile)").arg(Called(By)));
        }
    });
    if (!Known) return;
    QString Question = tr("Eliminare %1?").arg(Called(Chosen));
    if (!Users.isEmpty()) {
        const qsizetype More = Users.size() - static_cast<qsizetype>(kMostUsers);
        if (More > 0) Users = Users.mid(0, kMostUsers) << tr("e altri %1").arg(More);
        Question = tr("%1 è usato da:").arg(Called(Chosen)) + QStringLiteral("\n\n") +
                   Users.join(QLatin1Char('\n')) + QStringLiteral("\n\n") + tr("Eliminarlo ugualmente?");
    }
    if (!Ask(Question)) return;
    // What stands beside it is selected afterwards.
    const QModelIndex At = View_->currentIndex();
    QModelIndex Beside = At.siblingAtRow(At.row() + 1);
    if (!Beside.isValid()) Beside = At.row() > 0 ? At.siblingAtRow(At.row() - 1) : At.parent();
    const ObjectKey Next = Objects_->KeyOf(Filter_->mapToSource(Beside).siblingAtColumn(0));
    const bool Gone = Told([&] { On_.Registry().Delete(Chosen.Clsid, Chosen.Name); });
    Reload();
    if (Gone) Select(Next);
}

void BrowserWindow::ExportSelected() {
    const ObjectKey Chosen = Selected();
    if (Chosen.Name.empty()) return;
    std::wstring Buffer;
    bool Failed = false;
    const bool Read = Told([&] {
        Failed =
            host::ExportText(On_.Registry(), On_.Registry().Open(Chosen.Clsid, Chosen.Name), true, Buffer);
    });
    if (!Read || Failed) return;

    QSettings Kept;
    QFileDialog Dialog(this, tr("Esporta %1").arg(Called(Chosen)),
                       Kept.value(QLatin1String(kFolder), FolderOfFiles()).toString(),
                       tr("File di testo (*.txt)") + QStringLiteral(";;") + tr("Tutti i file (*)"));
    Dialog.setAcceptMode(QFileDialog::AcceptSave);
    Dialog.setDefaultSuffix(QStringLiteral("txt"));
    QString Name = FromWide(Chosen.Name).toLower();
    Name.replace(QLatin1Char('/'), QLatin1Char('_'));
    Dialog.selectFile(Name + QStringLiteral(".txt"));
    const QString Path = On_.Platform().RunDialog(Dialog, true);
    if (Path.isEmpty()) return;
    Kept.setValue(QLatin1String(kFolder), Dialog.directory().absolutePath());
    const std::string Bytes = host::ToUtf8Lossy(Buffer);
    QSaveFile File(Path);
    if (File.open(QIODevice::WriteOnly) &&
        File.write(Bytes.data(), static_cast<qint64>(Bytes.size())) == static_cast<qint64>(Bytes.size()) &&
        File.commit())
        statusBar()->showMessage(tr("%1 esportato in %2").arg(Called(Chosen), Path), 8000);
    else
        Tell(ToWide(tr("Impossibile scrivere il file %1: %2").arg(Path, File.errorString())), box::kCritical);
}

void BrowserWindow::ImportIntoSelected() {
    const ObjectKey Chosen = Selected();
    if (Chosen.Name.empty()) return;
    QSettings Kept;
    QFileDialog Dialog(this, tr("Importa in %1").arg(Called(Chosen)),
                       Kept.value(QLatin1String(kFolder), FolderOfFiles()).toString(),
                       tr("File di testo (*.txt)") + QStringLiteral(";;") + tr("Tutti i file (*)"));
    Dialog.setFileMode(QFileDialog::ExistingFile);
    const QString Path = On_.Platform().RunDialog(Dialog);
    if (Path.isEmpty()) return;
    Kept.setValue(QLatin1String(kFolder), Dialog.directory().absolutePath());

    QFile File(Path);
    const bool Opened = File.open(QIODevice::ReadOnly);
    const QByteArray Bytes = Opened ? File.readAll() : QByteArray();
    if (!Opened || File.error() != QFileDevice::NoError) {
        Tell(ToWide(tr("Impossibile leggere il file %1: %2").arg(Path, File.errorString())), box::kCritical);
        return;
    }
    const std::optional<std::wstring> Text = host::SectionFrom(Bytes.toStdString());
    if (!Text) {
        Tell(ToWide(tr("Il file %1 non è testo UTF-8.").arg(Path)), box::kExclamation);
        return;
    }
    if (!Ask(tr("Sostituire il contenuto di %1 con il file %2?").arg(Called(Chosen), Path))) return;
    bool Taken = false;
    bool Failed = false;
    const bool Run = Told([&] {
        Failed = host::ImportText(On_.Registry(), On_.Registry().Open(Chosen.Clsid, Chosen.Name), true, *Text,
                                  Taken);
    });
    if (Run && !Failed && !Taken)
        Tell(ToWide(tr("Nulla è cambiato: gli oggetti della classe %1 non si leggono da un file.")
                        .arg(FromWide(Chosen.Clsid))),
             box::kInformation);
    Reload();
}

}  // namespace kv::desktop
