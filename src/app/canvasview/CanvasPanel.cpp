#include "CanvasPanel.h"

#include "CanvasAppearance.h"

#include <QEnterEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

namespace fenrow {

CanvasPanel::CanvasPanel(CanvasAppearance &appearance, QWidget *parent) : QWidget(parent), m_appearance(appearance)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setContentsMargins(shadowRoom, shadowRoom - 2, shadowRoom, shadowRoom + 2);
    connect(&m_appearance, &CanvasAppearance::changed, this, qOverload<>(&QWidget::update));
}

void CanvasPanel::paintEvent(QPaintEvent *)
{
    const CanvasColors &colors = m_appearance.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF panel = QRectF(rect()).adjusted(shadowRoom, shadowRoom - 2, -shadowRoom, -shadowRoom - 2);
    // A shadow of a few widening layers, lighter as they spread.
    painter.setPen(Qt::NoPen);
    for (int layer = 3; layer >= 1; --layer) {
        QColor shade = colors.shadow;
        shade.setAlphaF(colors.shadow.alphaF() * 0.45f / float(layer));
        painter.setBrush(shade);
        painter.drawRoundedRect(panel.adjusted(-layer, -layer + 1.5, layer, layer + 1.5), radius + layer, radius + layer);
    }
    painter.setPen(QPen(colors.ramp.brandBorder, 1));
    painter.setBrush(colors.ramp.nodeSurface);
    painter.drawRoundedRect(panel.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

CanvasToolButton::CanvasToolButton(CanvasAppearance &appearance, CanvasGlyphs::Glyph glyph, const QString &name,
                                   const QString &help, QWidget *parent)
    : QToolButton(parent), m_appearance(appearance), m_glyph(glyph)
{
    setObjectName(name);
    setToolTip(help);
    setAccessibleName(help);
    // Reached by Tab; a click on a tool is no reason to leave the canvas.
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAutoRaise(true);
    connect(&m_appearance, &CanvasAppearance::changed, this, qOverload<>(&QWidget::update));
}

void CanvasToolButton::setGlyph(CanvasGlyphs::Glyph glyph)
{
    m_glyph = glyph;
    update();
}

void CanvasToolButton::setPrimary(bool primary)
{
    m_primary = primary;
    updateGeometry();
    update();
}

QSize CanvasToolButton::sizeHint() const
{
    if (!m_primary || text().isEmpty())
        return QSize(side, side);
    const QFontMetrics metrics(font());
    return QSize(10 + 16 + 6 + metrics.horizontalAdvance(text()) + 12, side);
}

void CanvasToolButton::enterEvent(QEnterEvent *event)
{
    m_hovering = true;
    update();
    QToolButton::enterEvent(event);
}

void CanvasToolButton::leaveEvent(QEvent *event)
{
    m_hovering = false;
    update();
    QToolButton::leaveEvent(event);
}

void CanvasToolButton::paintEvent(QPaintEvent *)
{
    const CanvasColors &colors = m_appearance.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    const bool enabled = isEnabled();
    QColor ink = colors.text;
    painter.setPen(Qt::NoPen);
    if (m_primary) {
        painter.setBrush(isDown() || (m_hovering && enabled) ? colors.ramp.brandHover : colors.ramp.brand);
        painter.drawRoundedRect(area, 7, 7);
        ink = colors.ramp.onAccent;
    } else if (isChecked()) {
        QColor tint = colors.ramp.brand;
        tint.setAlphaF(colors.dark ? 0.24f : 0.13f);
        painter.setBrush(tint);
        painter.drawRoundedRect(area, 7, 7);
        ink = colors.ramp.brand;
    } else if ((m_hovering || isDown()) && enabled) {
        painter.setBrush(colors.ramp.fieldSurface);
        painter.drawRoundedRect(area, 7, 7);
    }
    if (!enabled)
        ink.setAlphaF(0.35f);
    const double glyph = 16;
    if (m_primary && !text().isEmpty()) {
        CanvasGlyphs::paint(painter, QRectF(10, (height() - glyph) / 2, glyph, glyph), m_glyph, ink);
        painter.setPen(ink);
        painter.setFont(font());
        painter.drawText(QRectF(10 + glyph + 6, 0, width() - glyph - 16, height()), Qt::AlignVCenter | Qt::AlignLeft,
                         text());
        return;
    }
    CanvasGlyphs::paint(painter, QRectF((width() - glyph) / 2, (height() - glyph) / 2, glyph, glyph), m_glyph, ink);
}

} // namespace fenrow
