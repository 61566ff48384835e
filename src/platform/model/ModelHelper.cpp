#include "ModelHelper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QProcess>
#include <QQueue>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

#include <condition_variable>
#include <mutex>

Q_LOGGING_CATEGORY(fenrowModelLog, "fenrow.model")

namespace fenrow {

namespace {

constexpr int minimumNodeMajor = 20;
constexpr qsizetype stderrKept = 4096;
const QString scriptName = QStringLiteral("fenrow-model-helper.mjs");

bool isSettled(ModelStatus::State state)
{
    return state == ModelStatus::State::Ready || state == ModelStatus::State::Failed
        || state == ModelStatus::State::Unavailable;
}

QString seconds(std::chrono::milliseconds limit)
{
    return QString::number(limit.count() / 1000.0, 'g', 4);
}

} // namespace

// What a caller waits on; finished once, from the helper's thread.
struct PendingCall {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    HelperReply reply;

    void finish(HelperReply answer)
    {
        {
            std::lock_guard lock(mutex);
            if (done)
                return;
            done = true;
            reply = std::move(answer);
        }
        finished.notify_all();
    }
};

namespace {

HelperReply failure(const QString &text)
{
    HelperReply reply;
    reply.failure = text;
    return reply;
}

} // namespace

// Owns the helper process; lives on ModelHelper's thread, and everything in
// it runs there.
class ModelHelperWorker : public QObject {
public:
    ModelHelperWorker(ModelHelperSettings settings, ModelHelper *owner) : m_settings(std::move(settings)), m_owner(owner) {}

    void submit(const QJsonObject &request, const std::shared_ptr<PendingCall> &pending)
    {
        if (m_status.state == ModelStatus::State::Failed || m_status.state == ModelStatus::State::Unavailable) {
            pending->finish(failure(m_status.message));
            return;
        }
        const qint64 id = m_nextID++;
        QJsonObject line = request;
        line.insert(QStringLiteral("id"), id);
        m_waiting.enqueue({id, line, pending});
        if (!m_process)
            launch();
        else
            sendNext();
    }

    void cancel(const std::shared_ptr<PendingCall> &pending)
    {
        if (m_inFlight.pending == pending) {
            write(QJsonObject{{QStringLiteral("cancel"), m_inFlight.id}});
            endInFlight(failure(QStringLiteral("cancelled")));
            return;
        }
        for (qsizetype i = 0; i < m_waiting.size(); ++i) {
            if (m_waiting.at(i).pending == pending) {
                m_waiting.removeAt(i);
                pending->finish(failure(QStringLiteral("cancelled")));
                return;
            }
        }
    }

    void start()
    {
        if (!m_process && !isSettled(m_status.state))
            launch();
    }

    void restart()
    {
        stop(QStringLiteral("the model helper was restarted"), true);
        setStatus({});
    }

    void shutdown()
    {
        if (m_process) {
            m_process->disconnect(this);
            // Closing its input is how the helper learns that Fenrow is gone.
            m_process->closeWriteChannel();
            if (!m_process->waitForFinished(3000))
                m_process->kill();
            m_process = nullptr;
        }
        // With helpers stopped earlier that are still on their way out.
        for (QProcess *process : findChildren<QProcess *>()) {
            process->disconnect();
            if (process->state() != QProcess::NotRunning) {
                process->kill();
                process->waitForFinished(3000);
            }
            delete process;
        }
        failAll(QStringLiteral("the model helper was shut down"));
        delete m_loadTimer;
        delete m_callTimer;
        m_loadTimer = m_callTimer = nullptr;
    }

private:
    struct Call {
        qint64 id = 0;
        QJsonObject line;
        std::shared_ptr<PendingCall> pending;
    };

