#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <functional>

namespace qvx
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
    ~BaseAbierta();
    BaseAbierta(const BaseAbierta &) = delete;
    BaseAbierta &operator=(const BaseAbierta &) = delete;

    // Statements of the host's own, as they stand.
    void Ejecutar(const QString &sql);
    // Likewise, with another word for its failure.
    void Ejecutar(const QString &sql, const Rechazo &rechazo);
    // The first value of the first row, "" when there is none.
    QString Valor(const QString &sql);

    QSqlDatabase Entregar();
    // Closes and forgets a connection, of which this must be the last copy.
    static void Soltar(QSqlDatabase &base);

private:
    QSqlDatabase base;
    Rechazo rechazar;
};

} // namespace qvx
