#pragma once

#include <QString>

namespace fenrow {

class SqliteConnection;

// The database layout and its upgrades. The version lives in
// PRAGMA user_version; each step brings the schema up by one version and all
// pending steps run inside one transaction, so an upgrade lands whole or not
// at all.
namespace StoreSchema {

constexpr int currentVersion = 1;

enum class Check { ready, needsUpgrade, foreign, newer };

// Reads the file without writing: whether it is ours, and how old.
Check inspect(SqliteConnection &connection, int *version, QString *error);
bool upgrade(SqliteConnection &connection, int fromVersion, QString *error);

} // namespace StoreSchema

} // namespace fenrow
