// Any bytes through the outline reader. Where the direct tokeniser takes a
// document on its own, the general XML reader must read it to the same
// outline, or refuse it for the same reason at the same place: the direct
// one is only allowed to be faster, never different.

#include "FuzzSupport.h"

#include "formats/OPMLCodec.h"
#include "formats/OPMLDirectReader.h"
#include "formats/OPMLOutlineBuilder.h"

#include <algorithm>
#include <variant>
#include <vector>

using namespace fenrow;

namespace {

void describeOutlines(QString &out, const QList<OPMLCodec::Outline> &outlines, int depth)
{
    for (const OPMLCodec::Outline &outline : outlines) {
        out += QString(depth * 2, u' ') + u'[' + outline.text + u']';
        if (!outline.note.isEmpty())
            out += QStringLiteral(" note=[") + outline.note + u']';
        if (outline.isDone)
            out += QStringLiteral(" done");
        if (outline.fenrowID)
            out += QStringLiteral(" id=[") + *outline.fenrowID + u']';
        if (!outline.after.isEmpty())
            out += QStringLiteral(" after=[") + outline.after.join(u',') + u']';
        if (outline.startDate)
            out += QStringLiteral(" start=") + outline.startDate->toString(Qt::ISODate);
        if (outline.dueDate)
            out += QStringLiteral(" due=") + outline.dueDate->toString(Qt::ISODate);
        if (!outline.checklistData.isEmpty())
            out += QStringLiteral(" checklist=[") + outline.checklistData + u']';
        out += u'\n';
        describeOutlines(out, outline.children, depth + 1);
    }
}

QString described(const OPMLCodec::Reading &reading)
{
    if (const OPMLCodec::Refusal *refusal = std::get_if<OPMLCodec::Refusal>(&reading))
        return QStringLiteral("refused (reason %1, entry %2): ").arg(int(refusal->reason)).arg(refusal->entry)
            + refusal->text() + u'\n';
    const OPMLCodec::Document &document = std::get<OPMLCodec::Document>(reading);
    QString out = QStringLiteral("title [") + document.title
        + QStringLiteral("] entries left out %1, dates left out %2\n")
              .arg(document.entriesLeftOut)
              .arg(document.datesLeftOut);
    describeOutlines(out, document.roots, 1);
    return out;
}

// Iteratively: the depth is what is being checked.
qsizetype depthOf(const QList<OPMLCodec::Outline> &roots)
{
    qsizetype deepest = 0;
    std::vector<std::pair<const QList<OPMLCodec::Outline> *, qsizetype>> pending{{&roots, 1}};
    while (!pending.empty()) {
        const auto [level, depth] = pending.back();
        pending.pop_back();
        for (const OPMLCodec::Outline &outline : *level) {
            deepest = std::max(deepest, depth);
            pending.push_back({&outline.children, depth + 1});
        }
    }
    return deepest;
}

const char *directVerdict(const QByteArray &bytes)
{
    OPMLCodec::OutlineBuilder builder(fuzz::berlin());
    switch (OPMLCodec::OPMLDirectReader::read(bytes, builder)) {
    case OPMLCodec::OPMLDirectReader::Result::read:
        return "the direct reader read it";
    case OPMLCodec::OPMLDirectReader::Result::refused:
        return "the direct reader refused it";
    case OPMLCodec::OPMLDirectReader::Result::unsure:
        break;
    }
    return "the direct reader stepped aside";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::bytesOf(data, size);
    const LocalCalendar &calendar = fuzz::berlin();

    // `read` takes the direct tokeniser's word where it gives one; the
    // general reader alone must come to the same document or the same
    // refusal, at the same place.
    const OPMLCodec::Reading reading = OPMLCodec::read(bytes, calendar);
    const OPMLCodec::Reading full = OPMLCodec::readWithXmlReader(bytes, calendar);
    fuzz::require(reading == full, "the outline readers disagree", [&] {
        return QString::fromLatin1(directVerdict(bytes)) + QStringLiteral("\nread:\n") + described(reading)
            + QStringLiteral("XML reader alone:\n") + described(full);
    });

    const std::optional<OPMLCodec::Document> decoded = OPMLCodec::decode(bytes, calendar);
    const OPMLCodec::Document *document = std::get_if<OPMLCodec::Document>(&reading);
    fuzz::require(decoded.has_value() == (document != nullptr) && (!decoded || *decoded == *document),
                  "decode does not give the document read gives");
    if (document) {
        fuzz::require(!document->roots.isEmpty(), "a document was read without a single entry");
        fuzz::require(OPMLCodec::outlineCount(document->roots) <= OPMLCodec::maxEntries,
                      "a document was read with more entries than the limit");
        fuzz::require(depthOf(document->roots) <= OPMLCodec::maxDepth, "a document was read nested past the limit");
    }
    return 0;
}
