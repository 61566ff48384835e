#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace fenrow {

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

// A pull reader over JSON bytes that holds to the grammar of RFC 8259
// (well-formed UTF-8, escapes and numbers as written there, no control
// characters in strings, nothing after the document; stricter than
// QJsonDocument, which lets lone surrogates and "1." pass) while handing
// values straight to the caller. Nesting stops at QJsonDocument's depth.
// Any mistake clears `ok` and every later call then fails too; the first
// one is kept with where it was found, so that a refusal can say so.
class JsonReader {
public:
    explicit JsonReader(QByteArrayView bytes)
        : m_begin(bytes.data()), m_at(bytes.data()), m_end(bytes.data() + bytes.size())
    {
    }

    bool ok() const { return m_ok; }
    // Records the first mistake (a short phrase, kept as given) and
    // returns false. At the end of the input every mistake is the same one.
    bool fail(const char *reason = "not valid JSON");

    struct Mistake {
        const char *reason = nullptr;
        qsizetype offset = 0;
        // Both from 1; the column counts bytes.
        qsizetype line = 0;
        qsizetype column = 0;
    };
    // The first mistake; only meaningful once `ok` is false.
    Mistake mistake() const;

    enum class Kind { object, array, string, number, boolean, null, none };
    // What the next value is, judged by its first character; reads nothing.
    Kind peek();

    // Objects: beginObject, then nextKey until it returns false (at the
    // closing brace, or on a mistake), reading or skipping each value. The
    // key stays valid until the next call of nextKey.
    bool beginObject();
    bool nextKey(QByteArrayView &key);
    // Arrays: beginArray, then nextElement before each value.
    bool beginArray();
    bool nextElement();

    // Consumes a null and returns true; leaves anything else alone.
    bool takeNull();
    // A string's UTF-8 bytes: a view into the input when it holds no escape,
    // else decoded into `scratch`.
    std::optional<QByteArrayView> utf8(QByteArray &scratch);
    std::optional<QString> string();
    std::optional<double> number();
    // A number with no fraction that fits in 64 bits ("3", "3.0", "3e0").
    std::optional<qint64> integer();
    std::optional<bool> boolean();
    bool skipValue();
    // Only white space after the document.
    bool atEnd();

private:
    struct Number {
        double value = 0;
        std::optional<qint64> exact;
    };
    std::optional<Number> readNumber();
    void skipSpace();
    bool take(char c);

    const char *m_begin;
    const char *m_at;
    const char *m_end;
    const char *m_failedAt = nullptr;
    const char *m_reason = nullptr;
    // Per open container: has it a member yet.
    std::vector<bool> m_first;
    QByteArray m_keyScratch;
    bool m_ok = true;
};

} // namespace fenrow
