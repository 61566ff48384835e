#include "CanvasZoomPill.h"

#include "CanvasAppearance.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasRequests.h"

#include <QHBoxLayout>
#include <QLabel>

#include <cmath>

namespace fenrow {

using Glyph = CanvasGlyphs::Glyph;

CanvasZoomPill::CanvasZoomPill(CanvasAppearance &appearance, CanvasZoomRequest &requests, QWidget *parent)
    : CanvasPanel(appearance, parent), m_requests(requests)
{
    setObjectName(QStringLiteral("toolbar.zoom"));
    m_out = new CanvasToolButton(appearance, Glyph::zoomOut, QStringLiteral("toolbar.zoomOut"),
                                 qtTrId("toolbar.zoomOut"), this);
    m_in = new CanvasToolButton(appearance, Glyph::zoomIn, QStringLiteral("toolbar.zoomIn"), qtTrId("toolbar.zoomIn"),
                                this);
    m_fit = new CanvasToolButton(appearance, Glyph::zoomToFit, QStringLiteral("toolbar.zoomToFit"),
                                 qtTrId("toolbar.zoomToFit"), this);
    m_level = new QLabel(this);
    m_level->setObjectName(QStringLiteral("toolbar.zoomLevel"));
    m_level->setAlignment(Qt::AlignCenter);
    // Wide enough for "250 %" in every language, so the pill never jumps.
    m_level->setMinimumWidth(46);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(contentsMargins() + QMargins(4, 4, 4, 4));
    row->setSpacing(0);
    row->addWidget(m_out);
    row->addWidget(m_level);
    row->addWidget(m_in);
    row->addSpacing(2);
    row->addWidget(m_fit);

    const auto post = [this](CanvasZoom::Kind kind) {
        if (m_editor)
            m_requests.post(kind, m_editor->flowID());
    };
    connect(m_out, &QToolButton::clicked, this, [post] { post(CanvasZoom::Kind::zoomOut); });
    connect(m_in, &QToolButton::clicked, this, [post] { post(CanvasZoom::Kind::zoomIn); });
    connect(m_fit, &QToolButton::clicked, this, [post] { post(CanvasZoom::Kind::zoomToFit); });
    connect(&appearance, &CanvasAppearance::changed, this, &CanvasZoomPill::refresh);
    refresh();
}

void CanvasZoomPill::setEditor(CanvasEditor *editor)
{
    disconnect(m_connection);
    m_editor = editor;
    if (editor)
        m_connection = connect(&editor->interaction(), &CanvasInteraction::changed, this,
                               [this](CanvasInteraction::Field field) {
                                   if (field == CanvasInteraction::Field::scale)
                                       refresh();
                               });
    refresh();
}

void CanvasZoomPill::refresh()
{
    const double scale = m_editor ? m_editor->interaction().scale() : 1;
    m_level->setText(qtTrId("toolbar.zoomLevel").arg(std::lround(scale * 100)));
    m_out->setEnabled(m_editor && scale > CanvasZoom::minimumScale);
    m_in->setEnabled(m_editor && scale < CanvasZoom::maximumScale);
    m_fit->setEnabled(m_editor != nullptr);
    QPalette palette = m_level->palette();
    palette.setColor(QPalette::WindowText, m_appearance.colors().secondaryText);
    m_level->setPalette(palette);
}

} // namespace fenrow
