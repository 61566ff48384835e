#include "TaskEdits.h"

#include "CommandContext.h"
#include "OptionChoice.h"
#include "PlainText.h"

#include "domain/FenrowStore.h"
#include "domain/LocalCalendar.h"

namespace fenrow {

namespace {

const QString titleOption = QStringLiteral("title");
const QString notesOption = QStringLiteral("notes");
const QString statusOption = QStringLiteral("status");
const QString priorityOption = QStringLiteral("priority");
const QString colorOption = QStringLiteral("color");
const QString estimateOption = QStringLiteral("estimate");
const QString startOption = QStringLiteral("start");
const QString dueOption = QStringLiteral("due");
const QString repeatOption = QStringLiteral("repeat");

// An after-done repeat longer than ten years is surely a typing mistake.
constexpr qint64 longestRepeatDays = 3650;

bool isNone(const QString &text)
{
    return text.trimmed().compare(QLatin1StringView("none"), Qt::CaseInsensitive) == 0;
}

std::optional<qint64> wholeNumber(QStringView text)
{
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

template <typename E>
bool readChoice(const CommandContext &context, const QString &option, std::optional<E> *field, QString *problem)
{
    if (!context.hasOption(option))
        return true;
    const QString text = context.optionValue(option);
    *field = OptionChoice::parse<E>(text);
    if (!*field)
        *problem = QStringLiteral("--%1 takes %2, not %3").arg(option, OptionChoice::list<E>(), PlainText::quoted(text));
    return field->has_value();
}

bool readDate(const CommandContext &context, const QString &option, const LocalCalendar &calendar,
              std::optional<std::optional<QDateTime>> *field, QString *problem)
{
    if (!context.hasOption(option))
        return true;
    const QString text = context.optionValue(option);
    if (isNone(text)) {
        *field = std::optional<QDateTime>();
        return true;
    }
    const std::optional<QDateTime> date = calendar.readDate(text);
    if (!date) {
        *problem = QStringLiteral("--%1 takes a date such as 2026-06-10 (or none), not %2")
                       .arg(option, PlainText::quoted(text));
        return false;
    }
    *field = date;
    return true;
}

} // namespace

std::optional<std::optional<NodeRecurrence>> parseRepeat(const QString &text)
{
    const QString wanted = text.trimmed().toLower();
    if (wanted == QLatin1StringView("never") || wanted == QLatin1StringView("none"))
        return std::optional<NodeRecurrence>();
    if (wanted == QLatin1StringView("daily"))
        return NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt};
    if (wanted == QLatin1StringView("weekdays"))
        return NodeRecurrence{RecurrenceRule::weekdays, 1, std::nullopt};
    if (wanted == QLatin1StringView("weekly"))
        return NodeRecurrence{RecurrenceRule::weekly, 1, std::nullopt};
    if (wanted == QLatin1StringView("monthly"))
        return NodeRecurrence{RecurrenceRule::monthly, 1, std::nullopt};

    const QString rule = wanted.section(QLatin1Char(':'), 0, 0);
    const std::optional<qint64> number = wholeNumber(QStringView(wanted).mid(rule.size() + 1));
    if (!wanted.contains(QLatin1Char(':')) || !number)
        return std::nullopt;
    if (rule == QLatin1StringView("monthly") && *number >= 1 && *number <= 31)
        return NodeRecurrence{RecurrenceRule::monthly, 1, int(*number)};
    if (rule == QLatin1StringView("after") && *number >= 1 && *number <= longestRepeatDays)
        return NodeRecurrence{RecurrenceRule::afterDone, *number, std::nullopt};
    return std::nullopt;
}

const QStringList &TaskEdits::optionNames()
{
    static const QStringList names{titleOption, notesOption,  statusOption, priorityOption, colorOption,
                                   estimateOption, startOption, dueOption,    repeatOption};
    return names;
}

std::optional<TaskEdits> TaskEdits::read(const CommandContext &context, const LocalCalendar &calendar,
                                         QString *problem)
{
    TaskEdits edits;
    if (context.hasOption(titleOption)) {
        if (context.optionValue(titleOption).trimmed().isEmpty()) {
            *problem = QStringLiteral("--title cannot be blank");
            return std::nullopt;
        }
        edits.title = context.optionValue(titleOption);
    }
    if (context.hasOption(notesOption))
        edits.notes = context.optionValue(notesOption);

    if (!readChoice(context, statusOption, &edits.status, problem)
        || !readChoice(context, priorityOption, &edits.priority, problem)
        || !readChoice(context, colorOption, &edits.color, problem))
        return std::nullopt;

    if (context.hasOption(estimateOption)) {
        const QString text = context.optionValue(estimateOption);
        const std::optional<qint64> minutes = wholeNumber(text);
        if (isNone(text)) {
            edits.estimate = std::optional<qint64>();
        } else if (minutes && *minutes >= 0) {
            edits.estimate = minutes;
        } else {
            *problem = QStringLiteral("--estimate takes whole minutes (or none), not %1").arg(PlainText::quoted(text));
            return std::nullopt;
        }
    }

    if (!readDate(context, startOption, calendar, &edits.startDate, problem)
        || !readDate(context, dueOption, calendar, &edits.dueDate, problem))
        return std::nullopt;

    if (context.hasOption(repeatOption)) {
        const QString text = context.optionValue(repeatOption);
        edits.recurrence = parseRepeat(text);
        if (!edits.recurrence) {
            *problem = QStringLiteral("--repeat takes never, daily, weekdays, weekly, monthly, monthly:DAY (1 to 31) "
                                      "or after:DAYS (1 to %1), not %2")
                           .arg(longestRepeatDays)
                           .arg(PlainText::quoted(text));
            return std::nullopt;
        }
    }
    return edits;
}

bool TaskEdits::isEmpty() const
{
    return !title && !notes && !status && !priority && !color && !estimate && !startDate && !dueDate && !recurrence;
}

QString TaskEdits::actionName() const
{
    if (title)
        return QStringLiteral("Rename");
    if (notes)
        return QStringLiteral("Edit notes");
    if (status)
        return QStringLiteral("Change status");
    if (priority)
        return QStringLiteral("Change priority");
    if (color)
        return QStringLiteral("Change color");
    if (estimate)
        return QStringLiteral("Set estimate");
    if (startDate || dueDate)
        return QStringLiteral("Set date");
    return QStringLiteral("Change repeat");
}

void TaskEdits::applyTo(FenrowStore &store, const FlowNode &node) const
{
    if (title)
        store.setTitle(node, *title);
    if (notes)
        store.setNotes(node, *notes);
    if (priority)
        store.setPriority(*priority, node);
    if (color)
        store.setColor(*color, node);
    if (estimate)
        store.setEstimate(*estimate, node);

    const std::optional<QDateTime> startBefore = node.startDate;
    const std::optional<QDateTime> dueBefore = node.dueDate;
    if (startDate)
        store.setStartDate(*startDate, node);
    if (dueDate)
        store.setDueDate(*dueDate, node);
    const bool datesMoved = node.startDate != startBefore || node.dueDate != dueBefore;

    if (recurrence) {
        store.setRecurrence(*recurrence, node);
    } else if (datesMoved) {
        // A monthly series keeps to the day of its dates: without a day the
        // store takes it afresh from the new ones.
        const std::optional<NodeRecurrence> current = NodeRecurrence::decode(node.recurrenceRaw);
        if (current && current->rule == RecurrenceRule::monthly)
            store.setRecurrence(NodeRecurrence{RecurrenceRule::monthly, 1, std::nullopt}, node);
    }

    if (status)
        store.setStatus(*status, node);
}

} // namespace fenrow
