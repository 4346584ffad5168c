#pragma once

#include "app/comparar/Comparacion.h"

#include <QStringList>

namespace comparar
{

// A plan that is compared: as it is, as it was before an operation or at the end of a day, or as the import of a
// document would leave it.
struct Fuente {
    enum class Clase { Hoy, AntesDe, AlFinDe, Documento };
    Clase clase = Clase::Hoy;
    QString tipoEquipo;
    qint64 operacion = 0;
    QString dia; // "2026-03-14"
    QString archivo;

    // What the command line says: a document's file, "0001", "0001@45" or "0001@2026-03-14". Raises an ErrorEjecucion
    // for what is none of them. conexion: for the mask of the keys.
    static Fuente Leer(qvx::Conexion &conexion, const QString &texto);
    QString Titulo() const;
};

struct Lado {
    Fuente fuente;
    QString nombreTipo;
    qvx::FilasDelPlan filas;
    QStringList avisos; // what is to be known of it, as sentences
    QString titulo;     // where it comes from elsewhere

    QString Titulo() const;
};
// Raises an ErrorEjecucion in Spanish: an equipment type that is not there, a history that does not go back so far, a
// document that could not be imported; and data errors.
Lado LeerLado(qvx::Conexion &conexion, const Fuente &fuente);

// Both sides, read in one moment, and what differs.
struct Comparados {
    Lado antes;
    Lado despues;
    Comparacion comparacion;
};
Comparados CompararFuentes(qvx::Conexion &conexion, const Fuente &una, const Fuente &otra);
// The present plan of a document's equipment type, and what its import would leave.
Comparados CompararConDocumento(qvx::Conexion &conexion, const QString &archivo);
// The rows of one plan, and what they are to become.
Comparados CompararFilas(qvx::Conexion &conexion, qvx::FilasDelPlan antes, qvx::FilasDelPlan despues,
                         const QString &tituloDespues);

} // namespace comparar
