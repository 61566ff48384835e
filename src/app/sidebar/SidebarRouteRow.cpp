#include "SidebarRouteRow.h"

#include "look/Theme.h"

#include <QPainter>

namespace fenrow {

using namespace Theme;

namespace {

constexpr int glyphSize = Metric::progressRing;
constexpr int badgePaddingX = 7;

QFont badgeFont()
{
    QFont font = captionFont();
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

SidebarRouteRow::SidebarRouteRow(const QIcon &icon, const QString &title, QWidget *parent) : QAbstractButton(parent)
{
    setIcon(icon);
    setText(title);
    setCheckable(true);
    // Clicking a route keeps it chosen; only choosing another leaves it.
    setAutoExclusive(false);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SidebarRouteRow::setBadge(std::optional<qsizetype> count)
{
    if (count == 0)
        count.reset();
    if (count == m_badge)
        return;
    m_badge = count;
    // The badge is drawn, not a widget: the name carries its count.
    setAccessibleName(m_badge ? qtTrId("access.countedTasks %1 %2").arg(text()).arg(*m_badge) : QString());
    updateGeometry();
    update();
}

QString SidebarRouteRow::badgeText() const
{
    return m_badge ? QString::number(*m_badge) : QString();
}

int SidebarRouteRow::badgeWidth() const
{
    if (!m_badge)
        return 0;
    const QFontMetrics metrics(badgeFont());
    // Never narrower than it is tall: a single digit sits in a circle.
    return std::max(metrics.horizontalAdvance(badgeText()) + 2 * badgePaddingX, metrics.height() + 2);
}

QSize SidebarRouteRow::sizeHint() const
{
    const QFontMetrics metrics(bodyFont());
    int width = Metric::rowPaddingX + glyphSize + Metric::rowPaddingX + metrics.horizontalAdvance(text()) +
                Metric::rowPaddingX;
    if (m_badge)
        width += badgeWidth() + Metric::rowPaddingX;
    return {width, metrics.height() + 2 * Metric::rowPaddingY + Metric::rowGap};
}

QSize SidebarRouteRow::minimumSizeHint() const
{
    return sizeHint();
}

void SidebarRouteRow::enterEvent(QEnterEvent *event)
{
    m_hovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void SidebarRouteRow::leaveEvent(QEvent *event)
{
    m_hovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void SidebarRouteRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // The same box as a flow row, so the two kinds of rows line up.
    const QRect background = rect().adjusted(0, Metric::rowGap / 2, 0, -Metric::rowGap / 2);
    const bool selected = isChecked();
    if (selected || m_hovered || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(selected ? Color::accentSoft : Color::hover);
        painter.drawRoundedRect(background, Metric::rowRadius, Metric::rowRadius);
    }

    const QRect content = background.adjusted(Metric::rowPaddingX, 0, -Metric::rowPaddingX, 0);
    const QRect iconRect(content.left(), content.center().y() - glyphSize / 2 + 1, glyphSize, glyphSize);
    icon().paint(&painter, iconRect);

    QRect textRect = content.adjusted(glyphSize + Metric::rowPaddingX, 0, 0, 0);
    if (m_badge) {
        const QFontMetrics metrics(badgeFont());
        const int height = metrics.height() + 2;
        const QRect pill(content.right() + 1 - badgeWidth(), content.center().y() - height / 2 + 1, badgeWidth(),
                         height);
        painter.setPen(Qt::NoPen);
        painter.setBrush(selected ? Color::window : Color::track);
        painter.drawRoundedRect(QRectF(pill), height / 2.0, height / 2.0);
        painter.setFont(badgeFont());
        painter.setPen(selected ? Color::accent : Color::secondaryText);
        painter.drawText(pill, Qt::AlignCenter, badgeText());
        textRect.setRight(pill.left() - Metric::rowPaddingX);
    }
    painter.setFont(bodyFont());
    painter.setPen(Color::text);
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, textRect.width()));
}

} // namespace fenrow
