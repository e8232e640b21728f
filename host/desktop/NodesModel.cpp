#include "host/desktop/NodesModel.h"

#include <QMimeData>

#include "host/desktop/Pictures.h"
#include "host/desktop/QtText.h"
#include "window/Offers.h"

namespace kv::desktop {
namespace {

using window::SiblingOrder;
using window::TreeNode;

const QString kNodeType = QStringLiteral("application/x-kvdesign-node");

}  // namespace

NodesModel::NodesModel(window::TreeModel& Tree, QObject* Parent) : QAbstractItemModel(Parent), Tree_(Tree) {
    Tree_.SetWatcher(this);
}

NodesModel::~NodesModel() { Tree_.SetWatcher(nullptr); }

NodesModel::Reloading::Reloading(NodesModel& Model) : Model_(Model) {
    Model_.beginResetModel();
    Model_.Reloading_ = true;
}

NodesModel::Reloading::~Reloading() {
    Model_.Reloading_ = false;
    Model_.endResetModel();
}

const TreeNode* NodesModel::NodeOf(const QModelIndex& At) {
    return static_cast<const TreeNode*>(At.internalPointer());
}

QModelIndex NodesModel::IndexOf(const TreeNode* Node) const {
    if (!Node) return {};
    const int Row = Node->Parent ? SiblingOrder<TreeNode>::PlaceOf(Node) - 1 : 0;
    return createIndex(Row, 0, Node);
}

QModelIndex NodesModel::IndexOf(std::wstring_view Key) const { return IndexOf(Tree_.Find(Key)); }

// The second image is that of a folder shown open and of a node that is selected.
const QIcon& NodesModel::PictureOf(const TreeNode& Node) const {
    const qint64 Both = (static_cast<qint64>(Node.Image) << 32) | static_cast<quint32>(Node.SelectedImage);
    QIcon& Known = Pictures_[Both];
    if (Known.isNull()) {
        const QIcon Plain = TreePicture(Node.Image);
        const QIcon Other = TreePicture(Node.SelectedImage);
        for (const QSize& Size : Plain.availableSizes()) {
            Known.addPixmap(Plain.pixmap(Size), QIcon::Normal, QIcon::Off);
            Known.addPixmap(Other.pixmap(Size), QIcon::Normal, QIcon::On);
            Known.addPixmap(Other.pixmap(Size), QIcon::Selected, QIcon::Off);
            Known.addPixmap(Other.pixmap(Size), QIcon::Selected, QIcon::On);
        }
    }
    return Known;
}

QModelIndex NodesModel::index(int Row, int Column, const QModelIndex& Parent) const {
    if (Column != 0 || Row < 0) return {};
    const TreeNode* const Above = NodeOf(Parent);
    const TreeNode* const Node = Above ? Above->Children.At(Row + 1) : Row == 0 ? Tree_.Root() : nullptr;
    return Node ? createIndex(Row, 0, Node) : QModelIndex();
}

QModelIndex NodesModel::parent(const QModelIndex& Child) const {
    const TreeNode* const Node = NodeOf(Child);
    return Node ? IndexOf(Node->Parent) : QModelIndex();
}

int NodesModel::rowCount(const QModelIndex& Parent) const {
    if (const TreeNode* const Node = NodeOf(Parent)) return Node->Children.Count();
    return Tree_.Root() ? 1 : 0;
}

int NodesModel::columnCount(const QModelIndex&) const { return 1; }

QVariant NodesModel::data(const QModelIndex& At, int Role) const {
    const TreeNode* const Node = NodeOf(At);
    if (!Node) return {};
    switch (Role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return FromWide(Node->Text);
        case Qt::DecorationRole:
            return PictureOf(*Node);
        case Qt::AccessibleDescriptionRole:
        case kKeyRole:
            return FromWide(Node->Key);
        default:
            return {};
    }
}

Qt::ItemFlags NodesModel::flags(const QModelIndex& At) const {
    const TreeNode* const Node = NodeOf(At);
    if (!Node) return Qt::NoItemFlags;
    Qt::ItemFlags All = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    if (Movable && Movable(*Node)) All |= Qt::ItemIsDragEnabled;
    return All;
}

QStringList NodesModel::mimeTypes() const { return {kNodeType}; }

QMimeData* NodesModel::mimeData(const QModelIndexList& Of) const {
    const TreeNode* const Node = Of.isEmpty() ? nullptr : NodeOf(Of.front());
    if (!Node) return nullptr;
    auto* const Data = new QMimeData;
    Data->setData(kNodeType, FromWide(Node->Key).toUtf8());
    return Data;
}

int NodesModel::PlaceOfDrop(const QMimeData* Data, int Row, const QModelIndex& Parent) const {
    if (!Data || !Data->hasFormat(kNodeType)) return 0;
    const TreeNode* const Node = Tree_.Find(ToWide(QString::fromUtf8(Data->data(kNodeType))));
    const TreeNode* const Target = NodeOf(Parent);
    if (!Node || !Target || !Node->Parent) return 0;
    // Onto a node, or between two siblings.
    if (Row < 0) return window::PlaceOfDrop(*Node, *Target);
    return Target == Node->Parent ? Row + 1 : 0;
}

bool NodesModel::canDropMimeData(const QMimeData* Data, Qt::DropAction Action, int Row, int,
                                 const QModelIndex& Parent) const {
    return Action == Qt::MoveAction && PlaceOfDrop(Data, Row, Parent) > 0;
}

bool NodesModel::dropMimeData(const QMimeData* Data, Qt::DropAction Action, int Row, int,
                              const QModelIndex& Parent) {
    const int Place = Action == Qt::MoveAction ? PlaceOfDrop(Data, Row, Parent) : 0;
    if (Place == 0) return false;
    const QString Key = QString::fromUtf8(Data->data(kNodeType));
    QMetaObject::invokeMethod(
        this, [this, Key, Place] { Q_EMIT MoveRequested(Key, Place); }, Qt::QueuedConnection);
    return false;  // the move is the item's to make: the view must not take the node out
}

void NodesModel::Adding(const TreeNode* Parent, std::int32_t Place) {
    if (!Reloading_) beginInsertRows(IndexOf(Parent), Place - 1, Place - 1);
}

void NodesModel::Added() {
    if (!Reloading_) endInsertRows();
}

void NodesModel::Removing(const TreeNode& Node) {
    if (Reloading_) return;
    const QModelIndex At = IndexOf(&Node);
    beginRemoveRows(At.parent(), At.row(), At.row());
}

void NodesModel::Removed() {
    if (!Reloading_) endRemoveRows();
}

void NodesModel::RemovingChildren(const TreeNode& Node) {
    if (!Reloading_) beginRemoveRows(IndexOf(&Node), 0, Node.Children.Count() - 1);
}

void NodesModel::RemovedChildren() {
    if (!Reloading_) endRemoveRows();
}

void NodesModel::TextChanged(const TreeNode& Node) {
    if (Reloading_) return;
    const QModelIndex At = IndexOf(&Node);
    Q_EMIT dataChanged(At, At, {Qt::DisplayRole, Qt::ToolTipRole});
}

}  // namespace kv::desktop
