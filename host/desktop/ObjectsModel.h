// The objects of a registry by class, and the part of them that a search leaves.
#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "host/KvRegSvr.h"

namespace kv::desktop {

/// Who an object is.
struct ObjectKey {
    std::wstring Clsid;
    std::wstring Name;  // empty: the class itself
    bool operator==(const ObjectKey&) const = default;
};

/// Two levels: all classes of the server, by class word, and below them their objects.
class ObjectsModel final : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum Columns { kName, kDesc, kVersion, kRevision, kColumns };
    /// What is searched, and what is sorted by.
    enum Roles { kSearchRole = Qt::UserRole, kSortRole };

    explicit ObjectsModel(QObject* Parent = nullptr);

    /// Other objects; those of a class that the server does not know are left out.
    void SetObjects(std::vector<host::RegistryEntry> All);
    int Objects() const noexcept { return Objects_; }
    /// Classes that have objects.
    int ClassesInUse() const noexcept;
    int LeftOut() const noexcept { return LeftOut_; }

    ObjectKey KeyOf(const QModelIndex& At) const;
    QModelIndex IndexOf(const ObjectKey& Key) const;
    /// Nothing for a class.
    const host::RegistryEntry* EntryAt(const QModelIndex& At) const;

    QModelIndex index(int Row, int Column, const QModelIndex& Parent = {}) const override;
    QModelIndex parent(const QModelIndex& Child) const override;
    int rowCount(const QModelIndex& Parent = {}) const override;
    int columnCount(const QModelIndex& Parent = {}) const override;
    QVariant data(const QModelIndex& At, int Role = Qt::DisplayRole) const override;
    QVariant headerData(int Section, Qt::Orientation Along, int Role = Qt::DisplayRole) const override;

  private:
    struct Class {
        std::wstring Word;
        QString Name;
        std::vector<host::RegistryEntry> Entries;
    };
    QVariant ClassData(const Class& Of, int Column, int Role) const;
    QVariant EntryData(const Class& Of, const host::RegistryEntry& Entry, int Column, int Role) const;

    std::vector<Class> Classes_;
    QIcon Folder_, Leaf_;
    int Objects_ = 0;
    int LeftOut_ = 0;
};

/// Leaves the objects that hold all words of a search in class, name or description; without one everything.
class ObjectsFilter final : public QSortFilterProxyModel {
    Q_OBJECT

  public:
    explicit ObjectsFilter(QObject* Parent = nullptr);
    void Search(const QString& Words);
    bool Searching() const noexcept { return !Words_.isEmpty(); }

  protected:
    bool filterAcceptsRow(int Row, const QModelIndex& Parent) const override;

  private:
    QStringList Words_;
};

}  // namespace kv::desktop
