#include "ArchiveListModel.h"

#include "program/UuidText.h"
#include "domain/ArchiveDays.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "shell/InterfaceLanguage.h"

#include <QLocale>

namespace fenrow {

ArchiveListModel::ArchiveListModel(FenrowStore &store, QObject *parent) : SectionedRowsModel(parent), m_store(store)
{
}

void ArchiveListModel::setQuery(const QString &query)
{
    const QString trimmed = query.trimmed();
    if (trimmed == m_query)
        return;
    m_query = trimmed;
    reload();
}

ArchiveListModel::Row ArchiveListModel::recordRow(const CompletionRecord &record) const
{
    Row row;
    row.kind = Kind::record;
    row.title = record.title;
    row.identifier = QStringLiteral("archive.row.") + uuidText(record.id);
    row.recordId = record.id;
    row.flowName = record.flowName;
    // The day is in the header; the row tells the hour, in the user's zone.
    const QTime time = record.completedAt.toTimeZone(m_store.calendar().zone()).time();
    row.timeText = QLocale(InterfaceLanguage::current()).toString(time, QLocale::ShortFormat);
    if (record.kindRaw == CompletionRecord::repeatKind)
        row.repeatText = qtTrId("archive.row.repeated").arg(record.cycle);
    row.canRestore = m_store.canRestore(record);
    return row;
}

QList<ArchiveListModel::Row> ArchiveListModel::buildRows(const QList<const CompletionRecord *> &records) const
{
    const QList<ArchiveDay> days = ArchiveDays::group(records, m_store.clock().now(), m_store.calendar());
    QList<Row> rows;
    rows.reserve(records.size() + days.size());
    for (const ArchiveDay &day : days) {
        Row header;
        header.kind = Kind::day;
        header.title = day.title;
        header.identifier = QStringLiteral("archive.day.") + day.id;
        header.count = day.records.size();
        rows.append(header);
        for (const CompletionRecord *record : day.records)
            rows.append(recordRow(*record));
    }
    return rows;
}

void ArchiveListModel::reload()
{
    const QList<const CompletionRecord *> all = m_store.archiveRecords();
    const QList<const CompletionRecord *> shown = ArchiveDays::filter(all, m_query);
    m_totalCount = all.size();
    m_recordCount = shown.size();
    QList<Row> rows = buildRows(shown);

    replaceRows(m_rows, std::move(rows));
}

int ArchiveListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QModelIndex ArchiveListModel::indexOf(const QUuid &recordId) const
{
    if (recordId.isNull())
        return {};
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].kind == Kind::record && m_rows[i].recordId == recordId)
            return index(int(i));
    }
    return {};
}

QUuid ArchiveListModel::recordIdAt(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || index.row() >= m_rows.size())
        return {};
    return m_rows[index.row()].recordId;
}

Qt::ItemFlags ArchiveListModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || m_rows[index.row()].kind == Kind::day)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

QVariant ArchiveListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.model() != this || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return row.title;
    case Qt::AccessibleDescriptionRole: {
        QStringList parts{row.flowName, row.timeText, row.repeatText};
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
    case KindRole:
        return int(row.kind);
    case RecordIdRole:
        return row.recordId;
    case CountRole:
        return qint64(row.count);
    case FlowNameRole:
        return row.flowName;
    case TimeTextRole:
        return row.timeText;
    case RepeatTextRole:
        return row.repeatText;
    case CanRestoreRole:
        return row.canRestore;
    case IdentifierRole:
        return row.identifier;
    default:
        return {};
    }
}

} // namespace fenrow
