#include "InferenceTypes.h"

#include "CaptureLog.h"

namespace fenrow {

QString engineErrorDescription(EngineError error)
{
    switch (error) {
    case EngineError::modelUnavailable:
        return QStringLiteral("the language model is unavailable");
    case EngineError::invalidResponse:
        return QStringLiteral("the language model gave an answer that cannot be used");
    case EngineError::generationFailed:
        return QStringLiteral("the language model failed to answer");
    }
    return {};
}

QString contentLanguage(const QLocale &locale)
{
    if (locale.language() == QLocale::C || locale.language() == QLocale::AnyLanguage)
        return QStringLiteral("en");
    const QString code = QLocale::languageToCode(locale.language());
    return code.isEmpty() ? QStringLiteral("en") : code;
}

} // namespace fenrow

Q_LOGGING_CATEGORY(fenrowCaptureLog, "fenrow.capture")
