#include "FlowSearchPaletteView.h"

#include "canvasview/CanvasGlyphs.h"
#include "look/EmptyStateView.h"
#include "look/Glyphs.h"
#include "look/Theme.h"
#include "program/UuidText.h"
#include "domain/FenrowStore.h"
#include "shell/RouteRequest.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {

using namespace Theme;

constexpr int paddingX = 12;
constexpr int groupHeight = 30;
constexpr int matchHeight = 34;
constexpr int snippetHeight = 50;
constexpr int glyphSize = 16;

CanvasGlyphs::Glyph statusGlyph(NodeStatus status)
{
    switch (status) {
    case NodeStatus::inProgress:
        return CanvasGlyphs::Glyph::statusInProgress;
    case NodeStatus::paused:
        return CanvasGlyphs::Glyph::statusPaused;
    case NodeStatus::done:
        return CanvasGlyphs::Glyph::statusDone;
    case NodeStatus::pending:
        break;
    }
    return CanvasGlyphs::Glyph::statusPending;
}

class ResultDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (index.data(FlowSearchResultsModel::IsGroupRole).toBool())
            return {option.rect.width(), groupHeight};
        const bool snippet = !index.data(FlowSearchResultsModel::SnippetRole).toString().isEmpty();
        return {option.rect.width(), snippet ? snippetHeight : matchHeight};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QRect rect = option.rect.adjusted(4, 1, -4, -1);
        if (index.data(FlowSearchResultsModel::IsGroupRole).toBool()) {
            painter->setFont(sectionFont());
            painter->setPen(Color::secondaryText);
            const QRect text = rect.adjusted(paddingX - 4, 8, -paddingX, 0);
            painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                              painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, text.width()));
            painter->restore();
            return;
        }
        const bool highlighted = index.data(FlowSearchResultsModel::HighlightedRole).toBool();
        if (highlighted || option.state & QStyle::State_MouseOver) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(highlighted ? Color::accentSoft : Color::hover);
            painter->drawRoundedRect(rect, Metric::rowRadius, Metric::rowRadius);
        }
        const auto status = NodeStatus(index.data(FlowSearchResultsModel::StatusRole).toInt());
        const QColor glyphColor = status == NodeStatus::done ? Color::done : Color::secondaryText;
        const QRect glyph(rect.left() + paddingX, rect.top() + (matchHeight - 2 - glyphSize) / 2, glyphSize,
                          glyphSize);
        CanvasGlyphs::icon(statusGlyph(status), glyphColor, glyphSize).paint(painter, glyph);

        const int textLeft = glyph.right() + 10;
        const int textWidth = rect.right() - paddingX - textLeft;
        painter->setFont(bodyFont());
        painter->setPen(Color::text);
        const QRect title(textLeft, rect.top(), textWidth, matchHeight - 2);
        painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                          painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, textWidth));
        const QString snippet = index.data(FlowSearchResultsModel::SnippetRole).toString();
        if (!snippet.isEmpty()) {
            painter->setFont(captionFont());
            painter->setPen(Color::secondaryText);
            const QRect line(textLeft, title.bottom() - 6, textWidth, rect.bottom() - title.bottom() + 4);
            // The whole line is kept; the row shows what fits of it.
            painter->drawText(line, Qt::AlignLeft | Qt::AlignTop,
                              painter->fontMetrics().elidedText(snippet, Qt::ElideRight, textWidth));
        }
        painter->restore();
    }
};

} // namespace

// --- results

FlowSearchResultsModel::FlowSearchResultsModel(const FlowSearchPalette &palette, QObject *parent)
    : QAbstractListModel(parent), m_palette(palette)
{
}

void FlowSearchResultsModel::reload()
{
    QList<FlowSearchGroup> groups = m_palette.groups();
    QList<Row> rows;
    int matchIndex = 0;
    for (int group = 0; group < groups.size(); ++group) {
        rows.append({group, -1, -1});
        const int matches = int(groups[group].matches.size());
        for (int match = 0; match < matches; ++match)
            rows.append({group, match, matchIndex++});
    }
    beginResetModel();
    m_groups = std::move(groups);
    m_rows = std::move(rows);
    endResetModel();
}

void FlowSearchResultsModel::highlightChanged()
{
    if (!m_rows.isEmpty())
        emit dataChanged(index(0), index(int(m_rows.size()) - 1), {HighlightedRole});
}

