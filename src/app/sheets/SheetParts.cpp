#include "SheetParts.h"

#include "look/Theme.h"
#include "shell/AppEnvironment.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace fenrow {

using namespace Theme;

namespace {

// The tinted button of a sheet's secondary actions.
QString quietButtonStyle()
{
    return QStringLiteral("QPushButton { color: %1; background: %2; border: none;"
                          " border-radius: 5px; padding: 5px 14px; }"
                          " QPushButton:hover { background: %3; }"
                          " QPushButton:focus { border: 1px solid %4; }")
        .arg(Color::text.name(), Color::hover.name(), Color::track.name(), Color::accent.name());
}

} // namespace

namespace SheetGlyphs {

namespace {

// A four-pointed star with curved sides, centred on `centre`.
QPainterPath sparkle(QPointF centre, double radius)
{
    QPainterPath star;
    const double waist = radius * 0.18;
    star.moveTo(centre + QPointF(0, -radius));
    star.quadTo(centre + QPointF(waist, -waist), centre + QPointF(radius, 0));
    star.quadTo(centre + QPointF(waist, waist), centre + QPointF(0, radius));
    star.quadTo(centre + QPointF(-waist, waist), centre + QPointF(-radius, 0));
    star.quadTo(centre + QPointF(-waist, -waist), centre + QPointF(0, -radius));
    return star;
}

} // namespace

void paint(QPainter &painter, const QRectF &rect, Glyph glyph, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = std::min(rect.width(), rect.height()) / 16.0;
    const QPointF origin = rect.center() - QPointF(8 * unit, 8 * unit);
    const auto at = [&](double x, double y) { return origin + QPointF(x * unit, y * unit); };
    QPen pen(color, 1.5 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    switch (glyph) {
    case Glyph::scissors:
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(at(4, 4.5), 2.4 * unit, 2.4 * unit);
        painter.drawEllipse(at(4, 11.5), 2.4 * unit, 2.4 * unit);
        // The blades cross a little right of the rings and open to the right.
        painter.drawLine(at(6, 5.8), at(14.5, 12));
        painter.drawLine(at(6, 10.2), at(14.5, 4));
        break;
    case Glyph::sparkles:
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPath(sparkle(at(6.5, 9), 6 * unit));
        painter.drawPath(sparkle(at(12.5, 3.8), 3 * unit));
        break;
    case Glyph::warning: {
        QPainterPath triangle;
        triangle.moveTo(at(8, 1.5));
        triangle.lineTo(at(15, 14));
        triangle.lineTo(at(1, 14));
        triangle.closeSubpath();
        painter.setPen(QPen(color, 1.2 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(color);
        painter.drawPath(triangle);
        painter.setPen(QPen(Qt::white, 1.6 * unit, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(at(8, 5.8), at(8, 9.6));
        painter.drawPoint(at(8, 12));
        break;
    }
    case Glyph::handle:
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 2; ++column)
                painter.drawEllipse(at(5.5 + column * 5, 3 + row * 5), 1.3 * unit, 1.3 * unit);
        break;
    }
    painter.restore();
}

QIcon icon(Glyph glyph, const QColor &color)
{
    QIcon icon;
    for (const int side : {16, 32}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(painter, QRectF(0, 0, side, side).adjusted(side / 16.0, side / 16.0, -side / 16.0, -side / 16.0), glyph,
              color);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace SheetGlyphs

SheetGlyph::SheetGlyph(SheetGlyphs::Glyph glyph, const QColor &color, int size, QWidget *parent)
    : QWidget(parent), m_glyph(glyph), m_color(color)
{
    setFixedSize(size, size);
}

void SheetGlyph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    SheetGlyphs::paint(painter, QRectF(rect()), m_glyph, m_color);
}

BusyIndicator::BusyIndicator(QWidget *parent) : QWidget(parent)
{
    setFixedSize(16, 16);
    m_timer = new QTimer(this);
    m_timer->setInterval(40);
    connect(m_timer, &QTimer::timeout, this, [this] {
        m_angle = (m_angle + 18) % 360;
        update();
    });
}

void BusyIndicator::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_timer->start();
}

void BusyIndicator::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_timer->stop();
}

void BusyIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring = QRectF(rect()).adjusted(2, 2, -2, -2);
    painter.setPen(QPen(Color::track, 2));
    painter.drawEllipse(ring);
    painter.setPen(QPen(Color::accent, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, -m_angle * 16, 100 * 16);
}

ProgressRow::ProgressRow(const char *key, QWidget *parent) : QWidget(parent), m_key(QString::fromLatin1(key))
{
    setObjectName(m_key);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(new BusyIndicator(this));
    auto *text = new QLabel(qtTrId(key), this);
    text->setObjectName(QString::fromLatin1(key) + QStringLiteral(".text"));
    text->setWordWrap(true);
    QPalette muted = text->palette();
    muted.setColor(QPalette::WindowText, Color::secondaryText);
    text->setPalette(muted);
    row->addWidget(text, 1);
}

QPushButton *ProgressRow::addStopButton()
{
    auto *stop = new QPushButton(qtTrId("engine.stop"), this);
    stop->setCursor(Qt::PointingHandCursor);
    stop->setStyleSheet(quietButtonStyle());
    stop->setObjectName(m_key + QStringLiteral(".stop"));
    static_cast<QHBoxLayout *>(layout())->addWidget(stop);
    return stop;
}

NoticeRow::NoticeRow(const QString &identifier, SheetGlyphs::Glyph glyph, QWidget *parent) : QWidget(parent)
{
    setObjectName(identifier);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 10, 12, 10);
    row->setSpacing(10);
    row->addWidget(new SheetGlyph(glyph, Color::warning, 18, this), 0, Qt::AlignTop);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    m_title = new QLabel(this);
    m_title->setObjectName(identifier + QStringLiteral(".title"));
    m_title->setFont(sectionFont());
    m_title->setWordWrap(true);
    m_message = new QLabel(this);
    m_message->setObjectName(identifier + QStringLiteral(".message"));
    m_message->setWordWrap(true);
    QPalette muted = m_message->palette();
    muted.setColor(QPalette::WindowText, Color::secondaryText);
    m_message->setPalette(muted);
    texts->addWidget(m_title);
    texts->addWidget(m_message);
    row->addLayout(texts, 1);
}

void NoticeRow::setTexts(const QString &title, const QString &message)
{
    m_title->setText(title);
    m_message->setText(message);
}

void NoticeRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor tint = Color::warning;
    tint.setAlphaF(0.08f);
    QColor edge = Color::warning;
    edge.setAlphaF(0.25f);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(tint);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}

ManualOnlyBannerBar::ManualOnlyBannerBar(AppEnvironment &environment, QWidget *parent)
    : QWidget(parent), m_environment(environment)
{
    setObjectName(QString::fromLatin1(ManualOnlyBanner::identifier));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 7, 6, 7);
    row->setSpacing(8);
    row->addWidget(new SheetGlyph(SheetGlyphs::Glyph::warning, Color::warning, 16, this), 0, Qt::AlignTop);
    m_message = new QLabel(this);
    m_message->setObjectName(QString::fromLatin1(ManualOnlyBanner::identifier) + QStringLiteral(".message"));
    m_message->setWordWrap(true);
    m_message->setFont(captionFont());
    row->addWidget(m_message, 1);
    const auto linkButton = [this](const QString &name, const QString &text) {
        auto *button = new QToolButton(this);
        button->setObjectName(name);
        button->setText(text);
        button->setFont(captionFont());
        button->setCursor(Qt::PointingHandCursor);
        button->setAutoRaise(true);
        button->setStyleSheet(QStringLiteral("QToolButton { color: %1; border: none; padding: 2px 6px; }"
                                             " QToolButton:hover { text-decoration: underline; }")
                                  .arg(Color::accent.name()));
        return button;
    };
    m_chooseModel = linkButton(QStringLiteral("banner.engineUnavailable.chooseModel"),
                               qtTrId("banner.engineUnavailable.chooseModel"));
    m_chooseModel->hide();
    row->addWidget(m_chooseModel, 0, Qt::AlignTop);
    connect(m_chooseModel, &QToolButton::clicked, this, &ManualOnlyBannerBar::modelChoiceRequested);
    QToolButton *close = linkButton(QStringLiteral("banner.engineUnavailable.dismiss"), ManualOnlyBanner::dismissLabel());
    row->addWidget(close, 0, Qt::AlignTop);
    connect(close, &QToolButton::clicked, this, &ManualOnlyBannerBar::dismiss);
    connect(&m_environment, &AppEnvironment::availabilityChanged, this, &ManualOnlyBannerBar::refresh);
    connect(&m_environment, &AppEnvironment::engineChanged, this, &ManualOnlyBannerBar::refresh);
    refresh();
}

void ManualOnlyBannerBar::dismiss()
{
    if (m_dismissed)
        return;
    m_dismissed = true;
    refresh();
    emit dismissed();
}

void ManualOnlyBannerBar::offerModelChoice()
{
    m_chooseModel->show();
}

void ManualOnlyBannerBar::refresh()
{
    // A scripted run has an engine whatever the computer offers.
    ManualOnlyBanner banner{m_environment.availability()};
    const bool shown = !m_environment.hasEngine() && banner.isShown(m_dismissed);
    m_message->setText(banner.message());
    setVisible(shown);
}

void ManualOnlyBannerBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor tint = Color::warning;
    tint.setAlphaF(0.09f);
    painter.setBrush(tint);
    painter.drawRoundedRect(QRectF(rect()), 7, 7);
}