    void launch()
    {
        QString reason;
        const QString node = ModelHelper::findNode(m_settings.nodeProgram, &reason);
        if (node.isEmpty()) {
            becomeSettled(ModelStatus::State::Unavailable, reason);
            return;
        }
        const QString script = m_settings.helperScript.isEmpty() ? ModelHelper::findHelperScript() : m_settings.helperScript;
        if (script.isEmpty() || !QFileInfo::exists(script)) {
            becomeSettled(ModelStatus::State::Unavailable,
                          QStringLiteral("The model helper (%1) is not installed.").arg(scriptName));
            return;
        }
        if (!QFileInfo::exists(QFileInfo(script).dir().filePath(QStringLiteral("node_modules/node-llama-cpp/package.json")))) {
            becomeSettled(ModelStatus::State::Unavailable,
                          QStringLiteral("The model helper's packages are not installed in %1 (scripts/setup.sh installs them).")
                              .arg(QFileInfo(script).absolutePath()));
            return;
        }
        if (m_settings.modelPath.isEmpty()) {
            becomeSettled(ModelStatus::State::Unavailable, QStringLiteral("No language model is chosen."));
            return;
        }

        QStringList arguments{script, QStringLiteral("--model"), m_settings.modelPath};
        if (m_settings.threads > 0)
            arguments << QStringLiteral("--threads") << QString::number(m_settings.threads);
        if (m_settings.contextSize > 0)
            arguments << QStringLiteral("--context-size") << QString::number(m_settings.contextSize);
        if (m_settings.echo)
            arguments << QStringLiteral("--echo");

        m_process = new QProcess(this);
        m_stdout.clear();
        m_stderr.clear();
        QProcess *process = m_process;
        connect(process, &QProcess::readyReadStandardOutput, this, [this, process] { readOutput(process); });
        connect(process, &QProcess::readyReadStandardError, this, [this, process] {
            m_stderr += process->readAllStandardError();
            if (m_stderr.size() > stderrKept)
                m_stderr = m_stderr.right(stderrKept);
        });
        connect(process, &QProcess::finished, this, [this, process](int code, QProcess::ExitStatus exitStatus) {
            ended(process, exitStatus == QProcess::CrashExit
                               ? QStringLiteral("the model helper crashed or was killed")
                               : QStringLiteral("the model helper stopped (exit code %1)").arg(code));
        });
        connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                ended(process, QStringLiteral("the model helper could not be started: %1").arg(process->errorString()));
        });

