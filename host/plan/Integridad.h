#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QPair>
#include <QString>

namespace QVX_EXPORTA qvx
{

class Conexion;
struct Firmante;

// A part or a service that no screen shows, since the tree does not reach it; or a service with lines that name what no
// catalogue has.
struct Suelto {
    enum class Clase { Parte, Servicio, Renglones };
    Clase clase = Clase::Parte;
    QString tipoEquipo;
    QString clave; // of the part; of a service its folio
    QString descripcion;
    QString motivo; // what is wrong, for the person

    // Lines are told only: the person corrects them in their service.
    bool SeCorrige() const { return clase != Clase::Renglones; }
};

// Of every equipment type: parts whose parent is missing, parts that are their own ancestors, and services whose part
// is missing. What hangs from such a part comes back with it and is not listed. Lines whose product or expense type is
// in no catalogue, and services with spare parts without an expense type. By type: parts, services, lines, by key.
QList<Suelto> BuscarSueltos(Conexion &conexion);

// The parts of a type that a service can be put under, key and description: active ones that the tree reaches.
QList<QPair<QString, QString>> PartesParaServicios(Conexion &conexion, const QString &tipoEquipo);

// A part is put under the root; a service, with its lines, under the part with the key destino.
struct Correccion {
    Suelto suelto;
    QString destino;
};

struct Corregidos {
    int partes = 0;
    int servicios = 0;
};

// Corrects in one transaction, signed and registered as changes. What is in order
// by then is left alone: what somebody else has corrected, and the other parts of a ring once one of them is under the
// root; lines are never corrected. Nothing is ever deleted. Raises data errors, also for a destino that is no active
// part any more; then nothing has changed.
Corregidos CorregirSueltos(Conexion &conexion, const Firmante &firmante, const QList<Correccion> &correcciones);

} // namespace qvx
