#include "TemplateMenuButton.h"

#include "look/Glyphs.h"
#include "look/Theme.h"
#include "program/UuidText.h"
#include "domain/FenrowStore.h"

#include <QMenu>

namespace fenrow {

using namespace Theme;

TemplateMenuButton::TemplateMenuButton(FenrowStore &store, QWidget *parent) : QToolButton(parent), m_store(store)
{
    setObjectName(QStringLiteral("sidebar.templateMenu"));
    setIcon(Glyphs::templates(Color::secondaryText));
    setToolTip(qtTrId("sidebar.template.menu.help"));
    setAccessibleName(qtTrId("sidebar.template.menu.title"));
    setAccessibleDescription(qtTrId("sidebar.template.menu.help"));
    setAutoRaise(true);
    setFixedSize(26, 26);
    setCursor(Qt::PointingHandCursor);
    setStyleSheet(QStringLiteral("QToolButton { border: none; border-radius: 6px; }"
                                 " QToolButton:hover { background: %1; }"
                                 " QToolButton:pressed { background: %2; }")
                      .arg(Color::hover.name(), Color::track.name()));

    m_menu = new QMenu(qtTrId("sidebar.template.menu.title"), this);
    m_menu->setObjectName(QStringLiteral("sidebar.template.menu"));
    // Filled when opened: the list is always the store's of the moment.
    connect(m_menu, &QMenu::aboutToShow, this, &TemplateMenuButton::fillMenu);
    // Opened without a loop of its own (unlike a button's attached menu),
    // so nothing waits on it while it is open.
    connect(this, &QToolButton::clicked, this, [this] { m_menu->popup(mapToGlobal(rect().bottomLeft())); });

    connect(&m_store, &FenrowStore::changed, this, &TemplateMenuButton::followStore);
    followStore();
}

void TemplateMenuButton::followStore()
{
    setVisible(!m_store.templates().empty());
}

void TemplateMenuButton::fillMenu()
{
    m_menu->clear();
    m_menu->addSection(qtTrId("sidebar.template.menu.title"));
    for (const FlowTemplate *flowTemplate : m_store.templateList()) {
        // A name is the user's text: "&" is a letter, not a shortcut mark.
        QAction *entry = m_menu->addAction(QString(flowTemplate->name).replace(u'&', QStringLiteral("&&")));
        entry->setObjectName(QStringLiteral("sidebar.template.") + uuidText(flowTemplate->id));
        const QUuid id = flowTemplate->id;
        connect(entry, &QAction::triggered, this, [this, id] { createFrom(id); });
    }
}

void TemplateMenuButton::createFrom(const QUuid &templateId)
{
    for (const FlowTemplate *flowTemplate : m_store.templateList()) {
        if (flowTemplate->id != templateId)
            continue;
        if (const TaskFlow *flow = m_store.createFlow(*flowTemplate))
            emit flowCreated(flow->id);
        return;
    }
}

} // namespace fenrow
