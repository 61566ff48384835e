#pragma once

#include "domain/ChecklistEntry.h"

#include <QUuid>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace fenrow {

class FenrowHistory;
class FenrowStore;
class FlowNode;

// The steps of one task: tick, rename in place (double click), drag to
// reorder, delete from the row's button or with Delete, and a field to add
// the next step that keeps the focus for the one after. Each change is one
// undoable step of the flow.
class NodeChecklistEditor : public QWidget {
    Q_OBJECT

public:
    NodeChecklistEditor(FenrowStore &store, FenrowHistory &history, QWidget *parent = nullptr);

    // Shows the node's steps; null shows none.
    void showNode(const FlowNode *node);

    QListWidget *list() const { return m_list; }
    QLineEdit *addField() const { return m_add; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const FlowNode *node() const;
    void addEntry();
    void itemChanged(QListWidgetItem *item);
    void rowsMoved();
    void deleteEntry(const QUuid &id);
    void fill(const Checklist &entries);

    FenrowStore &m_store;
    FenrowHistory &m_history;
    QUuid m_nodeID;
    QLabel *m_count = nullptr;
    QListWidget *m_list = nullptr;
    QLineEdit *m_add = nullptr;
    // Set while the list is filled from the store, whose own changes are
    // not the user's.
    bool m_filling = false;
};

} // namespace fenrow
