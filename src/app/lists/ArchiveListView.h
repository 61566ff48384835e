#pragma once

#include <QUuid>
#include <QWidget>

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListView;
class QStackedWidget;

namespace fenrow {

class ArchiveListModel;
class CompletionRecord;
class EmptyStateView;
class FenrowStore;

// The detail of the Archive route: finished work taken off the canvas, and
// the rounds of recurring tasks, by day, newest first, with a search over
// titles and flow names. A record can be put back into its flow or deleted
// for good. Like the Ready list it re-reads the store on each change, or
// when it next appears.
class ArchiveListView : public QWidget {
    Q_OBJECT

public:
    explicit ArchiveListView(FenrowStore &store, QWidget *parent = nullptr);

    // Reads the store and the clock again.
    void reload();

    // Both do nothing for a record that has gone, or can't come back.
    void restore(const QUuid &recordId);
    void remove(const QUuid &recordId);

    ArchiveListModel *model() const { return m_model; }
    QListView *list() const { return m_list; }
    QLineEdit *searchField() const { return m_search; }
    EmptyStateView *emptyState() const { return m_empty; }

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const CompletionRecord *record(const QUuid &recordId) const;
    void showRowMenu(const QPoint &position);
    void showState();
    void arrangeHeader();

    FenrowStore &m_store;
    ArchiveListModel *m_model = nullptr;
    QBoxLayout *m_header = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_count = nullptr;
    QLineEdit *m_search = nullptr;
    QListView *m_list = nullptr;
    QStackedWidget *m_content = nullptr;
    EmptyStateView *m_empty = nullptr;
    // The row action the mouse went down on: its record and which action.
    QUuid m_pressedRecord;
    bool m_pressedRestore = false;
    bool m_stale = true;
};

} // namespace fenrow
