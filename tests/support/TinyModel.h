#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// The language model of the tests and benchmarks: two llama layers of
// random weights over GPT-2's vocabulary, written by
// helpers/model/test/make-tiny-model.mjs (needs FENROW_MODEL_HELPER_DIR).
// Its answers mean nothing; that they come, in the shape asked for, does.
namespace fenrow::testing {

// Written once per process; empty, with the reason in `error`, when it
// cannot be.
inline QString tinyModel(QString *error = nullptr)
{
    static QTemporaryDir folder;
    static QString path;
    static QString problem;
    if (path.isEmpty() && problem.isEmpty()) {
        const QString target = folder.filePath(QStringLiteral("tiny.gguf"));
        QProcess maker;
        maker.start(QStringLiteral("node"),
                    {QStringLiteral(FENROW_MODEL_HELPER_DIR "/test/make-tiny-model.mjs"), target});
        if (!maker.waitForFinished(60000))
            problem = QStringLiteral("make-tiny-model.mjs did not finish: ") + maker.errorString();
        else if (maker.exitCode() != 0)
            problem = QString::fromUtf8(maker.readAllStandardError());
        else
            path = target;
    }
    if (error)
        *error = problem;
    return path;
}

} // namespace fenrow::testing
