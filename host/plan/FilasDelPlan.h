#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <array>

namespace QVX_EXPORTA qvx
{

class Conexion;
class Recordset;

// The rows of a plan as its tables hold them, to be compared and to be written again: from the tables of today, from a
// copy, from what is to come. Values are the engine's own: numbers as numbers, and an absent one is an invalid
// QVariant, which is not the empty text.

// Where each value of a row stands, and so the order of TablaDelPlan::columnas. The versions and what the triggers keep
// beside them are no part of it.
namespace parte
{
enum { TipoEquipo, Clave, Padre, Descripcion, Estado, OperAlta, FechaAlta, OperModif, FechaModif, OperBaja, FechaBaja };
}
namespace servicio
{
enum {
    TipoEquipo,
    Parte,
    Folio,
    TipoServicio,
    Dias,
    Lectura,
    UnidadLectura,
    Precio,
    Horas,
    Prioridad,
    RequiereParo,
    HorasParo,
    Estado,
    OperAlta,
    FechaAlta,
    OperModif,
    FechaModif,
    OperBaja,
    FechaBaja
};
}
namespace linea
{
enum { TipoEquipo, Parte, Folio, Clave, Clase, Producto, Cantidad, Unidad, Costo, Importe, TipoGasto };
}

using FilaDelPlan = QVariantList;

struct TablaDelPlan {
    QString nombre;       // "Plan_Mantenimiento"
    QStringList columnas; // in the order of the places above
    int firma;            // where the last change's signature begins, of two columns; -1: such rows have none
};

// Parts, services, lines: what hangs from a row comes after it.
enum class DelPlan { Parte, Servicio, Linea };
inline constexpr std::array TodoElPlan{DelPlan::Parte, DelPlan::Servicio, DelPlan::Linea};
const TablaDelPlan &TablaDe(DelPlan clase);

struct FilasDelPlan {
    QString tipoEquipo;
    QList<FilaDelPlan> partes;    // by key
    QList<FilaDelPlan> servicios; // by folio
    QList<FilaDelPlan> lineas;    // by folio, then by their number, as they are shown

    const QList<FilaDelPlan> &De(DelPlan clase) const
    {
        return clase == DelPlan::Parte ? partes : clase == DelPlan::Servicio ? servicios : lineas;
    }
    bool operator==(const FilasDelPlan &otras) const = default;
    bool Vacio() const { return partes.isEmpty() && servicios.isEmpty() && lineas.isEmpty(); }
};

// All rows of the plan of an equipment type, in three statements of one moment; retired ones and what the tree does not
// reach are among them. What is read counts for no screen as read. Raises data errors.
FilasDelPlan LeerFilas(Conexion &conexion, const QString &tipoEquipo);

// A row of which all the columns were read, in their order.
FilaDelPlan FilaLeida(const Recordset &fila, int columnas);

// Puts the rows into the order that LeerFilas gives them.
void OrdenarFilas(FilasDelPlan &filas);

// A value of a row without its trailing blanks: keys compare so.
QString ClaveDe(const FilaDelPlan &fila, int lugar);

// Whether two rows of one table hold the same, byte for byte, whoever signed their last change.
bool SonIguales(const TablaDelPlan &tabla, const FilaDelPlan &una, const FilaDelPlan &otra);

} // namespace qvx
