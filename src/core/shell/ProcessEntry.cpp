#include "ProcessEntry.h"

#include "InterfaceLanguage.h"

#include <QCoreApplication>

namespace fenrow::ProcessEntry {

void prepare(QCoreApplication &application)
{
    // No organisation name: the folders are ~/.local/share/fenrow and
    // ~/.config/fenrow, not nested one level deeper.
    application.setOrganizationName(QString());
    application.setApplicationName(QStringLiteral("fenrow"));
    application.setApplicationVersion(QStringLiteral(FENROW_VERSION));
    InterfaceLanguage::resolveAndApply();
}

} // namespace fenrow::ProcessEntry
