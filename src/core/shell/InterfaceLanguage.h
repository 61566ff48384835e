#pragma once

#include <QString>
#include <QStringList>

namespace fenrow {

// The one language every string lookup of the process answers in. It comes
// from the "preferences.uiLanguage" setting when that names a supported
// language, otherwise from the first supported language the system prefers,
// otherwise English. Messages are looked up by id (qtTrId).
class InterfaceLanguage {
public:
    static const QStringList &supportedCodes();

    static QString resolve(const QString &preference, const QStringList &preferredLanguages);

    // The code in force, "en" until `apply` runs.
    static QString current();
    // Loads and installs the translations of `code` in place of the previous
    // ones. Needs a QCoreApplication.
    static bool apply(const QString &code);
    // Reads the setting, resolves against the system's languages, applies.
    static QString resolveAndApply();
};

} // namespace fenrow
