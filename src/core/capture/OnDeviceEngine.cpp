#include "OnDeviceEngine.h"

#include "EngineLog.h"

#include <QHash>
#include <QJsonArray>
#include <QSet>

#include <algorithm>
#include <cmath>

Q_LOGGING_CATEGORY(fenrowEngineLog, "fenrow.engine")

namespace fenrow {
namespace {

// Identifies a proposed edge when the answers of several batches are merged.
struct EdgeKey {
    QUuid from;
    QUuid to;

    friend bool operator==(const EdgeKey &, const EdgeKey &) = default;
};

size_t qHash(const EdgeKey &key, size_t seed = 0)
{
    return qHashMulti(seed, key.from, key.to);
}

// ---- The records the model fills, as JSON Schemas with their guides.

QJsonObject plain(const char *type)
{
    return {{QStringLiteral("type"), QLatin1StringView(type)}};
}

QJsonObject field(const char *type, const QString &guide)
{
    return {{QStringLiteral("type"), QLatin1StringView(type)}, {QStringLiteral("description"), guide}};
}

QJsonObject listField(const QJsonObject &items, const QString &guide)
{
    return {{QStringLiteral("type"), QStringLiteral("array")},
            {QStringLiteral("description"), guide},
            {QStringLiteral("items"), items}};
}

QJsonObject record(const QList<std::pair<QString, QJsonObject>> &fields)
{
    QJsonObject properties;
    QJsonArray required;
    for (const auto &[name, schema] : fields) {
        properties.insert(name, schema);
        required.append(name);
    }
    return {{QStringLiteral("type"), QStringLiteral("object")},
            {QStringLiteral("properties"), properties},
            {QStringLiteral("required"), required},
            {QStringLiteral("additionalProperties"), false}};
}

const QJsonObject &dependencyLinks()
{
    static const QJsonObject schema = record({
        {QStringLiteral("edges"),
         listField(
             record({
                 {QStringLiteral("before"),
                  field("integer",
                        QStringLiteral("The 1-based number of the prerequisite item that must come first."))},
                 {QStringLiteral("after"),
                  field("integer", QStringLiteral("The 1-based number of the dependent item that comes after and "
                                                  "depends on 'before'."))},
             }),
             QStringLiteral("Every dependency edge between the numbered items. Each edge means the 'before' item is a "
                            "prerequisite that must be completed before the 'after' item."))},
    });
    return schema;
}

const QJsonObject &extractedFlowDraft()
{
    static const QJsonObject schema = record({
        {QStringLiteral("name"),
         field("string", QStringLiteral("A short, descriptive name for the task flow (a few words)."))},
        {QStringLiteral("items"),
         listField(plain("string"),
                   QStringLiteral("Short imperative task titles distilled from the text, in the order they should be "
                                  "done. Empty when the text contains no actionable steps."))},
    });
    return schema;
}

const QJsonObject &taskBreakdownDraft()
{
    static const QJsonObject schema = record({
        {QStringLiteral("items"),
         listField(plain("string"),
                   QStringLiteral("Short imperative subtask titles that break the given task into concrete "
                                  "sub-steps, in the order they should be done. Empty when the task is already "
                                  "atomic."))},
    });
    return schema;
}

const QJsonObject &durationEstimatesDraft()
{
    static const QJsonObject schema = record({
        {QStringLiteral("minutes"),
         listField(plain("integer"),
                   QStringLiteral("One estimate per numbered task, in the same order, as whole minutes of focused "
                                  "work. Each entry is a positive integer, or 0 when that task is too vague to "
                                  "estimate. Return exactly as many numbers as there are tasks."))},
    });
    return schema;
}

const QJsonObject &dayPlanDraft()
{
    static const QJsonObject schema = record({
        {QStringLiteral("order"),
         listField(plain("integer"),
                   QStringLiteral("The 1-based numbers of the tasks, in the order they should be worked today. Use "
                                  "only numbers from the list, and each number at most once. Include every task, "
                                  "even ones that will not fit in the time available."))},
    });
    return schema;
}

// ---- Checking an answer against its schema (the part of JSON Schema used
// above), so that what the model says is read only in the asked shape.

QString member(const QString &path, const QString &name)
{
    return path.isEmpty() ? name : path + u'.' + name;
}

QString violation(const QJsonValue &value, const QJsonObject &schema, const QString &path)
{
    const QString where = path.isEmpty() ? QStringLiteral("the record") : path;
    const QString type = schema.value(QStringLiteral("type")).toString();
    if (type == QLatin1StringView("object")) {
        if (!value.isObject())
            return where + QStringLiteral(" is not an object");
        const QJsonObject object = value.toObject();
        const QJsonObject properties = schema.value(QStringLiteral("properties")).toObject();
        for (const QJsonValue &name : schema.value(QStringLiteral("required")).toArray())
            if (!object.contains(name.toString()))
                return member(path, name.toString()) + QStringLiteral(" is missing");
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (!properties.contains(it.key()))
                return member(path, it.key()) + QStringLiteral(" is not part of the record");
            const QString problem =
                violation(it.value(), properties.value(it.key()).toObject(), member(path, it.key()));
            if (!problem.isEmpty())
                return problem;
        }
    } else if (type == QLatin1StringView("array")) {
        if (!value.isArray())
            return where + QStringLiteral(" is not a list");
        const QJsonArray array = value.toArray();
        const QJsonObject items = schema.value(QStringLiteral("items")).toObject();
        for (qsizetype i = 0; i < array.size(); ++i) {
            const QString problem = violation(array.at(i), items, path + QStringLiteral("[%1]").arg(i));
            if (!problem.isEmpty())
                return problem;
        }
    } else if (type == QLatin1StringView("string")) {
        if (!value.isString())
            return where + QStringLiteral(" is not a string");
    } else if (type == QLatin1StringView("integer")) {
        const double number = value.toDouble();
        if (!value.isDouble() || !std::isfinite(number) || std::trunc(number) != number)
            return where + QStringLiteral(" is not an integer");
    }
    return {};
}

// A checked integer; far-out values are pinned where any range check fails.
qint64 wholeNumber(const QJsonValue &value)
{
    constexpr double bound = 9007199254740992.0; // 2^53
    return static_cast<qint64>(std::clamp(value.toDouble(), -bound, bound));
}

QStringList strings(const QJsonValue &list)
{
    QStringList result;
    for (const QJsonValue &entry : list.toArray())
        result.append(entry.toString());
    return result;
}

// ---- Prompts.

QString instruction(const QString &opening, const QString &language, const QString &closing)
{
    return opening + language + closing;
}

QString numbered(const QStringList &entries)
{
    QStringList lines;
    for (qsizetype i = 0; i < entries.size(); ++i)
        lines.append(QString::number(i + 1) + QStringLiteral(". ") + entries[i]);
    return lines.join(u'\n');
}

QStringList titlesOf(const QList<ItemRef> &items)
{
    QStringList titles;
    for (const ItemRef &item : items)
        titles.append(item.title);
    return titles;
}

// The project and the parent tasks, each only when there is something to say.
QStringList contextSections(const ExpansionContext &context)
{
    QStringList sections;
    const QString topic = context.topic.trimmed();
    if (!topic.isEmpty())
        sections.append(QStringLiteral("Overall project:\n") + topic);
    QStringList ancestors;
    for (const QString &ancestor : context.ancestors)
        if (!ancestor.trimmed().isEmpty())
            ancestors.append(ancestor.trimmed());
    if (!ancestors.isEmpty())
        sections.append(QStringLiteral("Parent tasks (outermost first):\n") + numbered(ancestors));
    return sections;
}

const QString tasksHeading = QStringLiteral("Tasks (numbered):\n");

// Numbered edges to proposals over `items`: the numbers are 1-based, and
// out-of-range numbers and self-loops are dropped. `keep` sees the 0-based
// ends.
template <typename Keep>
QList<EdgeProposal> proposals(const QJsonObject &links, const QList<ItemRef> &items, Keep keep)
{
    QList<EdgeProposal> result;
    const qint64 count = items.size();
    for (const QJsonValue &edge : links.value(QStringLiteral("edges")).toArray()) {
        const qint64 before = wholeNumber(edge[QStringLiteral("before")]) - 1;
        const qint64 after = wholeNumber(edge[QStringLiteral("after")]) - 1;
        if (before < 0 || after < 0 || before >= count || after >= count || before == after)
            continue;
        if (keep(before, after))
            result.append({items[before].id, items[after].id});
    }
    return result;
}

} // namespace

