#include "EmptyDetailView.h"

#include "Glyphs.h"
#include "Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace fenrow {

namespace {

class EmptySymbol : public QWidget {
public:
    explicit EmptySymbol(QWidget *parent) : QWidget(parent) { setFixedSize(60, 60); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        Glyphs::paintEmptySelection(painter, QRectF(rect()).adjusted(2, 2, -2, -2), Theme::Color::secondaryText);
    }
};

} // namespace

EmptyDetailView::EmptyDetailView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("detail.empty"));

    auto *symbol = new EmptySymbol(this);
    auto *title = new QLabel(qtTrId("detail.empty.title"), this);
    title->setObjectName(QStringLiteral("detail.empty.title"));
    title->setFont(Theme::titleFont());
    title->setAlignment(Qt::AlignCenter);
    title->setWordWrap(true);

    auto *message = new QLabel(qtTrId("detail.empty.message"), this);
    message->setObjectName(QStringLiteral("detail.empty.message"));
    message->setAlignment(Qt::AlignCenter);
    message->setWordWrap(true);
    // A measure a reader's eye can follow, whatever the window's width.
    message->setMaximumWidth(380);
    QPalette muted = message->palette();
    muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
    message->setPalette(muted);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(32, 32, 32, 32);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(symbol, 0, Qt::AlignHCenter);
    column->addSpacing(18);
    column->addWidget(title);
    column->addSpacing(8);
    // Centred by stretches, not by alignment: an aligned label gets its
    // one-line height and the wrapped lines would be cut off.
    auto *measure = new QHBoxLayout;
    measure->addStretch(1);
    measure->addWidget(message, 100);
    measure->addStretch(1);
    column->addLayout(measure);
    // A little above centre reads as centred.
    column->addStretch(2);
}

} // namespace fenrow
