#include "FlowListModel.h"

#include "program/UuidText.h"
#include "domain/FenrowStore.h"
#include "domain/FlowProgress.h"
#include "shell/FlowProgressText.h"

#include <QMimeData>

namespace fenrow {

namespace {

const QString payloadType = QStringLiteral("text/plain");

QList<QUuid> idsOf(const QList<const TaskFlow *> &flows)
{
    QList<QUuid> ids;
    ids.reserve(flows.size());
    for (const TaskFlow *flow : flows)
        ids.append(flow->id);
    return ids;
}

// Only the first line counts: a payload from elsewhere may carry more.
QUuid payloadId(const QMimeData *data)
{
    if (!data || !data->hasText())
        return {};
    return QUuid::fromString(data->text().section(QLatin1Char('\n'), 0, 0).trimmed());
}

} // namespace

FlowListModel::FlowListModel(FenrowStore &store, QObject *parent)
    : QAbstractListModel(parent), m_store(store), m_ids(idsOf(store.flows()))
{
    connect(&m_store, &FenrowStore::changed, this, &FlowListModel::reload);
}

void FlowListModel::reload()
{
    QList<QUuid> ids = idsOf(m_store.flows());
    if (ids == m_ids) {
        // Same rows in the same order: repaint them and keep selection and
        // any open editor.
        if (!m_ids.isEmpty())
            emit dataChanged(index(0), index(int(m_ids.size()) - 1));
        return;
    }
    beginResetModel();
    m_ids = std::move(ids);
    endResetModel();
}

int FlowListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_ids.size());
}

const TaskFlow *FlowListModel::flowAt(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || index.row() >= m_ids.size())
        return nullptr;
    return m_store.flow(m_ids[index.row()]);
}

QUuid FlowListModel::flowIdAt(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || index.row() >= m_ids.size())
        return {};
    return m_ids[index.row()];
}

QModelIndex FlowListModel::indexOf(const QUuid &id) const
{
    const qsizetype row = id.isNull() ? -1 : m_ids.indexOf(id);
    return row < 0 ? QModelIndex() : index(int(row));
}

QVariant FlowListModel::data(const QModelIndex &index, int role) const
{
    const TaskFlow *flow = flowAt(index);
    if (!flow)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
        return flow->name;
    case FlowIdRole:
        return flow->id;
    case IdentifierRole:
        return QStringLiteral("sidebar.row.") + uuidText(flow->id);
    case ProgressTextRole:
    case Qt::AccessibleDescriptionRole:
        return flowProgressText(FlowProgress::of(flow->items()));
    case DoneCountRole:
        return FlowProgress::of(flow->items()).doneCount;
    case TotalCountRole:
        return qint64(flow->items().size());
    default:
        return {};
    }
}

bool FlowListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const TaskFlow *flow = flowAt(index);
    // A view clearing a cell passes an invalid value; that is no rename.
    if (!flow || role != Qt::EditRole || value.typeId() != QMetaType::QString)
        return false;
    m_store.renameFlow(*flow, value.toString());
    return true;
}

Qt::ItemFlags FlowListModel::flags(const QModelIndex &index) const
{
    if (!flowAt(index))
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled
           | Qt::ItemIsDropEnabled | Qt::ItemNeverHasChildren;
}

QStringList FlowListModel::mimeTypes() const
{
    return {payloadType};
}

QMimeData *FlowListModel::mimeData(const QModelIndexList &indexes) const
{
    // One row is dragged at a time; the sidebar selects a single flow.
    const TaskFlow *flow = indexes.isEmpty() ? nullptr : flowAt(indexes.first());
    if (!flow)
        return nullptr;
    auto *data = new QMimeData;
    data->setText(uuidText(flow->id));
    return data;
}

Qt::DropActions FlowListModel::supportedDragActions() const
{
    return Qt::MoveAction;
}

Qt::DropActions FlowListModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

std::optional<QList<const TaskFlow *>> FlowListModel::orderAfterDrop(const QList<const TaskFlow *> &flows,
                                                                     const QUuid &dragged, const QUuid &target)
{
    if (dragged.isNull() || dragged == target)
        return std::nullopt;
    const auto position = [&](const QUuid &id) {
        return std::find_if(flows.begin(), flows.end(), [&](const TaskFlow *flow) { return flow->id == id; })
               - flows.begin();
    };
    const qsizetype from = position(dragged);
    const qsizetype to = position(target);
    if (from == flows.size() || to == flows.size())
        return std::nullopt;
    QList<const TaskFlow *> ordered = flows;
    ordered.move(from, to);
    return ordered;
}

std::optional<QList<const TaskFlow *>> FlowListModel::dropOrder(const QMimeData *data,
                                                                const QModelIndex &target) const
{
    const TaskFlow *targetFlow = flowAt(target);
    if (!targetFlow)
        return std::nullopt;
    return orderAfterDrop(m_store.flows(), payloadId(data), targetFlow->id);
}

bool FlowListModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int,
                                    const QModelIndex &parent) const
{
    return dropOrder(data, parent).has_value();
}

bool FlowListModel::dropMimeData(const QMimeData *data, Qt::DropAction, int, int, const QModelIndex &parent)
{
    const auto ordered = dropOrder(data, parent);
    if (!ordered)
        return false;
    m_store.reorderFlows(*ordered);
    return true;
}

} // namespace fenrow
