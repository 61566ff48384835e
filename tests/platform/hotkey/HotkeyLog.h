#pragma once

#include <QLoggingCategory>
#include <QStringList>

#include <gtest/gtest.h>

namespace fenrow::testing {

// Keeps the error lines logged under "fenrow.hotkey" while it lives.
class HotkeyLog {
public:
    HotkeyLog()
    {
        messages().clear();
        m_previous = qInstallMessageHandler(&HotkeyLog::keep);
        previous() = m_previous;
    }
    ~HotkeyLog() { qInstallMessageHandler(m_previous); }

    static QStringList &messages()
    {
        static QStringList kept;
        return kept;
    }

private:
    static void keep(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (QByteArrayView(context.category) == "fenrow.hotkey" && type == QtCriticalMsg)
            messages() << message;
        else if (previous())
            previous()(type, context, message);
    }
    static QtMessageHandler &previous()
    {
        static QtMessageHandler handler = nullptr;
        return handler;
    }

    QtMessageHandler m_previous = nullptr;
};

} // namespace fenrow::testing