SheetFrame::SheetFrame(const QString &identifier, int width, QWidget *parent) : QWidget(parent)
{
    setObjectName(identifier);
    setFixedWidth(width);
    setStyleSheet(QStringLiteral("QLineEdit, QPlainTextEdit { border: 1px solid %1; border-radius: 6px;"
                                 " padding: 4px 6px; background: %2; selection-background-color: %3; }"
                                 " QLineEdit:focus, QPlainTextEdit:focus { border-color: %3; }"
                                 " QLineEdit:disabled, QPlainTextEdit:disabled { color: %4; background: %5; }")
                      .arg(Color::divider.name(), Color::window.name(), Color::accent.name(),
                           Color::secondaryText.name(), Color::sidebar.name()));

    m_title = new QLabel(this);
    m_title->setObjectName(identifier + QStringLiteral(".title"));
    m_title->setFont(titleFont());
    m_title->setWordWrap(true);
    m_subtitle = new QLabel(this);
    m_subtitle->setObjectName(identifier + QStringLiteral(".subtitle"));
    m_subtitle->setWordWrap(true);
    QPalette muted = m_subtitle->palette();
    muted.setColor(QPalette::WindowText, Color::secondaryText);
    m_subtitle->setPalette(muted);

    m_body = new QVBoxLayout;
    m_body->setContentsMargins(0, 0, 0, 0);
    m_body->setSpacing(12);

    m_cancel = new QPushButton(this);
    m_cancel->setCursor(Qt::PointingHandCursor);
    m_cancel->setStyleSheet(quietButtonStyle());
    m_primary = new QPushButton(this);
    m_primary->setCursor(Qt::PointingHandCursor);
    m_primary->setDefault(true);
    m_primary->setStyleSheet(filledButtonStyle(Color::accent) +
                             QStringLiteral(" QPushButton:disabled { background: %1; color: %2; }"
                                            " QPushButton:focus { border: 1px solid %3; }")
                                 .arg(Color::track.name(), Color::secondaryText.name(),
                                      Color::accent.darker(140).name()));
    connect(m_cancel, &QPushButton::clicked, this, &SheetFrame::closeRequested);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_primary);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 22, 24, 20);
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addSpacing(4);
    column->addWidget(m_subtitle);
    column->addSpacing(16);
    column->addLayout(m_body);
    column->addSpacing(20);
    column->addLayout(buttons);
}

void SheetFrame::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // The buttons are made before the sheet's fields; Tab reaches them last.
    QWidget *last = nullptr;
    for (QWidget *widget = nextInFocusChain(); widget != this && isAncestorOf(widget);
         widget = widget->nextInFocusChain()) {
        if (widget != m_cancel && widget != m_primary && (widget->focusPolicy() & Qt::TabFocus))
            last = widget;
    }
    if (last) {
        setTabOrder(last, m_cancel);
        setTabOrder(m_cancel, m_primary);
    }
}

QLabel *SheetFrame::fieldLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setFont(sectionFont());
    label->setWordWrap(true);
    return label;
}

} // namespace fenrow
