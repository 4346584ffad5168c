#include "app/servicios/HojaDeServicios.h"

#include "app/servicios/ColumnasDeServicio.h"

namespace
{

// What a cell of the table is as values: a reading and its unit are two, a stop that is not needed has no hours.
void AgregarValores(QVariantList &fila, const lectura::Servicio &servicio, int columna)
{
    switch (columna) {
    case servicios::Ruta:
        fila << servicio.leido.parte << servicios::Texto(servicio, columna);
        break;
    case servicios::Lectura:
        fila << servicio.lectura << servicio.unidad;
        break;
    case servicios::Paro:
        fila << (servicio.conParo ? "Sí" : "No") << (servicio.conParo ? servicio.horasParo : 0.0);
        break;
    default:
        if (servicios::ClaseDe(columna) == servicios::Clase::Texto)
            fila << servicios::Texto(servicio, columna);
        else
            fila << servicios::Numero(servicio, columna);
    }
}

QList<ColumnaDeHoja> ColumnasDe(int columna)
{
    using Clase = ColumnaDeHoja::Clase;
    const QString titulo = servicios::Titulo(columna);
    switch (columna) {
    case servicios::Ruta:
        return {{"Clave de la parte"}, {titulo}};
    case servicios::Lectura:
        return {{titulo, Clase::Numero}, {"Unidad"}};
    case servicios::Paro:
        return {{titulo}, {"Horas de paro", Clase::Numero}};
    default:
        break;
    }
    if (servicios::ClaseDe(columna) == servicios::Clase::Texto)
        return {{titulo}};
    return {{titulo, servicios::ClaseDe(columna) == servicios::Clase::Dinero ? Clase::Dinero : Clase::Numero}};
}

} // namespace

Hoja EnHoja(const lectura::Plan &plan, const QList<int> &cuales)
{
    Hoja hoja{"Servicios", {}, {}};
    for (int columna = 0; columna < servicios::Columnas; ++columna)
        hoja.columnas += ColumnasDe(columna);
    hoja.filas.reserve(cuales.size());
    for (const int cual : cuales) {
        QVariantList fila;
        for (int columna = 0; columna < servicios::Columnas; ++columna)
            AgregarValores(fila, plan.servicios.at(cual), columna);
        hoja.filas.append(fila);
    }
    return hoja;
}