QModelIndex FlowSearchResultsModel::indexOfMatch(int matchIndex) const
{
    for (qsizetype i = 0; i < m_rows.size(); ++i)
        if (!m_rows[i].isGroup() && m_rows[i].matchIndex == matchIndex)
            return index(int(i));
    return {};
}

int FlowSearchResultsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

Qt::ItemFlags FlowSearchResultsModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || m_rows[index.row()].isGroup())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled;
}

QVariant FlowSearchResultsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows[index.row()];
    const FlowSearchGroup &group = m_groups[row.group];
    if (row.isGroup()) {
        const bool isCurrent = group.flowID == m_palette.currentFlow();
        switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return isCurrent ? qtTrId("flowSearch.group.current") : group.flowName;
        case Qt::AccessibleDescriptionRole:
        case SnippetRole:
            return QString();
        case IsGroupRole:
            return true;
        case NodeIdRole:
            return QUuid();
        case StatusRole:
            return int(NodeStatus::pending);
        case MatchIndexRole:
            return -1;
        case HighlightedRole:
            return false;
        case IdentifierRole:
            return isCurrent ? QStringLiteral("flowSearch.group.current")
                             : QStringLiteral("flowSearch.group.") + uuidText(group.flowID);
        default:
            return {};
        }
    }
    const FlowSearchMatch &match = group.matches[row.match];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return match.title;
    case Qt::AccessibleDescriptionRole:
    case SnippetRole:
        return match.notesSnippet.value_or(QString());
    case IsGroupRole:
        return false;
    case NodeIdRole:
        return match.id;
    case StatusRole:
        return int(match.status);
    case MatchIndexRole:
        return row.matchIndex;
    case HighlightedRole:
        return row.matchIndex == m_palette.highlighted();
    case IdentifierRole:
        return QStringLiteral("flowSearch.result.") + uuidText(match.id);
    default:
        return {};
    }
}

// --- palette

