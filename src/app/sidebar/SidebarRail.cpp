#include "SidebarRail.h"

#include "look/Glyphs.h"
#include "look/Theme.h"
#include "program/UuidText.h"
#include "domain/FenrowStore.h"
#include "domain/TaskFlow.h"

#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

using namespace Theme;

namespace {

QString tileStyle()
{
    return QStringLiteral("QToolButton { border: none; border-radius: 8px; color: %1; background: transparent; }"
                          " QToolButton:hover { background: %2; }"
                          " QToolButton:checked { background: %3; color: %4; }")
        .arg(Color::secondaryText.name(), Color::hover.name(), Color::accentSoft.name(), Color::accent.name());
}

// What a flow's tile shows: the first letter of its name, or a dot for a
// name with none.
QString initialOf(const QString &name)
{
    for (const QChar c : name.trimmed())
        if (c.isLetterOrNumber())
            return QString(c).toUpper();
    return QStringLiteral("•");
}

} // namespace

SidebarRail::SidebarRail(FenrowStore &store, QWidget *parent) : QWidget(parent), m_store(store)
{
    setObjectName(QStringLiteral("sidebar.rail"));
    setFixedWidth(railWidth);
    setStyleSheet(tileStyle());
    // The sidebar's ground, so folding changes the width and nothing else.
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, Color::sidebar);
    setPalette(colours);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins((railWidth - tileSize) / 2, 16, (railWidth - tileSize) / 2, 12);
    column->setSpacing(4);
    column->setAlignment(Qt::AlignHCenter);

    auto *mark = new QLabel(this);
    mark->setPixmap(Glyphs::brandMark(22));
    mark->setAlignment(Qt::AlignCenter);
    mark->setFixedSize(tileSize, 22);
    column->addWidget(mark);
    column->addSpacing(8);
    QToolButton *expand =
        makeTile(Glyphs::sidebarToggle(Color::secondaryText), QStringLiteral("sidebar.action.expand"),
                 qtTrId("sidebar.action.expand"));
    connect(expand, &QToolButton::clicked, this, &SidebarRail::expandRequested);
    column->addWidget(expand);
    QToolButton *search = makeTile(Glyphs::magnifier(Color::secondaryText), QStringLiteral("sidebar.rail.search"),
                                   qtTrId("sidebar.route.search"));
    connect(search, &QToolButton::clicked, this, &SidebarRail::searchRequested);
    column->addWidget(search);
    m_ready = makeRouteTile(Glyphs::readyList(Color::accent), QStringLiteral("sidebar.rail.ready"),
                            qtTrId("sidebar.route.ready"), DetailRoute::ready());
    m_archive = makeRouteTile(Glyphs::archiveBox(Color::accent), QStringLiteral("sidebar.rail.archive"),
                              qtTrId("sidebar.route.archive"), DetailRoute::archive());
    column->addWidget(m_ready);
    column->addWidget(m_archive);

    auto *rule = new QFrame(this);
    rule->setFixedSize(tileSize - 10, 1);
    rule->setStyleSheet(QStringLiteral("background: %1;").arg(Color::divider.name()));
    column->addSpacing(6);
    column->addWidget(rule, 0, Qt::AlignHCenter);
    column->addSpacing(6);

    // Many flows scroll; the tiles at the foot stay put.
    auto *scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("sidebar.rail.flows"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidgetResizable(true);
    scroll->setFixedWidth(tileSize);
    scroll->setStyleSheet(QStringLiteral("QScrollArea { background: transparent; }"));
    m_flowTiles = new QWidget(scroll);
    m_flowTiles->setStyleSheet(tileStyle());
    m_flowColumn = new QVBoxLayout(m_flowTiles);
    m_flowColumn->setContentsMargins(0, 0, 0, 0);
    m_flowColumn->setSpacing(4);
    m_flowColumn->addStretch(1);
    scroll->setWidget(m_flowTiles);
    scroll->viewport()->setAutoFillBackground(false);
    m_flowTiles->setAutoFillBackground(false);
    column->addWidget(scroll, 1);

    QToolButton *settings = makeTile(Glyphs::gear(Color::secondaryText), QStringLiteral("sidebar.rail.settings"),
                                     qtTrId("sidebar.action.settings"));
    connect(settings, &QToolButton::clicked, this, &SidebarRail::settingsRequested);
    QToolButton *quit =
        makeTile(Glyphs::quit(Color::secondaryText), QStringLiteral("sidebar.rail.quit"), qtTrId("sidebar.action.quit"));
    connect(quit, &QToolButton::clicked, this, &SidebarRail::quitRequested);
    column->addWidget(settings);
    column->addWidget(quit);

    connect(&m_store, &FenrowStore::changed, this, [this] {
        m_stale = true;
        if (isVisible())
            rebuildFlowTiles();
    });
}

