#include "SettingsForm.h"

#include "look/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace fenrow::SettingsForm {

QVBoxLayout *makePage(QWidget *page, const QString &title)
{
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(28, 22, 28, 22);
    column->setSpacing(10);
    auto *heading = new QLabel(title, page);
    heading->setObjectName(QStringLiteral("settings.page.title"));
    heading->setFont(Theme::titleFont());
    column->addWidget(heading);
    column->addSpacing(6);
    return column;
}

QLabel *sectionTitle(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setFont(Theme::sectionFont());
    label->setContentsMargins(0, 8, 0, 0);
    return label;
}

QLabel *caption(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setFont(Theme::captionFont());
    QPalette muted = label->palette();
    muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
    label->setPalette(muted);
    return label;
}

QLabel *warning(const QString &text, const QString &name, QWidget *parent)
{
    QLabel *label = caption(text, parent);
    label->setObjectName(name);
    QPalette warning = label->palette();
    warning.setColor(QPalette::WindowText, Theme::Color::warning);
    label->setPalette(warning);
    label->hide();
    return label;
}

QWidget *row(const QString &label, QWidget *control, QWidget *parent)
{
    auto *line = new QWidget(parent);
    auto *layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    auto *text = new QLabel(label, line);
    text->setWordWrap(true);
    layout->addWidget(text, 1);
    control->setParent(line);
    layout->addWidget(control, 0, Qt::AlignRight | Qt::AlignVCenter);
    return line;
}

} // namespace fenrow::SettingsForm
