#pragma once

#include <QUuid>

#include <vector>

namespace fenrow {

class CompletionRecord;
class DependencyEdge;
class FileLink;
class FlowFile;
class FlowNode;
class FlowTemplate;
class TaskFlow;

// What one save writes: rows to insert or update, and ids of rows to delete.
struct StoreChangeSet {
    // Every row of every table goes first (a replacing restore), in the
    // same transaction as the rest.
    bool eraseEverything = false;

    std::vector<const TaskFlow *> flows;
    std::vector<const FlowNode *> nodes;
    std::vector<const DependencyEdge *> edges;
    std::vector<const FlowFile *> files;
    std::vector<const FileLink *> fileLinks;
    std::vector<const CompletionRecord *> completionRecords;
    std::vector<const FlowTemplate *> templates;

    std::vector<QUuid> deletedFlows;
    std::vector<QUuid> deletedNodes;
    std::vector<QUuid> deletedEdges;
    std::vector<QUuid> deletedFiles;
    std::vector<QUuid> deletedFileLinks;
    std::vector<QUuid> deletedCompletionRecords;
    std::vector<QUuid> deletedTemplates;

    bool isEmpty() const
    {
        return !eraseEverything && flows.empty() && nodes.empty() && edges.empty() && files.empty() && fileLinks.empty()
            && completionRecords.empty() && templates.empty() && deletedFlows.empty() && deletedNodes.empty()
            && deletedEdges.empty() && deletedFiles.empty() && deletedFileLinks.empty()
            && deletedCompletionRecords.empty() && deletedTemplates.empty();
    }
};

} // namespace fenrow
