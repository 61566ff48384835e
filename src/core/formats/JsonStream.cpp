#include "JsonStream.h"

#include <QLocale>

#include <charconv>
#include <cmath>
#include <cstring>

namespace fenrow {

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

// As deep as QJsonDocument reads.
constexpr std::size_t nestingLimit = 1024;

void appendEscape(QByteArray &out, char16_t unit)
{
    const char escape[] = {'\\', 'u', hexDigits[(unit >> 12) & 0xf], hexDigits[(unit >> 8) & 0xf],
                           hexDigits[(unit >> 4) & 0xf], hexDigits[unit & 0xf]};
    out.append(escape, sizeof escape);
}

void appendUtf8(QByteArray &out, char32_t code)
{
    if (code < 0x800) {
        out += char(0xc0 | (code >> 6));
        out += char(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        out += char(0xe0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3f));
        out += char(0x80 | (code & 0x3f));
    } else {
        out += char(0xf0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3f));
        out += char(0x80 | ((code >> 6) & 0x3f));
        out += char(0x80 | (code & 0x3f));
    }
}

// Well-formed UTF-8 without surrogates or overlong forms.
bool isValidUtf8(QByteArrayView bytes)
{
    const auto *at = reinterpret_cast<const unsigned char *>(bytes.data());
    const auto *end = at + bytes.size();
    while (at < end) {
        const unsigned char lead = *at++;
        if (lead < 0x80)
            continue;
        int more = 0;
        char32_t code = 0;
        if (lead >= 0xc2 && lead <= 0xdf) {
            more = 1;
            code = lead & 0x1f;
        } else if (lead >= 0xe0 && lead <= 0xef) {
            more = 2;
            code = lead & 0x0f;
        } else if (lead >= 0xf0 && lead <= 0xf4) {
            more = 3;
            code = lead & 0x07;
        } else {
            return false;
        }
        if (end - at < more)
            return false;
        for (int i = 0; i < more; ++i) {
            if ((at[i] & 0xc0) != 0x80)
                return false;
            code = (code << 6) | (at[i] & 0x3f);
        }
        at += more;
        if ((more == 2 && (code < 0x800 || (code >= 0xd800 && code <= 0xdfff)))
            || (more == 3 && (code < 0x10000 || code > 0x10ffff)))
            return false;
    }
    return true;
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace

// ---------------------------------------------------------------- writing

JsonWriter::JsonWriter(qsizetype reserve)
{
    m_out.reserve(reserve);
}

void JsonWriter::beginValue()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (!m_open.empty()) {
        auto &[isArray, hasMember] = m_open.back();
        if (hasMember)
            m_out += ',';
        hasMember = true;
    }
}

void JsonWriter::beginObject()
{
    beginValue();
    m_out += '{';
    m_open.push_back({false, false});
}

void JsonWriter::endObject()
{
    m_open.pop_back();
    m_out += '}';
}

void JsonWriter::beginArray()
{
    beginValue();
    m_out += '[';
    m_open.push_back({true, false});
}

void JsonWriter::endArray()
{
    m_open.pop_back();
    m_out += ']';
}

void JsonWriter::key(QLatin1StringView name)
{
    auto &[isArray, hasMember] = m_open.back();
    if (hasMember)
        m_out += ',';
    hasMember = true;
    m_out += '"';
    m_out.append(name.data(), name.size());
    m_out += "\":";
    m_afterKey = true;
}

