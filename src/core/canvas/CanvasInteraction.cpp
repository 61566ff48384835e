#include "CanvasInteraction.h"

#include "domain/FlowFile.h"
#include "domain/FlowNode.h"

#include <algorithm>

namespace fenrow {

template <typename T>
void CanvasInteraction::assign(T &field, T value, Field which)
{
    if (field == value)
        return;
    field = std::move(value);
    emit changed(which);
}

void CanvasInteraction::setScale(double scale) { assign(m_scale, scale, Field::scale); }
void CanvasInteraction::setOffset(QPointF offset) { assign(m_offset, offset, Field::offset); }
void CanvasInteraction::setViewportSize(double width, double height)
{
    assign(m_viewportSize, QSizeF(width, height), Field::viewportSize);
}
void CanvasInteraction::setSelectedEdgeID(std::optional<QUuid> id) { assign(m_selectedEdgeID, id, Field::selectedEdgeID); }
void CanvasInteraction::setSelectedItemIDs(const QSet<QUuid> &ids)
{
    assign(m_selectedItemIDs, ids, Field::selectedItemIDs);
}
void CanvasInteraction::setEditingItemID(std::optional<QUuid> id) { assign(m_editingItemID, id, Field::editingItemID); }
void CanvasInteraction::setExpandFailure(std::optional<QString> failure)
{
    assign(m_expandFailure, std::move(failure), Field::expandFailure);
}
void CanvasInteraction::setNodeDrag(std::optional<NodeDrag> drag) { assign(m_nodeDrag, std::move(drag), Field::nodeDrag); }
void CanvasInteraction::setEdgeReconnect(std::optional<EdgeReconnect> reconnect)
{
    assign(m_edgeReconnect, reconnect, Field::edgeReconnect);
}
void CanvasInteraction::setPendingConnection(std::optional<PendingConnection> connection)
{
    assign(m_pendingConnection, connection, Field::pendingConnection);
}
void CanvasInteraction::setRejection(std::optional<CycleRejection> rejection)
{
    assign(m_rejection, rejection, Field::rejection);
}
void CanvasInteraction::setColorFilter(CanvasColorFilter filter) { assign(m_colorFilter, filter, Field::colorFilter); }
void CanvasInteraction::setSizeResolver(NodeSizeResolver resolver)
{
    if (m_sizeResolver.sizesByEstimate == resolver.sizesByEstimate)
        return;
    m_sizeResolver = resolver;
    emit changed(Field::sizeResolver);
}
void CanvasInteraction::setNodeResize(std::optional<NodeResize> resize)
{
    assign(m_nodeResize, resize, Field::nodeResize);
}
void CanvasInteraction::setSelectedFileID(std::optional<QUuid> id) { assign(m_selectedFileID, id, Field::selectedFileID); }
void CanvasInteraction::setSelectedFileLinkID(std::optional<QUuid> id)
{
    assign(m_selectedFileLinkID, id, Field::selectedFileLinkID);
}
void CanvasInteraction::setFileDrag(std::optional<FileDrag> drag) { assign(m_fileDrag, drag, Field::fileDrag); }
void CanvasInteraction::setFileResize(std::optional<FileResize> resize)
{
    assign(m_fileResize, resize, Field::fileResize);
}
void CanvasInteraction::setPendingFileLink(std::optional<PendingFileLink> link)
{
    assign(m_pendingFileLink, link, Field::pendingFileLink);
}
void CanvasInteraction::setFileDropFailure(std::optional<FileDropFailure> failure)
{
    assign(m_fileDropFailure, std::move(failure), Field::fileDropFailure);
}
void CanvasInteraction::setMarquee(std::optional<QRectF> rect) { assign(m_marquee, rect, Field::marquee); }
void CanvasInteraction::setSpaceHeld(bool held) { assign(m_spaceHeld, held, Field::spaceHeld); }

void CanvasInteraction::setRequestFocus(std::function<void()> request)
{
    // Callbacks cannot be compared; installing one always counts as a change.
    m_requestFocus = std::move(request);
    emit changed(Field::requestFocus);
}

void CanvasInteraction::requestFocus() const
{
    if (m_requestFocus)
        m_requestFocus();
}

void CanvasInteraction::setOffsetX(double x)
{
    if (m_offset.x() == x)
        return;
    m_offset.setX(x);
    emit changed(Field::offset);
}

void CanvasInteraction::setOffsetY(double y)
{
    if (m_offset.y() == y)
        return;
    m_offset.setY(y);
    emit changed(Field::offset);
}

void CanvasInteraction::clampOffset(const QRectF &bounds)
{
    if (!hasViewport())
        return;
    using CanvasZoom::keptOnScreen;
    auto axis = [this](double offset, double extent, double boundsMin, double boundsMax) {
        const double lo = keptOnScreen - boundsMax * m_scale;
        const double hi = extent - keptOnScreen - boundsMin * m_scale;
        if (lo <= hi)
            return std::min(std::max(offset, lo), hi);
        // Too small to keep 80 on screen at both sides: centre it.
        return (extent - (boundsMin * m_scale + boundsMax * m_scale)) * 0.5;
    };
    setOffsetX(axis(m_offset.x(), m_viewportSize.width(), bounds.left(), bounds.right()));
    setOffsetY(axis(m_offset.y(), m_viewportSize.height(), bounds.top(), bounds.bottom()));
}

void CanvasInteraction::panBy(double dx, double dy, const QRectF &bounds)
{
    setOffset(m_offset + QPointF(dx, dy));
    clampOffset(bounds);
}

void CanvasInteraction::zoomBy(double factor, QPointF anchor, const QRectF &bounds)
{
    double next = m_scale * factor;
    if (next <= CanvasZoom::minimumScale)
        next = CanvasZoom::minimumScale;
    if (next > CanvasZoom::maximumScale)
        next = CanvasZoom::maximumScale;
    const double s = divisorScale();
    setOffset({anchor.x() - next * ((anchor.x() - m_offset.x()) / s),
               anchor.y() - next * ((anchor.y() - m_offset.y()) / s)});
    setScale(next);
    clampOffset(bounds);
}

void CanvasInteraction::centerOn(QPointF point, const QRectF &bounds)
{
    if (!hasViewport())
        return;
    setOffset({m_viewportSize.width() * 0.5 - point.x() * m_scale, m_viewportSize.height() * 0.5 - point.y() * m_scale});
    clampOffset(bounds);
}

void CanvasInteraction::zoomToFit(std::span<const QRectF> frames)
{
    if (!hasViewport()) {
        setScale(1);
        setOffset({});
        return;
    }
    const QRectF bounds = CanvasGeometry::contentRectangle(frames);
    const double width = m_viewportSize.width();
    const double height = m_viewportSize.height();
    const double availableWidth = std::max(width - CanvasZoom::fitMargin, 1.0);
    const double availableHeight = std::max(height - CanvasZoom::fitMargin, 1.0);
    double s = std::min(availableWidth / bounds.width(), availableHeight / bounds.height());
    s = std::clamp(s, CanvasZoom::minimumScale, CanvasZoom::maximumScale);
    s = std::min(s, CanvasZoom::fitMaximumScale);
    setScale(s);
    setOffset({(width - bounds.width() * s) * 0.5 - bounds.left() * s,
               (height - bounds.height() * s) * 0.5 - bounds.top() * s});
}

QPointF CanvasInteraction::toCanvas(QPointF screen) const
{
    return (screen - m_offset) / divisorScale();
}

QPointF CanvasInteraction::toScreen(QPointF canvas) const
{
    return canvas * m_scale + m_offset;
}

QPointF CanvasInteraction::viewportCenter() const
{
    const double s = divisorScale();
    const QPointF center((m_viewportSize.width() * 0.5 - m_offset.x()) / s,
                         (m_viewportSize.height() * 0.5 - m_offset.y()) / s);
    return center.x() == 0 && center.y() == 0 ? QPointF(1, 1) : center;
}

QPointF CanvasInteraction::effectiveCenter(const QUuid &itemID, QPointF base) const
{
    if (m_nodeResize && m_nodeResize->itemID == itemID)
        return m_nodeResize->center;
    if (m_nodeDrag && m_nodeDrag->itemIDs.contains(itemID))
        return base + m_nodeDrag->translation;
    return base;
}

NodeSize CanvasInteraction::effectiveSize(const FlowNode &node) const
{
    if (m_nodeResize && m_nodeResize->itemID == node.id)
        return m_nodeResize->size;
    return m_sizeResolver.resolve(node);
}

QPointF CanvasInteraction::effectiveFileCenter(const QUuid &fileID, QPointF base) const
{
    if (m_fileResize && m_fileResize->fileID == fileID)
        return m_fileResize->center;
    if (m_fileDrag && m_fileDrag->fileID == fileID)
        return base + m_fileDrag->translation;
    return base;
}

NodeSize CanvasInteraction::effectiveFileSize(const FlowFile &file) const
{
    if (m_fileResize && m_fileResize->fileID == file.id)
        return m_fileResize->size;
    return NodeSizeResolver::resolveFile(file);
}

QRectF CanvasInteraction::frame(const FlowNode &node) const
{
    return CanvasGeometry::frame(effectiveCenter(node.id, {node.posX, node.posY}), effectiveSize(node));
}

QRectF CanvasInteraction::fileFrame(const FlowFile &file) const
{
    return CanvasGeometry::frame(effectiveFileCenter(file.id, {file.posX, file.posY}), effectiveFileSize(file));
}

void CanvasInteraction::toggleSelection(const QUuid &itemID)
{
    setSelectedFileID(std::nullopt);
    setSelectedFileLinkID(std::nullopt);
    QSet<QUuid> ids = m_selectedItemIDs;
    if (!ids.remove(itemID))
        ids.insert(itemID);
    setSelectedItemIDs(ids);
}

void CanvasInteraction::clearSelection()
{
    setSelectedEdgeID(std::nullopt);
    setSelectedItemIDs({});
    setSelectedFileID(std::nullopt);
    setSelectedFileLinkID(std::nullopt);
}

} // namespace fenrow
