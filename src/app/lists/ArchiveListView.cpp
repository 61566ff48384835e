#include "ArchiveListView.h"

#include "ArchiveListModel.h"
#include "ArchiveRowDelegate.h"
#include "look/EmptyStateView.h"
#include "ListViewPlaces.h"
#include "look/Theme.h"
#include "domain/FenrowStore.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace fenrow {

namespace {

using namespace Theme;

// The same margins as the Ready list, so switching routes doesn't shift.
constexpr int marginX = 24;
constexpr int listRightMargin = 16;
constexpr int rowInset = 12;
constexpr int searchWidth = 240;

class InsetListView : public QListView {
public:
    InsetListView(int left, int right, QWidget *parent) : QListView(parent) { setViewportMargins(left, 0, right, 0); }
};

// A magnifier in front of the search text.
QIcon searchIcon()
{
    QPixmap pixmap(QSize(16, 16) * qGuiApp->devicePixelRatio());
    pixmap.setDevicePixelRatio(qGuiApp->devicePixelRatio());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    Glyphs::paintSymbol(painter, QRectF(1, 1, 14, 14), Glyphs::Symbol::noMatches, Color::secondaryText);
    return QIcon(pixmap);
}

} // namespace

ArchiveListView::ArchiveListView(FenrowStore &store, QWidget *parent) : QWidget(parent), m_store(store)
{
    setObjectName(QStringLiteral("archive.root"));
    setAutoFillBackground(true);

    m_model = new ArchiveListModel(store, this);

    m_title = new QLabel(qtTrId("archive.title"), this);
    m_title->setObjectName(QStringLiteral("archive.title"));
    m_title->setFont(largeTitleFont());
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("archive.count"));
    m_count->setFont(captionFont());
    QPalette muted = m_count->palette();
    muted.setColor(QPalette::WindowText, Color::secondaryText);
    m_count->setPalette(muted);

    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("archive.search"));
    m_search->setPlaceholderText(qtTrId("archive.search.placeholder"));
    m_search->setAccessibleName(qtTrId("archive.search.placeholder"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(searchIcon(), QLineEdit::LeadingPosition);
    m_search->setFixedWidth(searchWidth);
    m_search->setStyleSheet(QStringLiteral("QLineEdit { border: 1px solid %1; border-radius: 7px; padding: 4px 4px;"
                                           " background: %2; }"
                                           " QLineEdit:focus { border-color: %3; background: %4; }")
                                .arg(Color::track.name(), Color::sidebar.name(), Color::accent.name(),
                                     Color::window.name()));
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model->setQuery(text);
        m_list->scrollToTop();
        showState();
    });

    // The title and its count read as one; the search sits at the far end.
    auto *titleRow = new QHBoxLayout;
    titleRow->setSpacing(12);
    titleRow->addWidget(m_title);
    titleRow->addWidget(m_count, 0, Qt::AlignBaseline);
    titleRow->addStretch(1);
    m_header = new QBoxLayout(QBoxLayout::LeftToRight);
    m_header->setContentsMargins(marginX + rowInset, 0, listRightMargin + rowInset, 0);
    m_header->setSpacing(16);
    m_header->addLayout(titleRow, 1);
    m_header->addWidget(m_search, 0, Qt::AlignVCenter);

    m_list = new InsetListView(marginX, listRightMargin, this);
    m_list->setObjectName(QStringLiteral("archive.list"));
    m_list->setAccessibleName(qtTrId("archive.title"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ArchiveRowDelegate(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setUniformItemSizes(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setMouseTracking(true);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->setStyleSheet(QStringLiteral("QListView { background: transparent; outline: none; }"));
    m_list->verticalScrollBar()->setStyleSheet(thinScrollBarStyle());
    m_list->viewport()->installEventFilter(this);
    connect(m_list, &QWidget::customContextMenuRequested, this, &ArchiveListView::showRowMenu);

    m_empty = new EmptyStateView(QStringLiteral("archive.empty"), this);
    m_content = new QStackedWidget(this);
    m_content->addWidget(m_list);
    m_content->addWidget(m_empty);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 30, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_header);
    column->addSpacing(20);
    column->addWidget(m_content, 1);

    connect(&m_store, &FenrowStore::changed, this, &ArchiveListView::reload);
}

void ArchiveListView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_stale)
        reload();
    arrangeHeader();
}

void ArchiveListView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrangeHeader();
}

void ArchiveListView::arrangeHeader()
{
    const QMargins margins = m_header->contentsMargins();
    const int room = width() - margins.left() - margins.right();
    const int titleWidth = m_title->sizeHint().width() + 12 + (m_count->isHidden() ? 0 : m_count->sizeHint().width());
    const bool stacked = !m_search->isHidden() && titleWidth + 16 + searchWidth > room;
    ListViewPlaces::arrangeHeader(*m_header, *m_search, stacked);
}

