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

// Builds the outline tree from a reader's element events; the readers only
// tokenise, so both read a file to the same outlines. Element names compare
// without regard to case, attribute names exactly.
class OutlineBuilder {
public:
    explicit OutlineBuilder(const LocalCalendar &calendar) : m_calendar(calendar) {}

    void startElement(QStringView name, const ElementAttributes &attributes);
    void endElement(QStringView name);
    void characters(QStringView text);
    // Only a title's text is kept; a reader may skip making the rest.
    bool wantsCharacters() const { return m_inTitle; }
    // The document, or nothing when it had no "opml" element or no outline
    // with something to say.
    std::optional<Document> finish();

private:
    const LocalCalendar &m_calendar;
    Document m_document;
    std::vector<Outline> m_stack;
    bool m_sawRoot = false;
    bool m_inTitle = false;
};

} // namespace OPMLCodec
} // namespace fenrow
