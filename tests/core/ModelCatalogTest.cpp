#include "capture/ModelCatalog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace fenrow {
namespace {

QByteArray model(int size)
{
    return QByteArray("GGUF") + QByteArray(size - 4, '\3');
}

QByteArray ollamaManifest(const QByteArray &modelDigest)
{
    return R"({"schemaVersion":2,"config":{"mediaType":"application/vnd.docker.container.image.v1+json",)"
           R"("digest":"sha256:)" +
           QByteArray(64, 'c') +
           R"("},"layers":[{"mediaType":"application/vnd.ollama.image.model","digest":")" + modelDigest +
           R"("},{"mediaType":"application/vnd.ollama.image.template","digest":"sha256:)" + QByteArray(64, 'd') +
           R"("}]})";
}

class ModelCatalogHome : public ::testing::Test {
protected:
    QString at(const QString &relative) const { return home.filePath(relative); }
    void write(const QString &relative, const QByteArray &bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(at(relative)).absolutePath()));
        QFile file(at(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void link(const QString &target, const QString &relative) const
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(at(relative)).absolutePath()));
        ASSERT_TRUE(QFile::link(target, at(relative)));
    }
    // "name | source | path under home | size", as found. Models of this
    // machine's own system-wide Ollama are left out.
    QStringList found(const QProcessEnvironment &environment = QProcessEnvironment()) const
    {
        QStringList lines;
        for (const FoundModel &found : ModelCatalog::find(home.path(), environment)) {
            if (found.path.startsWith(home.path() + u'/'))
                lines << QStringLiteral("%1 | %2 | %3 | %4")
                             .arg(found.name, found.source, found.path.mid(home.path().size() + 1))
                             .arg(found.size);
        }
        return lines;
    }

    QTemporaryDir home;
};

TEST_F(ModelCatalogHome, EachProgramsFolderIsSearchedAndEveryModelListedOnce)
{
    write(".cache/llama.cpp/ggml-org_SmolLM2-135M-Q8_0.gguf", model(100));
    write(".cache/llama.cpp/ggml-org_SmolLM2-135M-Q8_0.gguf.json", "{}");
    write(".cache/llama.cpp/failed-download.gguf", "<!DOCTYPE html><html>Not found</html>");

    // Two revisions whose file is one blob.
    const QString hub = ".cache/huggingface/hub/models--Qwen--Qwen2.5-0.5B-Instruct-GGUF/";
    write(hub + "blobs/0f3a9c", model(200));
    write(hub + "refs/main", "2b7e");
    link("../../blobs/0f3a9c", hub + "snapshots/1c4d/qwen2.5-0.5b-instruct-q4_0.gguf");
    link("../../blobs/0f3a9c", hub + "snapshots/2b7e/qwen2.5-0.5b-instruct-q4_0.gguf");

    write(".lmstudio/models/lmstudio-community/gemma-3-1B-it-GGUF/gemma-3-1B-it-Q4_K_M.gguf", model(300));
    link("..", ".lmstudio/models/lmstudio-community/again");
    write(".cache/lm-studio/models/bartowski/Big-GGUF/Big-Q4-00001-of-00002.gguf", model(400));
    write(".cache/lm-studio/models/bartowski/Big-GGUF/Big-Q4-00002-of-00002.gguf", model(50));
    // Its second part is still downloading.
    write(".cache/lm-studio/models/bartowski/Big-GGUF/Half-00001-of-00003.gguf", model(400));
    write(".cache/lm-studio/models/bartowski/Big-GGUF/Half-00003-of-00003.gguf", model(50));

    write(".local/share/nomic.ai/GPT4All/Llama-3.2-1B-Instruct-Q4_0.gguf", model(500));
    write(".local/share/nomic.ai/GPT4All/localdocs_v3.db", "SQLite format 3");
    write(".local/share/nomic.ai/GPT4All/short.gguf", "GGU");

    const QString ollama = ".ollama/models/";
    write(ollama + "manifests/registry.ollama.ai/library/llama3.2/1b",
          ollamaManifest("sha256:" + QByteArray(64, 'a')));
    write(ollama + "manifests/hf.co/bartowski/SmolLM2-GGUF/Q8_0", ollamaManifest("sha256:" + QByteArray(64, 'b')));
    write(ollama + "manifests/registry.ollama.ai/library/sneaky/latest", ollamaManifest("sha256:../../../secret"));
    write(ollama + "manifests/registry.ollama.ai/library/garbled/latest", "\x89PNG");
    write(ollama + "blobs/sha256-" + QByteArray(64, 'a'), model(700));
    write(ollama + "blobs/sha256-" + QByteArray(64, 'b'), model(800));
    write(ollama + "blobs/sha256-" + QByteArray(64, 'd'), "{{ .Prompt }}");
    write("secret", model(10));

    write("Downloads/Phi-3-mini-4k-instruct-q4.gguf", model(600));
    write("Downloads/older/deeper.gguf", model(10));

    EXPECT_EQ(found(), QStringList({
                           "bartowski/Big-GGUF/Big-Q4 | LM Studio | "
                           ".cache/lm-studio/models/bartowski/Big-GGUF/Big-Q4-00001-of-00002.gguf | 450",
                           "ggml-org_SmolLM2-135M-Q8_0 | llama.cpp | "
                           ".cache/llama.cpp/ggml-org_SmolLM2-135M-Q8_0.gguf | 100",
                           "hf.co/bartowski/SmolLM2-GGUF:Q8_0 | Ollama | .ollama/models/blobs/sha256-" +
                               QString(64, u'b') + " | 800",
                           "Llama-3.2-1B-Instruct-Q4_0 | GPT4All | "
                           ".local/share/nomic.ai/GPT4All/Llama-3.2-1B-Instruct-Q4_0.gguf | 500",
                           "llama3.2:1b | Ollama | .ollama/models/blobs/sha256-" + QString(64, u'a') + " | 700",
                           "lmstudio-community/gemma-3-1B-it-GGUF/gemma-3-1B-it-Q4_K_M | LM Studio | "
                           ".lmstudio/models/lmstudio-community/gemma-3-1B-it-GGUF/gemma-3-1B-it-Q4_K_M.gguf | 300",
                           "Phi-3-mini-4k-instruct-q4 | Downloads | Downloads/Phi-3-mini-4k-instruct-q4.gguf | 600",
                           "Qwen/Qwen2.5-0.5B-Instruct-GGUF/qwen2.5-0.5b-instruct-q4_0 | Hugging Face | "
                           ".cache/huggingface/hub/models--Qwen--Qwen2.5-0.5B-Instruct-GGUF/snapshots/1c4d/"
                           "qwen2.5-0.5b-instruct-q4_0.gguf | 200",
                       }));
}

