#include "CanvasView.h"

#include "CanvasAppearance.h"
#include "FileOpener.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasHitTest.h"
#include "canvas/CanvasPointer.h"
#include "domain/DependencyEdge.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/FlowFile.h"
#include "domain/FlowFileImport.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"
#include "sheets/SheetParts.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

#include <algorithm>

namespace fenrow {

namespace {

using Kind = CanvasHit::Kind;

QString colorKey(NodeColor color)
{
    return QStringLiteral("canvas.node.color.") + rawString(color);
}

QString statusKey(NodeStatus status)
{
    return QStringLiteral("canvas.node.status.") + rawString(status);
}

} // namespace

// --- menus

void CanvasView::recordOnFlow(const QString &name, const std::function<void()> &change)
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (flow)
        m_history.recordAction(name, *flow, change);
}

QMenu *CanvasView::contextMenuAt(QPointF point)
{
    if (!m_editor || !m_editor->flow())
        return nullptr;
    const CanvasHit hit = CanvasHitTest::at(*m_editor, point);
    switch (hit.kind) {
    case Kind::card:
    case Kind::port:
    case Kind::resizeGrip:
        return cardMenu(hit.id);
    case Kind::file:
    case Kind::filePort:
    case Kind::fileResizeGrip:
        return fileMenu(hit.id);
    case Kind::edge:
    case Kind::edgeHandle: {
        m_editor->edgeClicked(hit.id);
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("canvas.edge.menu"));
        QAction *remove = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, m_appearance.colors().text),
                                          qtTrId("canvas.edge.delete"), this, [this] { m_editor->deleteSelection(); });
        remove->setObjectName(QStringLiteral("canvas.edge.delete"));
        return menu;
    }
    case Kind::fileLink: {
        m_editor->fileLinkClicked(hit.id);
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("canvas.fileLink.menu"));
        QAction *remove = menu->addAction(qtTrId("canvas.fileLink.delete"), this, [this] { m_editor->deleteSelection(); });
        remove->setObjectName(QStringLiteral("canvas.fileLink.delete"));
        return menu;
    }
    case Kind::background:
        break;
    }
    return backgroundMenu(point);
}

QMenu *CanvasView::cardMenu(const QUuid &nodeID)
{
    const FlowNode *node = m_store.node(nodeID);
    if (!node)
        return nullptr;
    // The menu speaks of this card: it becomes the selection if it was not in it.
    if (!m_editor->interaction().selectedItemIDs().contains(nodeID))
        m_editor->cardClicked(nodeID, {});
    const CanvasColors &colors = m_appearance.colors();
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("canvas.node.menu"));
    const auto add = [&](QMenu *into, const QString &key, auto &&run) {
        QAction *action = into->addAction(qtTrId(key.toUtf8().constData()));
        action->setObjectName(key);
        connect(action, &QAction::triggered, this, std::forward<decltype(run)>(run));
        return action;
    };
    add(menu, QStringLiteral("canvas.node.addChild"), [this, nodeID] { m_editor->addSubtask(nodeID); })
        ->setIcon(CanvasGlyphs::icon(CanvasGlyphs::Glyph::add, colors.text));
    add(menu, QStringLiteral("canvas.node.generateSubtasks"), [this, nodeID] { emit generateSubtasksRequested(nodeID); })
        ->setIcon(SheetGlyphs::icon(SheetGlyphs::Glyph::sparkles, colors.text));
    add(menu, QStringLiteral("canvas.node.rename"), [this, nodeID] { m_editor->cardDoubleClicked(nodeID); });
    if (m_contents.of(*m_editor->flow(), *node).canCollapse)
        add(menu, node->isCollapsed ? QStringLiteral("canvas.port.action.expand") : QStringLiteral("canvas.port.action.collapse"),
            [this, nodeID] { m_editor->toggleFold(nodeID); });

    QMenu *colorMenu = menu->addMenu(qtTrId("canvas.node.setColor"));
    colorMenu->setObjectName(QStringLiteral("canvas.node.setColor"));
    for (int i = 0; i <= int(NodeColor::grey); ++i) {
        const auto color = NodeColor(i);
        QAction *action = add(colorMenu, colorKey(color), [this, nodeID, color] {
            const FlowNode *target = m_store.node(nodeID);
            if (target && target->color() != color)
                recordOnFlow(QStringLiteral("Change color"), [&] { m_store.setColor(color, *target); });
        });
        action->setCheckable(true);
        action->setChecked(node->color() == color);
        QPixmap swatch(14, 14);
        swatch.fill(Qt::transparent);
        QPainter painter(&swatch);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colors.tag(NodeColor::none), 1));
        painter.setBrush(color == NodeColor::none ? QColor(Qt::transparent) : colors.tag(color));
        painter.drawEllipse(QRectF(1.5, 1.5, 11, 11));
        painter.end();
        action->setIcon(QIcon(swatch));
    }

    QMenu *statusMenu = menu->addMenu(qtTrId("canvas.node.status.label"));
    statusMenu->setObjectName(QStringLiteral("canvas.node.status.label"));
    for (const NodeStatus status : {NodeStatus::pending, NodeStatus::inProgress, NodeStatus::paused, NodeStatus::done}) {
        QAction *action = add(statusMenu, statusKey(status), [this, nodeID, status] {
            const FlowNode *target = m_store.node(nodeID);
            if (target && target->status() != status)
                recordOnFlow(QStringLiteral("Change status"), [&] { m_store.setStatus(status, *target); });
        });
        action->setCheckable(true);
        action->setChecked(node->status() == status);
    }

    if (node->hasManualSize())
        add(menu, QStringLiteral("canvas.node.resize.reset"), [this, nodeID] { m_editor->resetCardSize(nodeID); });
    menu->addSeparator();
    add(menu, QStringLiteral("canvas.node.delete"), [this, nodeID] {
        const FlowNode *target = m_store.node(nodeID);
        if (!target)
            return;
        bool isSubtask = false;
        for (const DependencyEdge *edge : target->flow()->edges())
            isSubtask = isSubtask || (edge->isSubtask() && edge->toItem() == target && edge->fromItem());
        recordOnFlow(isSubtask ? QStringLiteral("Delete subtask") : QStringLiteral("Delete tasks"), [&] {
            m_store.deleteNode(*target);
            m_editor->interaction().setSelectedItemIDs({});
        });
    })->setIcon(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, colors.warning));
    return menu;
}

