#include "CanvasToolbar.h"

#include "CanvasAppearance.h"
#include "CanvasView.h"
#include "canvas/CanvasEditor.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/TaskFlow.h"
#include "shell/AppPreferences.h"

#include <QActionGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

namespace fenrow {

using Glyph = CanvasGlyphs::Glyph;

namespace {

QFrame *separator(QWidget *parent)
{
    auto *line = new QFrame(parent);
    line->setFixedSize(1, 18);
    line->setFrameShape(QFrame::NoFrame);
    line->setAutoFillBackground(true);
    return line;
}

} // namespace

CanvasToolbar::CanvasToolbar(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                             CanvasAppearance &appearance, CanvasView &view, QWidget *parent)
    : CanvasPanel(appearance, parent), m_store(store), m_history(history), m_preferences(preferences), m_view(view)
{
    setObjectName(QStringLiteral("toolbar"));
    const auto button = [&](Glyph glyph, const char *name, const char *help) {
        return new CanvasToolButton(appearance, glyph, QString::fromLatin1(name), qtTrId(help), this);
    };
    m_add = button(Glyph::add, "toolbar.addTask", "toolbar.addTask");
    m_add->setText(qtTrId("toolbar.addItem"));
    m_add->setPrimary(true);
    m_attach = button(Glyph::attach, "toolbar.attachFile", "toolbar.attachFile");
    m_filter = button(Glyph::filter, "toolbar.filter", "toolbar.filter");
    m_grid = button(Glyph::grid, "toolbar.grid", "toolbar.grid");
    m_grid->setCheckable(true);
    m_arrange = button(Glyph::arrange, "toolbar.arrange", "toolbar.arrange");
    m_archive = button(Glyph::archive, "toolbar.archiveDone", "toolbar.archiveDone");
    m_archive->setAccessibleName(qtTrId("archive.action.archiveDone"));

    m_filterMenu = new QMenu(this);
    m_filterMenu->setObjectName(QStringLiteral("toolbar.filter.menu"));
    connect(m_filterMenu, &QMenu::aboutToShow, this, &CanvasToolbar::fillFilterMenu);
    m_filter->setMenu(m_filterMenu);
    m_filter->setPopupMode(QToolButton::InstantPopup);
    // The menu arrow of a tool button would crowd the glyph.
    m_filter->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; width: 0; }"));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(contentsMargins() + QMargins(5, 5, 5, 5));
    row->setSpacing(2);
    row->addWidget(m_add);
    row->addSpacing(4);
    row->addWidget(m_attach);
    row->addWidget(m_filter);
    row->addWidget(m_grid);
    row->addWidget(m_arrange);
    row->addSpacing(3);
    QFrame *line = separator(this);
    row->addWidget(line);
    row->addSpacing(3);
    row->addWidget(m_archive);
    const auto paintLine = [this, line] {
        QPalette palette = line->palette();
        palette.setColor(QPalette::Window, m_appearance.colors().ramp.brandBorder);
        line->setPalette(palette);
    };
    paintLine();
    connect(&appearance, &CanvasAppearance::changed, this, paintLine);

    connect(m_add, &QToolButton::clicked, &m_view, &CanvasView::addTask);
    connect(m_attach, &QToolButton::clicked, this, [this] {
        if (m_editor)
            m_view.attachFilesAt(m_editor->interaction().viewportCenter());
    });
    connect(m_grid, &QToolButton::clicked, this,
            [this] { m_preferences.setGridEnabled(!m_preferences.gridEnabled()); });
    connect(m_arrange, &QToolButton::clicked, this, &CanvasToolbar::arrange);
    connect(m_archive, &QToolButton::clicked, this, [this] {
        if (m_editor)
            emit archiveDoneRequested(m_editor->flowID());
    });
    connect(&m_store, &FenrowStore::changed, this, &CanvasToolbar::refresh);
    connect(&m_preferences, &AppPreferences::changed, this, &CanvasToolbar::refresh);
    refresh();
}