void ArchiveListView::reload()
{
    if (!isVisible()) {
        m_stale = true;
        return;
    }
    m_stale = false;
    ListViewPlaces::reloadKeepingPlace(*m_list, *m_model, &ArchiveListModel::recordIdAt);
    showState();
}

void ArchiveListView::showState()
{
    const qsizetype count = m_model->recordCount();
    const bool searching = !m_model->query().isEmpty();
    m_count->setText(qtTrId("archive.count.label").arg(count));
    m_count->setVisible(count > 0);
    // Nothing archived, nothing to search; a search that found nothing
    // keeps its field so that it can be changed.
    m_search->setVisible(searching || m_model->totalCount() > 0);
    arrangeHeader();
    if (count > 0) {
        m_content->setCurrentWidget(m_list);
        return;
    }
    if (searching)
        m_empty->setContent(Glyphs::Symbol::noMatches, qtTrId("archive.empty.search.title"),
                            qtTrId("archive.empty.search.message"));
    else
        m_empty->setContent(Glyphs::Symbol::archiveEmpty, qtTrId("archive.empty.title"),
                            qtTrId("archive.empty.message"));
    m_content->setCurrentWidget(m_empty);
}

const CompletionRecord *ArchiveListView::record(const QUuid &recordId) const
{
    for (const CompletionRecord *candidate : m_store.completionRecords())
        if (candidate->id == recordId)
            return candidate;
    return nullptr;
}

void ArchiveListView::restore(const QUuid &recordId)
{
    if (const CompletionRecord *found = record(recordId); found && m_store.canRestore(*found))
        m_store.restoreRecord(*found);
}

void ArchiveListView::remove(const QUuid &recordId)
{
    if (const CompletionRecord *found = record(recordId))
        m_store.deleteRecord(*found);
}

void ArchiveListView::showRowMenu(const QPoint &position)
{
    const QModelIndex index = m_list->indexAt(position);
    const QUuid id = m_model->recordIdAt(index);
    if (id.isNull())
        return;
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("archive.row.menu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (index.data(ArchiveListModel::CanRestoreRole).toBool()) {
        QAction *restoring = menu->addAction(Glyphs::restore(Color::text), qtTrId("archive.row.restore"));
        restoring->setObjectName(QStringLiteral("archive.row.restore"));
        restoring->setToolTip(qtTrId("archive.row.restore.help"));
        connect(restoring, &QAction::triggered, this, [this, id] { restore(id); });
    }
    QAction *removing = menu->addAction(Glyphs::trash(Color::text), qtTrId("archive.row.delete"));
    removing->setObjectName(QStringLiteral("archive.row.delete"));
    connect(removing, &QAction::triggered, this, [this, id] { remove(id); });
    menu->popup(m_list->viewport()->mapToGlobal(position));
}

bool ArchiveListView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        // Escape empties the search before anything else happens to it.
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
        return false;
    }
    if (watched != m_list->viewport())
        return false;

    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const QPoint at = mouse->position().toPoint();
        const QModelIndex index = m_list->indexAt(at);
        const QUuid id = m_model->recordIdAt(index);
        const QRect row = m_list->visualRect(index);
        const bool onRestore =
            index.data(ArchiveListModel::CanRestoreRole).toBool() && ArchiveRowDelegate::restoreRect(row).contains(at);
        const bool onDelete = ArchiveRowDelegate::deleteRect(row).contains(at);
        if (id.isNull() || mouse->button() != Qt::LeftButton || !(onRestore || onDelete)) {
            m_pressedRecord = QUuid();
            return false;
        }
        // An action runs when press and release land on the same button; a
        // double click's second press lands on the row that moved up.
        if (event->type() == QEvent::MouseButtonPress) {
            m_pressedRecord = id;
            m_pressedRestore = onRestore;
        } else if (event->type() == QEvent::MouseButtonRelease) {
            const bool same = m_pressedRecord == id && m_pressedRestore == onRestore;
            m_pressedRecord = QUuid();
            if (same && onRestore)
                restore(id);
            else if (same)
                remove(id);
        } else {
            m_pressedRecord = QUuid();
        }
        return true;
    }
    case QEvent::MouseMove:
        // The buttons light up under the pointer, not only the row.
        m_list->viewport()->update(
            m_list->visualRect(m_list->indexAt(static_cast<QMouseEvent *>(event)->position().toPoint())));
        return false;
    default:
        return false;
    }
}

} // namespace fenrow
