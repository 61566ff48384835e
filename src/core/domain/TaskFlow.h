#pragma once

#include "DependencyEdge.h"
#include "FileLink.h"
#include "FlowFile.h"
#include "FlowNode.h"
#include "OwnedList.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

namespace fenrow {

// One flow: a project whose tasks form a graph on a canvas. The flow owns its
// nodes, edges, files and file links; deleting it takes them all along.
class TaskFlow {
public:
    QUuid id;
    QString name;
    qint64 order = 0;
    QDateTime createdAt;
    double viewportOffsetX = 0;
    double viewportOffsetY = 0;
    double viewportScale = 1;
    bool hasBeenFramed = false;

    const OwnedList<FlowNode> &items() const { return m_items; }
    OwnedList<FlowNode> &items() { return m_items; }
    const OwnedList<DependencyEdge> &edges() const { return m_edges; }
    OwnedList<DependencyEdge> &edges() { return m_edges; }
    const OwnedList<FlowFile> &files() const { return m_files; }
    OwnedList<FlowFile> &files() { return m_files; }
    const OwnedList<FileLink> &fileLinks() const { return m_fileLinks; }
    OwnedList<FileLink> &fileLinks() { return m_fileLinks; }

    // The name as lists and exports show it: trimmed, or the interface's
    // word for an untitled flow when nothing is left.
    QString displayName() const;

    // Nodes by `order`, ascending. Equal orders (possible after imports) keep
    // no particular sequence among themselves.
    QList<const FlowNode *> orderedItems() const;

    // Changes whenever one of the flow's nodes is written, added or removed,
    // and is never the same for two flows, so a reader can keep what it
    // worked out from the nodes until the number moves.
    quint64 nodesVersion() const { return m_nodesVersion; }
    void nodesChanged() { m_nodesVersion = nextVersion(); }

private:
    static quint64 nextVersion();

    quint64 m_nodesVersion = nextVersion();
    OwnedList<FlowNode> m_items;
    OwnedList<DependencyEdge> m_edges;
    OwnedList<FlowFile> m_files;
    OwnedList<FileLink> m_fileLinks;
};

} // namespace fenrow
