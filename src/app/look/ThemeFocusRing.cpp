#include "ThemeFocusRing.h"

#include "Theme.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

namespace fenrow
{

namespace
{
constexpr int ringWidth = 2;
// How far the ring stands outside the widget, where its parents leave room.
constexpr int ringOutset = 2;
} // namespace

class FocusRingOverlay : public QWidget
{
public:
    explicit FocusRingOverlay(QWidget *parent) : QWidget(parent)
    {
        setObjectName(QStringLiteral("focusRing"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }

    QRect ring;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Theme::Color::accent, ringWidth));
        painter.setBrush(Qt::NoBrush);
        const double half = ringWidth / 2.0;
        painter.drawRoundedRect(QRectF(ring).adjusted(half, half, -half, -half), 4, 4);
    }
};

ThemeFocusRing::ThemeFocusRing(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

ThemeFocusRing::~ThemeFocusRing()
{
    delete m_overlay;
}

QWidget *ThemeFocusRing::ringedWidget() const
{
    return m_overlay && m_overlay->isVisible() ? m_target.data() : nullptr;
}

bool ThemeFocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        if (auto *widget = qobject_cast<QWidget *>(watched)) {
            const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
            // A window coming back or a menu closing keeps the ring as it
            // was; a click or the program moving focus hides it.
            if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
                m_byKeyboard = true;
            else if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
                m_byKeyboard = false;
            follow(widget);
        }
        break;
    case QEvent::FocusOut:
        if (watched == m_target && !QApplication::focusWidget())
            follow(nullptr);
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Paint:
        // A widget repaints when anything around it moves it in its window.
        if (watched == m_target)
            place();
        break;
    default:
        break;
    }
    return false;
}

void ThemeFocusRing::follow(QWidget *widget)
{
    m_target = widget;
    if (m_target && m_overlay && m_overlay->parentWidget() != m_target->window()) {
        delete m_overlay;
        m_overlay = nullptr;
    }
    if (m_target && !m_overlay)
        m_overlay = new FocusRingOverlay(m_target->window());
    place();
}

void ThemeFocusRing::place()
{
    if (!m_overlay)
        return;
    QWidget *target = m_target;
    if (!target || !m_byKeyboard || !target->isVisible() || target == target->window()) {
        m_overlay->hide();
        return;
    }
    // The ring stands just outside the widget where its parents leave room,
    // and just inside where they clip it, so it is never cut away.
    const QWidget *window = target->window();
    QRect ring = QRect(target->mapTo(window, QPoint(0, 0)), target->size())
                     .adjusted(-ringOutset, -ringOutset, ringOutset, ringOutset);
    for (const QWidget *parent = target->parentWidget(); parent && parent != window; parent = parent->parentWidget())
        ring &= QRect(parent->mapTo(window, QPoint(0, 0)), parent->size());
    ring &= window->rect();
    if (ring.width() < 4 * ringWidth || ring.height() < 4 * ringWidth) {
        m_overlay->hide();
        return;
    }
    const bool moved = m_overlay->geometry() != ring || m_overlay->isHidden();
    if (!moved)
        return;
    m_overlay->ring = QRect(QPoint(0, 0), ring.size());
    m_overlay->setGeometry(ring);
    m_overlay->raise();
    m_overlay->show();
    m_overlay->update();
}

} // namespace fenrow
