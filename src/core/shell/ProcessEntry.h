#pragma once

class QCoreApplication;

namespace fenrow {

// The first code of every Fenrow process, before any store or window: names
// the application (which places the data and settings folders) and settles
// the interface language.
namespace ProcessEntry {
void prepare(QCoreApplication &application);
}

} // namespace fenrow