TEST_F(ModelCatalogHome, TheEnvironmentMovesThePlacesLooked)
{
    write(".cache/llama.cpp/left-behind.gguf", model(10));
    write("work/llama/in-llama-cache.gguf", model(20));
    write("work/hf/hub/models--unsloth--tiny-GGUF/snapshots/9e/tiny-Q2_K.gguf", model(30));
    write("work/data/nomic.ai/GPT4All/in-gpt4all.gguf", model(40));
    write("work/ollama/manifests/registry.ollama.ai/someone/tiny/latest",
          ollamaManifest("sha256:" + QByteArray(64, 'e')));
    write("work/ollama/blobs/sha256-" + QByteArray(64, 'e'), model(50));
    write("work/config/user-dirs.dirs", "# written by xdg-user-dirs-update\n"
                                        "XDG_DESKTOP_DIR=\"$HOME/Masaüstü\"\n"
                                        "XDG_DOWNLOAD_DIR=\"$HOME/İndirilenler\"\n");
    write(QString::fromUtf8("İndirilenler/downloaded.gguf"), model(60));
    write("Downloads/not-the-downloads-folder.gguf", model(70));

    QProcessEnvironment environment;
    environment.insert("LLAMA_CACHE", at("work/llama"));
    environment.insert("HF_HOME", at("work/hf"));
    environment.insert("XDG_DATA_HOME", at("work/data"));
    environment.insert("OLLAMA_MODELS", at("work/ollama"));
    environment.insert("XDG_CONFIG_HOME", at("work/config"));
    EXPECT_EQ(found(environment),
              QStringList({
                  QString::fromUtf8("downloaded | Downloads | İndirilenler/downloaded.gguf | 60"),
                  "in-gpt4all | GPT4All | work/data/nomic.ai/GPT4All/in-gpt4all.gguf | 40",
                  "in-llama-cache | llama.cpp | work/llama/in-llama-cache.gguf | 20",
                  "someone/tiny:latest | Ollama | work/ollama/blobs/sha256-" + QString(64, u'e') + " | 50",
                  "unsloth/tiny-GGUF/tiny-Q2_K | Hugging Face | "
                  "work/hf/hub/models--unsloth--tiny-GGUF/snapshots/9e/tiny-Q2_K.gguf | 30",
              }));
}

TEST_F(ModelCatalogHome, AFilePickedByHandIsCheckedByItsFirstBytes)
{
    write("model.gguf", model(64));
    write("page.gguf", "<html>");
    write("short.gguf", "GGU");
    link(at("gone.gguf"), "dangling.gguf");
    ASSERT_EQ(mkfifo(QFile::encodeName(at("pipe.gguf")).constData(), 0600), 0);

    EXPECT_EQ(ModelCatalog::checkFile(at("model.gguf")), std::nullopt);
    for (const char *other : {"page.gguf", "short.gguf", "pipe.gguf", ""})
        EXPECT_EQ(ModelCatalog::checkFile(at(other)), ModelCatalog::FileProblem::notModel) << other;
    EXPECT_EQ(ModelCatalog::checkFile(at("missing.gguf")), ModelCatalog::FileProblem::notFound);
    EXPECT_EQ(ModelCatalog::checkFile(at("dangling.gguf")), ModelCatalog::FileProblem::notFound);
    // The kernel refuses reading the start of a process's memory, whoever asks.
    EXPECT_EQ(ModelCatalog::checkFile(QStringLiteral("/proc/self/mem")), ModelCatalog::FileProblem::unreadable);
    if (geteuid() != 0) {
        ASSERT_TRUE(QFile::setPermissions(at("model.gguf"), QFileDevice::WriteOwner));
        EXPECT_EQ(ModelCatalog::checkFile(at("model.gguf")), ModelCatalog::FileProblem::unreadable);
    }
}

} // namespace
} // namespace fenrow