QMenu *CanvasView::fileMenu(const QUuid &fileID)
{
    const TaskFlow *flow = m_editor->flow();
    const FlowFile *file = nullptr;
    for (const FlowFile *candidate : flow->files())
        file = candidate->id == fileID ? candidate : file;
    if (!file)
        return nullptr;
    m_editor->fileClicked(fileID);
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("canvas.file.menu"));
    const auto add = [&](const char *key, auto &&run) {
        QAction *action = menu->addAction(qtTrId(key));
        action->setObjectName(QString::fromLatin1(key));
        connect(action, &QAction::triggered, this, std::forward<decltype(run)>(run));
        return action;
    };
    const auto find = [this, fileID]() -> const FlowFile * {
        const TaskFlow *current = m_editor ? m_editor->flow() : nullptr;
        if (current)
            for (const FlowFile *candidate : current->files())
                if (candidate->id == fileID)
                    return candidate;
        return nullptr;
    };
    if (file->data.isPresent()) {
        add("canvas.file.open", [find] {
            if (const FlowFile *target = find())
                FileOpener::open(*target);
        });
        add("canvas.file.exportCopy", [this, find] {
            const FlowFile *target = find();
            if (!target)
                return;
            const QString path = QFileDialog::getSaveFileName(this, qtTrId("canvas.file.exportCopy"), target->filename);
            if (!path.isEmpty())
                FileOpener::exportCopy(*target, path);
        });
    } else {
        menu->addAction(qtTrId("canvas.file.missing"))->setEnabled(false);
    }
    QAction *unlink = add("canvas.file.unlinkAll", [this, find] {
        if (const FlowFile *target = find())
            recordOnFlow(QStringLiteral("Unlink file"), [&] { m_store.unlinkAll(*target); });
    });
    unlink->setEnabled(!file->links().isEmpty());
    menu->addSeparator();
    add("canvas.file.delete", [this] { m_editor->deleteSelection(); })
        ->setIcon(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, m_appearance.colors().warning));
    return menu;
}

QMenu *CanvasView::backgroundMenu(QPointF point)
{
    const CanvasInteraction &interaction = m_editor->interaction();
    const QPointF canvasPoint = interaction.toCanvas(point);
    const CanvasColors &colors = m_appearance.colors();
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("canvas.background.menu"));
    QAction *add = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::add, colors.text), qtTrId("toolbar.addTask"),
                                   this, [this, point] { addTaskAt(point); });
    add->setObjectName(QStringLiteral("toolbar.addTask"));
    QAction *attach = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::attach, colors.text),
                                      qtTrId("canvas.file.add"), this,
                                      [this, canvasPoint] { attachFilesAt(canvasPoint); });
    attach->setObjectName(QStringLiteral("canvas.file.add"));

    QStringList deletions;
    if (interaction.selectedFileLinkID())
        deletions << QStringLiteral("canvas.fileLink.delete");
    else if (interaction.selectedFileID())
        deletions << QStringLiteral("canvas.file.delete");
    else if (!interaction.selectedItemIDs().isEmpty())
        deletions << QStringLiteral("canvas.node.delete");
    else if (interaction.selectedEdgeID())
        deletions << QStringLiteral("canvas.edge.delete");
    if (!deletions.isEmpty()) {
        menu->addSeparator();
        for (const QString &key : std::as_const(deletions)) {
            QAction *remove = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, colors.warning),
                                              qtTrId(key.toUtf8().constData()), this,
                                              [this] { m_editor->deleteSelection(); });
            remove->setObjectName(key);
        }
    }
    return menu;
}

