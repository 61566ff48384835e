#include "ParsedArguments.h"

#include "CommandRegistry.h"

#include <QRegularExpression>

#include <optional>

namespace fenrow {

namespace {

bool isWord(const QString &argument)
{
    static const QRegularExpression negativeNumber(QStringLiteral("^-\\d+$"));
    return !argument.startsWith(QLatin1Char('-')) || argument == QLatin1String("-")
        || negativeNumber.match(argument).hasMatch();
}

} // namespace

ParsedArguments ParsedArguments::parse(const QStringList &arguments, const CommandRegistry &registry)
{
    ParsedArguments parsed;
    auto problem = [&parsed](const QString &message) {
        if (parsed.error.isEmpty())
            parsed.error = message;
    };

    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (argument == QLatin1String("--")) {
            parsed.words += arguments.mid(i + 1);
            break;
        }
        if (isWord(argument)) {
            parsed.words.append(argument);
            continue;
        }

        const OptionDefinition *option = nullptr;
        std::optional<QString> inlineValue;
        if (argument.startsWith(QLatin1String("--"))) {
            const qsizetype equals = argument.indexOf(QLatin1Char('='));
            const QString name = argument.mid(2, equals < 0 ? -1 : equals - 2);
            if (equals >= 0)
                inlineValue = argument.mid(equals + 1);
            option = registry.option(name);
        } else if (argument.size() == 2) {
            option = registry.optionByShortName(argument[1]);
        }
        if (!option) {
            problem(QStringLiteral("unknown option %1").arg(argument.section(QLatin1Char('='), 0, 0)));
            continue;
        }

        if (!option->takesValue()) {
            if (inlineValue)
                problem(QStringLiteral("option --%1 takes no value").arg(option->name));
            parsed.options.insert(option->name, QString());
        } else if (inlineValue) {
            parsed.options.insert(option->name, *inlineValue);
        } else if (i + 1 < arguments.size()) {
            parsed.options.insert(option->name, arguments[++i]);
        } else {
            problem(QStringLiteral("option --%1 needs a %2 value").arg(option->name, option->valueName));
        }
    }
    return parsed;
}

} // namespace fenrow
