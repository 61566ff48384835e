#pragma once

#include "domain/EdgeProposal.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>
#include <utility>
#include <variant>

namespace fenrow {

// A task as engines see it: no more than its identity and its words.
struct ItemRef {
    QUuid id;
    QString title;

    friend bool operator==(const ItemRef &, const ItemRef &) = default;
};

inline size_t qHash(const ItemRef &item, size_t seed = 0)
{
    return qHashMulti(seed, item.id, item.title);
}

// A ready task offered to the day planner.
struct PlannableTask {
    QUuid id;
    QString title;
    QString flowName;
    std::optional<qint64> estimateMinutes;

    friend bool operator==(const PlannableTask &, const PlannableTask &) = default;
};

// What surrounds a task that is broken down or estimated, so the answer
// stays on the subject: the flow's name and the parent titles above it,
// outermost first.
struct ExpansionContext {
    QString topic;
    QStringList ancestors;

    friend bool operator==(const ExpansionContext &, const ExpansionContext &) = default;
};

// A flow drafted from prose: a name and task titles in working order.
struct ExtractedFlow {
    QString name;
    QStringList titles;

    friend bool operator==(const ExtractedFlow &, const ExtractedFlow &) = default;
};

enum class EngineError { modelUnavailable, invalidResponse, generationFailed };

// The English text that goes into log lines.
QString engineErrorDescription(EngineError error);

// The answer of one engine operation: a value or the reason there is none.
// Engines report failure by value; only graph mutations throw here.
template <typename T>
class EngineResult {
public:
    EngineResult(T value) : m_state(std::in_place_index<1>, std::move(value)) {}
    EngineResult(EngineError error) : m_state(std::in_place_index<0>, error) {}

    bool ok() const { return m_state.index() == 1; }
    const T &value() const { return std::get<1>(m_state); }
    // Meaningful only when not ok().
    EngineError error() const { return ok() ? EngineError::generationFailed : std::get<0>(m_state); }

private:
    std::variant<EngineError, T> m_state;
};

// The language engines are asked to write in: the locale's language code,
// "en" for the C locale, which names none.
QString contentLanguage(const QLocale &locale = QLocale());

} // namespace fenrow
