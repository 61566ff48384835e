#include "OPMLDirectReader.h"

#include "OPMLOutlineBuilder.h"

#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <bit>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace fenrow::OPMLCodec::OPMLDirectReader {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isNameChar(char c)
{
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '.' || c == '-';
}

// Code points XML 1.0 lets a document carry.
bool isXmlChar(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD)
        || (c >= 0x10000 && c <= 0x10FFFF);
}

void appendUtf8(std::string &out, char32_t c)
{
    if (c < 0x80) {
        out.push_back(char(c));
    } else if (c < 0x800) {
        out.push_back(char(0xC0 | (c >> 6)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(char(0xE0 | (c >> 12)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else {
        out.push_back(char(0xF0 | (c >> 18)));
        out.push_back(char(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    }
}

// How many bytes from `p` on a value keeps as they are, which is nearly
// all of them: printable ASCII other than "&" and "<", and with
// `passNonAscii` the bytes of other characters too. Sixteen at a time
// where the processor has the instructions.
std::size_t plainRun(const char *p, std::size_t size, bool passNonAscii)
{
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i ampersand = _mm_set1_epi8('&');
    const __m128i less = _mm_set1_epi8('<');
    const __m128i space = _mm_set1_epi8(0x20);
    const __m128i zero = _mm_setzero_si128();
    const __m128i passed = passNonAscii ? _mm_set1_epi8(-1) : zero;
    for (; i + 16 <= size; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(p + i));
        // Compared as signed, bytes from 0x80 up are below the space too.
        const __m128i nonAscii = _mm_cmplt_epi8(bytes, zero);
        const __m128i low = _mm_andnot_si128(_mm_and_si128(nonAscii, passed), _mm_cmplt_epi8(bytes, space));
        const __m128i stop =
            _mm_or_si128(low, _mm_or_si128(_mm_cmpeq_epi8(bytes, ampersand), _mm_cmpeq_epi8(bytes, less)));
        if (const int found = _mm_movemask_epi8(stop))
            return i + std::size_t(std::countr_zero(unsigned(found)));
    }
#endif
    while (i < size) {
        const auto byte = static_cast<unsigned char>(p[i]);
        if (byte < 0x20 || (byte >= 0x80 && !passNonAscii) || byte == '&' || byte == '<')
            break;
        ++i;
    }
    return i;
}

// Text from UTF-8 that was not ASCII throughout: malformed bytes come back
// as replacement characters (U+FFFD), and the two non-characters XML
// forbids sit just above it; any of the three leaves the verdict to the
// full reader.
bool decodeUtf8(const char *data, qsizetype size, QString *out)
{
    *out = QString::fromUtf8(data, size);
    const QStringView text(*out);
    return std::none_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0xFFFD; });
}

class Reader {
public:
    Reader(const QByteArray &bytes, OutlineBuilder &builder)
        : m_begin(bytes.constData()), m_p(m_begin), m_end(m_begin + bytes.size()), m_builder(builder)
    {
    }

    bool run();
    bool refused() const { return m_refused; }

private:
    bool startsWith(std::string_view text) const
    {
        return std::size_t(m_end - m_p) >= text.size() && std::memcmp(m_p, text.data(), text.size()) == 0;
    }
    void skipBlanks()
    {
        while (m_p < m_end && isBlank(*m_p))
            ++m_p;
    }

    bool declaration();
    bool comment();
    bool startTag();
    bool endTag();
    bool characters(const char *from, const char *to);
    bool name(std::string_view *out);
    bool quotedValue(std::string_view *out);
    bool decodeValue(std::string_view raw, bool isAttribute, QString *out);
    bool reference(const char *&p, const char *end, std::string &out);
    bool nameText(std::string_view name, QStringView *text);
    // The builder refused the document: the reader stops where it stands.
    bool stop();

    const char *m_begin;
    const char *m_p;
    const char *m_end;
    OutlineBuilder &m_builder;
    std::vector<std::string_view> m_open;
    bool m_rootClosed = false;
    bool m_refused = false;
    // Names as text, made once each: a file uses a handful, a wide one a
    // few dozen. The deques keep every name where it was made.
    std::deque<std::string> m_nameBytes;
    std::deque<QString> m_nameTexts;
    std::unordered_map<std::string_view, QStringView> m_names;
    std::vector<QStringView> m_attributeNames;
    std::vector<QString> m_values;
    ElementAttributes m_attributes;
    std::string m_scratch;
};

bool Reader::run()
{
    if (startsWith("\xEF\xBB\xBF"))
        m_p += 3;
    if (startsWith("<?xml") && m_end - m_p > 5 && isBlank(m_p[5])) {
        if (!declaration())
            return false;
    }
    while (m_p < m_end) {
        const auto *open = static_cast<const char *>(std::memchr(m_p, '<', std::size_t(m_end - m_p)));
        const char *stop = open ? open : m_end;
        if (stop > m_p && !characters(m_p, stop))
            return false;
        if (!open)
            break;
        m_p = open;
        bool ok = false;
        if (startsWith("</"))
            ok = endTag();
        else if (startsWith("<!--"))
            ok = comment();
        else if (startsWith("<!") || startsWith("<?"))
            ok = false;
        else
            ok = startTag();
        if (!ok)
            return false;
    }
    return m_rootClosed && m_open.empty();
}

// <?xml version="1.0" encoding="UTF-8" standalone="yes"?>, in that order,
// the last two optional.
bool Reader::declaration()
{
    m_p += 5;
    for (const std::string_view wanted : {"version", "encoding", "standalone"}) {
        const char *before = m_p;
        skipBlanks();
        if (!startsWith(wanted)) {
            if (wanted == "version")
                return false;
            m_p = before;
            continue;
        }
        if (m_p == before)
            return false;
        m_p += wanted.size();
        skipBlanks();
        if (m_p >= m_end || *m_p != '=')
            return false;
        ++m_p;
        skipBlanks();
        std::string_view value;
        if (!quotedValue(&value))
            return false;
        const QLatin1StringView text(value.data(), qsizetype(value.size()));
        if (wanted == "version" && text != QLatin1StringView("1.0"))
            return false;
        if (wanted == "encoding" && text.compare(QLatin1StringView("UTF-8"), Qt::CaseInsensitive) != 0)
            return false;
    }
    skipBlanks();
    if (!startsWith("?>"))
        return false;
    m_p += 2;
    return true;
}

bool Reader::comment()
{
    const char *from = m_p + 4;
    for (const char *p = from; p + 1 < m_end; ++p) {
        const char c = *p;
        if ((static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r')
            || static_cast<unsigned char>(c) >= 0x80)
            return false;
        if (c == '-' && p[1] == '-') {
            // "--" ends a comment and may appear nowhere else in it.
            if (p + 2 >= m_end || p[2] != '>')
                return false;
            m_p = p + 3;
            return true;
        }
    }
    return false;
}

bool Reader::name(std::string_view *out)
{
    const char *start = m_p;
    if (m_p >= m_end || !isNameStart(*m_p))
        return false;
    while (m_p < m_end && isNameChar(*m_p))
        ++m_p;
    *out = std::string_view(start, std::size_t(m_p - start));
    return true;
}

bool Reader::quotedValue(std::string_view *out)
{
    if (m_p >= m_end || (*m_p != '"' && *m_p != '\''))
        return false;
    const char quote = *m_p++;
    const auto *close = static_cast<const char *>(std::memchr(m_p, quote, std::size_t(m_end - m_p)));
    if (!close)
        return false;
    *out = std::string_view(m_p, std::size_t(close - m_p));
    m_p = close + 1;
    return true;
}

// A file of thousands of different names is no outline; the full reader
// takes it rather than this table growing large. Each name has one text,
// so the same name is the same view.
bool Reader::nameText(std::string_view name, QStringView *text)
{
    if (const auto found = m_names.find(name); found != m_names.end()) {
        *text = found->second;
        return true;
    }
    if (m_names.size() >= 1024)
        return false;
    const std::string &bytes = m_nameBytes.emplace_back(name);
    *text = m_nameTexts.emplace_back(QString::fromLatin1(bytes.data(), qsizetype(bytes.size())));
    m_names.emplace(std::string_view(bytes), *text);
    return true;
}

bool Reader::stop()
{
    m_builder.refusedOnLine(lineAt(m_begin, m_p - m_begin));
    m_refused = true;
    return false;
}

bool Reader::startTag()
{
    if (m_rootClosed)
        return false;
    ++m_p;
    std::string_view element;
    if (!name(&element))
        return false;

    m_attributeNames.clear();
    m_values.clear();
    bool selfClosing = false;
    while (true) {
        const char *before = m_p;
        skipBlanks();
        if (m_p >= m_end)
            return false;
        if (*m_p == '>') {
            ++m_p;
            break;
        }
        if (startsWith("/>")) {
            m_p += 2;
            selfClosing = true;
            break;
        }
        std::string_view attribute;
        if (m_p == before || !name(&attribute) || qsizetype(m_attributeNames.size()) >= maxAttributes)
            return false;
        skipBlanks();
        if (m_p >= m_end || *m_p != '=')
            return false;
        ++m_p;
        skipBlanks();
        std::string_view raw;
        QStringView attributeText;
        if (!quotedValue(&raw) || !nameText(attribute, &attributeText))
            return false;
        // One text per name: a name seen before is the very same view.
        for (QStringView seen : m_attributeNames) {
            if (seen.data() == attributeText.data())
                return false;
        }
        m_attributeNames.push_back(attributeText);
        m_values.emplace_back();
        if (!decodeValue(raw, true, &m_values.back()))
            return false;
    }

    m_attributes.clear();
    for (std::size_t i = 0; i < m_values.size(); ++i)
        m_attributes.emplace_back(m_attributeNames[i], m_values[i]);
    QStringView elementText;
    if (!nameText(element, &elementText))
        return false;
    if (!m_builder.startElement(elementText, m_attributes))
        return stop();
    if (selfClosing) {
        if (!m_builder.endElement(elementText))
            return stop();
        m_rootClosed = m_open.empty();
    } else {
        m_open.push_back(element);
    }
    return true;
}

bool Reader::endTag()
{
    m_p += 2;
    std::string_view element;
    if (!name(&element))
        return false;
    skipBlanks();
    if (m_p >= m_end || *m_p != '>' || m_open.empty() || m_open.back() != element)
        return false;
    ++m_p;
    m_open.pop_back();
    QStringView elementText;
    if (!nameText(element, &elementText))
        return false;
    if (!m_builder.endElement(elementText))
        return stop();
    m_rootClosed = m_open.empty();
    return true;
}

bool Reader::characters(const char *from, const char *to)
{
    if (m_open.empty()) {
        // Outside the root element only blanks may stand.
        for (const char *p = from; p < to; ++p) {
            if (!isBlank(*p))
                return false;
        }
        return true;
    }
    const std::string_view raw(from, std::size_t(to - from));
    if (raw.find("]]>") != std::string_view::npos)
        return false;
    // The blanks between elements are checked, not kept.
    const bool wanted = m_builder.wantsCharacters();
    QString text;
    if (!decodeValue(raw, false, wanted ? &text : nullptr))
        return false;
    if (wanted)
        m_builder.characters(text);
    return true;
}

// An attribute's blanks read as spaces; a carriage return would need the
// line-end rules, which the full reader applies. Without `out` the text is
// only checked.
bool Reader::decodeValue(std::string_view raw, bool isAttribute, QString *out)
{
    bool plain = true;
    bool ascii = true;
    for (std::size_t i = 0; (i += plainRun(raw.data() + i, raw.size() - i, !ascii)) < raw.size(); ++i) {
        const char c = raw[i];
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) {
            ascii = false;
        } else if (c == '&') {
            plain = false;
        } else if (byte < 0x20) {
            if (c != '\t' && c != '\n')
                return false;
            plain = plain && !isAttribute;
        } else {
            // "<", the one byte left that stops a run.
            return false;
        }
    }
    QString decoded;
    if (plain) {
        if (ascii) {
            if (out)
                *out = QString::fromLatin1(raw.data(), qsizetype(raw.size()));
            return true;
        }
        if (!decodeUtf8(raw.data(), qsizetype(raw.size()), &decoded))
            return false;
    } else {
        // Runs between references are copied whole; the buffer keeps its
        // room from one value to the next.
        m_scratch.clear();
        const char *p = raw.data();
        const char *end = p + raw.size();
        while (p < end) {
            const char *run = p;
            p += plainRun(p, std::size_t(end - p), true);
            while (p < end && *p != '&' && !(isAttribute && (*p == '\t' || *p == '\n')))
                ++p;
            m_scratch.append(run, std::size_t(p - run));
            if (p == end)
                break;
            if (*p == '&') {
                if (!reference(p, end, m_scratch))
                    return false;
            } else {
                m_scratch.push_back(' ');
                ++p;
            }
        }
        if (!decodeUtf8(m_scratch.data(), qsizetype(m_scratch.size()), &decoded))
            return false;
    }
    if (out)
        *out = std::move(decoded);
    return true;
}

// "&amp;" and its four siblings, "&#10;" and "&#x1F600;". Any other name
// would need a document type, which only the full reader reads.
bool Reader::reference(const char *&p, const char *end, std::string &out)
{
    const char *start = p + 1;
    const char *semicolon = start;
    while (semicolon < end && semicolon - start < 12 && *semicolon != ';')
        ++semicolon;
    if (semicolon >= end || *semicolon != ';')
        return false;
    const std::string_view body(start, std::size_t(semicolon - start));
    p = semicolon + 1;
    static constexpr std::pair<std::string_view, char> named[]{
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto &[entity, character] : named) {
        if (body == entity) {
            out.push_back(character);
            return true;
        }
    }
    if (body.size() < 2 || body[0] != '#')
        return false;
    const bool hex = body[1] == 'x';
    const std::string_view digits = body.substr(hex ? 2 : 1);
    if (digits.empty() || digits.size() > 8)
        return false;
    char32_t value = 0;
    for (const char c : digits) {
        int digit = -1;
        if (c >= '0' && c <= '9')
            digit = c - '0';
        else if (hex && c >= 'a' && c <= 'f')
            digit = c - 'a' + 10;
        else if (hex && c >= 'A' && c <= 'F')
            digit = c - 'A' + 10;
        if (digit < 0)
            return false;
        value = value * (hex ? 16 : 10) + char32_t(digit);
    }
    if (!isXmlChar(value))
        return false;
    appendUtf8(out, value);
    return true;
}

} // namespace

Result read(const QByteArray &bytes, OutlineBuilder &builder)
{
    Reader reader(bytes, builder);
    if (reader.run())
        return Result::read;
    if (!reader.refused())
        return Result::unsure;
    // The general reader decodes the whole file before it reads a single
    // element, so bytes that are not UTF-8 past the refused place make it
    // call the file damaged: then so must this one, by stepping aside.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString whole = utf8.decode(bytes);
    return utf8.hasError() ? Result::unsure : Result::refused;
}

} // namespace fenrow::OPMLCodec::OPMLDirectReader
