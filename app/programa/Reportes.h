#pragma once

#include "app/programa/PlanMedido.h"
#include "app/reportes/Impreso.h"

#include <QDateTime>

namespace programa
{

// What stands at head and foot of a report, and what is in it at will.
struct Encargo {
    QString planta;
    QString operador;
    QString base;
    QDateTime hora;
    bool conCostos = false; // on job sheets
    bool conLineas = false; // in the plan
    bool porParte = false;  // materials
};

// The tree in its order, with the services of each part, a subtotal for each main part, and the total; what the tree
// does not reach at the end.
impreso::Documento ReporteDePlan(const PlanMedido &medido, const Encargo &encargo);

// A service to be done: a row of the programme, or one without a date.
struct Labor {
    int servicio = 0;
    QDate vence;
    QString motivo;
    int equipos = 1;
    int veces = 1; // that day on each of them
};
// Of rows by their places, in their order, those that count.
QList<Labor> LaboresDe(const PlanMedido &medido, const Programa &programa, const QList<int> &filas);
// A page for each, to be filled in and signed in the workshop.
impreso::Documento HojasDeTrabajo(const PlanMedido &medido, const QList<Labor> &labores, const Encargo &encargo);

// Spare parts and what they cost by expense type, product and unit, or part by part: of each service so many times.
// paraSurtir: with a box to tick.
impreso::Documento ReporteDeMateriales(const PlanMedido &medido, const QList<qint64> &veces, const QString &titulo,
                                       const Encargo &encargo, bool paraSurtir = false);
// Every service in force once, on one machine; or as often as rows of the programme say.
QList<qint64> UnaRonda(const PlanMedido &medido);
QList<qint64> VecesDe(const PlanMedido &medido, const Programa &programa, const QList<int> &filas);

} // namespace programa
