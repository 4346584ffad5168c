#pragma once

#include <QDate>
#include <QSet>
#include <QString>

namespace programa
{

// The year that a programme is made for: (S, S + 1 year], [S, S + 1 year) for machines whose services are due when they
// start, [S, S + 1 year] where a meter may say that something is due on day zero already. In days from day zero.
struct Horizonte {
    QDate diaCero;
    int primero = 1;
    int ultimo = 0;

    QDate Desde() const { return diaCero.addDays(primero); }
    QDate Hasta() const { return diaCero.addDays(ultimo); }
};

// Days on which nothing is done: none, Sundays, weekends, and holidays.
struct Calendario {
    bool sabado = false;
    bool domingo = false;
    QSet<QDate> festivos;

    bool Libre(QDate dia) const;
    // The day on which what is due on another one is done: that day, the working day before it, or, where that would be
    // no later than day zero, the one after.
    QDate Programada(QDate teorica, QDate diaCero) const;
};

// Months of the calendar, one after the other.
class Meses
{
public:
    Meses() = default;
    Meses(QDate desde, QDate hasta);

    int Cuantos() const { return cuantos; }
    // -1 for a day that is in none of them.
    int Lugar(QDate dia) const;
    QDate Primero(int mes) const { return desde.addMonths(mes); }
    QString Nombre(int mes) const; // "ene 2027"

private:
    QDate desde;
    int cuantos = 0;
};

// Holidays, a date in each line of a text, or why it is none; empty lines and what stands behind a "#" count for
// nothing.
struct Festivos {
    QList<QDate> fechas; // in their order, each once
    QString objecion;
};
Festivos LeerFestivos(const QString &texto);

// As it is shown everywhere: 2026-12-31.
QString Escrita(QDate fecha);

} // namespace programa
