#include "EmptyStateView.h"

#include "Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace fenrow {

class EmptyStateSymbol : public QWidget {
public:
    explicit EmptyStateSymbol(QWidget *parent) : QWidget(parent) { setFixedSize(60, 60); }

    Glyphs::Symbol symbol = Glyphs::Symbol::emptySelection;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        Glyphs::paintSymbol(painter, QRectF(rect()).adjusted(2, 2, -2, -2), symbol, Theme::Color::secondaryText);
    }
};

EmptyStateView::EmptyStateView(const QString &name, QWidget *parent) : QWidget(parent)
{
    setObjectName(name);

    m_symbol = new EmptyStateSymbol(this);
    m_title = new QLabel(this);
    m_title->setObjectName(name + QStringLiteral(".title"));
    m_title->setFont(Theme::titleFont());
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setWordWrap(true);

    m_message = new QLabel(this);
    m_message->setObjectName(name + QStringLiteral(".message"));
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    // A measure a reader's eye can follow, whatever the window's width.
    m_message->setMaximumWidth(380);
    QPalette muted = m_message->palette();
    muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
    m_message->setPalette(muted);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(32, 32, 32, 32);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(m_symbol, 0, Qt::AlignHCenter);
    column->addSpacing(18);
    column->addWidget(m_title);
    column->addSpacing(8);
    // Centred by stretches, not by alignment: an aligned label gets its
    // one-line height and the wrapped lines would be cut off.
    auto *measure = new QHBoxLayout;
    measure->addStretch(1);
    measure->addWidget(m_message, 100);
    measure->addStretch(1);
    column->addLayout(measure);
    // A little above centre reads as centred.
    column->addStretch(2);
}

void EmptyStateView::setContent(Glyphs::Symbol symbol, const QString &title, const QString &message)
{
    m_symbol->symbol = symbol;
    m_symbol->update();
    m_title->setText(title);
    m_message->setText(message);
}

Glyphs::Symbol EmptyStateView::symbol() const
{
    return m_symbol->symbol;
}

} // namespace fenrow
