#include "QuickCapturePanel.h"

#include "canvasview/CanvasAppearance.h"
#include "QuickCaptureContent.h"
#include "shell/ShortcutKeys.h"
#include "shell/WindowFitting.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace fenrow {

namespace {

constexpr double cornerRadius = 12;

} // namespace

QuickCapturePanel::QuickCapturePanel(FenrowStore &store, FenrowHistory *history, const ActiveFlowState *activeFlow,
                                     AppPreferences &preferences, AppEnvironment &environment, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), m_store(store),
      m_history(history), m_activeFlow(activeFlow), m_preferences(preferences), m_environment(environment)
{
    setObjectName(QStringLiteral("quickCapture.window"));
    setWindowTitle(qtTrId("quickCapture.window.title"));
    // The rounded corners show what is behind them.
    setAttribute(Qt::WA_TranslucentBackground);
    m_appearance = new CanvasAppearance(preferences, this);
    connect(m_appearance, &CanvasAppearance::changed, this, qOverload<>(&QWidget::update));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    resize(WindowFitting::capturePanelSize);
}

QuickCapturePanel::~QuickCapturePanel() = default;

QKeyCombination QuickCapturePanel::shortcut(const KeyCombo &combo)
{
    return ShortcutKeys::captureShortcut(combo);
}

QuickCaptureContent *QuickCapturePanel::content() const
{
    return m_content;
}

void QuickCapturePanel::toggle()
{
    if (isVisible())
        dismiss();
    else
        open();
}

void QuickCapturePanel::open()
{
    if (isVisible())
        return;
    delete m_content;
    m_content = new QuickCaptureContent(m_store, m_environment, m_preferences, m_history, m_activeFlow,
                                        m_appearance->colors(), this);
    connect(m_content, &QuickCaptureContent::closeRequested, this, &QuickCapturePanel::dismiss);
    layout()->addWidget(m_content);
    // The width is fixed; the height is what the content needs, never less
    // than the panel was made with.
    const int width = WindowFitting::capturePanelSize.width();
    m_content->setFixedWidth(width);
    const int height = std::max(WindowFitting::capturePanelSize.height(), m_content->sizeHint().height());
    setFixedSize(width, height);

    QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen)
        move(WindowFitting::centredOrigin(screen->availableGeometry(), size()));
    show();
    raise();
    activateWindow();
    m_content->field()->setFocus();
}

void QuickCapturePanel::dismiss()
{
    if (isVisible())
        hide();
    if (m_content) {
        // The content may be the one asking to close, from inside a save.
        m_content->hide();
        m_content->deleteLater();
        m_content = nullptr;
    }
}

bool QuickCapturePanel::event(QEvent *event)
{
    // A click anywhere else takes the focus away: the panel goes with it.
    if (event->type() == QEvent::WindowDeactivate && isVisible())
        dismiss();
    return QWidget::event(event);
}

void QuickCapturePanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        dismiss();
        return;
    }
    QWidget::keyPressEvent(event);
}

void QuickCapturePanel::mousePressEvent(QMouseEvent *event)
{
    // Dragged by its background, like any small floating window.
    if (event->button() == Qt::LeftButton && windowHandle() && windowHandle()->startSystemMove())
        return;
    QWidget::mousePressEvent(event);
}

void QuickCapturePanel::paintEvent(QPaintEvent *)
{
    const CanvasColors &colors = m_appearance->colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.cardBorder, 1));
    painter.setBrush(colors.ramp.nodeSurface);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

} // namespace fenrow
