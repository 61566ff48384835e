#pragma once

#include "SectionedRowsModel.h"

#include <QAbstractListModel>
#include <QList>
#include <QUuid>

namespace fenrow {

class CompletionRecord;
class FenrowStore;

// The archive as rows: a header for each day, the day's records under it,
// newest first, narrowed by the search text. Rows hold texts and ids, never
// record pointers: a record deleted elsewhere cannot be reached from a row.
class ArchiveListModel : public SectionedRowsModel {
    Q_OBJECT

public:
    enum class Kind { day, record };

    enum Role {
        KindRole = Qt::UserRole + 1,
        RecordIdRole,
        // Day: the number of records under it.
        CountRole,
        FlowNameRole,
        // The time of day the task was finished, in the interface language.
        TimeTextRole,
        // A round of a recurring task: "Repeated · round 3"; empty otherwise.
        RepeatTextRole,
        CanRestoreRole,
        // "archive.day." + the day (YYYY-MM-DD), or "archive.row." + the
        // record's UUID.
        IdentifierRole,
    };

    explicit ArchiveListModel(FenrowStore &store, QObject *parent = nullptr);

    // Trimmed; blank shows everything.
    void setQuery(const QString &query);
    QString query() const { return m_query; }

    // Reads the store again.
    void reload();

    // Records shown, and records in the archive whatever the search.
    qsizetype recordCount() const { return m_recordCount; }
    qsizetype totalCount() const { return m_totalCount; }
    QModelIndex indexOf(const QUuid &recordId) const;
    QUuid recordIdAt(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Row {
        Kind kind = Kind::record;
        QString title;
        QString identifier;
        qsizetype count = 0;
        QUuid recordId;
        QString flowName;
        QString timeText;
        QString repeatText;
        bool canRestore = false;

        bool sameSlot(const Row &other) const { return kind == other.kind && identifier == other.identifier; }
    };

    QList<Row> buildRows(const QList<const CompletionRecord *> &records) const;
    Row recordRow(const CompletionRecord &record) const;

    FenrowStore &m_store;
    QString m_query;
    QList<Row> m_rows;
    qsizetype m_recordCount = 0;
    qsizetype m_totalCount = 0;
};

} // namespace fenrow
