#pragma once

#include "EngineCancel.h"

#include <QJsonObject>
#include <QString>

#include <utility>
#include <variant>

namespace fenrow {

// One request to a language model: fill a record of the given shape.
struct GuidedRequest {
    // The system instruction of the session.
    QString instruction;
    QString prompt;
    // A JSON Schema of the record (an object). Each field's "description"
    // is its guide text and is meant for the model to read.
    QJsonObject schema;
    double temperature = 0.1;
    // Set by the asker who no longer wants the answer: the call stops as
    // soon as it can and fails.
    EngineCancel cancel = {};
};

// The filled record, or why there is none.
class GuidedAnswer {
public:
    static GuidedAnswer filled(QJsonObject record) { return GuidedAnswer(std::move(record)); }
    static GuidedAnswer failed(QString description) { return GuidedAnswer(std::move(description)); }

    bool ok() const { return m_state.index() == 0; }
    // Meaningful only when ok().
    const QJsonObject &record() const { return std::get<0>(m_state); }
    // Meaningful only when not ok(): English, for the log.
    QString failure() const { return ok() ? QString() : std::get<1>(m_state); }

private:
    explicit GuidedAnswer(QJsonObject record) : m_state(std::in_place_index<0>, std::move(record)) {}
    explicit GuidedAnswer(QString failure) : m_state(std::in_place_index<1>, std::move(failure)) {}

    std::variant<QJsonObject, QString> m_state;
};

// The one operation the on-device engine needs from a model: given an
// instruction, a prompt and a schema, return the filled record. Keeping the
// model behind it lets the engine's rules be tested without one.
//
// What an implementation promises:
// - every call is a fresh session that holds only this request's
//   instruction and prompt, so no call sees another's text;
// - the schema is shown to the model with the prompt, and the answer is
//   constrained to it (a grammar, not a hope), although the engine still
//   checks what comes back;
// - `generate` blocks until the answer is there and may be called from
//   several engine worker threads at once;
// - failures come back as `GuidedAnswer::failed`, never as exceptions.
class GuidedGenerator {
public:
    virtual ~GuidedGenerator() = default;

    virtual GuidedAnswer generate(const GuidedRequest &request) const = 0;
};

} // namespace fenrow
