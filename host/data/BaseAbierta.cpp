#include "data/BaseAbierta.h"

#include "data/ErrorEjecucion.h"

#include <QFile>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace qvx
{

BaseAbierta::BaseAbierta(const QString &controlador, const std::function<void(QSqlDatabase &)> &preparar,
                         Rechazo rechazar_)
    : base(QSqlDatabase::addDatabase(controlador, QUuid::createUuid().toString())), rechazar(std::move(rechazar_))
{
    preparar(base);
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

QString BaseAbierta::Guion(const QString &nombre)
{
    QFile guion(":/schema/" + nombre);
    if (!guion.open(QIODevice::ReadOnly))
        throw ErrorEjecucion(errores::Datos, "Falta el guion " + nombre);
    return QString::fromUtf8(guion.readAll());
}

QSqlDatabase BaseAbierta::Entregar()
{
    QSqlDatabase entregada = base;
    base = QSqlDatabase();
    return entregada;
}

} // namespace qvx
