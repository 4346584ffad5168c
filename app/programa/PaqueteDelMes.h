#pragma once

#include "app/programa/Reportes.h"
#include "app/reportes/Papel.h"

namespace programa
{

// A month in one go, three files beside each other that begin with one name: job sheets, picking list, calendar.
struct PaqueteDelMes {
    QString hojas;
    QString surtido;
    QString calendario;

    // ruta: without an ending.
    static PaqueteDelMes En(const QString &ruta);
    QStringList Archivos() const { return {hojas, surtido, calendario}; }
    // False when it was stopped: then no file is there that was not. Raises a data error, likewise.
    bool Escribir(const PlanMedido &medido, const Programa &programa, int mes, const Encargo &encargo,
                  impreso::Papel papel, const impreso::Avance &avance) const;
};

// Rows whose scheduled date is in a month, by its place.
QList<int> FilasDelMes(const Programa &programa, int mes);

} // namespace programa
