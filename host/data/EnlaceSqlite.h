#pragma once

class QSqlDatabase;
struct sqlite3;

// The embedded engine by its own name, for what no statement does. It is the library that the toolkit's driver stands
// on.
namespace qvx
{

// Of an open database of the embedded engine; null when it is closed.
sqlite3 *EnlaceSqlite(const QSqlDatabase &base);
// Whether the driver stands on the engine that is called here: another copy of it would not know the handle.
bool EsElMismoMotor(const QSqlDatabase &base);

} // namespace qvx
