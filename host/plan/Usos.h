#pragma once

#include "plan/Cambios.h"
#include "plan/RegistrosDeCatalogo.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// One place where a key of a catalogue stands: a line of a service, a service, a part's type, or another catalogue.
struct Uso {
    enum class Donde { Renglon, Servicio, Parte, Producto };
    Donde donde = Donde::Renglon;
    QString columna;        // where the key stands in that row
    ServicioLeido servicio; // its keys; of a part or an orphan line those that it has, and no version
    QString renglon;        // key of the line, or of the product
    QString clase;          // of a line, its kind
    QString nombreTipo;
    QString ruta; // of the part
    QString tipoServicio;
    double cantidad = 0; // of a line
    QString unidad;
    QString estado; // of the service, the part or the product
};

// Every use of a key in every plan and catalogue, retired rows and orphans too: by type, part, service and line. Of an
// equipment type its parts and services alone. Raises data errors.
QList<Uso> UsosDe(Conexion &conexion, const TablaDeCatalogo &tabla, const QString &clave);

// Why one entry cannot stand for another in these uses, as a sentence; "" when it can. An equipment type never can.
QString ObjecionAlReemplazo(const TablaDeCatalogo &tabla, const RegistroDeCatalogo &viejo,
                            const RegistroDeCatalogo &nuevo);

// Puts one key in the place of another in all uses, in one transaction: signed, logged, and with the plans held. usos:
// what the person saw; when they are no longer those, or a service would have one product twice, nothing is written and
// an ErrorEjecucion says so. Raises data errors.
void Reemplazar(Conexion &conexion, const Firmante &firmante, const TablaDeCatalogo &tabla,
                const RegistroDeCatalogo &viejo, const RegistroDeCatalogo &nuevo, const QList<Uso> &usos);

} // namespace qvx