        if (!m_loadTimer) {
            m_loadTimer = new QTimer(this);
            m_loadTimer->setSingleShot(true);
            connect(m_loadTimer, &QTimer::timeout, this, [this] {
                stop(QStringLiteral("the model did not load within %1 s").arg(seconds(m_settings.loadTimeLimit)), true);
            });
        }
        m_loadTimer->start(m_settings.loadTimeLimit);
        ModelStatus loading;
        loading.state = ModelStatus::State::Loading;
        setStatus(loading);
        qCInfo(fenrowModelLog).noquote() << "starting the model helper for" << m_settings.modelPath;
        process->start(node, arguments);
    }

    void readOutput(QProcess *process)
    {
        if (process != m_process)
            return;
        m_stdout += process->readAllStandardOutput();
        qsizetype end;
        while (m_process == process && (end = m_stdout.indexOf('\n')) >= 0) {
            const QByteArray line = m_stdout.left(end);
            m_stdout.remove(0, end + 1);
            handleLine(line);
        }
    }

    void handleLine(const QByteArray &line)
    {
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(line, &error);
        if (error.error != QJsonParseError::NoError || !document.isObject()) {
            stop(QStringLiteral("the model helper wrote something that is not its protocol: %1")
                     .arg(QString::fromUtf8(line.left(200))),
                 false);
            return;
        }
        const QJsonObject message = document.object();
        const QString event = message.value(QStringLiteral("event")).toString();
        if (event == QStringLiteral("loading")) {
            ModelStatus loading;
            loading.state = ModelStatus::State::Loading;
            loading.progress = message.value(QStringLiteral("progress")).toDouble();
            setStatus(loading);
        } else if (event == QStringLiteral("ready")) {
            m_loadTimer->stop();
            const QJsonObject model = message.value(QStringLiteral("model")).toObject();
            ModelStatus ready;
            ready.state = ModelStatus::State::Ready;
            ready.progress = 1;
            ready.model.name = model.value(QStringLiteral("name")).toString();
            ready.model.path = model.value(QStringLiteral("path")).toString();
            ready.model.architecture = model.value(QStringLiteral("architecture")).toString();
            ready.model.size = model.value(QStringLiteral("size")).toInteger();
            ready.model.contextSize = model.value(QStringLiteral("contextSize")).toInt();
            ready.model.threads = model.value(QStringLiteral("threads")).toInt();
            ready.model.processID = m_process->processId();
            setStatus(ready);
            qCInfo(fenrowModelLog).noquote() << "model ready:" << ready.model.name;
            sendNext();
        } else if (event == QStringLiteral("failed")) {
            becomeSettled(ModelStatus::State::Failed, message.value(QStringLiteral("message")).toString());
            stop(QString(), true);
        } else if (message.contains(QStringLiteral("id"))) {
            const qint64 id = message.value(QStringLiteral("id")).toInteger();
            if (m_inFlight.pending && id == m_inFlight.id) {
                if (message.contains(QStringLiteral("progress")))
                    return;
                if (message.contains(QStringLiteral("error")))
                    endInFlight(failure(message.value(QStringLiteral("error")).toString()));
                else
                    endInFlight({true, message, {}});
            }
            // Else the answer to a cancelled call, or progress: nobody waits.
        } else {
            stop(QStringLiteral("the model helper wrote something that is not its protocol: %1")
                     .arg(QString::fromUtf8(line.left(200))),
                 false);
        }
    }

    // One request at a time goes to the helper, so that each call's time
    // limit counts its own generation only.
    void sendNext()
    {
        if (m_inFlight.pending || m_waiting.isEmpty() || m_status.state != ModelStatus::State::Ready)
            return;
        m_inFlight = m_waiting.dequeue();
        if (!m_callTimer) {
            m_callTimer = new QTimer(this);
            m_callTimer->setSingleShot(true);
            connect(m_callTimer, &QTimer::timeout, this, [this] {
                stop(QStringLiteral("the model gave no answer within %1 s; its helper was stopped")
                         .arg(seconds(m_settings.callTimeLimit)),
                     false);
            });
        }
        m_callTimer->start(m_settings.callTimeLimit);
        write(m_inFlight.line);
        setAnswering(true);
    }

    void write(const QJsonObject &line)
    {
        if (m_process)
            m_process->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    }

    void endInFlight(const HelperReply &reply)
    {
        if (m_inFlight.pending)
            endInFlightWithoutNext(reply);
        sendNext();
    }

    // The process is gone (or going): what was sent to it fails; what still
    // waits goes to a fresh helper unless `failWaiting`.
    void stop(const QString &why, bool failWaiting)
    {
        const bool wasLoading = m_status.state == ModelStatus::State::Loading;
        if (m_process) {
            QProcess *process = std::exchange(m_process, nullptr);
            process->disconnect(this);
            connect(process, &QProcess::finished, process, &QObject::deleteLater);
            if (process->state() == QProcess::NotRunning)
                process->deleteLater();
            else
                process->kill();
        }
        if (m_loadTimer)
            m_loadTimer->stop();
        if (!why.isEmpty())
            qCWarning(fenrowModelLog).noquote() << why;
        if (m_inFlight.pending)
            endInFlightWithoutNext(failure(why));
        // A helper that dies while loading would die again: do not loop.
        if (failWaiting || wasLoading)
            failAll(why);
        if (m_status.state != ModelStatus::State::Failed && m_status.state != ModelStatus::State::Unavailable) {
            ModelStatus idle;
            idle.message = why;
            setStatus(idle);
        }
        if (!m_waiting.isEmpty())
            launch();
    }

    void endInFlightWithoutNext(const HelperReply &reply)
    {
        if (m_callTimer)
            m_callTimer->stop();
        const Call call = std::exchange(m_inFlight, {});
        call.pending->finish(reply);
        setAnswering(false);
    }

    void setAnswering(bool answering)
    {
        if (m_status.answering == answering)
            return;
        ModelStatus changed = m_status;
        changed.answering = answering;
        setStatus(changed);
    }

    void ended(QProcess *process, const QString &how)
    {
        if (process != m_process)
            return;
        // Its last words on stderr say more than an exit code.
        const QString last = QString::fromUtf8(m_stderr).trimmed().split(QLatin1Char('\n')).constLast().trimmed();
        stop(last.isEmpty() ? how : QStringLiteral("%1: %2").arg(how, last), false);
    }

    void becomeSettled(ModelStatus::State state, const QString &message)
    {
        ModelStatus settled;
        settled.state = state;
        settled.message = message;
        setStatus(settled);
        qCWarning(fenrowModelLog).noquote() << message;
        failAll(message);
    }

    void failAll(const QString &why)
    {
        if (m_inFlight.pending)
            endInFlightWithoutNext(failure(why));
        while (!m_waiting.isEmpty())
            m_waiting.dequeue().pending->finish(failure(why));
    }

    void setStatus(const ModelStatus &status)
    {
        m_status = status;
        m_owner->publish(status);
    }

    ModelHelperSettings m_settings;
    ModelHelper *m_owner;
    QProcess *m_process = nullptr;
    QByteArray m_stdout;
    QByteArray m_stderr;
    QTimer *m_loadTimer = nullptr;
    QTimer *m_callTimer = nullptr;
    QQueue<Call> m_waiting;
    Call m_inFlight;
    qint64 m_nextID = 1;
    ModelStatus m_status;
};