QMenu *CanvasView::selectionMenu(QPointF *at)
{
    if (!m_editor || !m_editor->flow())
        return nullptr;
    const CanvasInteraction &interaction = m_editor->interaction();
    if (interaction.selectedItemIDs().size() == 1) {
        const QUuid id = *interaction.selectedItemIDs().begin();
        const FlowNode *node = m_editor->isVisible(id) ? m_store.node(id) : nullptr;
        if (!node)
            return nullptr;
        *at = toScreen(interaction.frame(*node).center());
        return cardMenu(id);
    }
    if (const auto fileID = interaction.selectedFileID(); fileID && interaction.selectedItemIDs().isEmpty())
        for (const FlowFile *file : m_editor->liveFiles())
            if (file->id == *fileID) {
                *at = toScreen(interaction.fileFrame(*file).center());
                return fileMenu(*fileID);
            }
    return nullptr;
}

void CanvasView::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_pointer && m_pointer->isPressed())
        return;
    // From the keyboard the menu is the selection's, by it, rather than
    // that of whatever the middle of the view shows; by the view's edge
    // if the selection lies outside it.
    QPointF at = event->pos();
    QMenu *menu = event->reason() == QContextMenuEvent::Keyboard ? selectionMenu(&at) : nullptr;
    if (menu)
        at = QPointF(std::clamp(at.x(), 0.0, double(width() - 1)), std::clamp(at.y(), 0.0, double(height() - 1)));
    else
        menu = contextMenuAt(at);
    if (!menu)
        return;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(mapToGlobal(at.toPoint()));
}

// --- adding

void CanvasView::addTask()
{
    if (m_editor)
        m_editor->addTaskAtCenter();
}

void CanvasView::addTaskAt(QPointF screenPoint)
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (!flow)
        return;
    CanvasInteraction &interaction = m_editor->interaction();
    const QPointF point = interaction.toCanvas(screenPoint);
    m_history.recordAction(QStringLiteral("Add task"), *flow, [&] {
        const FlowNode *added =
            m_store.addNodeAt(*flow, qtTrId("canvas.node.new"), point, interaction.sizeResolver());
        interaction.setSelectedEdgeID(std::nullopt);
        interaction.setSelectedFileID(std::nullopt);
        interaction.setSelectedFileLinkID(std::nullopt);
        interaction.setSelectedItemIDs({added->id});
        interaction.setEditingItemID(added->id);
    });
}

void CanvasView::attachFilesAt(QPointF canvasPoint)
{
    const QStringList paths = QFileDialog::getOpenFileNames(this, qtTrId("canvas.file.add.prompt"));
    if (!paths.isEmpty())
        attachPaths(paths, canvasPoint, toScreen(canvasPoint));
}

void CanvasView::attachPaths(const QStringList &paths, QPointF canvasPoint, QPointF screenPoint)
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (!flow)
        return;
    // Files stand side by side, one card width and a gap apart.
    constexpr double step = 242;
    int index = 0;
    for (const QString &path : paths) {
        auto read = FlowFileImport::read(path);
        if (const auto *payload = std::get_if<FlowFileImport::Payload>(&read)) {
            m_store.attachFile(*payload, canvasPoint.x() + index * step, canvasPoint.y(), *flow);
            ++index;
        } else {
            m_editor->fileDropFailed(std::get<FlowFileImport::Failure>(read), QFileInfo(path).fileName(), screenPoint);
        }
    }
}

void CanvasView::dragEnterEvent(QDragEnterEvent *event)
{
    if (m_editor && event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CanvasView::dragMoveEvent(QDragMoveEvent *event)
{
    if (m_editor && event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CanvasView::dropEvent(QDropEvent *event)
{
    if (!m_editor)
        return;
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    attachPaths(paths, m_editor->interaction().toCanvas(event->position()), event->position());
}

} // namespace fenrow