void JsonWriter::string(QStringView text)
{
    beginValue();
    m_out += '"';
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = text[i].unicode();
        if (unit < 0x80) {
            switch (unit) {
            case u'"':
                m_out += "\\\"";
                break;
            case u'\\':
                m_out += "\\\\";
                break;
            case u'\b':
                m_out += "\\b";
                break;
            case u'\f':
                m_out += "\\f";
                break;
            case u'\n':
                m_out += "\\n";
                break;
            case u'\r':
                m_out += "\\r";
                break;
            case u'\t':
                m_out += "\\t";
                break;
            default:
                if (unit < 0x20)
                    appendEscape(m_out, unit);
                else
                    m_out += char(unit);
            }
        } else if (QChar::isHighSurrogate(unit) && i + 1 < size && text[i + 1].isLowSurrogate()) {
            appendUtf8(m_out, QChar::surrogateToUcs4(unit, text[++i].unicode()));
        } else if (QChar::isSurrogate(unit)) {
            // UTF-8 cannot carry half a pair: it stays an escape.
            appendEscape(m_out, unit);
        } else {
            appendUtf8(m_out, unit);
        }
    }
    m_out += '"';
}

void JsonWriter::ascii(QByteArrayView text)
{
    beginValue();
    m_out += '"';
    m_out.append(text);
    m_out += '"';
}

