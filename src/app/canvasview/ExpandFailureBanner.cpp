#include "ExpandFailureBanner.h"

#include "sheets/SheetParts.h"
#include "look/Theme.h"
#include "canvas/CanvasInteraction.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

using namespace Theme;

ExpandFailureBanner::ExpandFailureBanner(QWidget *canvas) : QWidget(canvas)
{
    setObjectName(QStringLiteral("canvas.node.expand.failed"));
    setAttribute(Qt::WA_TranslucentBackground);
    setMaximumWidth(420);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(14, 10, 8, 10);
    row->setSpacing(10);
    row->addWidget(new SheetGlyph(SheetGlyphs::Glyph::warning, Color::warning, 18, this), 0, Qt::AlignTop);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    auto *title = new QLabel(qtTrId("canvas.node.expand.failed.title"), this);
    title->setObjectName(QStringLiteral("canvas.node.expand.failed.title"));
    title->setFont(sectionFont());
    title->setWordWrap(true);
    auto *message = new QLabel(qtTrId("canvas.node.expand.failed.message"), this);
    message->setObjectName(QStringLiteral("canvas.node.expand.failed.message"));
    message->setWordWrap(true);
    QPalette muted = message->palette();
    muted.setColor(QPalette::WindowText, Color::secondaryText);
    message->setPalette(muted);
    texts->addWidget(title);
    texts->addWidget(message);
    row->addLayout(texts, 1);
    auto *close = new QToolButton(this);
    close->setObjectName(QStringLiteral("canvas.node.expand.failed.dismiss"));
    close->setText(QStringLiteral("\u2715"));
    close->setToolTip(qtTrId("banner.engineUnavailable.dismiss"));
    close->setAccessibleName(close->toolTip());
    close->setAutoRaise(true);
    close->setCursor(Qt::PointingHandCursor);
    close->setFocusPolicy(Qt::NoFocus);
    row->addWidget(close, 0, Qt::AlignTop);
    connect(close, &QToolButton::clicked, this, &ExpandFailureBanner::clear);

    m_timer = new QTimer(this);
    m_timer->setSingleShot(true);
    m_timer->setInterval(showMilliseconds);
    connect(m_timer, &QTimer::timeout, this, &ExpandFailureBanner::clear);
    hide();
}

void ExpandFailureBanner::setInteraction(CanvasInteraction *interaction)
{
    disconnect(m_connection);
    m_interaction = interaction;
    if (interaction)
        m_connection = connect(interaction, &CanvasInteraction::changed, this, [this](CanvasInteraction::Field field) {
            if (field == CanvasInteraction::Field::expandFailure)
                follow();
        });
    follow();
}

void ExpandFailureBanner::follow()
{
    const bool failed = m_interaction && m_interaction->expandFailure().has_value();
    if (failed) {
        adjustSize();
        raise();
        m_timer->start();
    } else {
        m_timer->stop();
    }
    setVisible(failed);
}

void ExpandFailureBanner::clear()
{
    if (m_interaction)
        m_interaction->setExpandFailure(std::nullopt);
    else
        hide();
}

void ExpandFailureBanner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF card = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(Color::divider, 1));
    painter.setBrush(Color::window);
    painter.drawRoundedRect(card, 10, 10);
    QColor tint = Color::warning;
    tint.setAlphaF(0.07f);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint);
    painter.drawRoundedRect(card, 10, 10);
}

} // namespace fenrow
