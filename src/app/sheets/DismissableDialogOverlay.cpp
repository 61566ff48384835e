#include "DismissableDialogOverlay.h"

#include "look/Theme.h"
#include "canvas/DialogPresence.h"

#include <QApplication>
#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include <algorithm>

namespace fenrow {

namespace {

// One box blur along rows or columns of an 8-bit plane, in place.
void boxBlur(std::vector<int> &plane, int width, int height, int radius, bool rows)
{
    const int length = rows ? width : height;
    const int lines = rows ? height : width;
    std::vector<int> line(length);
    for (int l = 0; l < lines; ++l) {
        const auto at = [&](int i) -> int & { return rows ? plane[l * width + i] : plane[i * width + l]; };
        for (int i = 0; i < length; ++i)
            line[i] = at(i);
        int sum = 0;
        for (int i = -radius; i <= radius; ++i)
            sum += line[std::clamp(i, 0, length - 1)];
        for (int i = 0; i < length; ++i) {
            at(i) = sum / (2 * radius + 1);
            sum += line[std::min(i + radius + 1, length - 1)] - line[std::max(i - radius, 0)];
        }
    }
}

} // namespace

DismissableDialogOverlay::DismissableDialogOverlay(QWidget *window) : QWidget(window)
{
    setObjectName(QStringLiteral("dialog.overlay"));
    setAttribute(Qt::WA_NoMousePropagation);
    // Keys that no field of the content takes (Escape) come here.
    setFocusPolicy(Qt::StrongFocus);
    hide();

    m_panel = new QWidget(this);
    m_panel->setObjectName(QStringLiteral("dialog.panel"));
    auto *column = new QVBoxLayout(m_panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_panel->installEventFilter(this);
    if (window)
        window->installEventFilter(this);
}

DismissableDialogOverlay::~DismissableDialogOverlay() = default;

void DismissableDialogOverlay::setContent(QWidget *content)
{
    if (m_content == content)
        return;
    delete m_content;
    m_content = content;
    if (content) {
        content->setParent(m_panel);
        m_panel->layout()->addWidget(content);
        content->show();
    }
    placePanel();
}

void DismissableDialogOverlay::setPresented(bool presented)
{
    if (presented == isPresented())
        return;
    if (presented) {
        m_presence = std::make_unique<DialogPresence::Scope>();
        m_previousFocus = QApplication::focusWidget();
        if (parentWidget())
            setGeometry(parentWidget()->rect());
        placePanel();
        show();
        raise();
        focusContent();
        emit presentedChanged(true);
        return;
    }
    m_presence.reset();
    m_pressedOnScrim = false;
    // What the content's work put the keyboard on (a new card's title)
    // keeps it; otherwise it goes back to where it was.
    QWidget *focus = QApplication::focusWidget();
    const bool focusInside = !focus || focus == this || isAncestorOf(focus);
    hide();
    if (focusInside && m_previousFocus && m_previousFocus->isVisible())
        m_previousFocus->setFocus(Qt::OtherFocusReason);
    m_previousFocus = nullptr;
    emit presentedChanged(false);
    emit dismissed();
}

QRect DismissableDialogOverlay::panelRect() const
{
    return m_panel->geometry();
}

bool DismissableDialogOverlay::holds(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (const auto *overlay = qobject_cast<const DismissableDialogOverlay *>(widget))
            return overlay->isPresented();
    }
    return false;
}

void DismissableDialogOverlay::placePanel()
{
    const QRect room = rect().adjusted(windowMargin, windowMargin, -windowMargin, -windowMargin);
    QLayout *layout = m_panel->layout();
    layout->activate();
    const QSize hint = layout->sizeHint();
    const QSize least = layout->minimumSize();
    const int width = std::max(std::min(hint.width(), room.width()), std::min(least.width(), room.width()));
    int height = layout->hasHeightForWidth() ? layout->heightForWidth(width) : hint.height();
    height = std::min(std::max(height, least.height()), std::max(room.height(), 0));
    const QRect panel(room.center().x() - width / 2 + 1, room.center().y() - height / 2 + 1, width, height);
    if (panel != m_panel->geometry()) {
        m_panel->setGeometry(panel);
        update();
    }
}

void DismissableDialogOverlay::focusContent()
{
    // The content's first text field takes the keyboard, else its first
    // control that takes Tab.
    QWidget *firstControl = nullptr;
    QWidget *start = m_content ? m_content->nextInFocusChain() : nullptr;
    for (QWidget *candidate = start; candidate && m_content; candidate = candidate->nextInFocusChain()) {
        if (m_content->isAncestorOf(candidate) && candidate->isVisibleTo(this) && candidate->isEnabled() &&
            (candidate->focusPolicy() & Qt::TabFocus)) {
            if (qobject_cast<QLineEdit *>(candidate) || qobject_cast<QAbstractScrollArea *>(candidate)) {
                candidate->setFocus(Qt::TabFocusReason);
                return;
            }
            if (!firstControl)
                firstControl = candidate;
        }
        if (candidate->nextInFocusChain() == start)
            break;
    }
    if (firstControl)
        firstControl->setFocus(Qt::TabFocusReason);
    else
        setFocus(Qt::OtherFocusReason);
}

bool DismissableDialogOverlay::focusNextPrevChild(bool next)
{
    // Tab goes round the content; the window behind the scrim is out of reach.
    QList<QWidget *> stops;
    for (QWidget *widget : m_panel->findChildren<QWidget *>()) {
        if (widget->isVisibleTo(this) && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus))
            stops.append(widget);
    }
    if (stops.isEmpty())
        return false;
    // findChildren lists in creation order; the focus chain is the order users see.
    QList<QWidget *> ordered;
    QWidget *start = stops.first();
    QWidget *walker = start;
    do {
        if (stops.contains(walker))
            ordered.append(walker);
        walker = walker->nextInFocusChain();
    } while (walker && walker != start && ordered.size() < stops.size());
    const qsizetype at = ordered.indexOf(QApplication::focusWidget());
    const qsizetype count = ordered.size();
    const qsizetype target = at < 0 ? (next ? 0 : count - 1) : (at + (next ? 1 : count - 1)) % count;
    ordered[target]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool DismissableDialogOverlay::event(QEvent *event)
{
    // A shortcut overridden here keeps the window's Escape-bound commands
    // from taking the key while the sheet is up.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool DismissableDialogOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && isPresented()) {
        setGeometry(parentWidget()->rect());
        placePanel();
    } else if (watched == parentWidget() && event->type() == QEvent::ChildAdded && isPresented()) {
        // A view built while the overlay is up (the window rebuilds its
        // content when the look changes) would otherwise cover it.
        raise();
    } else if (watched == m_panel && event->type() == QEvent::LayoutRequest) {
        // The content grew or shrank: a notice came, progress went.
        placePanel();
    }
    return QWidget::eventFilter(watched, event);
}

