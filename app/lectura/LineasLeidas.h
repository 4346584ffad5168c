#pragma once

#include "app/lectura/PlanLeido.h"

namespace lectura
{

// A line of a service, as it is stored.
struct Linea {
    enum class Clase { ManoDeObra, Refaccion, Herramienta };
    int servicio = 0; // its place in the plan's list
    Clase clase = Clase::Refaccion;
    int producto = 0; // its place among the products
    double cantidad = 0;
    QString unidad;
    double costo = 0;
    double importe = 0;
    QString gasto; // its expense type's key
};

// A product as the catalogue has it; of one that is not there only its key.
struct Producto {
    QString clave;
    QString descripcion;
    double costo = 0; // today's, of one
    bool enCatalogo = false;
    bool activo = false;
};

// All lines of a plan, those of a service together and in their order, with what they name.
struct Lineas {
    QList<Linea> lineas;
    QList<Producto> productos;
    QHash<QString, QString> gastos; // descriptions by key

    // The description, its key where the catalogue has none.
    QString NombreDeGasto(const QString &clave) const;
};

// The lines of a plan's services, in three statements. Raises data errors.
Lineas LeerLineasDe(qvx::Conexion &conexion, const Plan &plan);

} // namespace lectura
