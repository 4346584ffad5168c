#include "data/EnlaceSqlite.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>
#include <sqlite3.h>

namespace qvx
{

sqlite3 *EnlaceSqlite(const QSqlDatabase &base)
{
    const QVariant enlace = base.driver()->handle();
    return base.isOpen() && enlace.isValid() ? *static_cast<sqlite3 *const *>(enlace.constData()) : nullptr;
}

bool EsElMismoMotor(const QSqlDatabase &base)
{
    QSqlQuery consulta(base);
    return consulta.exec("SELECT sqlite_source_id()") && consulta.next()
           && consulta.value(0).toString() == QLatin1String(sqlite3_sourceid());
}

} // namespace qvx