OnDeviceEngine::OnDeviceEngine(std::shared_ptr<const GuidedGenerator> generator) : m_generator(std::move(generator))
{
    Q_ASSERT(m_generator);
}

std::optional<QJsonObject> OnDeviceEngine::generate(const QString &instruction, const QString &prompt,
                                                    const QJsonObject &schema, const EngineWork &work) const
{
    if (work.isCancelled())
        return std::nullopt;
    const GuidedAnswer answer = m_generator->generate({instruction, prompt, schema, temperature, work.cancel});
    // Given up by its asker: not a failure of the model.
    if (work.isCancelled()) {
        qCDebug(fenrowEngineLog, "guided generation cancelled");
        return std::nullopt;
    }
    QString failure = answer.ok() ? violation(answer.record(), schema, {}) : answer.failure();
    if (!answer.ok() && failure.isEmpty())
        failure = QStringLiteral("no reason given");
    else if (answer.ok() && !failure.isEmpty())
        failure = QStringLiteral("the answer does not fit the record: ") + failure;
    if (failure.isEmpty())
        return answer.record();
    qCCritical(fenrowEngineLog, "guided generation failed: %s", qUtf8Printable(failure));
    return std::nullopt;
}

EngineResult<QList<EdgeProposal>> OnDeviceEngine::answerLink(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                             const QString &language, const EngineWork &work) const
{
    if (existing.isEmpty())
        return QList<EdgeProposal>();
    QList<ItemRef> items = existing;
    if (items.size() > existingItemsLimit) {
        items = existing.last(existingItemsLimit);
        qCDebug(fenrowEngineLog, "link: capped existing items %ld -> %ld to fit context budget",
                long(existing.size()), long(items.size()));
    }
    items.append(newItem);
    const QString n = QString::number(items.size());
    const std::optional<QJsonObject> links = generate(
        instruction(QStringLiteral("You analyse a to-do list and identify prerequisite dependencies between tasks. A "
                                   "dependency means one task must be completed before another can start. Only "
                                   "propose a dependency when the order is genuinely required, not merely common. "
                                   "The user's content language is \""),
                    language,
                    QStringLiteral("\". Connect only the new task to the existing tasks; do not invent dependencies "
                                   "among the existing tasks.")),
        tasksHeading + numbered(titlesOf(items)) + QStringLiteral("\n\nItem ") + n +
            QStringLiteral(" is the newly added task. Return only the dependency edges that connect item ") + n +
            QStringLiteral(" to the other tasks, using their numbers."),
        dependencyLinks(), work);
    if (!links)
        return EngineError::generationFailed;
    // What the model finds among the old tasks was not asked for.
    const qint64 added = items.size() - 1;
    return proposals(*links, items, [added](qint64 before, qint64 after) { return before == added || after == added; });
}

