#pragma once

#include "CanvasPanel.h"

#include "canvas/CanvasEditor.h"

#include <QPointer>

class QLabel;

namespace fenrow {

class CanvasEditor;
class CanvasZoomRequest;

// Zoom out, the level in percent, zoom in, and zoom to fit. The buttons
// post zoom requests for the flow shown, as the menu commands do.
class CanvasZoomPill : public CanvasPanel {
    Q_OBJECT

public:
    CanvasZoomPill(CanvasAppearance &appearance, CanvasZoomRequest &requests, QWidget *parent = nullptr);

    void setEditor(CanvasEditor *editor);
    QLabel *level() const { return m_level; }

private:
    void refresh();

    CanvasZoomRequest &m_requests;
    QPointer<CanvasEditor> m_editor;
    QMetaObject::Connection m_connection;
    CanvasToolButton *m_out = nullptr;
    CanvasToolButton *m_in = nullptr;
    CanvasToolButton *m_fit = nullptr;
    QLabel *m_level = nullptr;
};

} // namespace fenrow
