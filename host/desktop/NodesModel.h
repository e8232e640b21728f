// The nodes of a design tree as Qt's views read them. Nothing is copied: an index is a node of the tree.
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <functional>

#include "window/TreeModel.h"

namespace kv::desktop {

/// Follows `Tree`, which must outlive it. One column. Captions are read only: they change as the item changes
/// them.
class NodesModel final : public QAbstractItemModel, private window::TreeWatcher {
    Q_OBJECT

  public:
    static constexpr int kKeyRole = Qt::UserRole;  // the node's key

    explicit NodesModel(window::TreeModel& Tree, QObject* Parent = nullptr);
    ~NodesModel() override;

    /// While a whole object is loaded the views are told once, at its end, instead of node by node.
    class Reloading {
      public:
        explicit Reloading(NodesModel& Model);
        Reloading(const Reloading&) = delete;
        Reloading& operator=(const Reloading&) = delete;
        ~Reloading();

      private:
        NodesModel& Model_;
    };

    /// An index that is not valid for a key that no node bears.
    QModelIndex IndexOf(std::wstring_view Key) const;
    /// The node of an index, null for an invalid one.
    static const window::TreeNode* NodeOf(const QModelIndex& At);

    /// What may be dragged is said here, what is done with it in MoveRequested.
    std::function<bool(const window::TreeNode&)> Movable;

    QModelIndex index(int Row, int Column, const QModelIndex& Parent = {}) const override;
    QModelIndex parent(const QModelIndex& Child) const override;
    int rowCount(const QModelIndex& Parent = {}) const override;
    int columnCount(const QModelIndex& Parent = {}) const override;
    QVariant data(const QModelIndex& At, int Role) const override;
    Qt::ItemFlags flags(const QModelIndex& At) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& Of) const override;
    bool canDropMimeData(const QMimeData* Data, Qt::DropAction Action, int Row, int Column,
                         const QModelIndex& Parent) const override;
    bool dropMimeData(const QMimeData* Data, Qt::DropAction Action, int Row, int Column,
                      const QModelIndex& Parent) override;

  Q_SIGNALS:
    /// A node was dropped before the 1-based `Place` of its own list (one past the last: at the end). Sent
    /// when the drag is over.
    void MoveRequested(const QString& Key, int Place);

  private:
    QModelIndex IndexOf(const window::TreeNode* Node) const;
    const QIcon& PictureOf(const window::TreeNode& Node) const;
    // Where a drop would put the node, 0 where it may not go.
    int PlaceOfDrop(const QMimeData* Data, int Row, const QModelIndex& Parent) const;

    void Adding(const window::TreeNode* Parent, std::int32_t Place) override;
    void Added() override;
    void Removing(const window::TreeNode& Node) override;
    void Removed() override;
    void RemovingChildren(const window::TreeNode& Node) override;
    void RemovedChildren() override;
    void TextChanged(const window::TreeNode& Node) override;

    window::TreeModel& Tree_;
    bool Reloading_ = false;
    mutable QHash<qint64, QIcon> Pictures_;  // by both image numbers
};

}  // namespace kv::desktop