QToolButton *SidebarRail::makeTile(const QIcon &icon, const QString &name, const QString &tip)
{
    auto *tile = new QToolButton(this);
    tile->setObjectName(name);
    tile->setIcon(icon);
    tile->setIconSize(QSize(16, 16));
    tile->setFixedSize(tileSize, tileSize);
    tile->setToolTip(tip);
    tile->setAccessibleName(tip);
    tile->setCursor(Qt::PointingHandCursor);
    tile->setFocusPolicy(Qt::TabFocus);
    return tile;
}

QToolButton *SidebarRail::makeRouteTile(const QIcon &icon, const QString &name, const QString &tip,
                                        const DetailRoute &route)
{
    QToolButton *tile = makeTile(icon, name, tip);
    tile->setCheckable(true);
    connect(tile, &QToolButton::clicked, this, [this, route] {
        // A click on the chosen tile would uncheck it; the route stays.
        markRoute();
        if (m_route == route)
            return;
        setRoute(route);
        emit routeSelected(route);
    });
    return tile;
}

void SidebarRail::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_stale)
        rebuildFlowTiles();
}

void SidebarRail::paintEvent(QPaintEvent *)
{
    // The edge the sidebar's divider draws when it is unfolded.
    QPainter painter(this);
    painter.setPen(Color::divider);
    painter.drawLine(width() - 1, 0, width() - 1, height());
}

void SidebarRail::rebuildFlowTiles()
{
    m_stale = false;
    QList<std::pair<QUuid, QString>> flows;
    for (const TaskFlow *flow : m_store.flows())
        flows.append({flow->id, flow->name});
    if (flows == m_shownFlows)
        return;
    m_shownFlows = flows;
    while (m_flowColumn->count() > 1) {
        QLayoutItem *item = m_flowColumn->takeAt(0);
        delete item->widget();
        delete item;
    }
    int at = 0;
    for (const auto &[id, name] : std::as_const(m_shownFlows)) {
        QToolButton *tile = makeRouteTile(QIcon(), QStringLiteral("sidebar.row.") + uuidText(id), name,
                                          DetailRoute::flow(id));
        tile->setParent(m_flowTiles);
        tile->setText(initialOf(name));
        tile->setFont(sectionFont());
        tile->setToolButtonStyle(Qt::ToolButtonTextOnly);
        m_flowColumn->insertWidget(at++, tile);
    }
    markRoute();
}

void SidebarRail::setRoute(const DetailRoute &route)
{
    m_route = route;
    markRoute();
}

void SidebarRail::markRoute()
{
    m_ready->setChecked(m_route.isReady());
    m_archive->setChecked(m_route.isArchive());
    for (auto *tile : m_flowTiles->findChildren<QToolButton *>())
        tile->setChecked(tile->objectName() == QStringLiteral("sidebar.row.") + uuidText(m_route.flowId())
                         && m_route.kind() == DetailRoute::Kind::flow);
}

QAbstractButton *SidebarRail::flowTile(const QUuid &id) const
{
    return m_flowTiles->findChild<QAbstractButton *>(QStringLiteral("sidebar.row.") + uuidText(id));
}

} // namespace fenrow
