#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace fenrow {

class CommandRegistry;

// A command line split into words and options. Options may stand anywhere:
// "--name", "--name VALUE", "--name=VALUE", "-x"; "--" ends them, and a
// lone "-" or a negative number is a word. Parsing goes on past a problem,
// so the words still name the command whose help the error points to.
struct ParsedArguments {
    QStringList words;
    // Long option name to its value; switches map to an empty text.
    QHash<QString, QString> options;
    // The first problem met, empty when there was none.
    QString error;

    bool has(const QString &option) const { return options.contains(option); }
    QString value(const QString &option) const { return options.value(option); }

    static ParsedArguments parse(const QStringList &arguments, const CommandRegistry &registry);
};

} // namespace fenrow
