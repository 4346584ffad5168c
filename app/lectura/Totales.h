#pragma once

#include "app/lectura/PlanLeido.h"

namespace lectura
{

// What services add up to. Per year counts the active ones that are due by days, 365 of them a year; those that are due
// by a reading alone, or by nothing, are counted apart, since nobody knows how often they come.
struct Totales {
    struct Importes {
        double veces = 0;
        double horas = 0;
        double horasParo = 0;
        double manoObra = 0;
        double refacciones = 0;
        double herramientas = 0;
        double costo = 0;
        double precio = 0;
        double utilidad = 0;
        double porcentaje = 0; // of the price

        bool operator==(const Importes &otros) const = default;
    };
    int servicios = 0;
    int noActivos = 0;
    int soloPorLectura = 0;
    int sinFrecuencia = 0;
    Importes unaVez; // each service once
    Importes alAno;

    bool operator==(const Totales &otros) const = default;
};

// cuales: places in the plan's list.
Totales Sumar(const Plan &plan, const QList<int> &cuales);

// Of each part that is there what its services and those of all parts below it add up to, and of "" the services that
// hang from no part that the tree reaches. A part in a ring is below itself, and counts once.
QHash<QString, Totales> SumarPorParte(const Plan &plan);

// Places of the services of a part and of all parts below it; of those that no reached part has for "", of all for the
// root.
QList<int> ServiciosBajo(const Plan &plan, const QString &parte);

} // namespace lectura
