#include "ShellCompletion.h"

#include "CommandRegistry.h"
#include "ExitStatus.h"

#include "persistence/SqliteConnection.h"
#include "persistence/SqliteStatement.h"

#include <QRegularExpression>
#include <QTextStream>

namespace fenrow::ShellCompletion {

namespace {

// A completion runs on every Tab: a store busy with a long write gives no
// names rather than a pause the user feels.
constexpr int storeWaitMilliseconds = 150;

const QString repeatMark = QStringLiteral("...");

bool isOptionWord(const QString &word)
{
    static const QRegularExpression negativeNumber(QStringLiteral("^-\\d+$"));
    return word.startsWith(QLatin1Char('-')) && word != QLatin1String("-") && !negativeNumber.match(word).hasMatch();
}

const OptionDefinition *optionNamed(const CommandRegistry &registry, const QString &word)
{
    if (word.startsWith(QLatin1String("--")))
        return registry.option(word.mid(2).section(QLatin1Char('='), 0, 0));
    return word.size() == 2 ? registry.optionByShortName(word[1]) : nullptr;
}

// "TASK ACTION ..." gives {"TASK", "ACTION..."}; "[FILE|FOLDER]" gives
// {"FILE|FOLDER"}.
QStringList syntaxKinds(const QString &syntax)
{
    QStringList kinds;
    for (QString token : syntax.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        token.remove(QLatin1Char('[')).remove(QLatin1Char(']')).replace(QStringLiteral("…"), repeatMark);
        if (token == repeatMark && !kinds.isEmpty())
            kinds.last().append(repeatMark);
        else if (!token.isEmpty())
            kinds.append(token);
    }
    return kinds;
}

QString kindAt(const CommandDefinition &command, qsizetype index)
{
    const QStringList kinds = command.argumentKinds.isEmpty() ? syntaxKinds(command.argumentsSyntax)
                                                              : command.argumentKinds;
    if (index < kinds.size())
        return QString(kinds[index]).remove(repeatMark);
    if (!kinds.isEmpty() && kinds.last().endsWith(repeatMark))
        return QString(kinds.last()).remove(repeatMark);
    return {};
}

// The next word of every command that goes on past `prefix`.
QStringList commandWordsAfter(const CommandRegistry &registry, const QStringList &prefix)
{
    QStringList next;
    for (const CommandDefinition *command : registry.commandsUnder(prefix)) {
        const QStringList words = command->words();
        if (words.size() > prefix.size())
            next.append(words[prefix.size()]);
    }
    return next;
}

class Collector {
public:
    Collector(const CommandRegistry &registry, const StoreNames &names) : m_registry(registry), m_names(names) {}

    // A placeholder (TASK, FLOW, FILE…), alternatives of them
    // ("FILE|FOLDER"), or literal choices ("add|tick").
    void offerKind(const QString &kind, const QStringList &argumentsBefore)
    {
        const QStringList alternatives = kind.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        for (const QString &alternative : alternatives) {
            const QString placeholder = alternative.section(QLatin1Char('.'), 0, 0);
            if (placeholder != placeholder.toUpper()) {
                m_found.words.append(alternative);
            } else if (placeholder == QLatin1String("FILE") || placeholder == QLatin1String("FOLDER")) {
                m_found.files = true;
            } else if (placeholder == QLatin1String("FLOW")) {
                offerFromStore(m_names.flows);
            } else if (placeholder == QLatin1String("TASK") || placeholder == QLatin1String("PARENT")
                       || placeholder == QLatin1String("A") || placeholder == QLatin1String("B")) {
                offerFromStore(m_names.tasks);
            } else if (placeholder == QLatin1String("TEMPLATE")) {
                offerFromStore(m_names.templates);
            } else if (placeholder == QLatin1String("ATTACHMENT")) {
                offerFromStore(m_names.attachments);
            } else if (placeholder == QLatin1String("COMMAND")) {
                m_found.words += commandWordsAfter(m_registry, argumentsBefore);
            }
        }
    }

    void offerValue(const OptionDefinition &option)
    {
        if (!option.choices.isEmpty())
            m_found.words += option.choices;
        else
            offerKind(option.valueName, {});
    }

    void offerOptions(const CommandDefinition *command)
    {
        QList<const OptionDefinition *> options = m_registry.globalOptions();
        if (command) {
            for (const QString &name : command->options)
                options.append(m_registry.option(name));
        }
        for (const OptionDefinition *option : options) {
            if (option && !option->hidden)
                m_found.words.append(QStringLiteral("--") + option->name);
        }
    }

