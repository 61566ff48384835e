// Writes the fuzz targets' starting corpora from the repository's own test
// material, so nothing is copied into the fuzz folder and the seeds follow
// the tests as they change:
//   opml          the outline fixtures and the expected export, and
//                 outlines just inside and just past the reader's limits
//   backup        the expected backup document
//   checklist     checklists held by those documents, and the checklist
//                 texts written into the domain tests
//   template      template payloads from the backup, and each outline
//                 fixture turned into a template's shape
//   capture-date  every string in the date parser's tests
// Usage: fenrow-fuzz-seeds SOURCE_DIR OUTPUT_DIR

#include "domain/ChecklistEntry.h"
#include "domain/FlowBlueprint.h"
#include "domain/LocalCalendar.h"
#include "formats/FenrowBackup.h"
#include "formats/OPMLCodec.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>
#include <QTimeZone>

#include <cctype>
#include <cstdio>
#include <variant>

using namespace fenrow;

namespace {

QDir source;
QDir output;
QSet<QString> written;

QByteArray readFile(const QString &relative)
{
    QFile file(source.filePath(relative));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "fenrow-fuzz-seeds: cannot read %s\n", qPrintable(file.fileName()));
        std::exit(1);
    }
    return file.readAll();
}

// Named by content, as libFuzzer names what it keeps, so a seed found twice
// is one file.
void seed(const QString &corpus, const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return;
    output.mkpath(corpus);
    const QString name = QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex());
    QFile file(output.filePath(corpus + u'/' + name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "fenrow-fuzz-seeds: cannot write %s\n", qPrintable(file.fileName()));
        std::exit(1);
    }
    written.insert(file.fileName());
}

// The string literals of a C++ source, escapes undone; "\xNN" gives bytes,
// so UTF-8 written that way comes out as the text it stands for.
QList<QByteArray> stringLiterals(const QByteArray &code)
{
    QList<QByteArray> literals;
    qsizetype i = 0;
    const qsizetype n = code.size();
    while (i < n) {
        const char c = code[i];
        if (c == '/' && i + 1 < n && code[i + 1] == '/') {
            while (i < n && code[i] != '\n')
                ++i;
            continue;
        }
        if (c == '#') {
            // #include <...> and "..." name files, not text.
            while (i < n && code[i] != '\n')
                ++i;
            continue;
        }
        if (c == '\'') {
            i += (i + 2 < n && code[i + 1] == '\\') ? 4 : 3;
            continue;
        }
        if (c != '"') {
            ++i;
            continue;
        }
        QByteArray text;
        ++i;
        while (i < n && code[i] != '"' && code[i] != '\n') {
            if (code[i] != '\\' || i + 1 >= n) {
                text += code[i++];
                continue;
            }
            const char escaped = code[i + 1];
            i += 2;
            switch (escaped) {
            case 'n':
                text += '\n';
                break;
            case 't':
                text += '\t';
                break;
            case 'r':
                text += '\r';
                break;
            case 'x': {
                int value = 0;
                while (i < n && std::isxdigit(static_cast<unsigned char>(code[i])))
                    value = value * 16 + QByteArray(1, code[i++]).toInt(nullptr, 16);
                text += char(value);
                break;
            }
            default:
                text += escaped;
                break;
            }
        }
        ++i;
        literals.append(text);
    }
    return literals;
}

