#pragma once

#include "CanvasPanel.h"

#include "canvas/CanvasEditor.h"

#include <QPointer>
#include <QUuid>

class QMenu;

namespace fenrow {

class AppPreferences;
class CanvasEditor;
class CanvasToolButton;
class CanvasView;
class FenrowHistory;
class FenrowStore;

// The tools floating over the canvas: add a task, attach a file, filter by
// colour, the grid, arrange as a tree, and archive what is done.
class CanvasToolbar : public CanvasPanel {
    Q_OBJECT

public:
    CanvasToolbar(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                  CanvasAppearance &appearance, CanvasView &view, QWidget *parent = nullptr);

    void setEditor(CanvasEditor *editor);
    // The filter's menu as the filter button opens it.
    QMenu *filterMenu() const { return m_filterMenu; }
    // Lays the flow out as a tree in one undoable step, then shows it whole.
    void arrange();

signals:
    // Archiving asks first; whoever shows the question answers.
    void archiveDoneRequested(const QUuid &flowID);

private:
    void refresh();
    void fillFilterMenu();

    FenrowStore &m_store;
    FenrowHistory &m_history;
    AppPreferences &m_preferences;
    CanvasView &m_view;
    QPointer<CanvasEditor> m_editor;
    QMetaObject::Connection m_interactionConnection;
    CanvasToolButton *m_add = nullptr;
    CanvasToolButton *m_attach = nullptr;
    CanvasToolButton *m_filter = nullptr;
    CanvasToolButton *m_grid = nullptr;
    CanvasToolButton *m_arrange = nullptr;
    CanvasToolButton *m_archive = nullptr;
    QMenu *m_filterMenu = nullptr;
};

} // namespace fenrow
