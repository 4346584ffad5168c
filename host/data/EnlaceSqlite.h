#pragma once

#include <QSqlError>
#include <vector>

class QSqlDatabase;
class QSqlQuery;
class QVariant;
struct sqlite3;

// The embedded engine by its own name, for what no statement does. It is the library that the toolkit's driver stands
// on.
namespace qvx
{

// Of an open database of the embedded engine; null when it is closed.
sqlite3 *EnlaceSqlite(const QSqlDatabase &base);
// The rows of a query that ran, one behind the other, each value as the driver gives it. That one makes each text
// twice, and keeps a row for itself. An error without a type when all came.
QSqlError FilasDe(const QSqlQuery &consulta, std::vector<QVariant> &valores);
// Whether the driver stands on the engine that is called here: another copy of it would not know the handle.
bool EsElMismoMotor(const QSqlDatabase &base);

} // namespace qvx