FlowSearchPaletteView::FlowSearchPaletteView(FenrowStore &store, RouteRequest &routes, QWidget *parent)
    : QWidget(parent), m_store(store), m_routes(routes), m_palette(store)
{
    setObjectName(QStringLiteral("flowSearch.panel"));
    // One size whatever it finds: a panel that jumps as you type is hard to read.
    setMinimumSize(panelWidth, panelMinimumHeight);
    setAccessibleName(qtTrId("sidebar.route.search"));

    auto *magnifier = new QLabel(this);
    magnifier->setPixmap(Glyphs::magnifier(Color::secondaryText).pixmap(16, 16));
    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("flowSearch.field"));
    m_field->setPlaceholderText(qtTrId("flowSearch.field.placeholder"));
    m_field->setAccessibleName(qtTrId("flowSearch.field.placeholder"));
    m_field->setFrame(false);
    m_field->setFont(titleFont());
    m_field->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
    m_field->installEventFilter(this);
    auto *close = new QToolButton(this);
    close->setObjectName(QStringLiteral("flowSearch.close"));
    close->setText(QStringLiteral("✕"));
    close->setToolTip(qtTrId("flowSearch.close"));
    close->setAccessibleName(qtTrId("flowSearch.close"));
    close->setAutoRaise(true);
    close->setFocusPolicy(Qt::NoFocus);
    close->setCursor(Qt::PointingHandCursor);
    close->setStyleSheet(QStringLiteral("QToolButton { border: none; border-radius: 6px; color: %1; padding: 3px 6px; }"
                                        " QToolButton:hover { background: %2; }")
                             .arg(Color::secondaryText.name(), Color::hover.name()));
    connect(close, &QToolButton::clicked, this, &FlowSearchPaletteView::closeRequested);

    auto *fieldRow = new QHBoxLayout;
    fieldRow->setContentsMargins(18, 14, 12, 12);
    fieldRow->setSpacing(10);
    fieldRow->addWidget(magnifier);
    fieldRow->addWidget(m_field, 1);
    fieldRow->addWidget(close);

    auto *rule = new QFrame(this);
    rule->setFrameShape(QFrame::HLine);
    rule->setFixedHeight(1);
    rule->setStyleSheet(QStringLiteral("background: %1; border: none;").arg(Color::divider.name()));

    m_model = new FlowSearchResultsModel(m_palette, this);
    m_list = new QListView(this);
    m_list->setObjectName(QStringLiteral("flowSearch.results"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ResultDelegate(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setMouseTracking(true);
    m_list->setUniformItemSizes(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setStyleSheet(QStringLiteral("QListView { background: transparent; }"));
    m_list->verticalScrollBar()->setStyleSheet(thinScrollBarStyle());
    connect(m_list, &QListView::clicked, this, [this](const QModelIndex &index) {
        const int match = index.data(FlowSearchResultsModel::MatchIndexRole).toInt();
        if (match < 0)
            return;
        m_palette.setHighlighted(match);
        openHighlighted();
    });

    m_empty = new EmptyStateView(QStringLiteral("flowSearch.empty"), this);
    m_empty->setContent(Glyphs::Symbol::noMatches, qtTrId("flowSearch.empty.title"),
                        qtTrId("flowSearch.empty.message"));
    m_content = new QStackedWidget(this);
    m_content->addWidget(m_list);
    m_content->addWidget(m_empty);

    auto *hint = new QLabel(qtTrId("flowSearch.footer.hint"), this);
    hint->setObjectName(QStringLiteral("flowSearch.footer.hint"));
    hint->setFont(captionFont());
    hint->setWordWrap(true);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("flowSearch.count"));
    m_count->setFont(captionFont());
    for (QLabel *label : {hint, m_count}) {
        QPalette muted = label->palette();
        muted.setColor(QPalette::WindowText, Color::secondaryText);
        label->setPalette(muted);
    }
    auto *footer = new QHBoxLayout;
    footer->setContentsMargins(18, 8, 18, 12);
    footer->setSpacing(12);
    footer->addWidget(hint, 1);
    footer->addWidget(m_count, 0, Qt::AlignRight | Qt::AlignVCenter);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(fieldRow);
    column->addWidget(rule);
    column->addSpacing(6);
    auto *inset = new QHBoxLayout;
    inset->setContentsMargins(8, 0, 8, 0);
    inset->addWidget(m_content);
    column->addLayout(inset, 1);
    column->addLayout(footer);

    connect(m_field, &QLineEdit::textChanged, this, &FlowSearchPaletteView::queryChanged);
    // Tasks may change under the open palette (an undo, another window).
    connect(&m_store, &FenrowStore::changed, this, [this] {
        m_palette.refresh();
        showResults();
    });
}

void FlowSearchPaletteView::start(const QUuid &currentFlow)
{
    m_palette.setCurrentFlow(currentFlow);
    m_field->clear();
    queryChanged(QString());
    m_field->setFocus(Qt::PopupFocusReason);
}

void FlowSearchPaletteView::queryChanged(const QString &query)
{
    m_palette.setQuery(query);
    showResults();
}

void FlowSearchPaletteView::showResults()
{
    m_model->reload();
    const qsizetype count = m_palette.matchCount();
    m_count->setText(count > 0 ? qtTrId("flowSearch.count %lld").arg(count) : QString());
    m_list->setAccessibleDescription(m_count->text());
    m_content->setCurrentWidget(m_palette.isEmptyResult() ? static_cast<QWidget *>(m_empty) : m_list);
    if (const QModelIndex index = m_model->indexOfMatch(m_palette.highlighted()); index.isValid())
        m_list->scrollTo(index);
    else
        m_list->scrollToTop();
}

void FlowSearchPaletteView::moveHighlight(int delta)
{
    if (!m_palette.moveHighlight(delta))
        return;
    m_model->highlightChanged();
    // The first match brings its group's title into view with it.
    if (m_palette.highlighted() == 0)
        m_list->scrollToTop();
    else
        m_list->scrollTo(m_model->indexOfMatch(m_palette.highlighted()));
}

void FlowSearchPaletteView::openHighlighted()
{
    if (!m_palette.matchAt(m_palette.highlighted()))
        return;
    // Closed first: the route's canvas must take keys again at once.
    emit closeRequested();
    m_palette.openHighlighted(m_routes);
}

bool FlowSearchPaletteView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Up:
            moveHighlight(-1);
            return true;
        case Qt::Key_Down:
            moveHighlight(1);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            openHighlighted();
            return true;
        case Qt::Key_Escape:
            emit closeRequested();
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace fenrow
