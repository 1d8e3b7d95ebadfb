// ProjectSchema: the tables of a project's database, and their upgrade from a former version.
// docs/formats.md describes them.
#pragma once

#include "runtime/Database.h"

namespace Talvane40 {

// Creates the tables of the current version in an empty database, in the caller's transaction.
void CreateTables(Runtime::Database& database);

// Checks that the database belongs to a project, and upgrades one of a former version in one durable
// transaction. Any number of processes may do so at once: one upgrades, the others wait for it. Raises 57
// with the reason if the database is of another program or of a newer version, or can't be upgraded; then it
// is unchanged.
void RequireCurrentTables(Runtime::Database& database);

}  // namespace Talvane40
