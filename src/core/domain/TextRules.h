#pragma once

#include <QString>

namespace fenrow::TextRules {

// Entered text loses leading and trailing white space and newlines.
inline QString trimmed(const QString &text)
{
    return text.trimmed();
}

// A name that is blank once trimmed falls back to `fallback`.
inline QString nameOr(const QString &text, const QString &fallback)
{
    const QString name = trimmed(text);
    return name.isEmpty() ? fallback : name;
}

inline const QString untitledFlowName = QStringLiteral("Untitled flow");
inline const QString newTaskTitle = QStringLiteral("New task");

} // namespace fenrow::TextRules
