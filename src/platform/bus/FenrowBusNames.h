#pragma once

#include <QString>

namespace fenrow::FenrowBusNames {

// Where the running Fenrow answers on the session bus; the interface is
// described in studio.tarnwick.Fenrow.xml beside this file.
inline const QString service = QStringLiteral("studio.tarnwick.Fenrow");
inline const QString path = QStringLiteral("/studio/tarnwick/Fenrow");
inline const QString interface = QStringLiteral("studio.tarnwick.Fenrow");

inline const QString notFoundError = QStringLiteral("studio.tarnwick.Fenrow.Error.NotFound");
inline const QString otherStoreError = QStringLiteral("studio.tarnwick.Fenrow.Error.OtherStore");

} // namespace fenrow::FenrowBusNames
