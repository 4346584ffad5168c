#include "data/BaseAbierta.h"

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
    Ejecutar(sql, rechazar);
}

void BaseAbierta::Ejecutar(const QString &sql, const Rechazo &rechazo)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        rechazo(consulta.lastError());
}

QString BaseAbierta::Valor(const QString &sql)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        rechazar(consulta.lastError());
    return consulta.next() ? consulta.value(0).toString() : QString();
}

QSqlDatabase BaseAbierta::Entregar()
{
    QSqlDatabase entregada = base;
    base = QSqlDatabase();
    return entregada;
}

} // namespace qvx
