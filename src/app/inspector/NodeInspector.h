#pragma once

#include "canvas/CanvasSelection.h"

#include <QUuid>
#include <QWidget>

#include <optional>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
class QStackedWidget;
class QToolButton;
class QVBoxLayout;

namespace fenrow {

class AppPreferences;
class EmptyStateView;
class FenrowHistory;
class FenrowStore;
class FlowNode;
class NodeChecklistEditor;
class NotesResizeHandle;

// The panel beside a flow's canvas: every field of the one selected task,
// or the selected file, or an empty state. Each change is one store
// operation inside one undoable step; the panel keeps only the drafts of
// what is being typed, and re-reads the store after every change.
class NodeInspector : public QWidget {
    Q_OBJECT

public:
    NodeInspector(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                  QWidget *parent = nullptr);
    ~NodeInspector() override;

    void showSelection(const QUuid &flowID, const CanvasSelection &selection);
    // Reads the store again, keeping what is being typed.
    void reload();

    enum class Page { empty, node, file };
    Page page() const;

    QLineEdit *titleField() const { return m_title; }
    QLineEdit *estimateField() const { return m_estimate; }
    QPlainTextEdit *notesEditor() const { return m_notes; }
    QComboBox *statusPicker() const { return m_status; }
    NodeChecklistEditor *checklist() const { return m_checklist; }

signals:
    // A task of the blocked-by or blocks list was chosen: select and show it.
    void revealRequested(const QUuid &nodeID);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeNodePage();
    QWidget *makeFilePage();
    QWidget *makeDateRow(const QString &name, QPushButton **pick, QToolButton **clear);
    QWidget *makeColorRow();
    const FlowNode *selectedNode() const;
    void showTitle(const QString &title);
    void fillNode(const FlowNode &node);
    void fillFile();
    void fillRelated(QVBoxLayout *list, const QList<const FlowNode *> &nodes, const char *emptyKey);

    // Whatever was typed and not yet written, written to the task shown.
    void commitDrafts();
    void commitTitle();
    void commitEstimate();
    void commitNotes();
    void pickDate(bool start);
    void setDate(bool start, std::optional<QDate> day);
    void commitRepeat();

    FenrowStore &m_store;
    FenrowHistory &m_history;
    AppPreferences &m_preferences;
    QUuid m_flowID;
    CanvasSelection m_selection;
    bool m_filling = false;

    QStackedWidget *m_pages = nullptr;
    EmptyStateView *m_empty = nullptr;
    QLabel *m_flowName = nullptr;
    QLineEdit *m_title = nullptr;
    QComboBox *m_status = nullptr;
    QComboBox *m_priority = nullptr;
    QList<QToolButton *> m_colors;
    QLineEdit *m_estimate = nullptr;
    QPushButton *m_startPick = nullptr;
    QToolButton *m_startClear = nullptr;
    QPushButton *m_duePick = nullptr;
    QToolButton *m_dueClear = nullptr;
    QLabel *m_deferred = nullptr;
    QComboBox *m_repeat = nullptr;
    QSpinBox *m_repeatInterval = nullptr;
    QWidget *m_repeatIntervalRow = nullptr;
    QPlainTextEdit *m_notes = nullptr;
    NotesResizeHandle *m_notesHandle = nullptr;
    NodeChecklistEditor *m_checklist = nullptr;
    QVBoxLayout *m_blockedBy = nullptr;
    QVBoxLayout *m_blocks = nullptr;
    QLabel *m_fileName = nullptr;
    QLabel *m_fileDetails = nullptr;
};

} // namespace fenrow
