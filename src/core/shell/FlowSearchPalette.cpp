#include "FlowSearchPalette.h"

#include "RouteRequest.h"
#include "domain/FenrowStore.h"

namespace fenrow {

void FlowSearchPresentation::setPresented(bool presented)
{
    if (m_isPresented == presented)
        return;
    m_isPresented = presented;
    emit presentedChanged(presented);
}

void FlowSearchPalette::setCurrentFlow(const QUuid &flowID)
{
    if (m_currentFlow == flowID)
        return;
    m_currentFlow = flowID;
    search();
    m_highlighted = m_matchCount > 0 ? 0 : -1;
}

void FlowSearchPalette::setQuery(const QString &query)
{
    m_query = query;
    search();
    m_highlighted = m_matchCount > 0 ? 0 : -1;
}

void FlowSearchPalette::refresh()
{
    const FlowSearchMatch *before = matchAt(m_highlighted);
    const QUuid kept = before ? before->id : QUuid();
    search();
    m_highlighted = m_matchCount > 0 ? 0 : -1;
    for (int i = 0; i < m_matchCount; ++i) {
        if (matchAt(i)->id == kept) {
            m_highlighted = i;
            break;
        }
    }
}

void FlowSearchPalette::search()
{
    m_groups = FlowSearch::searchGroups(m_query, m_store.flow(m_currentFlow), m_store.flows());
    m_matchCount = 0;
    for (const FlowSearchGroup &group : std::as_const(m_groups))
        m_matchCount += group.matches.size();
}

bool FlowSearchPalette::isEmptyResult() const
{
    return m_matchCount == 0 && !m_query.trimmed().isEmpty();
}

bool FlowSearchPalette::moveHighlight(int delta)
{
    if (m_matchCount == 0)
        return false;
    const int next = std::clamp(m_highlighted + delta, 0, int(m_matchCount) - 1);
    if (next == m_highlighted)
        return false;
    m_highlighted = next;
    return true;
}

void FlowSearchPalette::setHighlighted(int index)
{
    if (matchAt(index))
        m_highlighted = index;
}

const FlowSearchMatch *FlowSearchPalette::matchAt(int index) const
{
    if (index < 0)
        return nullptr;
    for (const FlowSearchGroup &group : m_groups) {
        if (index < group.matches.size())
            return &group.matches[index];
        index -= int(group.matches.size());
    }
    return nullptr;
}

QUuid FlowSearchPalette::flowOf(const FlowSearchMatch &match) const
{
    return match.flowID.value_or(m_currentFlow);
}

bool FlowSearchPalette::openHighlighted(RouteRequest &routes) const
{
    const FlowSearchMatch *match = matchAt(m_highlighted);
    if (!match)
        return false;
    routes.requestFlow(flowOf(*match), match->id);
    return true;
}

} // namespace fenrow
