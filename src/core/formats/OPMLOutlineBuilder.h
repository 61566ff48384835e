#pragma once

#include "OPMLCodec.h"

#include <QStringView>

#include <optional>
#include <utility>
#include <vector>

namespace fenrow {

class LocalCalendar;

namespace OPMLCodec {

// An element's attributes as (name, value), in document order.
using ElementAttributes = std::vector<std::pair<QStringView, QStringView>>;

// The line (from 1) that the character at `offset` stands on. A line feed,
// and a carriage return not followed by one, end a line, as XML reads them.
template <typename Char>
qsizetype lineAt(const Char *text, qsizetype offset)
{
    qsizetype line = 1;
    for (qsizetype i = 0; i < offset; ++i) {
        if (text[i] == Char('\n') || (text[i] == Char('\r') && (i + 1 >= offset || text[i + 1] != Char('\n'))))
            ++line;
    }
    return line;
}

// Builds the outline tree from a reader's element events and holds the
// document to the limits; the readers only tokenise, so both read a file to
// the same outlines and refuse it at the same place.
class OutlineBuilder {
public:
    explicit OutlineBuilder(const LocalCalendar &calendar) : m_calendar(calendar) {}

    // False once the document is refused: the reader stops there and tells
    // `refusedOnLine` the line it stands on, the line of the tag's end.
    bool startElement(QStringView name, const ElementAttributes &attributes);
    bool endElement(QStringView name);
    void characters(QStringView text);
    void refusedOnLine(qsizetype line);
    // Only a title's text is kept; a reader may skip making the rest.
    bool wantsCharacters() const { return m_inTitle; }

    // The document, or why there is none: a limit crossed, no "opml"
    // element, or no outline with something to say.
    Reading result();
    std::optional<Document> finish();

private:
    bool refuse(Refusal::Reason reason, qsizetype entry);

    const LocalCalendar &m_calendar;
    Document m_document;
    std::vector<Outline> m_stack;
    std::optional<Refusal> m_refusal;
    qsizetype m_entries = 0;
    bool m_sawRoot = false;
    bool m_inTitle = false;
};

} // namespace OPMLCodec
} // namespace fenrow
