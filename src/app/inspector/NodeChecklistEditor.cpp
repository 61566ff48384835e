#include "NodeChecklistEditor.h"

#include "look/Glyphs.h"
#include "look/Theme.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {
constexpr int entryIDRole = Qt::UserRole + 1;
}

NodeChecklistEditor::NodeChecklistEditor(FenrowStore &store, FenrowHistory &history, QWidget *parent)
    : QWidget(parent), m_store(store), m_history(history)
{
    setObjectName(QStringLiteral("inspector.checklist"));
    // As tall as its rows: extra room in the panel goes below, not between.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);

    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("inspector.checklist.count"));
    m_count->setFont(Theme::captionFont());
    QPalette muted = m_count->palette();
    muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
    m_count->setPalette(muted);
    column->addWidget(m_count);

    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("inspector.checklist.list"));
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_list->setDefaultDropAction(Qt::MoveAction);
    m_list->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    m_list->installEventFilter(this);
    connect(m_list, &QListWidget::itemChanged, this, &NodeChecklistEditor::itemChanged);
    // A drop inside the list moves rows; the new order is read afterwards.
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this, [this] {
        if (!m_filling)
            rowsMoved();
    });
    column->addWidget(m_list);

    m_add = new QLineEdit(this);
    m_add->setObjectName(QStringLiteral("inspector.checklist.add"));
    m_add->setPlaceholderText(qtTrId("inspector.checklist.add.placeholder"));
    m_add->setClearButtonEnabled(true);
    connect(m_add, &QLineEdit::returnPressed, this, &NodeChecklistEditor::addEntry);
    column->addWidget(m_add);
}

const FlowNode *NodeChecklistEditor::node() const
{
    return m_nodeID.isNull() ? nullptr : m_store.node(m_nodeID);
}

void NodeChecklistEditor::showNode(const FlowNode *node)
{
    m_nodeID = node ? node->id : QUuid();
    fill(node ? node->checklist() : Checklist());
}

void NodeChecklistEditor::fill(const Checklist &entries)
{
    m_filling = true;
    const QUuid current = m_list->currentItem() ? m_list->currentItem()->data(entryIDRole).toUuid() : QUuid();
    m_list->clear();
    qsizetype done = 0;
    for (const ChecklistEntry &entry : entries) {
        auto *item = new QListWidgetItem(entry.title);
        item->setData(entryIDRole, entry.id);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsUserCheckable
                       | Qt::ItemIsDragEnabled);
        item->setCheckState(entry.isDone ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(qtTrId(entry.isDone ? "inspector.checklist.done" : "inspector.checklist.open"));
        m_list->addItem(item);
        const QString rowName = QStringLiteral("inspector.checklist.row.") + entry.id.toString(QUuid::WithoutBraces);
        auto *remove = new QToolButton;
        remove->setObjectName(rowName + QStringLiteral(".delete"));
        remove->setIcon(Glyphs::trash(Theme::Color::secondaryText));
        remove->setAutoRaise(true);
        remove->setToolTip(qtTrId("inspector.checklist.delete"));
        remove->setAccessibleName(qtTrId("inspector.checklist.delete"));
        remove->setCursor(Qt::PointingHandCursor);
        connect(remove, &QToolButton::clicked, this, [this, id = entry.id] { deleteEntry(id); });
        auto *trailing = new QWidget;
        trailing->setObjectName(rowName);
        auto *row = new QHBoxLayout(trailing);
        row->setContentsMargins(0, 0, 2, 0);
        row->addStretch();
        row->addWidget(remove);
        m_list->setItemWidget(item, trailing);
        if (entry.id == current)
            m_list->setCurrentItem(item);
        done += entry.isDone ? 1 : 0;
    }
    m_count->setText(qtTrId("inspector.checklist.count %lld %lld").arg(done).arg(entries.size()));
    m_count->setVisible(!entries.isEmpty());
    // The list is as tall as its rows: the inspector scrolls, not the list.
    int height = 0;
    for (int row = 0; row < m_list->count(); ++row)
        height += m_list->sizeHintForRow(row);
    m_list->setFixedHeight(height + 2 * m_list->frameWidth());
    m_list->setVisible(!entries.isEmpty());
    m_filling = false;
}

void NodeChecklistEditor::addEntry()
{
    const FlowNode *target = node();
    const QString title = m_add->text().trimmed();
    if (!target || title.isEmpty())
        return;
    m_history.recordAction(QStringLiteral("Add step"), *target->flow(),
                           [&] { m_store.addChecklistEntry(title, *target); });
    m_add->clear();
    // The focus stays for the next step.
    m_add->setFocus();
}

void NodeChecklistEditor::itemChanged(QListWidgetItem *item)
{
    const FlowNode *target = node();
    if (m_filling || !target)
        return;
    const QUuid id = item->data(entryIDRole).toUuid();
    const Checklist entries = target->checklist();
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const ChecklistEntry &e) { return e.id == id; });
    if (entry == entries.end())
        return;
    const bool ticked = item->checkState() == Qt::Checked;
    const QString title = item->text().trimmed();
    if (ticked != entry->isDone) {
        m_history.recordAction(QStringLiteral("Edit step"), *target->flow(),
                               [&] { m_store.toggleChecklistEntry(id, *target); });
    } else if (title != entry->title) {
        // A step renamed to nothing keeps its old name.
        if (!title.isEmpty())
            m_history.recordAction(QStringLiteral("Edit step"), *target->flow(),
                                   [&] { m_store.renameChecklistEntry(id, title, *target); });
    }
    if (const FlowNode *now = node())
        fill(now->checklist());
}

void NodeChecklistEditor::rowsMoved()
{
    const FlowNode *target = node();
    if (!target)
        return;
    const Checklist entries = target->checklist();
    Checklist reordered;
    for (int row = 0; row < m_list->count(); ++row) {
        const QUuid id = m_list->item(row)->data(entryIDRole).toUuid();
        const auto entry =
            std::find_if(entries.begin(), entries.end(), [&](const ChecklistEntry &e) { return e.id == id; });
        if (entry != entries.end())
            reordered.append(*entry);
    }
    // Rows the list lost track of keep their place at the end.
    for (const ChecklistEntry &entry : entries) {
        if (!reordered.contains(entry))
            reordered.append(entry);
    }
    if (reordered != entries)
        m_history.recordAction(QStringLiteral("Reorder steps"), *target->flow(),
                               [&] { m_store.setChecklist(reordered, *target); });
    // Item widgets do not follow a moved row: fill again.
    if (const FlowNode *now = node())
        fill(now->checklist());
}

void NodeChecklistEditor::deleteEntry(const QUuid &id)
{
    const FlowNode *target = node();
    if (!target)
        return;
    m_history.recordAction(QStringLiteral("Delete step"), *target->flow(),
                           [&] { m_store.removeChecklistEntry(id, *target); });
}

bool NodeChecklistEditor::eventFilter(QObject *watched, QEvent *event)
{
    // While a step is being renamed its editor has the keys, not the list.
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Delete || key->key() == Qt::Key_Backspace) && m_list->currentItem()) {
            deleteEntry(m_list->currentItem()->data(entryIDRole).toUuid());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace fenrow
