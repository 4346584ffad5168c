#pragma once

#include "app/Textos.h"
#include "plan/Restauracion.h"
#include "plan/RestaurarPlan.h"

#include <QFileInfo>
#include <QStringList>

// How copies are spoken of.
namespace respaldo
{

inline QString Fecha(const QDateTime &fecha)
{
    return fecha.toString("yyyy-MM-dd HH:mm");
}

// "3 partes, 1 servicio y 12 renglones", without what is none.
inline QString Texto(const qvx::FilasCambiadas &filas)
{
    QStringList textos;
    if (filas.partes > 0)
        textos.append(Cuantos(filas.partes, "parte", "partes"));
    if (filas.servicios > 0)
        textos.append(Cuantos(filas.servicios, "servicio", "servicios"));
    if (filas.lineas > 0)
        textos.append(Cuantos(filas.lineas, "renglón", "renglones"));
    const QString ultimo = textos.isEmpty() ? QString("nada") : textos.takeLast();
    return textos.isEmpty() ? ultimo : textos.join(", ") + " y " + ultimo;
}

inline QString DeLaCopia(const QString &archivo)
{
    return "De la copia " + QFileInfo(archivo).fileName();
}

inline QString Texto(const qvx::PlanDeCopia &plan)
{
    return Cuantos(plan.partes, "parte", "partes") + ", " + Cuantos(plan.servicios, "servicio", "servicios");
}

} // namespace respaldo
