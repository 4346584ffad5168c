#pragma once

#include "data/BaseAbierta.h"
#include "data/ErrorEjecucion.h"
#include "data/Servidor.h"
#include "plan/Guion.h"

#include <QSqlError>
#include <QUuid>

// The server that tools/con_servidor runs, by its own means.
namespace cluster
{

inline const QString Loopback = "127.0.0.1";

// A name that no other test of this cluster has.
inline QString NombreNuevo(const QString &comienzo)
{
    return comienzo + "_" + QUuid::createUuid().toString(QUuid::Id128).left(12);
}

// By the socket, where everybody is trusted, or by equipo, where a password is asked for.
inline QString Direccion(const QString &usuario, const QString &base, const QString &equipo = {},
                         const QString &opciones = {})
{
    const QString carpeta = qEnvironmentVariable("QVX_PRUEBA_SERVIDOR").replace(QLatin1Char('/'), "%2F");
    if (carpeta.isEmpty())
        qFatal("Sin servidor de pruebas: esta prueba corre dentro de tools/con_servidor");
    return QString("postgresql://%1@%2:%3/%4%5")
        .arg(usuario, equipo.isEmpty() ? carpeta : equipo, qEnvironmentVariable("QVX_PRUEBA_PUERTO"), base, opciones);
}

// The first value of a statement that a user runs in a database, as a program of the newest schema; raises the server's
// error with its code.
inline QString Correr(const QString &usuario, const QString &base, const QString &sql)
{
    const qvx::Servidor servidor(Direccion(usuario, base));
    qvx::BaseAbierta abierta(
        servidor.Controlador({{"quorvex.esquema", QString::number(qvx::VersionEsquema)}}), [](const QSqlError &error) {
            throw qvx::ErrorEjecucion(qvx::errores::Datos, error.text(), {}, error.nativeErrorCode());
        });
    return abierta.Valor(sql);
}

inline QString Super(const QString &sql, const QString &base = "postgres")
{
    return Correr("postgres", base, sql);
}

// The code of the error that a statement ends with, "" when it is done.
inline QString Codigo(const QString &usuario, const QString &base, const QString &sql)
{
    try {
        Correr(usuario, base, sql);
        return {};
    } catch (const qvx::ErrorEjecucion &error) {
        return error.CodigoMotor();
    }
}

} // namespace cluster
