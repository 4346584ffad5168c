#pragma once

#include "app/lectura/LineasLeidas.h"
#include "app/programa/Cantidad.h"
#include "app/programa/Programa.h"

namespace programa
{

// What work asks for: hours of labour and of stop, what it costs as it is stored and at today's standard cost, and its
// price. Not rounded.
struct Medida {
    Cantidad manoObra; // hours: what is measured in something else is told apart
    Cantidad paro;
    Cantidad costo;
    Cantidad costoHoy;
    Cantidad precio;

    Medida &operator+=(const Medida &otra);
    friend Medida operator-(const Medida &una, const Medida &otra);
    friend Medida operator*(const Medida &una, qint64 veces);
    bool operator==(const Medida &otra) const = default;
};

// The unit in which hours of labour are written.
inline const QString Horas = "HR";

// Of each service of a plan, done once on one machine. Estimated hours are its duration, and count for nothing here.
QList<Medida> Medir(const lectura::Plan &plan, const lectura::Lineas &lineas);

// Of a row, all its times and machines.
Medida MedidaDe(const Programa &programa, const Fila &fila, const QList<Medida> &medidas);
// Of the whole programme, of some of its rows, and of each of its months by the scheduled dates.
Medida Total(const Programa &programa, const QList<Medida> &medidas);
Medida Total(const Programa &programa, const QList<int> &filas, const QList<Medida> &medidas);
QList<Medida> PorMes(const Programa &programa, const QList<Medida> &medidas);
// What a year comes to in the long run: everything · machines · 365/P, also of services that the year does not meet.
Medida ALargoPlazo(const Programa &programa, const QList<Medida> &medidas);

// Amounts of one product in one unit, month by month, all machines.
struct Serie {
    int producto = 0;
    QString unidad;
    QString gasto; // of spare parts, the key of their expense type
    QList<Cantidad> porMes;
    Cantidad total;
    Cantidad costo;
    Cantidad costoHoy;
};

// Labour by trade, in hours and, apart, in whatever else; by the products' keys.
struct Carga {
    QList<Serie> oficios;
    QList<Serie> otras;
    QList<Cantidad> porMes;    // hours of all trades
    QList<Cantidad> capacidad; // of each month, of one that the year cuts only its days' part; empty when none is given
};
Carga CalcularCarga(const Programa &programa, const lectura::Lineas &lineas);

// Spare parts by expense type, product and unit.
QList<Serie> CalcularRefacciones(const Programa &programa, const lectura::Lineas &lineas);

// Stops, date by date, all machines: one after the other, or all of a date within the longest of them.
struct ParoDelDia {
    int dia = 0; // from day zero
    int servicios = 0;
    Cantidad sumado;
    Cantidad compartido;
};
QList<ParoDelDia> CalcularParos(const Programa &programa, const QList<Medida> &medidas);
// Stops that follow one within so many days, done together with it: within the longest of them.
struct ParosJuntos {
    int desde = 0;
    int hasta = 0;
    int fechas = 0;
    Cantidad separados;
    Cantidad juntos;

    Cantidad Ahorro() const { return separados - juntos; }
};
QList<ParosJuntos> Juntar(const QList<ParoDelDia> &paros, int dias);

} // namespace programa
