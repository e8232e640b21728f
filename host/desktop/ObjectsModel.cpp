#include "host/desktop/ObjectsModel.h"

#include <QFont>
#include <algorithm>
#include <utility>

#include "frame/DesignTree.h"
#include "host/CommandsSession.h"
#include "host/desktop/ClassNames.h"
#include "host/desktop/Pictures.h"
#include "host/desktop/QtText.h"
#include "server/vdSvr.h"

namespace kv::desktop {
namespace {

// The internal id of an index: 0 is a class, else the object's class counted from 1.
constexpr quintptr kClassId = 0;

// Closed, and open while its objects are shown.
QIcon FolderPicture() {
    QIcon Both = TreePicture(image::kFolder);
    const QIcon Open = TreePicture(image::kFolderOpen);
    for (const QSize& Size : Open.availableSizes())
        Both.addPixmap(Open.pixmap(Size), QIcon::Normal, QIcon::On);
    return Both;
}

}  // namespace

ObjectsModel::ObjectsModel(QObject* Parent)
    : QAbstractItemModel(Parent), Folder_(FolderPicture()), Leaf_(TreePicture(image::kLeaf)) {
    const auto Known = ClassWords();
    for (const std::wstring_view Word : Known) Classes_.push_back({std::wstring(Word), ClassName(Word), {}});
    std::sort(Classes_.begin(), Classes_.end(),
              [](const Class& A, const Class& B) { return A.Word < B.Word; });
}

void ObjectsModel::SetObjects(std::vector<host::RegistryEntry> All) {
    beginResetModel();
    for (Class& Each : Classes_) Each.Entries.clear();
    Objects_ = 0;
    LeftOut_ = 0;
    for (host::RegistryEntry& Entry : All) {
        const auto Its = std::find_if(Classes_.begin(), Classes_.end(),
                                      [&](const Class& Each) { return Each.Word == Entry.Clsid; });
        ++(Its == Classes_.end() ? LeftOut_ : Objects_);
        if (Its != Classes_.end()) Its->Entries.push_back(std::move(Entry));
    }
    endResetModel();
}

int ObjectsModel::ClassesInUse() const noexcept {
    return static_cast<int>(std::count_if(Classes_.begin(), Classes_.end(),
                                          [](const Class& Each) { return !Each.Entries.empty(); }));
}

ObjectKey ObjectsModel::KeyOf(const QModelIndex& At) const {
    if (!At.isValid()) return {};
    if (const host::RegistryEntry* const Entry = EntryAt(At)) return {Entry->Clsid, Entry->Name};
    return {Classes_[static_cast<std::size_t>(At.row())].Word, {}};
}

QModelIndex ObjectsModel::IndexOf(const ObjectKey& Key) const {
    for (std::size_t C = 0; C < Classes_.size(); ++C) {
        if (Classes_[C].Word != Key.Clsid) continue;
        const QModelIndex Parent = index(static_cast<int>(C), 0);
        if (Key.Name.empty()) return Parent;
        const auto& Entries = Classes_[C].Entries;
        const auto Found =
            std::find_if(Entries.begin(), Entries.end(),
                         [&](const host::RegistryEntry& Entry) { return Entry.Name == Key.Name; });
        if (Found != Entries.end()) return index(static_cast<int>(Found - Entries.begin()), 0, Parent);
    }
    return {};
}

const host::RegistryEntry* ObjectsModel::EntryAt(const QModelIndex& At) const {
    if (!At.isValid() || At.internalId() == kClassId) return nullptr;
    return &Classes_[At.internalId() - 1].Entries[static_cast<std::size_t>(At.row())];
}

QModelIndex ObjectsModel::index(int Row, int Column, const QModelIndex& Parent) const {
    if (!hasIndex(Row, Column, Parent)) return {};
    return createIndex(Row, Column, Parent.isValid() ? static_cast<quintptr>(Parent.row()) + 1 : kClassId);
}

QModelIndex ObjectsModel::parent(const QModelIndex& Child) const {
    if (!Child.isValid() || Child.internalId() == kClassId) return {};
    return createIndex(static_cast<int>(Child.internalId() - 1), 0, kClassId);
}

int ObjectsModel::rowCount(const QModelIndex& Parent) const {
    if (!Parent.isValid()) return static_cast<int>(Classes_.size());
    if (Parent.internalId() != kClassId || Parent.column() != 0) return 0;
    return static_cast<int>(Classes_[static_cast<std::size_t>(Parent.row())].Entries.size());
}

int ObjectsModel::columnCount(const QModelIndex&) const { return kColumns; }

QVariant ObjectsModel::data(const QModelIndex& At, int Role) const {
    if (!At.isValid()) return {};
    if (const host::RegistryEntry* const Entry = EntryAt(At))
        return EntryData(Classes_[At.internalId() - 1], *Entry, At.column(), Role);
    return ClassData(Classes_[static_cast<std::size_t>(At.row())], At.column(), Role);
}

QVariant ObjectsModel::ClassData(const Class& Of, int Column, int Role) const {
    const auto Count = static_cast<qsizetype>(Of.Entries.size());
    switch (Role) {
        case Qt::DisplayRole:
            if (Column == kName) return FromWide(Of.Word);
            if (Column == kDesc)
                return QStringLiteral("%1 (%2)")
                    .arg(Of.Name.isEmpty() ? FromWide(Of.Word) : Of.Name)
                    .arg(Count);
            return {};
        case Qt::DecorationRole:
            if (Column == kName) return Folder_;
            return {};
        case Qt::AccessibleTextRole:
            if (Column == kName) return tr("Classe %1, %2").arg(FromWide(Of.Word), Of.Name);
            return {};
        case Qt::FontRole:
            if (Count != 0) {
                QFont Bold;
                Bold.setBold(true);
                return Bold;
            }
            return {};
        case kSortRole:
            return FromWide(Of.Word);
        default:
            return {};
    }
}

QVariant ObjectsModel::EntryData(const Class& Of, const host::RegistryEntry& Entry, int Column,
                                 int Role) const {
    switch (Role) {
        case Qt::DisplayRole:
        case kSortRole:
            switch (Column) {
                case kName:
                    return FromWide(host::OneLine(Entry.Name));
                case kDesc:
                    return FromWide(host::OneLine(Entry.Desc));
                case kVersion:
                    return Entry.Version;
                default:
                    return static_cast<qlonglong>(Entry.Revision);
            }
        case Qt::DecorationRole:
            if (Column == kName) return Leaf_;
            return {};
        case Qt::ToolTipRole:
            if (Column == kName || Column == kDesc)
                return Entry.Desc.empty() ? FromWide(Entry.Name) : FromWide(Entry.Name + L"\n" + Entry.Desc);
            return {};
        case Qt::TextAlignmentRole:
            if (Column >= kVersion) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
            return {};
        case kSearchRole:
            return QStringList{FromWide(Of.Word), Of.Name, FromWide(Entry.Name), FromWide(Entry.Desc)}.join(
                QLatin1Char('\n'));
        default:
            return {};
    }
}

QVariant ObjectsModel::headerData(int Section, Qt::Orientation Along, int Role) const {
    if (Along != Qt::Horizontal) return {};
    if (Role == Qt::TextAlignmentRole && Section >= kVersion)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (Role != Qt::DisplayRole) return {};
    switch (Section) {
        case kName:
            return tr("Nome");
        case kDesc:
            return tr("Descrizione");
        case kVersion:
            return tr("Versione");
        default:
            return tr("Revisione");
    }
}

ObjectsFilter::ObjectsFilter(QObject* Parent) : QSortFilterProxyModel(Parent) {
    setRecursiveFilteringEnabled(true);
    setSortRole(ObjectsModel::kSortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setSortLocaleAware(true);
}

void ObjectsFilter::Search(const QString& Words) {
    const QStringList Wanted = Words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (Wanted == Words_) return;
    Words_ = Wanted;
    invalidateFilter();
}

bool ObjectsFilter::filterAcceptsRow(int Row, const QModelIndex& Parent) const {
    if (Words_.isEmpty()) return true;
    if (!Parent.isValid()) return false;  // a class stands for its objects
    const QString Text = sourceModel()->index(Row, 0, Parent).data(ObjectsModel::kSearchRole).toString();
    return std::all_of(Words_.begin(), Words_.end(),
                       [&](const QString& Word) { return Text.contains(Word, Qt::CaseInsensitive); });
}

}  // namespace kv::desktop
