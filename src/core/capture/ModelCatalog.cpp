#include "ModelCatalog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cstring>
#include <functional>

namespace fenrow {

namespace {

// Enough for the deepest layout searched (a Hugging Face snapshot with a
// folder per quantisation) without wandering through a whole disk that a
// link points at.
constexpr int deepestFolder = 5;
// Entries looked at in one place; a model folder has far fewer.
constexpr int mostEntries = 5000;
// An Ollama manifest is a few hundred bytes.
constexpr qint64 largestManifest = 1 << 20;

enum class Head { model, missing, unreadable, other };

Head readHead(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Head::missing;
    // Only a regular file is opened: opening a pipe would wait for a writer.
    if (!info.isFile())
        return Head::other;
    // Unbuffered, so that four bytes are all that is read.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Head::unreadable;
    char head[4];
    const qint64 got = file.read(head, sizeof head);
    if (got < 0)
        return Head::unreadable;
    return got == 4 && std::memcmp(head, "GGUF", 4) == 0 ? Head::model : Head::other;
}

// Visits the files under `root` with their paths relative to it, in name
// order, up to `deepest` folders down. A folder reached a second time
// (through a link) is not entered again, so a link loop ends.
void walk(const QString &root, int deepest, const std::function<void(const QFileInfo &, const QString &)> &visit)
{
    struct Folder {
        QString path;
        QString relative;
        int depth;
    };
    QSet<QString> entered;
    int entries = 0;
    QList<Folder> pending{{root, QString(), 0}};
    while (!pending.isEmpty()) {
        const Folder folder = pending.takeFirst();
        const QString canonical = QFileInfo(folder.path).canonicalFilePath();
        if (canonical.isEmpty() || entered.contains(canonical))
            continue;
        entered.insert(canonical);
        const QFileInfoList list =
            QDir(folder.path).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
        for (const QFileInfo &entry : list) {
            if (++entries > mostEntries)
                return;
            const QString relative =
                folder.relative.isEmpty() ? entry.fileName() : folder.relative + u'/' + entry.fileName();
            if (entry.isDir()) {
                if (folder.depth < deepest)
                    pending.append({entry.filePath(), relative, folder.depth + 1});
            } else {
                visit(entry, relative);
            }
        }
    }
}

class Catalog {
public:
    void add(const QString &path, const QString &name, qint64 size, const QString &source)
    {
        const QString canonical = QFileInfo(path).canonicalFilePath();
        if (canonical.isEmpty() || m_paths.contains(canonical) || readHead(path) != Head::model)
            return;
        m_paths.insert(canonical);
        m_models.append({QFileInfo(path).absoluteFilePath(), name, size, source});
    }

    // The *.gguf files under `root`.
    void addFiles(const QString &root, int deepest, const QString &source)
    {
        walk(root, deepest, [&](const QFileInfo &file, const QString &relative) {
            if (!file.fileName().endsWith(QLatin1String(".gguf"), Qt::CaseInsensitive))
                return;
            QString name = relative.chopped(5);
            qint64 size = file.size();
            static const QRegularExpression part(QStringLiteral("^(.*)-(\\d{5})-of-(\\d{5})$"));
            if (const QRegularExpressionMatch match = part.match(name); match.hasMatch()) {
                if (match.captured(2).toInt() != 1)
                    return;
                size = splitSize(file, match.captured(3));
                if (size < 0)
                    return;
                name = match.captured(1);
            }
            add(file.filePath(), hubName(name), size, source);
        });
    }

    // The models Ollama has pulled: each manifest
    // (manifests/<registry>/<namespace>/<model>/<tag>) names the blob that
    // holds the weights.
    void addOllama(const QString &models)
    {
        walk(QDir(models).filePath(QStringLiteral("manifests")), 3, [&](const QFileInfo &file, const QString &relative) {
            const QStringList parts = relative.split(u'/');
            if (parts.size() != 4 || file.size() > largestManifest)
                return;
            QFile manifest(file.filePath());
            if (!manifest.open(QIODevice::ReadOnly))
                return;
            QString name = parts[2] + u':' + parts[3];
            if (parts[0] != QLatin1String("registry.ollama.ai"))
                name = parts[0] + u'/' + parts[1] + u'/' + name;
            else if (parts[1] != QLatin1String("library"))
                name = parts[1] + u'/' + name;
            const QJsonArray layers = QJsonDocument::fromJson(manifest.readAll()).object().value("layers").toArray();
            for (const QJsonValue &value : layers) {
                const QJsonObject layer = value.toObject();
                if (layer.value("mediaType").toString() != QLatin1String("application/vnd.ollama.image.model"))
                    continue;
                // Only a digest can name a blob, never a path of its own.
                static const QRegularExpression digest(QStringLiteral("^sha256:([0-9a-f]{64})$"));
                const QRegularExpressionMatch match = digest.match(layer.value("digest").toString());
                if (!match.hasMatch())
                    continue;
                const QString blob = QDir(models).filePath(QStringLiteral("blobs/sha256-") + match.captured(1));
                add(blob, name, QFileInfo(blob).size(), QStringLiteral("Ollama"));
            }
        });
    }

