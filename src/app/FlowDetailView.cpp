#include "FlowDetailView.h"

#include "Theme.h"
#include "domain/FenrowStore.h"
#include "domain/FlowProgress.h"
#include "shell/FlowProgressText.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace fenrow {

namespace {
constexpr int gridStep = 22;
}

// A thin bar of done over total.
class ProgressStrip : public QWidget {
public:
    explicit ProgressStrip(QWidget *parent) : QWidget(parent) { setFixedSize(220, 6); }

    void setProgress(const FlowProgress &progress)
    {
        m_progress = progress;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        const QRectF track = rect();
        const qreal radius = track.height() / 2;
        painter.setBrush(Theme::Color::track);
        painter.drawRoundedRect(track, radius, radius);
        if (m_progress.totalCount == 0 || m_progress.doneCount == 0)
            return;
        const bool complete = m_progress.doneCount == m_progress.totalCount;
        QRectF done = track;
        done.setWidth(track.width() * qreal(m_progress.doneCount) / qreal(m_progress.totalCount));
        painter.setBrush(complete ? Theme::Color::done : Theme::Color::accent);
        painter.drawRoundedRect(done, radius, radius);
    }

private:
    FlowProgress m_progress;
};

FlowDetailView::FlowDetailView(FenrowStore &store, QWidget *parent) : QWidget(parent), m_store(store)
{
    // The flow's canvas will take this place; it keeps the canvas's name.
    setObjectName(QStringLiteral("canvas.root"));
    setAutoFillBackground(true);

    m_name = new QLabel(this);
    m_name->setObjectName(QStringLiteral("detail.flow.name"));
    m_name->setFont(Theme::largeTitleFont());
    m_name->setTextFormat(Qt::PlainText);
    m_name->setWordWrap(true);
    // A long name wraps inside the window instead of widening it.
    m_name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    m_progress = new QLabel(this);
    m_progress->setObjectName(QStringLiteral("detail.flow.progress"));
    m_progress->setWordWrap(true);
    QPalette muted = m_progress->palette();
    muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
    m_progress->setPalette(muted);

    m_bar = new ProgressStrip(this);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(36, 30, 36, 30);
    column->setSpacing(0);
    column->addWidget(m_name);
    column->addSpacing(6);
    column->addWidget(m_progress);
    column->addSpacing(12);
    column->addWidget(m_bar);
    column->addStretch(1);

    connect(&m_store, &FenrowStore::changed, this, &FlowDetailView::refresh);
}

void FlowDetailView::showFlow(const QUuid &id)
{
    m_flowId = id;
    refresh();
}

void FlowDetailView::refresh()
{
    const TaskFlow *flow = m_store.flow(m_flowId);
    if (!flow)
        return;
    const FlowProgress progress = FlowProgress::of(flow->items());
    m_name->setText(flow->name);
    m_progress->setText(flowProgressText(progress));
    m_bar->setProgress(progress);
}

void FlowDetailView::paintEvent(QPaintEvent *)
{
    // The dotted ground the canvas draws on.
    QPainter painter(this);
    painter.fillRect(rect(), Theme::Color::window);
    painter.setPen(QPen(Theme::Color::canvasDot, 2, Qt::SolidLine, Qt::RoundCap));
    for (int y = gridStep; y < height(); y += gridStep)
        for (int x = gridStep; x < width(); x += gridStep)
            painter.drawPoint(x, y);
}

} // namespace fenrow
