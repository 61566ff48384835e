#pragma once

#include <QList>
#include <QProcessEnvironment>
#include <QString>

#include <optional>

namespace fenrow {

// A language model file found on this computer.
struct FoundModel {
    // Absolute, as found: an Ollama blob, a Hugging Face snapshot link, or
    // the first part of a split model.
    QString path;
    // "owner/repository/file" where a folder tells it, "model:tag" for
    // Ollama, else the file's name; without ".gguf" or a part number.
    QString name;
    // In bytes, all parts of a split model together.
    qint64 size = 0;
    // Where it was found: "llama.cpp", "Hugging Face", "LM Studio",
    // "GPT4All", "Ollama" or "Downloads".
    QString source;
};

// The GGUF models a user already has, in the folders where the programs
// that download them keep them. It only reads: nothing in those folders is
// written, moved or removed.
class ModelCatalog {
public:
    // Looks in llama.cpp's cache, the Hugging Face hub cache, LM Studio's,
    // GPT4All's and Ollama's model folders and the top of the downloads
    // folder, as `environment` moves them from their places under `home`.
    // Each folder is searched to a few levels and a few thousand entries,
    // links followed but never twice into one folder. A file is listed
    // only when it starts as a GGUF file does; a split model only when all
    // its parts are there, by its first; a file reached by two roads once.
    // Sorted by name, case aside.
    static QList<FoundModel> find(const QString &home, const QProcessEnvironment &environment);

    enum class FileProblem { notFound, unreadable, notModel };
    // Nothing when `path` is a GGUF file that can be read; else why not.
    // Only the first four bytes are read.
    static std::optional<FileProblem> checkFile(const QString &path);
};

} // namespace fenrow
