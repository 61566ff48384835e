#include "EmptyCanvasHint.h"

#include "CanvasAppearance.h"
#include "CanvasGlyphs.h"
#include "look/Theme.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {
constexpr int symbolSide = 56;
constexpr int hintWidth = 340;
} // namespace

EmptyCanvasHint::EmptyCanvasHint(CanvasAppearance &appearance, QWidget *parent)
    : QWidget(parent), m_appearance(appearance)
{
    setObjectName(QStringLiteral("canvas.empty"));
    setAttribute(Qt::WA_TranslucentBackground);
    setFixedWidth(hintWidth);

    m_title = new QLabel(qtTrId("canvas.empty.title"), this);
    m_title->setObjectName(QStringLiteral("canvas.empty.title"));
    m_title->setFont(Theme::titleFont());
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setWordWrap(true);
    m_message = new QLabel(qtTrId("canvas.empty.message"), this);
    m_message->setObjectName(QStringLiteral("canvas.empty.message"));
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_add = new QPushButton(qtTrId("canvas.empty.addButton"), this);
    m_add->setObjectName(QStringLiteral("canvas.empty.add"));
    m_add->setCursor(Qt::PointingHandCursor);
    m_add->setFocusPolicy(Qt::NoFocus);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, symbolSide + 16, 0, 0);
    column->setSpacing(6);
    column->addWidget(m_title);
    column->addWidget(m_message);
    column->addSpacing(12);
    column->addWidget(m_add, 0, Qt::AlignHCenter);

    connect(m_add, &QPushButton::clicked, this, &EmptyCanvasHint::addRequested);
    connect(&m_appearance, &CanvasAppearance::changed, this, &EmptyCanvasHint::restyle);
    restyle();
    adjustSize();
}

void EmptyCanvasHint::restyle()
{
    const CanvasColors &colors = m_appearance.colors();
    QPalette palette = m_title->palette();
    palette.setColor(QPalette::WindowText, colors.text);
    m_title->setPalette(palette);
    palette.setColor(QPalette::WindowText, colors.secondaryText);
    m_message->setPalette(palette);
    m_add->setStyleSheet(QStringLiteral("QPushButton { color: %1; background: %2; border: none; border-radius: 8px;"
                                        " padding: 7px 18px; font-weight: 600; }"
                                        " QPushButton:hover { background: %3; }")
                             .arg(colors.ramp.onAccent.name(), colors.ramp.brand.name(), colors.ramp.brandHover.name()));
    update();
}

void EmptyCanvasHint::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const CanvasColors &colors = m_appearance.colors();
    const QRectF tile((this->width() - symbolSide) / 2.0, 0, symbolSide, symbolSide);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.ramp.brandBorder, 1));
    painter.setBrush(colors.ramp.nodeSurface);
    painter.drawRoundedRect(tile, 14, 14);
    CanvasGlyphs::paint(painter, tile.adjusted(13, 13, -13, -13), CanvasGlyphs::Glyph::emptyCanvas, colors.ramp.brand);
}

} // namespace fenrow