EngineResult<QList<EdgeProposal>> OnDeviceEngine::answerRelink(const QList<ItemRef> &items, const QString &language,
                                                               const EngineWork &work) const
{
    if (items.size() < 2)
        return QList<EdgeProposal>();
    const qsizetype batches = (items.size() + batchSize - 1) / batchSize;
    if (batches > 1)
        qCDebug(fenrowEngineLog, "relink: split %ld items into %ld batches", long(items.size()), long(batches));
    const QString request = instruction(
        QStringLiteral("You analyse a to-do list and identify all prerequisite dependencies between tasks. A "
                       "dependency means one task must be completed before another can start. Only propose a "
                       "dependency when the order is genuinely required. The user's content language is \""),
        language, QStringLiteral("\"."));

    // One batch after the other, so one model call is in flight; links
    // across batches are not looked for.
    QList<EdgeProposal> merged;
    QSet<EdgeKey> seen;
    work.reportProgress(0, int(batches));
    for (qsizetype start = 0; start < items.size(); start += batchSize) {
        const QList<ItemRef> batch = items.mid(start, batchSize);
        const std::optional<QJsonObject> links =
            generate(request,
                     tasksHeading + numbered(titlesOf(batch)) +
                         QStringLiteral("\n\nReturn every prerequisite dependency between these tasks, using their "
                                        "numbers."),
                     dependencyLinks(), work);
        if (!links)
            return EngineError::generationFailed;
        for (const EdgeProposal &proposal : proposals(*links, batch, [](qint64, qint64) { return true; })) {
            const EdgeKey key{proposal.fromItemID, proposal.toItemID};
            if (!seen.contains(key)) {
                seen.insert(key);
                merged.append(proposal);
            }
        }
        work.reportProgress(int(start / batchSize + 1), int(batches));
    }
    return merged;
}

