#include "data/EnlaceSqlite.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QSqlResult>
#include <QVariant>
#include <sqlite3.h>

namespace qvx
{

sqlite3 *EnlaceSqlite(const QSqlDatabase &base)
{
    const QVariant enlace = base.driver()->handle();
    return base.isOpen() && enlace.isValid() ? *static_cast<sqlite3 *const *>(enlace.constData()) : nullptr;
}

namespace
{

QVariant ValorDe(sqlite3_stmt *sentencia, int columna)
{
    switch (sqlite3_column_type(sentencia, columna)) {
    case SQLITE_NULL:
        return QVariant(QMetaType::fromType<QString>());
    case SQLITE_INTEGER:
        return static_cast<qlonglong>(sqlite3_column_int64(sentencia, columna));
    case SQLITE_FLOAT:
        return sqlite3_column_double(sentencia, columna);
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char *>(sqlite3_column_blob(sentencia, columna)),
                          sqlite3_column_bytes(sentencia, columna));
    default:
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(sentencia, columna)),
                                 sqlite3_column_bytes(sentencia, columna));
    }
}

} // namespace

QSqlError FilasDe(const QSqlQuery &consulta, std::vector<QVariant> &valores)
{
    auto *sentencia = *static_cast<sqlite3_stmt *const *>(consulta.result()->handle().constData());
    const int columnas = sqlite3_column_count(sentencia);
    int paso = sqlite3_data_count(sentencia) > 0 ? SQLITE_ROW : SQLITE_DONE; // the first one was taken to run it
    for (; paso == SQLITE_ROW; paso = sqlite3_step(sentencia)) {
        if (valores.empty())
            valores.reserve(static_cast<std::size_t>(columnas)); // most queries give one row or none
        for (int i = 0; i < columnas; ++i)
            valores.push_back(ValorDe(sentencia, i));
    }
    if (paso == SQLITE_DONE)
        return {};
    return {{},
            QString::fromUtf8(sqlite3_errmsg(sqlite3_db_handle(sentencia))),
            QSqlError::StatementError,
            QString::number(paso)};
}

bool EsElMismoMotor(const QSqlDatabase &base)
{
    static const bool elMismo = [&] { // a process has one driver
        QSqlQuery consulta(base);
        return consulta.exec("SELECT sqlite_source_id()") && consulta.next()
               && consulta.value(0).toString() == QLatin1String(sqlite3_sourceid());
    }();
    return elMismo;
}

} // namespace qvx
