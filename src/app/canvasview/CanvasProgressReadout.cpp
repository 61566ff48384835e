#include "CanvasProgressReadout.h"

#include "CanvasAppearance.h"
#include "look/Theme.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace fenrow {

namespace {
constexpr int barHeight = 4;
constexpr int paddingX = 14;
} // namespace

CanvasProgressReadout::CanvasProgressReadout(CanvasAppearance &appearance, QWidget *parent)
    : CanvasPanel(appearance, parent)
{
    setObjectName(QStringLiteral("toolbar.progress"));
    setAccessibleName(qtTrId("toolbar.progress"));
    m_name = new QLabel(this);
    m_name->setObjectName(QStringLiteral("detail.flow.name"));
    m_name->setTextFormat(Qt::PlainText);
    QFont font = Theme::bodyFont();
    font.setPointSizeF(font.pointSizeF() * 1.2);
    font.setWeight(QFont::DemiBold);
    m_name->setFont(font);
    m_progress = new QLabel(this);
    m_progress->setObjectName(QStringLiteral("detail.flow.progress"));
    m_progress->setTextFormat(Qt::PlainText);
    m_progress->setFont(Theme::captionFont());

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(contentsMargins() + QMargins(paddingX, 9, paddingX, 9 + barHeight + 6));
    column->setSpacing(2);
    column->addWidget(m_name);
    column->addWidget(m_progress);
    connect(&appearance, &CanvasAppearance::changed, this, &CanvasProgressReadout::refresh);
    refresh();
}

QString CanvasProgressReadout::text(const FlowProgress &progress, qsizetype readyCount, bool compact)
{
    if (progress.totalCount == 0)
        return qtTrId("sidebar.flow.progress.empty");
    if (compact)
        return qtTrId("toolbar.progress.short %lld %lld").arg(progress.doneCount).arg(progress.totalCount);
    if (readyCount > 0)
        return qtTrId("toolbar.progress.ready %lld %lld %lld")
            .arg(progress.doneCount)
            .arg(progress.totalCount)
            .arg(readyCount);
    return qtTrId("toolbar.progress %lld %lld").arg(progress.doneCount).arg(progress.totalCount);
}

void CanvasProgressReadout::setFlow(const QString &name, const FlowProgress &progress, qsizetype readyCount)
{
    m_fullName = name;
    m_counts = progress;
    m_ready = readyCount;
    refresh();
}

void CanvasProgressReadout::setCompact(bool compact)
{
    if (compact == m_compact)
        return;
    m_compact = compact;
    refresh();
}

void CanvasProgressReadout::setRoom(int width)
{
    width = std::min(width, int(maximumWidth));
    if (width == m_room)
        return;
    m_room = width;
    refresh();
}

void CanvasProgressReadout::refresh()
{
    const CanvasColors &colors = m_appearance.colors();
    QPalette palette = m_name->palette();
    palette.setColor(QPalette::WindowText, colors.text);
    m_name->setPalette(palette);
    palette.setColor(QPalette::WindowText, colors.secondaryText);
    m_progress->setPalette(palette);

    const QString progress = text(m_counts, m_ready, m_compact);
    m_progress->setText(progress);
    // A long name is shortened rather than widening the panel past its limit.
    const int room = std::max(40, m_room - 2 * paddingX - 2 * shadowRoom);
    const QFontMetrics metrics(m_name->font());
    m_name->setText(metrics.elidedText(m_fullName, Qt::ElideRight, room));
    m_name->setToolTip(m_name->text() == m_fullName ? QString() : m_fullName);
    m_progress->setMinimumWidth(std::min(room, QFontMetrics(m_progress->font()).horizontalAdvance(progress)));
    adjustSize();
    update();
}

void CanvasProgressReadout::paintEvent(QPaintEvent *event)
{
    CanvasPanel::paintEvent(event);
    const CanvasColors &colors = m_appearance.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF track(shadowRoom + paddingX, height() - shadowRoom - 2 - 10 - barHeight,
                       width() - 2 * shadowRoom - 2 * paddingX, barHeight);
    painter.setBrush(colors.ramp.fieldSurface);
    painter.drawRoundedRect(track, barHeight / 2.0, barHeight / 2.0);
    if (m_counts.totalCount == 0 || m_counts.doneCount == 0)
        return;
    QRectF done = track;
    done.setWidth(track.width() * double(m_counts.doneCount) / double(m_counts.totalCount));
    painter.setBrush(m_counts.doneCount == m_counts.totalCount ? colors.done : colors.ramp.brand);
    painter.drawRoundedRect(done, barHeight / 2.0, barHeight / 2.0);
}

} // namespace fenrow