EngineResult<ExtractedFlow> OnDeviceEngine::answerExtractFlow(const QString &text, const QString &language,
                                                              const EngineWork &work) const
{
    QString prose = text.trimmed();
    if (prose.isEmpty())
        return ExtractedFlow{};
    if (prose.size() > proseLimit) {
        // Cut between words; a text with no space in its first part gives
        // nothing rather than half a word.
        const QStringView head = QStringView(prose).first(proseLimit);
        qsizetype space = head.size() - 1;
        while (space >= 0 && !head[space].isSpace())
            --space;
        prose = space < 0 ? QString() : head.first(space).toString();
        qCCritical(fenrowEngineLog, "extractFlow: input exceeded context budget; structuring first chunk only");
    }
    const std::optional<QJsonObject> draft = generate(
        instruction(QStringLiteral("You distil free-form prose into a named task flow: a short flow name and a list "
                                   "of short, imperative task titles in the order they should be done. If the text "
                                   "contains no actionable steps, return an empty list of tasks. The user's content "
                                   "language is \""),
                    language, QStringLiteral("\".")),
        QStringLiteral("Prose to structure into a task flow:\n") + prose, extractedFlowDraft(), work);
    if (!draft)
        return EngineError::generationFailed;
    // Cleaned by the caller, which knows what a usable title is.
    return ExtractedFlow{draft->value(QStringLiteral("name")).toString(),
                         strings(draft->value(QStringLiteral("items")))};
}

EngineResult<QStringList> OnDeviceEngine::answerExpand(const ItemRef &item, const QString &detail,
                                                       const ExpansionContext &context, const QString &language,
                                                       const EngineWork &work) const
{
    const QString title = item.title.trimmed();
    if (title.isEmpty())
        return QStringList();
    QStringList sections = contextSections(context);
    sections.append(QStringLiteral("Task to break into subtasks:\n") + title);
    if (!detail.trimmed().isEmpty())
        sections.append(QStringLiteral("Additional detail about the task:\n") + detail.trimmed());
    const std::optional<QJsonObject> draft = generate(
        instruction(
            QStringLiteral("You break a single task into a short, ordered list of concrete sub-steps that together "
                           "accomplish it. Use the overall project and any parent tasks only as context to stay "
                           "on-subject - break down the specific task, not the project as a whole. When an "
                           "additional description is provided, treat it as detail about this task and let it shape "
                           "the sub-steps. Return between 2 and 6 short, imperative subtask titles, in the order "
                           "they should be done. If the task is already atomic and cannot be meaningfully broken "
                           "down, return an empty list. The user's content language is \""),
            language, QStringLiteral("\".")),
        sections.join(QStringLiteral("\n\n")), taskBreakdownDraft(), work);
    if (!draft)
        return EngineError::generationFailed;
    return strings(draft->value(QStringLiteral("items")));
}

