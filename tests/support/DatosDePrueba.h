#pragma once

#include "data/ErrorEjecucion.h"
#include "plan/DatosDePrograma.h"

#include <QStringList>
#include <functional>

// "2026-12-31 HR=8 km=50/1200 d=5 n=3 arranque lectura sado do 2027-01-06": day zero, uses (and readings), days a week,
// machines, first date, days off.
inline qvx::DatosDePrograma DatosDe(const QString &texto)
{
    qvx::DatosDePrograma datos;
    datos.tipoEquipo = "0900";
    for (const QString &palabra : texto.split(' ')) {
        const QDate fecha = QDate::fromString(palabra, Qt::ISODate);
        const QString valor = palabra.section('=', 1);
        if (fecha.isValid() && !datos.diaCero.isValid())
            datos.diaCero = fecha;
        else if (fecha.isValid())
            datos.festivos.append(fecha);
        else if (palabra.startsWith("d="))
            datos.diasSemana = valor.toDouble();
        else if (palabra.startsWith("n="))
            datos.equipos = valor.toInt();
        else if (palabra.contains('='))
            datos.usos[palabra.section('=', 0, 0)] = {valor.section('/', 0, 0).toDouble(),
                                                      valor.section('/', 1).toDouble()};
        else if (palabra == "arranque" || palabra == "lectura")
            datos.inicio =
                palabra == "arranque" ? qvx::DatosDePrograma::Inicio::Arranque : qvx::DatosDePrograma::Inicio::Lectura;
        else if (palabra == "do" || palabra == "sado")
            datos.descanso = palabra == "do" ? qvx::DatosDePrograma::Descanso::Domingo
                                             : qvx::DatosDePrograma::Descanso::SabadoYDomingo;
    }
    return datos;
}

// What steps raise, "" for nothing.
inline QString Rechazo(const std::function<void()> &pasos)
{
    try {
        pasos();
        return {};
    } catch (const qvx::ErrorEjecucion &error) {
        return error.Descripcion();
    }
}
