#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QVariantList>
#include <functional>
#include <memory>

namespace QVX_EXPORTA qvx
{

// A connection of the toolkit while it is being looked at, before it is a Conexion: closed and forgotten when it goes,
// unless it is handed on.
class BaseAbierta
{
public:
    // Throws what the person is told.
    using Rechazo = std::function<void(const QSqlError &)>;

    // preparar gives the connection its place and options; it is then opened.
    BaseAbierta(const QString &controlador, const std::function<void(QSqlDatabase &)> &preparar, Rechazo rechazar);
    // Of a driver that knows its place.
    BaseAbierta(std::unique_ptr<QSqlDriver> controlador, Rechazo rechazar);
    ~BaseAbierta();
    BaseAbierta(const BaseAbierta &) = delete;
    BaseAbierta &operator=(const BaseAbierta &) = delete;

    // Statements of the host's own, as they stand.
    void Ejecutar(const QString &sql);
    // The first value of the first row, "" when there is none.
    QString Valor(const QString &sql);
    QList<QVariantList> Filas(const QString &sql);
    // Of two databases of the embedded engine: all that this one holds gives way to all that the other one holds, as a
    // transaction of the engine's, which nothing may be in already. Killed in the middle, it holds what it held.
    void ReemplazarPor(const BaseAbierta &origen);

    QSqlDatabase Entregar();
    // Closes and forgets a connection, of which this must be the last copy.
    static void Soltar(QSqlDatabase &base);

private:
    void Abrir();

    QSqlDatabase base;
    Rechazo rechazar;
};

} // namespace qvx
