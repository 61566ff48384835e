#pragma once

#include "FlowMarkdownStrings.h"

#include <QList>
#include <QString>

namespace fenrow {

class DependencyEdge;
class FlowNode;

// One flow as a Markdown task list that reads well in any renderer: a
// heading, a progress line, and the tasks as checkboxes nested by their
// subtask edges, each with its prerequisites, notes (as a quote) and
// checklist under it. Repeats, dates, priorities and colours stay out.
namespace FlowMarkdown {

// `nodes` in the flow's order, which ranks them: a task with several
// parents goes under the earliest. Ends in one line feed.
QString render(const QString &title, const QList<const FlowNode *> &nodes, const QList<const DependencyEdge *> &edges,
               const FlowMarkdownStrings &strings);

// User text as one line of Markdown that renders as written: white space
// runs become one blank, and backslashes, backticks, asterisks,
// underscores and square brackets are escaped.
QString escape(const QString &text);

} // namespace FlowMarkdown

} // namespace fenrow