const QImage &DismissableDialogOverlay::shadowFor(QSize panel)
{
    if (panel == m_shadowSize && !m_shadow.isNull())
        return m_shadow;
    m_shadowSize = panel;
    // Room for the blur to fade out in.
    const int spread = 2 * shadowRadius;
    const int width = panel.width() + 2 * spread;
    const int height = panel.height() + 2 * spread;
    QImage shape(width, height, QImage::Format_Alpha8);
    shape.fill(0);
    {
        QPainter painter(&shape);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 56));
        painter.drawRoundedRect(QRectF(spread, spread, panel.width(), panel.height()), cornerRadius, cornerRadius);
    }
    std::vector<int> plane(std::size_t(width) * std::size_t(height));
    for (int y = 0; y < height; ++y) {
        const uchar *row = shape.constScanLine(y);
        for (int x = 0; x < width; ++x)
            plane[std::size_t(y) * std::size_t(width) + std::size_t(x)] = row[x];
    }
    // Three box blurs come close to a Gaussian of half the shadow's radius.
    const int box = shadowRadius * 5 / 12;
    for (int pass = 0; pass < 3; ++pass) {
        boxBlur(plane, width, height, box, true);
        boxBlur(plane, width, height, box, false);
    }
    m_shadow = QImage(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y) {
        auto *row = reinterpret_cast<QRgb *>(m_shadow.scanLine(y));
        for (int x = 0; x < width; ++x)
            row[x] = qRgba(0, 0, 0, plane[std::size_t(y) * std::size_t(width) + std::size_t(x)]);
    }
    return m_shadow;
}

void DismissableDialogOverlay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgbF(0, 0, 0, float(scrimOpacity)));
    const QRect panel = panelRect();
    if (panel.isEmpty())
        return;
    painter.drawImage(panel.topLeft() - QPoint(2 * shadowRadius, 2 * shadowRadius - shadowOffsetY),
                      shadowFor(panel.size()));
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(panel).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    painter.setPen(QPen(Theme::Color::divider, 1));
    painter.setBrush(Theme::Color::window);
    painter.drawPath(shape);
}

void DismissableDialogOverlay::mousePressEvent(QMouseEvent *event)
{
    // Presses on the panel stay with it; only the scrim dismisses.
    m_pressedOnScrim = event->button() == Qt::LeftButton && !panelRect().contains(event->position().toPoint());
    event->accept();
}

void DismissableDialogOverlay::mouseReleaseEvent(QMouseEvent *event)
{
    const bool onScrim = !panelRect().contains(event->position().toPoint());
    event->accept();
    if (m_pressedOnScrim && onScrim && event->button() == Qt::LeftButton)
        dismiss();
    m_pressedOnScrim = false;
}

void DismissableDialogOverlay::wheelEvent(QWheelEvent *event)
{
    // The view under the scrim does not scroll.
    event->accept();
}

void DismissableDialogOverlay::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        dismiss();
    // No key goes on to the window under the scrim.
    event->accept();
}

} // namespace fenrow