void JsonWriter::number(double value)
{
    beginValue();
    if (!std::isfinite(value)) {
        m_ok = false;
        m_out += "null";
        return;
    }
    // A whole number that a double holds exactly reads as an integer.
    if (std::trunc(value) == value && std::abs(value) <= 9007199254740992.0)
        m_out += QByteArray::number(qint64(value));
    else
        m_out += QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

void JsonWriter::integer(qint64 value)
{
    beginValue();
    m_out += QByteArray::number(value);
}

void JsonWriter::boolean(bool value)
{
    beginValue();
    m_out += value ? QByteArrayView("true") : QByteArrayView("false");
}

// ---------------------------------------------------------------- reading

bool JsonReader::fail(const char *reason)
{
    if (m_ok) {
        m_ok = false;
        m_failedAt = m_at;
        // What was expected is beside the point when nothing is left.
        const bool expecting = std::strncmp(reason, "expected", 8) == 0;
        m_reason = m_at == m_end && expecting ? "the document ends too early" : reason;
    }
    return false;
}

JsonReader::Mistake JsonReader::mistake() const
{
    Mistake found;
    if (m_ok || !m_failedAt)
        return found;
    found.reason = m_reason;
    found.offset = m_failedAt - m_begin;
    found.line = 1;
    const char *lineStart = m_begin;
    for (const char *at = m_begin; at < m_failedAt; ++at) {
        if (*at == '\n') {
            ++found.line;
            lineStart = at + 1;
        }
    }
    found.column = m_failedAt - lineStart + 1;
    return found;
}

JsonReader::Kind JsonReader::peek()
{
    skipSpace();
    if (!m_ok || m_at == m_end)
        return Kind::none;
    switch (*m_at) {
    case '{':
        return Kind::object;
    case '[':
        return Kind::array;
    case '"':
        return Kind::string;
    case 't':
    case 'f':
        return Kind::boolean;
    case 'n':
        return Kind::null;
    default:
        return *m_at == '-' || isDigit(*m_at) ? Kind::number : Kind::none;
    }
}

void JsonReader::skipSpace()
{
    while (m_at < m_end && (*m_at == ' ' || *m_at == '\t' || *m_at == '\n' || *m_at == '\r'))
        ++m_at;
}

bool JsonReader::take(char c)
{
    skipSpace();
    if (m_at < m_end && *m_at == c) {
        ++m_at;
        return true;
    }
    return false;
}

bool JsonReader::beginObject()
{
    if (m_first.size() >= nestingLimit)
        return fail("nested deeper than 1024 levels");
    if (!m_ok || !take('{'))
        return fail("expected an object");
    m_first.push_back(true);
    return true;
}

bool JsonReader::nextKey(QByteArrayView &key)
{
    if (!m_ok)
        return false;
    if (take('}')) {
        m_first.pop_back();
        return false;
    }
    if (!m_first.back() && !take(','))
        return fail("expected \",\" or \"}\"");
    m_first.back() = false;
    skipSpace();
    if (m_at < m_end && *m_at != '"')
        return fail("expected a key in quotes");
    const std::optional<QByteArrayView> name = utf8(m_keyScratch);
    if (!name)
        return false;
    if (!take(':'))
        return fail("expected \":\"");
    key = *name;
    return true;
}

bool JsonReader::beginArray()
{
    if (m_first.size() >= nestingLimit)
        return fail("nested deeper than 1024 levels");
    if (!m_ok || !take('['))
        return fail("expected a list");
    m_first.push_back(true);
    return true;
}

bool JsonReader::nextElement()
{
    if (!m_ok)
        return false;
    if (take(']')) {
        m_first.pop_back();
        return false;
    }
    if (!m_first.back() && !take(','))
        return fail("expected \",\" or \"]\"");
    m_first.back() = false;
    return true;
}

bool JsonReader::takeNull()
{
    skipSpace();
    if (m_end - m_at >= 4 && QByteArrayView(m_at, 4) == QByteArrayView("null")) {
        m_at += 4;
        return true;
    }
    return false;
}

std::optional<QByteArrayView> JsonReader::utf8(QByteArray &scratch)
{
    if (!m_ok || !take('"')) {
        fail("expected a string");
        return std::nullopt;
    }
    const char *start = m_at;
    bool plain = true;
    bool ascii = true;
    const char *segment = start;
    while (true) {
        if (m_at == m_end) {
            fail("the document ends inside a string");
            return std::nullopt;
        }
        const char c = *m_at;
        if (c == '"')
            break;
        if (static_cast<unsigned char>(c) < 0x20) {
            fail("a control character inside a string");
            return std::nullopt;
        }
        if (static_cast<unsigned char>(c) >= 0x80) {
            ascii = false;
            ++m_at;
            continue;
        }
        if (c != '\\') {
            ++m_at;
            continue;
        }
        if (plain) {
            plain = false;
            scratch.clear();
        }
        scratch.append(segment, m_at - segment);
        if (m_end - m_at < 2) {
            fail("the document ends inside a string");
            return std::nullopt;
        }
        const char escaped = m_at[1];
        m_at += 2;
        switch (escaped) {
        case '"':
        case '\\':
        case '/':
            scratch += escaped;
            break;
        case 'b':
            scratch += '\b';
            break;
        case 'f':
            scratch += '\f';
            break;
        case 'n':
            scratch += '\n';
            break;
        case 'r':
            scratch += '\r';
            break;
        case 't':
            scratch += '\t';
            break;
        case 'u': {
            const auto unitAt = [this](const char *at) -> int {
                if (m_end - at < 4)
                    return -1;
                int unit = 0;
                for (int i = 0; i < 4; ++i) {
                    const int digit = hexValue(at[i]);
                    if (digit < 0)
                        return -1;
                    unit = unit * 16 + digit;
                }
                return unit;
            };
            const int unit = unitAt(m_at);
            if (unit < 0) {
                fail("a \\u escape without four hex digits");
                return std::nullopt;
            }
            m_at += 4;
            char32_t code = char32_t(unit);
            if (QChar::isHighSurrogate(code)) {
                const int low = m_end - m_at >= 6 && m_at[0] == '\\' && m_at[1] == 'u' ? unitAt(m_at + 2) : -1;
                if (low < 0 || !QChar::isLowSurrogate(char32_t(low))) {
                    fail("half of a surrogate pair");
                    return std::nullopt;
                }
                m_at += 6;
                code = QChar::surrogateToUcs4(char16_t(unit), char16_t(low));
            } else if (QChar::isSurrogate(code)) {
                fail("half of a surrogate pair");
                return std::nullopt;
            }
            if (code < 0x80)
                scratch += char(code);
            else
                appendUtf8(scratch, code);
            break;
        }
        default:
            m_at -= 2;
            fail("an unknown escape");
            return std::nullopt;
        }
        segment = m_at;
    }
    const QByteArrayView raw(start, m_at - start);
    ++m_at;
    if (!ascii && !isValidUtf8(raw)) {
        m_at = start;
        fail("a string that is not UTF-8");
        return std::nullopt;
    }
    if (plain)
        return raw;
    scratch.append(segment, m_at - 1 - segment);
    return QByteArrayView(scratch);
}

std::optional<QString> JsonReader::string()
{
    QByteArray scratch;
    const std::optional<QByteArrayView> bytes = utf8(scratch);
    if (!bytes)
        return std::nullopt;
    return QString::fromUtf8(*bytes);
}

std::optional<JsonReader::Number> JsonReader::readNumber()
{
    skipSpace();
    const char *start = m_at;
    const auto digits = [this] {
        const char *from = m_at;
        while (m_at < m_end && isDigit(*m_at))
            ++m_at;
        return m_at > from;
    };
    if (m_at < m_end && *m_at == '-')
        ++m_at;
    if (m_at < m_end && *m_at == '0')
        ++m_at;
    else if (!digits()) {
        fail("expected a number");
        return std::nullopt;
    }
    bool whole = true;
    if (m_at < m_end && *m_at == '.') {
        ++m_at;
        whole = false;
        if (!digits()) {
            fail("a number without digits after its point");
            return std::nullopt;
        }
    }
    if (m_at < m_end && (*m_at == 'e' || *m_at == 'E')) {
        ++m_at;
        whole = false;
        if (m_at < m_end && (*m_at == '+' || *m_at == '-'))
            ++m_at;
        if (!digits()) {
            fail("a number without digits in its exponent");
            return std::nullopt;
        }
    }
    Number number;
    if (whole) {
        qint64 exact = 0;
        if (std::from_chars(start, m_at, exact).ec == std::errc()) {
            number.exact = exact;
            number.value = double(exact);
            return number;
        }
    }
    const std::from_chars_result parsed = std::from_chars(start, m_at, number.value);
    // Beyond the range of a double: QJsonDocument refuses those too.
    if (parsed.ec != std::errc() || !std::isfinite(number.value)) {
        m_at = start;
        fail("a number beyond the range of a double");
        return std::nullopt;
    }
    return number;
}

std::optional<double> JsonReader::number()
{
    if (!m_ok)
        return std::nullopt;
    const std::optional<Number> read = readNumber();
    return read ? std::optional(read->value) : std::nullopt;
}

std::optional<qint64> JsonReader::integer()
{
    if (!m_ok)
        return std::nullopt;
    skipSpace();
    const char *start = m_at;
    const std::optional<Number> read = readNumber();
    if (!read)
        return std::nullopt;
    if (read->exact)
        return read->exact;
    // 2^63 itself is out of range; every double below it converts exactly.
    const double value = read->value;
    const bool whole = std::trunc(value) == value;
    if (whole && value >= -9223372036854775808.0 && value < 9223372036854775808.0)
        return qint64(value);
    // Placed at the number, not after it.
    m_at = start;
    fail(whole ? "a whole number beyond 64 bits" : "not a whole number");
    return std::nullopt;
}

std::optional<bool> JsonReader::boolean()
{
    skipSpace();
    if (m_ok && m_end - m_at >= 4 && QByteArrayView(m_at, 4) == QByteArrayView("true")) {
        m_at += 4;
        return true;
    }
    if (m_ok && m_end - m_at >= 5 && QByteArrayView(m_at, 5) == QByteArrayView("false")) {
        m_at += 5;
        return false;
    }
    fail("expected true or false");
    return std::nullopt;
}

bool JsonReader::skipValue()
{
    skipSpace();
    if (!m_ok || m_at == m_end)
        return fail("expected a value");
    switch (*m_at) {
    case '{': {
        beginObject();
        QByteArrayView key;
        while (nextKey(key))
            skipValue();
        return m_ok;
    }
    case '[':
        beginArray();
        while (nextElement())
            skipValue();
        return m_ok;
    case '"': {
        QByteArray scratch;
        return utf8(scratch).has_value();
    }
    case 't':
    case 'f':
        return boolean().has_value();
    case 'n':
        return takeNull() || fail("expected null");
    default:
        return readNumber().has_value();
    }
}

bool JsonReader::atEnd()
{
    skipSpace();
    return m_ok && m_at == m_end;
}

} // namespace fenrow
