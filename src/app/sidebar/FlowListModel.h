#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QUuid>

#include <optional>

namespace fenrow {

class FenrowStore;
class TaskFlow;

// The sidebar's flows as a list model over the store's published list. It
// holds ids, never record pointers, so a deleted flow can't be reached
// between its removal and the store's change signal. Edits and drops turn
// into store operations; the rows follow on `FenrowStore::changed`.
class FlowListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        FlowIdRole = Qt::UserRole + 1,
        ProgressTextRole,
        DoneCountRole,
        TotalCountRole,
        // "sidebar.row." + the flow's UUID: the row's stable name for tests
        // and assistive tools.
        IdentifierRole,
    };

    explicit FlowListModel(FenrowStore &store, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // A drag carries the flow's UUID string as plain text; a drop onto a
    // row moves that flow to the row's place.
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDragActions() const override;
    Qt::DropActions supportedDropActions() const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

    QModelIndex indexOf(const QUuid &id) const;
    QUuid flowIdAt(const QModelIndex &index) const;

private:
    // The order after dropping `dragged` onto `target`: the dragged flow ends
    // where the target was, the others keep their sequence. Nothing when the
    // drop is refused (onto itself, or an id that is not in the list).
    static std::optional<QList<const TaskFlow *>> orderAfterDrop(const QList<const TaskFlow *> &flows,
                                                                  const QUuid &dragged, const QUuid &target);

    void reload();
    const TaskFlow *flowAt(const QModelIndex &index) const;
    std::optional<QList<const TaskFlow *>> dropOrder(const QMimeData *data, const QModelIndex &target) const;

    FenrowStore &m_store;
    QList<QUuid> m_ids;
};

} // namespace fenrow
