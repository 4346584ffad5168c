#pragma once

#include "plan/Cambios.h"
#include "system/Exporta.h"

#include <QList>

// What is done to many services of one plan at once. Each is one transaction that holds the plan, signs and logs each
// service, and writes all of them or nothing. They raise an ErrorEjecucion in Spanish for a service that was changed
// since it was read (who and when), for what the rules refuse (plan/ReglasDeLote.h), and data errors.
namespace QVX_EXPORTA qvx
{

// A service, as it was read, and the part that it is to hang from.
struct Traslado {
    ServicioLeido servicio;
    QString destino;
};

// "3 servicios", and of one its folio: "Servicio 000002". For the history.
QString CuantosServicios(qsizetype cuantos, const ServicioLeido &primero);

// Puts services with their lines under other parts; they keep their folios.
void MoverServicios(Conexion &conexion, const Firmante &firmante, const QList<Traslado> &traslados);

// Copies services with their lines as they are stored, under the next free folios, which it gives. The copies are
// active, and created by who signs.
QStringList DuplicarServicios(Conexion &conexion, const Firmante &firmante, const QList<Traslado> &copias);

// Deletes services with their lines.
void EliminarServicios(Conexion &conexion, const Firmante &firmante, const QList<ServicioLeido> &servicios);

// What of a service is changed for many at once. A frequency of 0 is none.
struct ValoresDeServicio {
    QString tipoServicio;
    QString prioridad;
    double dias = 0;
    double lectura = 0;
    QString unidad; // of the reading
    double precio = 0;

    bool operator==(const ValoresDeServicio &otros) const = default;
};
struct CambioDeServicio {
    ServicioLeido servicio;
    ValoresDeServicio antes;
    ValoresDeServicio despues;
};

// Why a service must not be changed so, whatever the catalogues say; "" when it may be.
QString ObjecionAlCambio(const CambioDeServicio &cambio);

// Writes the values that differ. Those of catalogues must be on offer.
void CambiarServicios(Conexion &conexion, const Firmante &firmante, const QList<CambioDeServicio> &cambios);

} // namespace qvx
