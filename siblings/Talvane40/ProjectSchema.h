// ProjectSchema: the tables of a project's database, and their upgrade from a former version.
// docs/formats.md describes them.
#pragma once

#include "runtime/Database.h"

namespace Talvane40 {

// Creates the tables of the current version in an empty database, in the caller's transaction.
void CreateTables(Runtime::Database& database);

// Returns the file's name. Raises 57 if it is missing, no file, or has lost its content.
const std::string& ExistingDatabase(const std::string& file);

// Checks that the database belongs to a project, and upgrades one of a former version in one durable
// transaction. Any number of processes may do so at once: one upgrades, the others wait for it. Raises 57
// with the reason if the database is of another program or of a newer version, or can't be upgraded; then it
// is unchanged. Returns the database.
Runtime::Database& WithCurrentTables(Runtime::Database& database);

}  // namespace Talvane40
