#pragma once

#include "shell/FlowSearchPalette.h"

#include <QAbstractListModel>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;
class QStackedWidget;

namespace fenrow {

class EmptyStateView;
class FenrowStore;
class RouteRequest;

// The rows of the find palette: a title per group, then its matches. Rows
// hold ids and texts only.
class FlowSearchResultsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        IsGroupRole = Qt::UserRole + 1,
        NodeIdRole,
        StatusRole,
        SnippetRole,
        // Index into all matches; -1 for a group's title.
        MatchIndexRole,
        HighlightedRole,
        // "flowSearch.result." + node UUID, "flowSearch.group." + flow UUID,
        // or "flowSearch.group.current".
        IdentifierRole,
    };

    explicit FlowSearchResultsModel(const FlowSearchPalette &palette, QObject *parent = nullptr);

    // Reads the palette's groups again.
    void reload();
    // Only the highlight moved: a repaint.
    void highlightChanged();
    QModelIndex indexOfMatch(int matchIndex) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    // A row points into the groups; its texts are made when the view asks
    // for them, so a common word's tens of thousands of matches cost a
    // typed letter no more than the rows in sight.
    struct Row {
        int group = 0;
        // -1 for the group's title.
        int match = -1;
        int matchIndex = -1;
        bool isGroup() const { return match < 0; }
    };

    const FlowSearchPalette &m_palette;
    // The palette's groups as of the last reload (shared, not copied).
    QList<FlowSearchGroup> m_groups;
    QList<Row> m_rows;
};

// The find palette: the query field, the matches of the flow on screen and
// then of the others, and a footer with the keys and the count. The window
// shows it on a `DismissableDialogOverlay`, which dims the window and
// counts it as an open dialog, so the canvas takes no key commands. The
// field keeps the focus: the arrows move the highlight, Return opens it,
// Escape closes.
class FlowSearchPaletteView : public QWidget {
    Q_OBJECT

public:
    static constexpr int panelWidth = 560;
    static constexpr int panelHeight = 420;
    static constexpr int panelMinimumHeight = 380;

    FlowSearchPaletteView(FenrowStore &store, RouteRequest &routes, QWidget *parent = nullptr);

    // Starts over with an empty query, searching from `currentFlow` first.
    void start(const QUuid &currentFlow);

    const FlowSearchPalette &palette() const { return m_palette; }
    QLineEdit *field() const { return m_field; }
    QListView *results() const { return m_list; }

    QSize sizeHint() const override { return {panelWidth, panelHeight}; }

signals:
    // Escape, the close button, or a task was opened.
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void queryChanged(const QString &query);
    void showResults();
    void moveHighlight(int delta);
    void openHighlighted();

    FenrowStore &m_store;
    RouteRequest &m_routes;
    FlowSearchPalette m_palette;
    FlowSearchResultsModel *m_model = nullptr;
    QLineEdit *m_field = nullptr;
    QStackedWidget *m_content = nullptr;
    QListView *m_list = nullptr;
    EmptyStateView *m_empty = nullptr;
    QLabel *m_count = nullptr;
};

} // namespace fenrow
