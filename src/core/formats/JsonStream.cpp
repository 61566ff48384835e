#include "JsonStream.h"

#include <QLocale>

#include <cmath>

namespace fenrow {

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

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

} // namespace

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

} // namespace fenrow
