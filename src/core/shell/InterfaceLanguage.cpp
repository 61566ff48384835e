#include "InterfaceLanguage.h"

#include "AppPreferences.h"
#include "SettingsFile.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace fenrow {

namespace {

QString &currentCode()
{
    static QString code = QStringLiteral("en");
    return code;
}

std::unique_ptr<QTranslator> &installedTranslator()
{
    static std::unique_ptr<QTranslator> translator;
    return translator;
}

} // namespace

const QStringList &InterfaceLanguage::supportedCodes()
{
    static const QStringList codes{QStringLiteral("en"), QStringLiteral("tr"), QStringLiteral("de"),
                                   QStringLiteral("es"), QStringLiteral("fr")};
    return codes;
}

QString InterfaceLanguage::resolve(const QString &preference, const QStringList &preferredLanguages)
{
    if (supportedCodes().contains(preference))
        return preference;
    for (const QString &language : preferredLanguages) {
        // "pt-BR", "de_DE" and "de" all name their language the same way.
        const QString code = QLocale(language).name().section(QLatin1Char('_'), 0, 0);
        if (supportedCodes().contains(code))
            return code;
    }
    return QStringLiteral("en");
}

QString InterfaceLanguage::current()
{
    return currentCode();
}

bool InterfaceLanguage::apply(const QString &code)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral(":/i18n/fenrow_%1.qm").arg(code)))
        return false;
    if (auto &previous = installedTranslator())
        QCoreApplication::removeTranslator(previous.get());
    QCoreApplication::installTranslator(translator.get());
    installedTranslator() = std::move(translator);
    currentCode() = code;
    return true;
}

QString InterfaceLanguage::resolveAndApply()
{
    const QString preference = AppPreferences(SettingsFile::open()).uiLanguageRaw();
    const QString code = resolve(preference, QLocale::system().uiLanguages());
    apply(code);
    return currentCode();
}

} // namespace fenrow
