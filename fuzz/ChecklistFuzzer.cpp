// Any text as a task's checklist. `progress` and `hasEntries` answer from
// a quick strict reader where they can and must always agree with
// `decode`; a list that decodes must survive being written and read again.

#include "FuzzSupport.h"

#include "domain/ChecklistEntry.h"

using namespace fenrow;

namespace {

QString described(const Checklist &entries)
{
    QString out;
    for (const ChecklistEntry &entry : entries) {
        out += entry.id.toString() + (entry.isDone ? QStringLiteral(" [x] ") : QStringLiteral(" [ ] "));
        out += entry.title + u'\n';
    }
    return out.isEmpty() ? QStringLiteral("(empty)\n") : out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // The column is text: whatever the bytes, the codec sees valid UTF-16.
    const QString text = QString::fromUtf8(fuzz::bytesOf(data, size));
    const Checklist entries = ChecklistCodec::decode(text);
    fuzz::require(ChecklistCodec::hasEntries(text) == !entries.isEmpty(), "hasEntries and decode disagree",
                  [&] { return QStringLiteral("decode gave:\n") + described(entries); });
    ChecklistCodec::Progress decoded;
    for (const ChecklistEntry &entry : entries) {
        decoded.done += entry.isDone ? 1 : 0;
        ++decoded.total;
    }
    const ChecklistCodec::Progress counted = ChecklistCodec::progress(text);
    fuzz::require(counted == decoded, "progress and decode disagree", [&] {
        return QStringLiteral("progress gave %1 of %2; decode gave:\n").arg(counted.done).arg(counted.total) +
               described(entries);
    });
    if (entries.isEmpty())
        return 0;

    for (const ChecklistEntry &entry : entries)
        fuzz::require(!entry.id.isNull(), "an entry was read without an id");
    const QString written = ChecklistCodec::encode(entries);
    const Checklist again = ChecklistCodec::decode(written);
    fuzz::require(again == entries, "a checklist read back differs from the one written", [&] {
        return QStringLiteral("written: ") + written + QStringLiteral("\nfirst:\n") + described(entries)
            + QStringLiteral("second:\n") + described(again);
    });
    fuzz::require(ChecklistCodec::encode(again) == written, "the same checklist is written as different text",
                  [&] { return written; });
    return 0;
}
