#pragma once

#include "domain/NodePriority.h"
#include "domain/Readiness.h"

#include "SectionedRowsModel.h"

#include <QAbstractListModel>
#include <QList>
#include <QUuid>

#include <optional>

namespace fenrow {

class FenrowStore;

// The Ready list as rows: group headers (Today, one per flow when sorted
// by flow) and the ready tasks under them. Rows are computed in one pass on
// `reload` and hold text and ids, never record pointers, so a row cannot
// reach a node that has gone.
class ReadyListModel : public SectionedRowsModel {
    Q_OBJECT

public:
    enum class Kind { header, task };

    enum Role {
        KindRole = Qt::UserRole + 1,
        NodeIdRole,
        FlowIdRole,
        // Header: the number of tasks under it.
        CountRole,
        // Task: the flow's name, empty under a header that already names it.
        FlowNameRole,
        DueTextRole,
        OverdueRole,
        PriorityRole,
        PriorityTextRole,
        EstimateTextRole,
        HasNotesRole,
        // Task: the number of files linked to it.
        ReferencesRole,
        // Task: it stands in the Today group, whose order is dragged.
        InTodayRole,
        // "ready.row." + node UUID, "ready.group." + flow UUID, or
        // "ready.group.today": stable names for tests and assistive tools.
        IdentifierRole,
        // Header of Today: says that it follows the user's order, once any
        // of its tasks has a place in it; empty otherwise.
        OrderNoteRole,
    };

    explicit ReadyListModel(FenrowStore &store, QObject *parent = nullptr);

    void setSort(ReadySort sort);
    ReadySort sort() const { return m_sort; }

    // Reads the store again at the clock's now.
    void reload();

    qsizetype taskCount() const { return m_taskCount; }
    QModelIndex indexOf(const QUuid &nodeId) const;
    QUuid nodeIdAt(const QModelIndex &index) const;
    // The Today group's tasks, top to bottom.
    QList<QUuid> todayNodeIds() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Row {
        Kind kind = Kind::task;
        QString title;
        QString identifier;
        qsizetype count = 0;
        QUuid nodeId;
        QUuid flowId;
        QString flowName;
        // The flow's name even under its own header: a screen reader hears
        // a row without the header above it.
        QString flow;
        bool inProgress = false;
        QString dueText;
        bool overdue = false;
        NodePriority priority = NodePriority::none;
        QString estimateText;
        bool hasNotes = false;
        qsizetype references = 0;
        bool inToday = false;
        QString orderNote;

        // Same place, same thing: what decides between a refresh and a reset.
        bool sameSlot(const Row &other) const { return kind == other.kind && identifier == other.identifier; }
    };

    QList<Row> buildRows() const;
    Row taskRow(const ReadyTask &task, bool showFlow) const;
    static Row headerRow(const QString &title, const QString &identifier, qsizetype count);

    FenrowStore &m_store;
    ReadySort m_sort = ReadySort::flow;
    QList<Row> m_rows;
    qsizetype m_taskCount = 0;
};

} // namespace fenrow