ModelHelper::ModelHelper(ModelHelperSettings settings, QObject *parent)
    : QObject(parent), m_thread(new QThread), m_worker(new ModelHelperWorker(std::move(settings), this))
{
    qRegisterMetaType<fenrow::ModelStatus>();
    m_thread->setObjectName(QStringLiteral("model helper"));
    m_worker->moveToThread(m_thread);
    m_thread->start();
}

ModelHelper::~ModelHelper()
{
    QMetaObject::invokeMethod(m_worker, [worker = m_worker] { worker->shutdown(); }, Qt::BlockingQueuedConnection);
    m_thread->quit();
    m_thread->wait();
    delete m_worker;
    delete m_thread;
}

void ModelHelper::start()
{
    QMetaObject::invokeMethod(m_worker, [worker = m_worker] { worker->start(); }, Qt::QueuedConnection);
}

void ModelHelper::restart()
{
    QMetaObject::invokeMethod(m_worker, [worker = m_worker] { worker->restart(); }, Qt::BlockingQueuedConnection);
}

ModelStatus ModelHelper::status() const
{
    QMutexLocker lock(&m_statusMutex);
    return m_status;
}

void ModelHelper::publish(const ModelStatus &status)
{
    {
        QMutexLocker lock(&m_statusMutex);
        m_status = status;
        ++m_statusVersion;
        m_statusSettled.wakeAll();
    }
    emit statusChanged(status);
}

ModelStatus ModelHelper::waitUntilLoaded(std::chrono::milliseconds limit) const
{
    const_cast<ModelHelper *>(this)->start();
    QDeadlineTimer deadline(limit);
    QMutexLocker lock(&m_statusMutex);
    const quint64 startVersion = m_statusVersion;
    // Idle counts as an end only once the start has been seen: the helper
    // then stopped while loading.
    while (!isSettled(m_status.state)
           && !(m_status.state == ModelStatus::State::Idle && m_statusVersion > startVersion && !m_status.message.isEmpty())) {
        if (!m_statusSettled.wait(&m_statusMutex, deadline))
            break;
    }
    return m_status;
}

