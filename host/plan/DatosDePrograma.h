#pragma once

#include "plan/Cambios.h"
#include "system/Exporta.h"

#include <QDate>
#include <QMap>
#include <optional>

namespace QVX_EXPORTA qvx
{

// How much a machine is used a day, in a unit of its readings, and what its meter says on day zero.
struct UsoDeUnidad {
    double porDia = 0;
    double acumulado = 0;

    bool operator==(const UsoDeUnidad &otro) const = default;
};

// What a planner assumes of an equipment type to make its programme of the year. It is the plant's, a row of the
// database, and the same for everybody.
struct DatosDePrograma {
    // Of each service the first date: a whole period after day zero, day zero itself, or by what the meter says.
    enum class Inicio { Hecho, Arranque, Lectura };
    enum class Descanso { Ninguno, Domingo, SabadoYDomingo };

    QString tipoEquipo;
    QDate diaCero;
    double diasSemana = 7; // on which it is used as much as a day's use says
    int equipos = 1;
    Inicio inicio = Inicio::Hecho;
    Descanso descanso = Descanso::Ninguno;
    QMap<QString, UsoDeUnidad> usos;          // by the key of the unit
    QList<QDate> festivos;                    // in their order
    QList<QPair<QString, QString>> incluidos; // folios: what, and in which service
    QMap<int, double> capacidad;              // hours of labour, by the month of the year, from 1
    QString sello;                            // of the row that was read, "" when none is kept yet

    bool operator==(const DatosDePrograma &otros) const = default;
};

// Why data make no programme, "" when they do: a sentence for the person.
QString Objetar(const DatosDePrograma &datos);

// What is kept of an equipment type, nothing for nothing. Raises data errors.
std::optional<DatosDePrograma> LeerDatosDePrograma(Conexion &conexion, const QString &tipoEquipo);

// Keeps them in the place of what was read, signed and logged, all or nothing. Raises an ErrorEjecucion in Spanish for
// data that make no programme, for a type that is not on offer, and when somebody else has kept others since, with who
// and when; and data errors.
void GuardarDatosDePrograma(Conexion &conexion, const Firmante &firmante, const DatosDePrograma &datos);

} // namespace qvx