void CanvasToolbar::setEditor(CanvasEditor *editor)
{
    disconnect(m_interactionConnection);
    m_editor = editor;
    if (editor)
        m_interactionConnection = connect(&editor->interaction(), &CanvasInteraction::changed, this,
                                          [this](CanvasInteraction::Field field) {
                                              if (field == CanvasInteraction::Field::colorFilter)
                                                  refresh();
                                          });
    refresh();
}

void CanvasToolbar::refresh()
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    bool hasDone = false;
    if (flow)
        for (const FlowNode *node : flow->items())
            hasDone = hasDone || node->isDone;
    m_archive->setEnabled(hasDone);
    m_arrange->setEnabled(flow && !flow->items().empty());
    m_grid->setChecked(m_preferences.gridEnabled());
    const bool filtering = m_editor && !m_editor->interaction().colorFilter().isEmpty();
    m_filter->setGlyph(filtering ? Glyph::filterActive : Glyph::filter);
    m_filter->setChecked(false);
}

void CanvasToolbar::arrange()
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (!flow || flow->items().empty())
        return;
    m_history.recordAction(QStringLiteral("Arrange as tree"), *flow, [&] {
        m_store.arrangeAsTree(*flow, m_editor->interaction().sizeResolver());
    });
    m_editor->zoomCommand(CanvasZoom::Kind::zoomToFit);
}

void CanvasToolbar::fillFilterMenu()
{
    m_filterMenu->clear();
    if (!m_editor)
        return;
    const CanvasColors &colors = m_appearance.colors();
    const CanvasColorFilter filter = m_editor->interaction().colorFilter();
    for (int i = 0; i <= int(NodeColor::grey); ++i) {
        const auto color = NodeColor(i);
        const QByteArray key = (QStringLiteral("canvas.node.color.") + rawString(color)).toUtf8();
        QAction *action = m_filterMenu->addAction(qtTrId(key.constData()));
        action->setObjectName(QStringLiteral("toolbar.filter.color.") + rawString(color));
        action->setCheckable(true);
        action->setChecked(filter.contains(color));
        QPixmap swatch(14, 14);
        swatch.fill(Qt::transparent);
        QPainter painter(&swatch);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colors.tag(NodeColor::none), 1));
        painter.setBrush(color == NodeColor::none ? QColor(Qt::transparent) : colors.tag(color));
        painter.drawEllipse(QRectF(1.5, 1.5, 11, 11));
        painter.end();
        action->setIcon(QIcon(swatch));
        connect(action, &QAction::triggered, this, [this, color] {
            if (!m_editor)
                return;
            CanvasColorFilter next = m_editor->interaction().colorFilter();
            next.toggle(color);
            m_editor->interaction().setColorFilter(next);
        });
    }
    m_filterMenu->addSeparator();
    if (filter.isEmpty()) {
        QAction *off = m_filterMenu->addAction(qtTrId("toolbar.filter.off"));
        off->setObjectName(QStringLiteral("toolbar.filter.off"));
        off->setEnabled(false);
    } else {
        QAction *clear = m_filterMenu->addAction(qtTrId("toolbar.filter.clear"), this, [this] {
            if (m_editor)
                m_editor->interaction().setColorFilter({});
        });
        clear->setObjectName(QStringLiteral("toolbar.filter.clear"));
    }
    m_filterMenu->addSection(qtTrId("toolbar.filter.mode.label"))->setObjectName(QStringLiteral("toolbar.filter.mode"));
    auto *modes = new QActionGroup(m_filterMenu);
    for (const FilterMode mode : {FilterMode::dim, FilterMode::hide}) {
        const QByteArray key = (QStringLiteral("toolbar.filter.mode.") + rawString(mode)).toUtf8();
        QAction *action = m_filterMenu->addAction(qtTrId(key.constData()));
        action->setObjectName(QString::fromLatin1(key));
        action->setCheckable(true);
        action->setChecked(m_preferences.filterMode() == mode);
        action->setActionGroup(modes);
        connect(action, &QAction::triggered, this, [this, mode] { m_preferences.setFilterMode(mode); });
    }
}

} // namespace fenrow
