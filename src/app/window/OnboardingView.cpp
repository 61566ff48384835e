#include "OnboardingView.h"

#include "look/Glyphs.h"
#include "quickcapture/GlobalCaptureKey.h"
#include "quickcapture/QuickCapturePanel.h"
#include "look/Theme.h"
#include "shell/AppPreferences.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace fenrow {

namespace {

constexpr int artHeight = 96;

// The picture at the top of each page, drawn in the window's own colours
// so that it follows the theme.
class OnboardingArt : public QWidget {
public:
    OnboardingArt(OnboardingView::Page page, QWidget *parent) : QWidget(parent), m_page(page)
    {
        setFixedHeight(artHeight);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPointF centre = QRectF(rect()).center();
        switch (m_page) {
        case OnboardingView::Page::welcome: {
            const QPixmap mark = Glyphs::brandMark(80);
            painter.drawPixmap(QPointF(centre.x() - 40, centre.y() - 40), mark);
            break;
        }
        case OnboardingView::Page::flows:
            paintFlow(painter, centre);
            break;
        case OnboardingView::Page::ready:
            paintReadyList(painter, centre);
            break;
        case OnboardingView::Page::capture:
            paintCapture(painter, centre);
            break;
        }
    }

private:
    QColor accent() const { return palette().color(QPalette::Highlight); }
    QColor surface() const { return palette().color(QPalette::Base); }
    QColor line() const { return palette().color(QPalette::Mid); }
    QColor muted() const { return palette().color(QPalette::PlaceholderText); }

    void card(QPainter &painter, const QRectF &box, bool ready) const
    {
        painter.setPen(QPen(ready ? accent() : line(), 1.4));
        painter.setBrush(surface());
        painter.drawRoundedRect(box, 7, 7);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ready ? accent() : line());
        painter.drawRoundedRect(QRectF(box.left() + 9, box.center().y() - 3, box.width() * 0.55, 6), 3, 3);
    }

    // Two tasks that lead into a third: the last one waits for both.
    void paintFlow(QPainter &painter, const QPointF &c) const
    {
        const QSizeF size(74, 30);
        const QRectF first(QPointF(c.x() - 130, c.y() - 40), size);
        const QRectF second(QPointF(c.x() - 130, c.y() + 10), size);
        const QRectF last(QPointF(c.x() + 56, c.y() - 15), size);
        painter.setPen(QPen(muted(), 1.6));
        painter.setBrush(Qt::NoBrush);
        for (const QRectF &from : {first, second}) {
            QPainterPath curve(QPointF(from.right(), from.center().y()));
            const QPointF to(last.left(), last.center().y());
            curve.cubicTo(QPointF(from.right() + 60, from.center().y()), QPointF(to.x() - 60, to.y()), to);
            painter.drawPath(curve);
        }
        card(painter, first, true);
        card(painter, second, true);
        card(painter, last, false);
    }

    // Three rows with their tick circles, the first one ticked.
    void paintReadyList(QPainter &painter, const QPointF &c) const
    {
        const double width = 210, rowHeight = 24;
        for (int row = 0; row < 3; ++row) {
            const QRectF box(c.x() - width / 2, c.y() - 40 + row * (rowHeight + 4), width, rowHeight);
            painter.setPen(Qt::NoPen);
            painter.setBrush(row == 0 ? palette().color(QPalette::AlternateBase) : Qt::transparent);
            painter.drawRoundedRect(box, 6, 6);
            const QPointF tick(box.left() + 16, box.center().y());
            painter.setPen(QPen(row == 0 ? accent() : line(), 1.6));
            painter.setBrush(row == 0 ? accent() : Qt::transparent);
            painter.drawEllipse(tick, 7, 7);
            if (row == 0) {
                painter.setPen(QPen(palette().color(QPalette::HighlightedText), 1.7, Qt::SolidLine, Qt::RoundCap,
                                    Qt::RoundJoin));
                painter.drawPolyline(QPolygonF({tick + QPointF(-3.2, 0.2), tick + QPointF(-0.8, 2.6),
                                                tick + QPointF(3.4, -2.4)}));
            }
            painter.setPen(Qt::NoPen);
            painter.setBrush(line());
            painter.drawRoundedRect(QRectF(box.left() + 32, box.center().y() - 3, width * (0.62 - row * 0.12), 6), 3,
                                    3);
        }
    }

    // A small panel with a line of text and a date chip.
    void paintCapture(QPainter &painter, const QPointF &c) const
    {
        const QRectF panel(c.x() - 120, c.y() - 34, 240, 68);
        painter.setPen(QPen(line(), 1.2));
        painter.setBrush(surface());
        painter.drawRoundedRect(panel, 10, 10);
        painter.setPen(QPen(accent(), 1.8, Qt::SolidLine, Qt::RoundCap));
        const QPointF plus(panel.left() + 18, panel.top() + 22);
        painter.drawLine(plus - QPointF(5, 0), plus + QPointF(5, 0));
        painter.drawLine(plus - QPointF(0, 5), plus + QPointF(0, 5));
        painter.setPen(Qt::NoPen);
        painter.setBrush(muted());
        painter.drawRoundedRect(QRectF(panel.left() + 32, panel.top() + 19, 132, 6), 3, 3);
        QColor chip = accent();
        chip.setAlphaF(0.16);
        painter.setBrush(chip);
        painter.drawRoundedRect(QRectF(panel.left() + 32, panel.top() + 38, 70, 18), 5, 5);
        painter.setBrush(accent());
        painter.drawRoundedRect(QRectF(panel.left() + 42, panel.top() + 44, 46, 6), 3, 3);
    }

    OnboardingView::Page m_page;
};

