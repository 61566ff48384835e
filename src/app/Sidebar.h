#pragma once

#include <QUuid>
#include <QWidget>

class QLabel;
class QMenu;
class QMessageBox;
class QPushButton;
class QToolButton;

namespace fenrow {

class FenrowStore;
class FlowListModel;
class FlowListView;

// The left column of the main window: brand, the flows with their progress,
// and quit. It shows which flow is selected but does not own the choice: a
// click asks for a flow through `flowSelected`, and the window answers with
// `setCurrentFlow`. Row actions call the store directly.
class Sidebar : public QWidget {
    Q_OBJECT

public:
    static constexpr int minimumWidth = 216;
    static constexpr int maximumWidth = 420;
    static constexpr int defaultWidth = 260;
    static int clampedWidth(int width);

    explicit Sidebar(FenrowStore &store, QWidget *parent = nullptr);

    void setCurrentFlow(const QUuid &id);
    QUuid currentFlow() const { return m_currentFlow; }

    // Creates an untitled flow, selects it and opens its name for editing.
    void createFlow();
    void beginRename(const QUuid &id);
    // Asks before deleting; the answer arrives after the dialog closes.
    QMessageBox *confirmDelete(const QUuid &id);

    FlowListView *flowList() const { return m_list; }
    FlowListModel *flowModel() const { return m_model; }

signals:
    void flowSelected(const QUuid &id);
    void quitRequested();

private:
    QWidget *makeBrandHeader();
    QWidget *makeSectionHeader();
    QWidget *makeFooter();
    QMenu *rowMenu(const QUuid &id);
    void showRowMenu(const QPoint &position);
    void restoreSelection();
    void userChangedSelection();

    FenrowStore &m_store;
    FlowListModel *m_model = nullptr;
    FlowListView *m_list = nullptr;
    QUuid m_currentFlow;
    bool m_applyingSelection = false;
};

} // namespace fenrow
