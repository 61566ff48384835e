#pragma once

#include "domain/FlowSearch.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

class FenrowStore;
class RouteRequest;

// Whether the find palette is up. Anything may raise it (the sidebar's
// search row, the Find command) without holding the window.
class FlowSearchPresentation : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool isPresented() const { return m_isPresented; }
    void setPresented(bool presented);

signals:
    void presentedChanged(bool presented);

private:
    bool m_isPresented = false;
};

// The find palette without its widgets: the query, the groups it finds
// (the current flow first), and the highlighted row, counted through all
// groups together. Opening a row asks the window, through `RouteRequest`,
// for the row's flow and to reveal its task; a task of the flow on screen
// goes the same way, and the window only reveals it.
class FlowSearchPalette {
public:
    explicit FlowSearchPalette(const FenrowStore &store) : m_store(store) {}

    // The flow on screen, or null; its matches come first.
    void setCurrentFlow(const QUuid &flowID);
    QUuid currentFlow() const { return m_currentFlow; }

    // Searches again; the highlight goes back to the first row.
    void setQuery(const QString &query);
    const QString &query() const { return m_query; }
    // Searches the same query again after the records changed, keeping the
    // highlight on its row while there is one.
    void refresh();

    const QList<FlowSearchGroup> &groups() const { return m_groups; }
    qsizetype matchCount() const { return m_matchCount; }
    // A query that is not blank found nothing.
    bool isEmptyResult() const;

    // Index into all matches; -1 while there are none.
    int highlighted() const { return m_highlighted; }
    // Moves within the list, stopping at its ends; false when it could not move.
    bool moveHighlight(int delta);
    void setHighlighted(int index);

    const FlowSearchMatch *matchAt(int index) const;
    // The flow a match lives in: its own for another flow's, else the current one.
    QUuid flowOf(const FlowSearchMatch &match) const;

    // Asks for the highlighted match's flow and task; false with none.
    bool openHighlighted(RouteRequest &routes) const;

private:
    void search();

    const FenrowStore &m_store;
    QUuid m_currentFlow;
    QString m_query;
    QList<FlowSearchGroup> m_groups;
    qsizetype m_matchCount = 0;
    int m_highlighted = -1;
};

} // namespace fenrow