// Where the user is among the pages.
class PageDots : public QWidget {
public:
    explicit PageDots(QStackedWidget *pages, QWidget *parent) : QWidget(parent), m_pages(pages)
    {
        setFixedSize(OnboardingView::pageCount * 14, 14);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        for (int i = 0; i < OnboardingView::pageCount; ++i) {
            painter.setBrush(palette().color(i == m_pages->currentIndex() ? QPalette::Highlight : QPalette::Mid));
            painter.drawEllipse(QPointF(7 + i * 14, 7), 3.5, 3.5);
        }
    }

private:
    QStackedWidget *m_pages;
};

QWidget *makePage(OnboardingView::Page page, const QString &title, const QString &message, QWidget *parent)
{
    auto *widget = new QWidget(parent);
    auto *art = new OnboardingArt(page, widget);
    auto *heading = new QLabel(title, widget);
    heading->setObjectName(QStringLiteral("onboarding.page.title"));
    heading->setFont(page == OnboardingView::Page::welcome ? Theme::largeTitleFont() : Theme::titleFont());
    heading->setAlignment(Qt::AlignCenter);
    heading->setWordWrap(true);
    auto *text = new QLabel(message, widget);
    text->setObjectName(QStringLiteral("onboarding.page.message"));
    text->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    text->setWordWrap(true);
    text->setTextFormat(Qt::PlainText);
    QPalette quiet = text->palette();
    quiet.setColor(QPalette::WindowText, quiet.color(QPalette::PlaceholderText));
    text->setPalette(quiet);

    auto *column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(art);
    column->addSpacing(16);
    column->addWidget(heading);
    column->addSpacing(8);
    column->addWidget(text);
    column->addStretch(1);
    return widget;
}

} // namespace

OnboardingView::OnboardingView(AppPreferences &preferences, bool globalKeyOffered, QWidget *parent)
    : QWidget(parent), m_preferences(preferences)
{
    setObjectName(QStringLiteral("onboarding.root"));
    setAutoFillBackground(true);

    const QString keys =
        QKeySequence(QuickCapturePanel::shortcut(preferences.globalShortcut())).toString(QKeySequence::NativeText);

    m_pages = new QStackedWidget(this);
    m_pages->setObjectName(QStringLiteral("onboarding.pages"));
    m_pages->addWidget(makePage(Page::welcome, qtTrId("onboarding.welcome.title"),
                                qtTrId("onboarding.welcome.message"), m_pages));
    m_pages->addWidget(
        makePage(Page::flows, qtTrId("onboarding.flows.title"), qtTrId("onboarding.flows.message"), m_pages));
    m_pages->addWidget(
        makePage(Page::ready, qtTrId("onboarding.ready.title"), qtTrId("onboarding.ready.message"), m_pages));
    const QString captureMessage = globalKeyOffered ? qtTrId("onboarding.capture.message %@").arg(keys)
                                                    : qtTrId("onboarding.capture.messageInsideOnly %@ %@")
                                                          .arg(keys, GlobalCaptureKey::fallbackCommand);
    m_pages->addWidget(makePage(Page::capture, qtTrId("onboarding.capture.title"), captureMessage, m_pages));

    m_dots = new PageDots(m_pages, this);
    m_back = new QPushButton(qtTrId("onboarding.action.back"), this);
    m_back->setObjectName(QStringLiteral("onboarding.back"));
    m_back->setFlat(true);
    m_back->setCursor(Qt::PointingHandCursor);
    connect(m_back, &QPushButton::clicked, this, &OnboardingView::back);
    m_next = new QPushButton(this);
    m_next->setObjectName(QStringLiteral("onboarding.next"));
    m_next->setDefault(true);
    m_next->setCursor(Qt::PointingHandCursor);
    m_next->setStyleSheet(Theme::filledButtonStyle(Theme::Color::accent));
    connect(m_next, &QPushButton::clicked, this, &OnboardingView::next);

    auto *footer = new QHBoxLayout;
    footer->setSpacing(8);
    footer->addWidget(m_dots, 0, Qt::AlignVCenter);
    footer->addStretch(1);
    footer->addWidget(m_back);
    footer->addWidget(m_next);

    // A readable column in the middle, however large the window is.
    auto *column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(m_pages, 1);
    column->addSpacing(18);
    column->addLayout(footer);
    auto *centre = new QHBoxLayout(this);
    centre->setContentsMargins(36, 20, 36, 24);
    centre->addStretch(1);
    centre->addLayout(column, 100);
    centre->addStretch(1);
    for (int i = 0; i < pageCount; ++i)
        m_pages->widget(i)->setMaximumWidth(460);

    follow();
}

OnboardingView::Page OnboardingView::page() const
{
    return Page(m_pages->currentIndex());
}

void OnboardingView::showPage(Page page)
{
    m_pages->setCurrentIndex(int(page));
    follow();
}

void OnboardingView::finish()
{
    m_preferences.setHasCompletedOnboarding(true);
    emit completed();
    // Seen again after a restart of onboarding, it begins at the start.
    showPage(Page::welcome);
}

void OnboardingView::next()
{
    if (page() == Page::capture)
        finish();
    else
        showPage(Page(int(page()) + 1));
}

void OnboardingView::back()
{
    if (page() != Page::welcome)
        showPage(Page(int(page()) - 1));
}

void OnboardingView::follow()
{
    const bool last = page() == Page::capture;
    m_next->setText(last ? qtTrId("onboarding.action.finish") : qtTrId("onboarding.action.next"));
    m_next->setObjectName(last ? QStringLiteral("onboarding.finish") : QStringLiteral("onboarding.next"));
    m_back->setVisible(page() != Page::welcome);
    m_dots->update();
}

} // namespace fenrow