EngineResult<QList<qint64>> OnDeviceEngine::answerEstimate(const QStringList &titles, const ExpansionContext &context,
                                                           const QString &language, const EngineWork &work) const
{
    if (titles.isEmpty())
        return QList<qint64>();
    const QStringList sent = titles.first(std::min(titles.size(), listLimit));
    QStringList sections = contextSections(context);
    sections.append(QStringLiteral("Tasks to estimate (numbered):\n") + numbered(sent));
    const std::optional<QJsonObject> draft = generate(
        instruction(
            QStringLiteral("You estimate how long each task in a list takes to complete. Use the overall project and "
                           "any parent tasks only as context to stay on-subject - estimate each specific task, not "
                           "the project as a whole. Answer with whole minutes of focused work, counting only the "
                           "time the person doing it is actually working - not waiting on other people, reviews, or "
                           "deliveries. Give one realistic figure per task rather than a range, rounded to a "
                           "sensible step such as 5, 15, 30 or 60 minutes, and size the tasks against each other so "
                           "the list is consistent. If a task is too vague to estimate, return 0 for it. Return "
                           "exactly one number per task, in the order given. The user's content language is \""),
            language, QStringLiteral("\".")),
        sections.join(QStringLiteral("\n\n")), durationEstimatesDraft(), work);
    if (!draft)
        return EngineError::generationFailed;

    // One figure per title whatever the model counted.
    const QJsonArray answered = draft->value(QStringLiteral("minutes")).toArray();
    QList<qint64> minutes;
    for (qsizetype i = 0; i < titles.size(); ++i)
        minutes.append(i < sent.size() && i < answered.size()
                           ? std::clamp<qint64>(wholeNumber(answered.at(i)), 0, largestEstimate)
                           : 0);
    return minutes;
}

EngineResult<QList<QUuid>> OnDeviceEngine::answerPlanDay(const QList<PlannableTask> &tasks, qint64 minutes,
                                                         const QString &language, const EngineWork &work) const
{
    if (tasks.isEmpty())
        return QList<QUuid>();
    const QList<PlannableTask> sent = tasks.first(std::min(tasks.size(), listLimit));
    QStringList lines;
    for (qsizetype i = 0; i < sent.size(); ++i) {
        QString line = QString::number(i + 1) + QStringLiteral(". ") + sent[i].title + QStringLiteral(" - ") +
                       sent[i].flowName;
        if (sent[i].estimateMinutes)
            line += QStringLiteral(" - ") + QString::number(*sent[i].estimateMinutes) + QStringLiteral(" min");
        lines.append(line);
    }
    const std::optional<QJsonObject> draft = generate(
        instruction(
            QStringLiteral("You order a person's working day. You are given tasks that are all ready to start right "
                           "now, already roughly ordered by urgency, and how much time the person has. Return the "
                           "order to work them in today. Keep urgent work early, but group tasks from the same "
                           "project or of the same kind next to each other so the day has fewer context switches, "
                           "and prefer starting with something short enough to finish. Include every task in your "
                           "answer, even the ones that will not fit - the app decides where the time runs out. Do "
                           "not invent tasks and do not repeat one. The user's content language is \""),
            language, QStringLiteral("\".")),
        QStringLiteral("Time available today: ") + QString::number(minutes) +
            QStringLiteral(" minutes.\n\nReady tasks (numbered):\n") + lines.join(u'\n'),
        dayPlanDraft(), work);
    if (!draft)
        return EngineError::generationFailed;

    // Every task exactly once: the model's order first, then what it left
    // out, then what it was never shown.
    QList<bool> placed(sent.size(), false);
    QList<QUuid> order;
    for (const QJsonValue &number : draft->value(QStringLiteral("order")).toArray()) {
        const qint64 index = wholeNumber(number) - 1;
        if (index < 0 || index >= sent.size() || placed[index])
            continue;
        placed[index] = true;
        order.append(sent[index].id);
    }
    for (qsizetype i = 0; i < sent.size(); ++i)
        if (!placed[i])
            order.append(sent[i].id);
    for (qsizetype i = sent.size(); i < tasks.size(); ++i)
        order.append(tasks[i].id);
    return order;
}

} // namespace fenrow
