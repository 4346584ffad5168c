#include "data/BaseAbierta.h"

#include "data/EnlaceSqlite.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <QVariant>
#include <sqlite3.h>

namespace qvx
{

BaseAbierta::BaseAbierta(const QString &controlador, const std::function<void(QSqlDatabase &)> &preparar,
                         Rechazo rechazar_)
    : base(QSqlDatabase::addDatabase(controlador, QUuid::createUuid().toString())), rechazar(std::move(rechazar_))
{
    preparar(base);
    Abrir();
}

BaseAbierta::BaseAbierta(std::unique_ptr<QSqlDriver> controlador, Rechazo rechazar_)
    : base(QSqlDatabase::addDatabase(controlador.release(), QUuid::createUuid().toString()))
    , rechazar(std::move(rechazar_))
{
    Abrir();
}

void BaseAbierta::Abrir()
{
    if (base.open())
        return;
    const QSqlError error = base.lastError();
    Soltar(base);
    rechazar(error);
}

BaseAbierta::~BaseAbierta()
{
    if (base.isValid())
        Soltar(base);
}

void BaseAbierta::Soltar(QSqlDatabase &base)
{
    const QString nombre = base.connectionName();
    base.close();
    base = QSqlDatabase();
    QSqlDatabase::removeDatabase(nombre);
}

void BaseAbierta::Ejecutar(const QString &sql)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        rechazar(consulta.lastError());
}

QString BaseAbierta::Valor(const QString &sql)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        rechazar(consulta.lastError());
    return consulta.next() ? consulta.value(0).toString() : QString();
}

QList<QVariantList> BaseAbierta::Filas(const QString &sql)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        rechazar(consulta.lastError());
    QList<QVariantList> filas;
    while (consulta.next()) {
        QVariantList fila;
        for (int i = 0; i < consulta.record().count(); ++i)
            fila.append(consulta.value(i));
        filas.append(fila);
    }
    return filas;
}

// By pages, so that it also takes a database in which some can no longer be read.
void BaseAbierta::ReemplazarPor(const BaseAbierta &origen)
{
    if (!EsElMismoMotor(base))
        rechazar(QSqlError({}, "otra copia del motor", QSqlError::ConnectionError));
    sqlite3 *destino = EnlaceSqlite(base);
    sqlite3_backup *paso = sqlite3_backup_init(destino, "main", EnlaceSqlite(origen.base), "main");
    if (paso) {
        sqlite3_backup_step(paso, -1);
        sqlite3_backup_finish(paso); // gives the step's error, and leaves it with the connection
    }
    if (sqlite3_errcode(destino) != SQLITE_OK)
        rechazar(QSqlError({}, QString::fromUtf8(sqlite3_errmsg(destino)), QSqlError::StatementError,
                           QString::number(sqlite3_extended_errcode(destino))));
}

QSqlDatabase BaseAbierta::Entregar()
{
    QSqlDatabase entregada = base;
    base = QSqlDatabase();
    return entregada;
}

} // namespace qvx
