#pragma once

#include "CanvasGeometry.h"
#include "NodeSize.h"
#include "NodeSizeResolver.h"
#include "domain/FlowFileImport.h"
#include "domain/NodeColor.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSet>
#include <QSizeF>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>
#include <span>

namespace fenrow {

class FlowFile;
class FlowNode;

// The zoom limits and steps of the canvas.
namespace CanvasZoom {
enum class Kind { zoomIn, zoomOut, zoomToFit };
inline constexpr double minimumScale = 0.4;
inline constexpr double maximumScale = 2.5;
inline constexpr double zoomInFactor = 1.25;
inline constexpr double zoomOutFactor = 0.8;
// Room left around the content by zoom to fit, both sides of an axis together.
inline constexpr double fitMargin = 96;
// Zoom to fit never blows a small flow up beyond actual size.
inline constexpr double fitMaximumScale = 1.0;
// How much of the content must stay on screen on each axis.
inline constexpr double keptOnScreen = 80;
} // namespace CanvasZoom

// A card move in progress: the cards that move, and by how much (canvas
// units, already snapped).
struct NodeDrag {
    QSet<QUuid> itemIDs;
    QPointF translation;
    friend bool operator==(const NodeDrag &, const NodeDrag &) = default;
};

// One end of the selected edge being dragged to another card.
struct EdgeReconnect {
    QUuid edgeID;
    EdgeEnd end = EdgeEnd::target;
    // The card at the end that stays.
    QUuid anchorItemID;
    QPointF current;
    friend bool operator==(const EdgeReconnect &, const EdgeReconnect &) = default;
};

struct PendingConnection {
    QUuid fromItemID;
    QPointF current;
    friend bool operator==(const PendingConnection &, const PendingConnection &) = default;
};

// A refused connection, shown as a banner where the drop happened. Each
// refusal has its own id, so a second one restarts the banner's life.
struct CycleRejection {
    QUuid id;
    QPointF location;
    friend bool operator==(const CycleRejection &, const CycleRejection &) = default;
};

struct NodeResize {
    QUuid itemID;
    NodeSize size;
    QPointF center;
    friend bool operator==(const NodeResize &, const NodeResize &) = default;
};

struct FileDrag {
    QUuid fileID;
    QPointF translation;
    friend bool operator==(const FileDrag &, const FileDrag &) = default;
};

struct FileResize {
    QUuid fileID;
    NodeSize size;
    QPointF center;
    friend bool operator==(const FileResize &, const FileResize &) = default;
};

struct PendingFileLink {
    QUuid fileID;
    QPointF current;
    friend bool operator==(const PendingFileLink &, const PendingFileLink &) = default;
};

// A file a drop could not attach, shown as a banner at the drop point.
struct FileDropFailure {
    QUuid id;
    FlowFileImport::Failure failure;
    QString filename;
    QPointF location;
    friend bool operator==(const FileDropFailure &a, const FileDropFailure &b)
    {
        return a.id == b.id && a.failure.index() == b.failure.index() && a.filename == b.filename
            && a.location == b.location;
    }
};

// The colours the canvas is filtered to; empty means no filter.
struct CanvasColorFilter {
    quint32 colors = 0;

    bool isEmpty() const { return colors == 0; }
    bool contains(NodeColor color) const { return colors & bit(color); }
    void toggle(NodeColor color) { colors ^= bit(color); }
    friend bool operator==(const CanvasColorFilter &, const CanvasColorFilter &) = default;

private:
    static quint32 bit(NodeColor color) { return 1u << unsigned(color); }
};

// The per-window state of the graph editor: viewport, selection and every
// gesture in progress. It holds no graph data and writes nothing to the
// store; the editor around it does. Every setter compares before it
// writes and reports a real change through `changed`.
class CanvasInteraction : public QObject {
    Q_OBJECT

public:
    enum class Field {
        scale,
        offset,
        viewportSize,
        selectedEdgeID,
        selectedItemIDs,
        editingItemID,
        expandFailure,
        nodeDrag,
        edgeReconnect,
        pendingConnection,
        rejection,
        colorFilter,
        sizeResolver,
        nodeResize,
        selectedFileID,
        selectedFileLinkID,
        fileDrag,
        fileResize,
        pendingFileLink,
        fileDropFailure,
        marquee,
        requestFocus,
        spaceHeld,
    };
    Q_ENUM(Field)

    using QObject::QObject;

    double scale() const { return m_scale; }
    void setScale(double scale);
    // Screen position of the canvas origin: screen = canvas × scale + offset.
    QPointF offset() const { return m_offset; }
    void setOffset(QPointF offset);
    QSizeF viewportSize() const { return m_viewportSize; }
    void setViewportSize(double width, double height);

    std::optional<QUuid> selectedEdgeID() const { return m_selectedEdgeID; }
    void setSelectedEdgeID(std::optional<QUuid> id);
    const QSet<QUuid> &selectedItemIDs() const { return m_selectedItemIDs; }
    void setSelectedItemIDs(const QSet<QUuid> &ids);
    std::optional<QUuid> editingItemID() const { return m_editingItemID; }
    void setEditingItemID(std::optional<QUuid> id);
    std::optional<QString> expandFailure() const { return m_expandFailure; }
    void setExpandFailure(std::optional<QString> failure);