HelperReply ModelHelper::request(const QJsonObject &request, const std::atomic_bool *cancel) const
{
    auto pending = std::make_shared<PendingCall>();
    QMetaObject::invokeMethod(m_worker, [worker = m_worker, request, pending] { worker->submit(request, pending); },
                              Qt::QueuedConnection);
    std::unique_lock lock(pending->mutex);
    bool cancelSent = false;
    while (!pending->done) {
        if (!cancel || cancelSent) {
            pending->finished.wait(lock);
            continue;
        }
        // A flag cannot wake a condition variable: look at it often.
        pending->finished.wait_for(lock, std::chrono::milliseconds(20));
        if (!pending->done && cancel->load()) {
            cancelSent = true;
            QMetaObject::invokeMethod(m_worker, [worker = m_worker, pending] { worker->cancel(pending); },
                                      Qt::QueuedConnection);
        }
    }
    return pending->reply;
}

GuidedAnswer ModelHelper::generate(const GuidedRequest &guided) const
{
    const HelperReply reply = request(QJsonObject{{QStringLiteral("instruction"), guided.instruction},
                                                  {QStringLiteral("prompt"), guided.prompt},
                                                  {QStringLiteral("schema"), guided.schema},
                                                  {QStringLiteral("temperature"), guided.temperature}},
                                      guided.cancel.flag());
    if (!reply.ok)
        return GuidedAnswer::failed(reply.failure);
    const QJsonValue record = reply.answer.value(QStringLiteral("record"));
    if (!record.isObject())
        return GuidedAnswer::failed(QStringLiteral("the model helper's answer has no record"));
    return GuidedAnswer::filled(record.toObject());
}

ModelTrial ModelHelper::tryModel(const std::atomic_bool *cancel) const
{
    const HelperReply reply = request(QJsonObject{{QStringLiteral("try"), true}}, cancel);
    ModelTrial trial;
    trial.ok = reply.ok;
    trial.failure = reply.failure;
    trial.tokens = reply.answer.value(QStringLiteral("tokens")).toInt();
    trial.seconds = reply.answer.value(QStringLiteral("seconds")).toDouble();
    trial.firstTokenSeconds = reply.answer.value(QStringLiteral("firstTokenSeconds")).toDouble();
    trial.tokensPerSecond = reply.answer.value(QStringLiteral("tokensPerSecond")).toDouble();
    trial.text = reply.answer.value(QStringLiteral("text")).toString();
    return trial;
}

QString ModelHelper::findNode(const QString &program, QString *reason)
{
    const QString needed = QStringLiteral("Node.js %1 or newer is needed for the language model").arg(minimumNodeMajor);
    QString node = program;
    if (node.isEmpty())
        node = QStandardPaths::findExecutable(QStringLiteral("node"));
    if (node.isEmpty())
        node = QStandardPaths::findExecutable(QStringLiteral("nodejs"));
    if (node.isEmpty() || !QFileInfo(node).isExecutable()) {
        if (reason)
            *reason = needed + QStringLiteral("; it is not installed.");
        return {};
    }
    QProcess version;
    version.start(node, {QStringLiteral("--version")});
    if (!version.waitForFinished(10000) || version.exitStatus() != QProcess::NormalExit || version.exitCode() != 0) {
        version.kill();
        version.waitForFinished(1000);
        if (reason)
            *reason = needed + QStringLiteral("; %1 does not run.").arg(node);
        return {};
    }
    const QString text = QString::fromUtf8(version.readAllStandardOutput()).trimmed();
    static const QRegularExpression versionPattern(QStringLiteral("^v(\\d+)\\."));
    const QRegularExpressionMatch match = versionPattern.match(text);
    if (!match.hasMatch() || match.captured(1).toInt() < minimumNodeMajor) {
        if (reason)
            *reason = needed + QStringLiteral("; this computer has %1.").arg(text.isEmpty() ? QStringLiteral("an unknown version") : text);
        return {};
    }
    return node;
}

QString ModelHelper::findHelperScript()
{
    const QStringList candidates{
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../share/fenrow/model-helper/") + scriptName),
        QStringLiteral(FENROW_MODEL_HELPER_SOURCE_DIR "/") + scriptName,
    };
    for (const QString &candidate : candidates) {
        if (QFileInfo::exists(candidate))
            return QFileInfo(candidate).canonicalFilePath();
    }
    return {};
}

} // namespace fenrow
