#pragma once

#include "capture/GuidedGenerator.h"

#include <QJsonObject>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QWaitCondition>

#include <atomic>
#include <chrono>
#include <memory>

class QThread;

namespace fenrow {

class ModelHelperWorker;

// How to run the model helper (helpers/model/fenrow-model-helper.mjs).
struct ModelHelperSettings {
    // The user's GGUF file.
    QString modelPath;
    // Empty: `node` (or `nodejs`) on PATH.
    QString nodeProgram;
    // Empty: found by ModelHelper::findHelperScript().
    QString helperScript;
    // 0: llama.cpp's choice (all cores). On a machine busy with other work,
    // fewer threads can be much faster: its threads wait for each other.
    int threads = 0;
    // 0: the model's own context length.
    int contextSize = 0;
    // The helper answers with what it was given instead of generating.
    bool echo = false;
    // From the moment a request reaches the ready helper to its answer;
    // past it the helper is stopped and the call fails.
    std::chrono::milliseconds callTimeLimit{std::chrono::minutes(2)};
    // From the helper's start until the model is loaded.
    std::chrono::milliseconds loadTimeLimit{std::chrono::minutes(5)};
};

struct ModelInfo {
    QString name;
    QString path;
    QString architecture;
    qint64 size = 0;
    int contextSize = 0;
    int threads = 0;
    // The helper process that holds it.
    qint64 processID = 0;
};

struct ModelStatus {
    enum class State {
        // Nothing asked yet, or the helper stopped and starts again on the
        // next call.
        Idle,
        Loading,
        Ready,
        // This model cannot be used (not a model, no such file): calls fail
        // at once with `message` until the helper is restarted.
        Failed,
        // No Node.js 20, or the helper or its packages are missing.
        Unavailable,
    };
    State state = State::Idle;
    // A request is with the model now.
    bool answering = false;
    double progress = 0;
    QString message;
    ModelInfo model;
};

// One answer of the helper, or why there is none.
struct HelperReply {
    bool ok = false;
    QJsonObject answer;
    QString failure;
};

// The result of the settings' "Try it".
struct ModelTrial {
    bool ok = false;
    QString failure;
    int tokens = 0;
    double seconds = 0;
    double firstTokenSeconds = 0;
    double tokensPerSecond = 0;
    QString text;
};

// The user's language model, run by a Node.js helper process that loads it
// once with llama.cpp and stays warm. The process is started on first use
// and lives on a thread of its own, so `generate` blocks only its caller and
// may be called from any number of worker threads at once (the helper
// answers one request at a time, in order).
//
// Whatever happens to the helper (it crashes, is killed, hangs past the
// call's time limit, writes something that is not its protocol) the calls
// waiting on it fail with a description, and the next call starts a fresh
// helper. A model file that the helper says is unusable stays failed until
// restart(); another model is another ModelHelper.
class ModelHelper : public QObject, public GuidedGenerator {
    Q_OBJECT

public:
    explicit ModelHelper(ModelHelperSettings settings, QObject *parent = nullptr);
    ~ModelHelper() override;

    // Starts the helper and the loading of the model if not yet done;
    // returns at once.
    void start();
    // Stops the helper (failing what waits on it) and forgets a failure, so
    // that the next call starts afresh.
    void restart();
    ModelStatus status() const;
    // Starts if needed and waits until the model is ready or failed.
    ModelStatus waitUntilLoaded(std::chrono::milliseconds limit) const;

    // The request's `cancel` is watched while the call waits: once set, the
    // call ends with the failure "cancelled" and the helper drops the request.
    GuidedAnswer generate(const GuidedRequest &request) const override;
    ModelTrial tryModel(const std::atomic_bool *cancel = nullptr) const;

    // One raw request of the protocol (the id is added); the answer as the
    // helper wrote it.
    HelperReply request(const QJsonObject &request, const std::atomic_bool *cancel = nullptr) const;

    // The Node.js program if it is version 20 or newer; else empty, and
    // `reason` says why.
    static QString findNode(const QString &program, QString *reason);
    // The helper script beside the installed program
    // (../share/fenrow/model-helper), else in the source tree.
    static QString findHelperScript();

signals:
    // From the helper's thread; connect with a queued connection (the
    // default for receivers on other threads).
    void statusChanged(const fenrow::ModelStatus &status);

private:
    friend class ModelHelperWorker;
    void publish(const ModelStatus &status);

    QThread *m_thread = nullptr;
    ModelHelperWorker *m_worker = nullptr;
    mutable QMutex m_statusMutex;
    mutable QWaitCondition m_statusSettled;
    quint64 m_statusVersion = 0;
    ModelStatus m_status;
};

} // namespace fenrow
