#include "NamedReference.h"

#include "PlainText.h"
#include "TextTable.h"

#include "domain/FlowFile.h"
#include "domain/FlowTemplate.h"
#include "domain/TaskFlow.h"

#include <QUuid>

namespace fenrow {

namespace {

// Long lists help nobody pick; the rest are counted.
constexpr qsizetype listedCandidates = 10;

template <typename Record>
struct Noun;
template <>
struct Noun<TaskFlow> {
    static constexpr const char *one = "flow";
    static constexpr const char *many = "flows";
};
template <>
struct Noun<FlowTemplate> {
    static constexpr const char *one = "template";
    static constexpr const char *many = "templates";
};
template <>
struct Noun<FlowFile> {
    static constexpr const char *one = "file";
    static constexpr const char *many = "files";
};

// A file card goes by its file's name.
const QString &nameOf(const TaskFlow &flow) { return flow.name; }
const QString &nameOf(const FlowTemplate &blueprint) { return blueprint.name; }
const QString &nameOf(const FlowFile &file) { return file.filename; }

} // namespace

template <typename Record>
NamedReference<Record> NamedReference<Record>::resolve(const QList<const Record *> &records, const QString &text)
{
    NamedReference reference;
    reference.m_text = text;
    const QString wanted = text.trimmed();

    const QUuid id = QUuid::fromString(wanted);
    if (!id.isNull()) {
        for (const Record *record : records) {
            if (record->id == id) {
                reference.m_found = record;
                return reference;
            }
        }
    }

    QList<const Record *> exact;
    QList<const Record *> prefixed;
    if (!wanted.isEmpty()) {
        for (const Record *record : records) {
            if (nameOf(*record).compare(wanted, Qt::CaseInsensitive) == 0)
                exact.append(record);
            else if (nameOf(*record).startsWith(wanted, Qt::CaseInsensitive))
                prefixed.append(record);
        }
    }
    const QList<const Record *> &matches = exact.isEmpty() ? prefixed : exact;
    if (matches.size() == 1) {
        reference.m_found = matches.first();
    } else if (matches.size() > 1) {
        reference.m_ambiguous = true;
        reference.m_candidates = matches;
    } else {
        reference.m_candidates = records;
    }
    return reference;
}

template <typename Record>
QString NamedReference<Record>::problem() const
{
    if (m_found)
        return {};

    const QString one = QLatin1String(Noun<Record>::one);
    const QString many = QLatin1String(Noun<Record>::many);
    const QString quoted = PlainText::quoted(m_text);
    QString message;
    if (m_ambiguous)
        message = QStringLiteral("%1 matches more than one %2:\n").arg(quoted, one);
    else if (m_candidates.isEmpty())
        return QStringLiteral("no %1 matches %2; there are no %3 yet").arg(one, quoted, many);
    else
        message = QStringLiteral("no %1 matches %2; the %3 are:\n").arg(one, quoted, many);

    TextTable table({}, QStringLiteral("  "));
    for (const Record *record : m_candidates.first(std::min(m_candidates.size(), listedCandidates)))
        table.addRow({nameOf(*record), PlainText::id(record->id)});
    QString listing;
    QTextStream stream(&listing);
    table.print(stream);
    stream.flush();
    message += listing;
    if (m_candidates.size() > listedCandidates)
        message += QStringLiteral("  … and %1 more\n").arg(m_candidates.size() - listedCandidates);
    message += m_ambiguous ? QStringLiteral("Name it by more of its name, or by its id.")
                           : QStringLiteral("Name a %1 by its id, its name, or the start of its name.").arg(one);
    return message;
}

template class NamedReference<TaskFlow>;
template class NamedReference<FlowTemplate>;
template class NamedReference<FlowFile>;

} // namespace fenrow