    QList<FoundModel> sorted()
    {
        std::sort(m_models.begin(), m_models.end(), [](const FoundModel &a, const FoundModel &b) {
            if (const int order = a.name.compare(b.name, Qt::CaseInsensitive))
                return order < 0;
            return a.path < b.path;
        });
        return m_models;
    }

private:
    // All parts of a split model together, or -1 when one is missing: the
    // model cannot be loaded without it.
    static qint64 splitSize(const QFileInfo &first, const QString &count)
    {
        const QString pattern = first.fileName();
        const qsizetype at = pattern.size() - QStringLiteral("00001-of-00000.gguf").size();
        qint64 size = 0;
        for (int number = 1; number <= count.toInt(); ++number) {
            QString name = pattern;
            name.replace(at, 5, QStringLiteral("%1").arg(number, 5, 10, QLatin1Char('0')));
            const QFileInfo part(first.dir().filePath(name));
            if (!part.isFile())
                return -1;
            size += part.size();
        }
        return size;
    }

    // A Hugging Face hub cache keeps a repository's files in
    // models--<owner>--<name>/snapshots/<revision>/: named as on the hub,
    // "owner/name/file".
    static QString hubName(const QString &relative)
    {
        QStringList parts = relative.split(u'/');
        if (parts.size() < 4 || !parts[0].startsWith(QLatin1String("models--")) ||
            parts[1] != QLatin1String("snapshots"))
            return relative;
        const QString repository = parts[0].mid(8);
        const qsizetype dashes = repository.indexOf(QLatin1String("--"));
        const QString id = dashes < 0 ? repository : repository.left(dashes) + u'/' + repository.mid(dashes + 2);
        return id + u'/' + parts.mid(3).join(u'/');
    }

    QList<FoundModel> m_models;
    QSet<QString> m_paths;
};

// A folder named by the environment; XDG asks that a relative one be
// ignored.
QString folderFrom(const QProcessEnvironment &environment, const char *variable, const QString &otherwise)
{
    const QString value = environment.value(QLatin1String(variable));
    return QDir::isAbsolutePath(value) ? QDir::cleanPath(value) : otherwise;
}

// XDG_DOWNLOAD_DIR of user-dirs.dirs, when it is the plain "$HOME/…" or
// absolute path the desktop writes; else ~/Downloads.
QString downloadFolder(const QString &home, const QString &configHome)
{
    const QString fallback = QDir(home).filePath(QStringLiteral("Downloads"));
    QFile dirs(QDir(configHome).filePath(QStringLiteral("user-dirs.dirs")));
    if (!dirs.open(QIODevice::ReadOnly | QIODevice::Text))
        return fallback;
    while (!dirs.atEnd()) {
        const QString line = QString::fromUtf8(dirs.readLine()).trimmed();
        if (!line.startsWith(QLatin1String("XDG_DOWNLOAD_DIR=\"")) || !line.endsWith(u'"'))
            continue;
        QString value = line.mid(18).chopped(1);
        if (value.startsWith(QLatin1String("$HOME/")))
            value = QDir(home).filePath(value.mid(6));
        if (value.startsWith(u'/') && !value.contains(u'$') && !value.contains(u'\\'))
            return QDir::cleanPath(value);
        return fallback;
    }
    return fallback;
}

} // namespace

QList<FoundModel> ModelCatalog::find(const QString &home, const QProcessEnvironment &environment)
{
    const QDir homeDir(home);
    const QString cacheHome = folderFrom(environment, "XDG_CACHE_HOME", homeDir.filePath(QStringLiteral(".cache")));
    const QString dataHome =
        folderFrom(environment, "XDG_DATA_HOME", homeDir.filePath(QStringLiteral(".local/share")));
    const QString configHome = folderFrom(environment, "XDG_CONFIG_HOME", homeDir.filePath(QStringLiteral(".config")));
    const QString hfHome = folderFrom(environment, "HF_HOME", QDir(cacheHome).filePath(QStringLiteral("huggingface")));

    Catalog catalog;
    catalog.addFiles(folderFrom(environment, "LLAMA_CACHE", QDir(cacheHome).filePath(QStringLiteral("llama.cpp"))),
                     deepestFolder, QStringLiteral("llama.cpp"));
    catalog.addFiles(folderFrom(environment, "HF_HUB_CACHE", QDir(hfHome).filePath(QStringLiteral("hub"))),
                     deepestFolder, QStringLiteral("Hugging Face"));
    for (const char *folder : {".lmstudio/models", ".cache/lm-studio/models"})
        catalog.addFiles(homeDir.filePath(QLatin1String(folder)), deepestFolder, QStringLiteral("LM Studio"));
    catalog.addFiles(QDir(dataHome).filePath(QStringLiteral("nomic.ai/GPT4All")), deepestFolder,
                     QStringLiteral("GPT4All"));
    // The user's own Ollama, then the one the system service runs.
    catalog.addOllama(folderFrom(environment, "OLLAMA_MODELS", homeDir.filePath(QStringLiteral(".ollama/models"))));
    catalog.addOllama(QStringLiteral("/usr/share/ollama/.ollama/models"));
    // Only the top: a downloads folder holds much besides models.
    catalog.addFiles(downloadFolder(home, configHome), 0, QStringLiteral("Downloads"));
    return catalog.sorted();
}

std::optional<ModelCatalog::FileProblem> ModelCatalog::checkFile(const QString &path)
{
    switch (readHead(path)) {
    case Head::model:
        return std::nullopt;
    case Head::missing:
        return FileProblem::notFound;
    case Head::unreadable:
        return FileProblem::unreadable;
    case Head::other:
        break;
    }
    return FileProblem::notModel;
}

} // namespace fenrow