    void offerWords(const QStringList &words) { m_found.words += words; }

    // Matching ignores case, as fenrow does when it looks up a name.
    Candidates result(const QString &current, const QString &valuePrefix = {}) const
    {
        Candidates kept{m_found.files, {}};
        for (const QString &word : m_found.words) {
            const QString candidate = valuePrefix + word;
            if (candidate.startsWith(current, Qt::CaseInsensitive) && !kept.words.contains(candidate))
                kept.words.append(candidate);
        }
        return kept;
    }

private:
    void offerFromStore(const std::function<QStringList()> &read)
    {
        if (!read)
            return;
        // A name on several lines cannot be one line of the answer.
        for (const QString &name : read()) {
            if (!name.contains(QLatin1Char('\n')) && !name.isEmpty())
                m_found.words.append(name);
        }
    }

    const CommandRegistry &m_registry;
    const StoreNames &m_names;
    Candidates m_found;
};

QStringList readColumn(const QString &storePath, const char *sql)
{
    SqliteConnection connection;
    if (!connection.openReadOnly(storePath, storeWaitMilliseconds, nullptr))
        return {};
    const auto statement = connection.prepare(sql);
    if (!statement)
        return {};
    QStringList values;
    while (statement->step())
        values.append(statement->text(0));
    return values;
}

} // namespace

Candidates complete(const CommandRegistry &registry, const QStringList &before, const QString &current,
                    const StoreNames &names)
{
    QStringList positional;
    const OptionDefinition *pendingOption = nullptr;
    bool optionsEnded = false;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const QString &word = before[i];
        if (!optionsEnded && word == QLatin1String("--")) {
            optionsEnded = true;
        } else if (!optionsEnded && isOptionWord(word)) {
            const OptionDefinition *option = optionNamed(registry, word);
            if (option && option->takesValue() && !word.contains(QLatin1Char('='))) {
                if (i + 1 < before.size())
                    ++i;
                else
                    pendingOption = option;
            }
        } else {
            positional.append(word);
        }
    }

    Collector collector(registry, names);
    if (pendingOption) {
        collector.offerValue(*pendingOption);
        return collector.result(current);
    }
    if (!optionsEnded && current.startsWith(QLatin1String("--")) && current.contains(QLatin1Char('='))) {
        const OptionDefinition *option = optionNamed(registry, current);
        if (!option || !option->takesValue())
            return {};
        collector.offerValue(*option);
        const QString prefix = current.section(QLatin1Char('='), 0, 0) + QLatin1Char('=');
        return collector.result(current, prefix);
    }

    const CommandRegistry::Match match = registry.find(positional);
    if (!optionsEnded && current.startsWith(QLatin1Char('-'))) {
        collector.offerOptions(match.command);
        return collector.result(current);
    }
    // "archived" takes a QUERY and also begins "archived delete".
    collector.offerWords(commandWordsAfter(registry, positional));
    if (match.command) {
        const QStringList arguments = positional.mid(match.wordCount);
        collector.offerKind(kindAt(*match.command, arguments.size()), arguments);
    }
    return collector.result(current);
}

StoreNames readStore(const QString &storePath)
{
    return {
        [storePath] { return readColumn(storePath, "SELECT name FROM task_flow ORDER BY sort_order"); },
        [storePath] {
            return readColumn(storePath, "SELECT n.title FROM flow_node n JOIN task_flow f ON f.id = n.flow_id "
                                         "ORDER BY f.sort_order, n.sort_order");
        },
        [storePath] { return readColumn(storePath, "SELECT name FROM flow_template ORDER BY created_at"); },
        [storePath] {
            return readColumn(storePath, "SELECT filename FROM flow_file WHERE is_trashed = 0 ORDER BY created_at");
        },
    };
}

int run(const CommandRegistry &registry, const QStringList &arguments, const StoreNames &names, QTextStream &out)
{
    const QString current = arguments.isEmpty() ? QString() : arguments.last();
    const QStringList before = arguments.isEmpty() ? QStringList() : arguments.first(arguments.size() - 1);
    const Candidates found = complete(registry, before, current, names);
    out << (found.files ? ":files" : ":words") << '\n';
    for (const QString &word : found.words)
        out << word << '\n';
    out.flush();
    return exitSuccess;
}

} // namespace fenrow::ShellCompletion
