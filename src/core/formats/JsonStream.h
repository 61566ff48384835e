#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <cstddef>
#include <vector>

namespace fenrow {

// How deep the readers let a value nest: as deep as QJsonDocument reads.
// simdjson's on-demand parser keeps one place per level it enters without
// checking the depth, so it is given room for that many levels and the few
// of a document's own format above them.
namespace JsonNesting {
constexpr int limit = 1024;
constexpr std::size_t parserDepth = limit + 64;
} // namespace JsonNesting

// Compact JSON written straight into bytes, for documents too large to go
// through QJsonObject first. The output is the one QJsonDocument gives in
// its compact form: strings escaped the same way (UTF-8, "\u00xx" for other
// control characters and lone surrogates), whole doubles up to 2^53 written
// as integers, other doubles in their shortest form. Keys are written in
// the order the caller gives them; a caller that wants sorted keys gives
// them sorted.
class JsonWriter {
public:
    explicit JsonWriter(qsizetype reserve = 0);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    // The next member of the open object; its value follows.
    void key(QLatin1StringView name);

    void string(QStringView text);
    // Text known to need no escaping (ids, dates, base64).
    void ascii(QByteArrayView text);
    // JSON has no infinity or NaN: such a number makes the output invalid.
    void number(double value);
    void integer(qint64 value);
    void boolean(bool value);

    bool ok() const { return m_ok; }
    void fail() { m_ok = false; }
    QByteArray take() { return std::move(m_out); }

private:
    void beginValue();

    QByteArray m_out;
    // Per open container: is it an array, and has it a member yet.
    std::vector<std::pair<bool, bool>> m_open;
    bool m_afterKey = false;
    bool m_ok = true;
};

} // namespace fenrow