// An outline fixture as the shape of a template: tasks in document order,
// nesting as subtask edges, "fenrowAfter" as dependencies.
FlowBlueprint blueprintOf(const OPMLCodec::Document &document)
{
    FlowBlueprint blueprint;
    blueprint.name = document.title;
    QHash<QString, qint64> keys;
    QList<std::pair<qint64, QStringList>> prerequisites;
    const auto add = [&](const auto &self, const QList<OPMLCodec::Outline> &outlines, int depth,
                         std::optional<qint64> parent) -> void {
        for (const OPMLCodec::Outline &outline : outlines) {
            const qint64 key = blueprint.items.size();
            FlowBlueprint::Item item;
            item.key = key;
            item.title = outline.text;
            item.notes = outline.note;
            item.priorityRaw = QStringLiteral("none");
            item.colorRaw = QStringLiteral("none");
            item.checklistData = outline.checklistData;
            item.posX = depth * 240.0;
            item.posY = key * 96.5;
            item.order = key;
            if (outline.dueDate)
                item.estimateMinutes = 30;
            blueprint.items.append(item);
            if (outline.fenrowID)
                keys.insert(*outline.fenrowID, key);
            if (!outline.after.isEmpty())
                prerequisites.append({key, outline.after});
            if (parent)
                blueprint.edges.append({*parent, key, QStringLiteral("subtask"), QStringLiteral("manual")});
            self(self, outline.children, depth + 1, key);
        }
    };
    add(add, document.roots, 0, std::nullopt);
    for (const auto &[key, after] : std::as_const(prerequisites)) {
        for (const QString &id : after) {
            if (keys.contains(id))
                blueprint.edges.append({keys.value(id), key, QStringLiteral("dependency"), QStringLiteral("ai")});
        }
    }
    return blueprint;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: fenrow-fuzz-seeds SOURCE_DIR OUTPUT_DIR\n");
        return 2;
    }
    source = QDir(QString::fromLocal8Bit(argv[1]));
    output = QDir(QString::fromLocal8Bit(argv[2]));
    const LocalCalendar berlin(QTimeZone("Europe/Berlin"));

    QStringList outlineFiles{QStringLiteral("tests/core/expected/outline.opml")};
    for (const QString &name : QDir(source.filePath(QStringLiteral("tests/core/fixtures/opml")))
                                   .entryList({QStringLiteral("*.opml")}, QDir::Files, QDir::Name))
        outlineFiles.append(QStringLiteral("tests/core/fixtures/opml/") + name);
    for (const QString &file : std::as_const(outlineFiles)) {
        const QByteArray bytes = readFile(file);
        seed(QStringLiteral("opml"), bytes);
        const std::optional<OPMLCodec::Document> document = OPMLCodec::decode(bytes, berlin);
        if (!document)
            continue;
        seed(QStringLiteral("template"), blueprintOf(*document).encode());
        const auto checklists = [&](const auto &self, const QList<OPMLCodec::Outline> &outlines) -> void {
            for (const OPMLCodec::Outline &outline : outlines) {
                seed(QStringLiteral("checklist"), outline.checklistData.toUtf8());
                self(self, outline.children);
            }
        };
        checklists(checklists, document->roots);
    }

    // At the limits the two outline readers must refuse alike, on the same
    // line; mutation seldom grows an input that far, so documents just
    // inside and just past each limit start the corpus.
    const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n<body>\n";
    const QByteArray tail = "\n</body>\n</opml>\n";
    for (const qsizetype depth : {OPMLCodec::maxDepth, OPMLCodec::maxDepth + 1}) {
        QByteArray nested = head;
        for (qsizetype level = 1; level < depth; ++level)
            nested += "<outline>\n";
        nested += "<outline text=\"a\"/>";
        for (qsizetype level = 1; level < depth; ++level)
            nested += "</outline>";
        seed(QStringLiteral("opml"), nested + tail);
    }
    for (const qsizetype count : {OPMLCodec::maxAttributes, OPMLCodec::maxAttributes + 1}) {
        QByteArray wide = head + "<outline text=\"a\"";
        for (qsizetype attribute = 1; attribute < count; ++attribute)
            wide += " a" + QByteArray::number(attribute) + "=\"x\"";
        seed(QStringLiteral("opml"), wide + "/>" + tail);
    }

    const QByteArray backupBytes = readFile(QStringLiteral("tests/core/expected/backup-document.json"));
    seed(QStringLiteral("backup"), backupBytes);
    const std::variant<FenrowBackup, BackupProblem> backup = FenrowBackup::decoded(backupBytes);
    if (const FenrowBackup *read = std::get_if<FenrowBackup>(&backup)) {
        for (const FenrowBackup::Flow &flow : read->flows) {
            for (const FenrowBackup::Item &item : flow.items)
                seed(QStringLiteral("checklist"), item.checklistData.toUtf8());
        }
        for (const FenrowBackup::Template &flowTemplate : read->templates)
            seed(QStringLiteral("template"), flowTemplate.payload.value_or(QByteArray()));
    }

    // The domain tests write checklists with "%1" standing for an id.
    const QByteArray someID = "6F9619FF-8B86-4D01-B42D-00C04FC964FF";
    for (QByteArray text : stringLiterals(readFile(QStringLiteral("tests/core/DomainRecordsTest.cpp")))) {
        if (text.trimmed().startsWith('[') && text.contains("isDone"))
            seed(QStringLiteral("checklist"), text.replace("%1", someID));
    }

    for (const QByteArray &text : stringLiterals(readFile(QStringLiteral("tests/core/CaptureDateParserTest.cpp"))))
        seed(QStringLiteral("capture-date"), text);

    std::printf("fenrow-fuzz-seeds: %d seeds in %s\n", int(written.size()), qPrintable(output.path()));
    for (const char *corpus : {"opml", "backup", "checklist", "template", "capture-date"}) {
        if (QDir(output.filePath(QLatin1StringView(corpus))).isEmpty()) {
            std::fprintf(stderr, "fenrow-fuzz-seeds: no seed for %s\n", corpus);
            return 1;
        }
    }
    return 0;
}
