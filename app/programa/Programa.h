#pragma once

#include "app/lectura/PlanLeido.h"
#include "app/programa/Calendario.h"
#include "app/programa/Periodo.h"

namespace programa
{

// What a programme needs to know of a service.
struct Entrada {
    QString folio;
    QString nombre; // as an error calls it
    QString grupo;  // the same for those of one part and one service type
    Frecuencia frecuencia;
    QString exclusion; // why it is not in force, "" when it is
};
// Of all services of a plan, in its order.
QList<Entrada> EntradasDe(const lectura::Plan &plan);

// A service on a date. Days are counted from day zero.
struct Fila {
    int servicio = 0; // its place in the plan
    int n = 0;        // the first one of those that fall on this date
    int teorico = 0;
    int programado = 0;
    int veces = 1;
    int incluidas = 0; // of these, done within another service of the same day
    int en = -1;       // which one, its place

    int Cuentan() const { return veces - incluidas; }
    bool operator==(const Fila &otra) const = default;
};

// A service without a row.
struct Aparte {
    enum class Clase { Despues, SinFecha, Excluido };
    Clase clase = Clase::SinFecha;
    int servicio = 0;
    QString motivo;
    QDate primera; // of those that fall later; not valid beyond the year 9999
};

// Services: those that are programmed and those that are not are all of them.
struct Conciliacion {
    int programados = 0;
    int despues = 0;
    int sinFecha = 0;
    int excluidos = 0;
    int todos = 0;

    bool Cuadra() const { return programados + despues + sinFecha + excluidos == todos; }
};

// What is due in the year from day zero on. The whole of it is made anew when anything changes: it takes milliseconds.
struct Programa {
    qvx::DatosDePrograma datos;
    Horizonte horizonte;
    Meses meses;
    QList<Periodo> periodos; // of each service
    QList<Fila> filas;       // by scheduled date and service
    QList<Aparte> aparte;
    Conciliacion conciliacion;
    QList<int> mesDeDia; // of each day from day zero on

    // The place of the month in which a row is done.
    int Mes(const Fila &fila) const { return mesDeDia.at(fila.programado); }
    QDate Fecha(int dia) const { return horizonte.diaCero.addDays(dia); }
    // A row's reason, which also says in what it is included.
    QString Motivo(const Fila &fila, const QList<Entrada> &entradas) const;
};
// Raises an ErrorEjecucion in Spanish for data that make no programme, and for services that would be due more than 24
// times a day, by their names.
Programa Programar(const QList<Entrada> &entradas, const qvx::DatosDePrograma &datos);

// Services that may be ticked as included in another one: of the same part and service type, whose period is an exact
// multiple of theirs. Places in the list: what, in which.
QList<QPair<int, int>> ParesPosibles(const QList<Entrada> &entradas, const Programa &programa);

// "Programados 12 + más adelante 3 + sin fecha 1 + excluidos 2 = 18 servicios".
QString Texto(const Conciliacion &conciliacion);
// "Más adelante", "Sin fecha", "Excluido".
QString Nombre(Aparte::Clase clase);

// What became of dates between two programmes of one plan.
struct Diferencia {
    int movidas = 0;
    int nuevas = 0;
    int perdidas = 0;
};
Diferencia Comparar(const Programa &antes, const Programa &despues);

} // namespace programa