    const std::optional<NodeDrag> &nodeDrag() const { return m_nodeDrag; }
    void setNodeDrag(std::optional<NodeDrag> drag);
    const std::optional<EdgeReconnect> &edgeReconnect() const { return m_edgeReconnect; }
    void setEdgeReconnect(std::optional<EdgeReconnect> reconnect);
    const std::optional<PendingConnection> &pendingConnection() const { return m_pendingConnection; }
    void setPendingConnection(std::optional<PendingConnection> connection);
    const std::optional<CycleRejection> &rejection() const { return m_rejection; }
    void setRejection(std::optional<CycleRejection> rejection);
    CanvasColorFilter colorFilter() const { return m_colorFilter; }
    void setColorFilter(CanvasColorFilter filter);
    const NodeSizeResolver &sizeResolver() const { return m_sizeResolver; }
    void setSizeResolver(NodeSizeResolver resolver);
    const std::optional<NodeResize> &nodeResize() const { return m_nodeResize; }
    void setNodeResize(std::optional<NodeResize> resize);

    std::optional<QUuid> selectedFileID() const { return m_selectedFileID; }
    void setSelectedFileID(std::optional<QUuid> id);
    std::optional<QUuid> selectedFileLinkID() const { return m_selectedFileLinkID; }
    void setSelectedFileLinkID(std::optional<QUuid> id);
    const std::optional<FileDrag> &fileDrag() const { return m_fileDrag; }
    void setFileDrag(std::optional<FileDrag> drag);
    const std::optional<FileResize> &fileResize() const { return m_fileResize; }
    void setFileResize(std::optional<FileResize> resize);
    const std::optional<PendingFileLink> &pendingFileLink() const { return m_pendingFileLink; }
    void setPendingFileLink(std::optional<PendingFileLink> link);
    const std::optional<FileDropFailure> &fileDropFailure() const { return m_fileDropFailure; }
    void setFileDropFailure(std::optional<FileDropFailure> failure);

    // The live rubber band, in canvas coordinates.
    std::optional<QRectF> marquee() const { return m_marquee; }
    void setMarquee(std::optional<QRectF> rect);
    // Installed by the view: gives the canvas the keyboard focus.
    void setRequestFocus(std::function<void()> request);
    void requestFocus() const;
    bool hasRequestFocus() const { return bool(m_requestFocus); }
    bool spaceHeld() const { return m_spaceHeld; }
    void setSpaceHeld(bool held);

    // --- viewport; `bounds` is the content rectangle of all cards.
    // Keeps at least 80 of the content on screen on each axis, or centres
    // content too small for that.
    void clampOffset(const QRectF &bounds);
    void panBy(double dx, double dy, const QRectF &bounds);
    // Zooms within the limits, keeping the canvas point under `anchor` still.
    void zoomBy(double factor, QPointF anchor, const QRectF &bounds);
    void centerOn(QPointF point, const QRectF &bounds);
    void zoomToFit(std::span<const QRectF> frames);
    QPointF toCanvas(QPointF screen) const;
    QPointF toScreen(QPointF canvas) const;
    // The canvas point at the middle of the view; never exactly the origin,
    // so that a new card is not placed on it.
    QPointF viewportCenter() const;
    bool hasViewport() const { return m_viewportSize.width() > 0 && m_viewportSize.height() > 0; }
    // The scale as a divisor: exactly 0 reads as 1.
    double divisorScale() const { return m_scale == 0 ? 1 : m_scale; }

    // --- cards as shown while gestures run
    QPointF effectiveCenter(const QUuid &itemID, QPointF base) const;
    NodeSize effectiveSize(const FlowNode &node) const;
    QPointF effectiveFileCenter(const QUuid &fileID, QPointF base) const;
    NodeSize effectiveFileSize(const FlowFile &file) const;
    QRectF frame(const FlowNode &node) const;
    QRectF fileFrame(const FlowFile &file) const;

    // --- selection
    void toggleSelection(const QUuid &itemID);
    void clearSelection();

signals:
    void changed(fenrow::CanvasInteraction::Field field);

private:
    template <typename T>
    void assign(T &field, T value, Field which);
    void setOffsetX(double x);
    void setOffsetY(double y);

    double m_scale = 1.0;
    QPointF m_offset;
    QSizeF m_viewportSize{0, 0};
    std::optional<QUuid> m_selectedEdgeID;
    QSet<QUuid> m_selectedItemIDs;
    std::optional<QUuid> m_editingItemID;
    std::optional<QString> m_expandFailure;
    std::optional<NodeDrag> m_nodeDrag;
    std::optional<EdgeReconnect> m_edgeReconnect;
    std::optional<PendingConnection> m_pendingConnection;
    std::optional<CycleRejection> m_rejection;
    CanvasColorFilter m_colorFilter;
    NodeSizeResolver m_sizeResolver;
    std::optional<NodeResize> m_nodeResize;
    std::optional<QUuid> m_selectedFileID;
    std::optional<QUuid> m_selectedFileLinkID;
    std::optional<FileDrag> m_fileDrag;
    std::optional<FileResize> m_fileResize;
    std::optional<PendingFileLink> m_pendingFileLink;
    std::optional<FileDropFailure> m_fileDropFailure;
    std::optional<QRectF> m_marquee;
    std::function<void()> m_requestFocus;
    bool m_spaceHeld = false;
};

} // namespace fenrow
