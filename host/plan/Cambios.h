#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <functional>

namespace QVX_EXPORTA qvx
{

class Conexion;

// Who signs changes, and the clock: texts as the audit columns take them. The clock is asked when a change is signed;
// on a server that is a statement of its own.
struct Firmante {
    QString operador;
    std::function<QString()> fecha;
};

// Registers a row of the plan that was just written, inside its transaction. claves: of Tipo_Equipo_Parte the part and
// the equipment type; of Plan_Mantenimiento the equipment type, the service and, where it must still be there, its
// part. Gives why the change must not stand, "" when it was registered: the row is not there, somebody else changed it
// since this program read it, the part that it hangs from is gone, a new part's key leaves no number for the next one,
// or it is the root. Raises data errors.
QString RegistrarCambio(Conexion &conexion, const Firmante &firmante, const QString &tabla, const QStringList &claves);

// Logs that a row was written. clave: its keys, joined by "|". Raises data errors.
void AnotarCambio(Conexion &conexion, const Firmante &firmante, const QString &tabla, const QString &clave);

// Who wrote a row last and when, as the change log has it: "mlopez lo cambió el 2026-03-14 09:26:53". Where the log
// does not say: "Otro programa lo cambió"; where whoever is signed in may not read it: "Otra persona o programa lo
// cambió". verbo: what was done. Raises data errors.
QString QuienCambio(Conexion &conexion, const QString &tabla, const QString &clave, const QString &verbo = "lo cambió");

// A service as it was read, to be changed later: its keys and its version, which is read as "Sello" so that the
// screens' own readings do not count it.
struct ServicioLeido {
    QString tipoEquipo;
    QString parte;
    QString folio;
    QString sello;
};
// Signs and logs that a service or its lines are being changed, inside the transaction, before they are: from then on
// its plan is held. Raises an ErrorEjecucion in Spanish, which says who and when, for a service that was changed since
// it was read, or is gone; and data errors.
void FirmarServicio(Conexion &conexion, const Firmante &firmante, const ServicioLeido &servicio);
// The condition that chooses a service, or its lines, and the values of its parameters.
inline const QString DelServicio = " WHERE Te_Cve_Tipo_Equipo = ? AND Tep_ID = ? AND Pm_ID = ?";
inline QVariantList ClavesDe(const ServicioLeido &servicio)
{
    return {servicio.tipoEquipo, servicio.parte, servicio.folio};
}
// That a service is as it was read, which is then neither signed nor logged. The same errors.
void RevisarServicio(Conexion &conexion, const ServicioLeido &servicio);

// Logs a change of state ("Baja", "Reactivación"). Raises data errors.
void AnotarEstado(Conexion &conexion, const Firmante &firmante, const QString &tabla, const QString &clave,
                  const QString &accion);

// Who created, last changed and retired the row whose columns have these values, and when: captions and values. Raises
// SinRegistroActual when there is no such row, and data errors.
QList<QPair<QString, QString>> Autoria(Conexion &conexion, const QString &tabla, const QStringList &columnas,
                                       const QStringList &valores);

} // namespace qvx
