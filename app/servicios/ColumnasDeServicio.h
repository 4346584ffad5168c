#pragma once

#include "app/lectura/PlanLeido.h"

// What the table of services shows of one, column by column.
namespace servicios
{

enum Columna {
    Ruta,
    Folio,
    Nombre,
    Dias,
    Lectura,
    Horas,
    Paro,
    Prioridad,
    ManoObra,
    Refacciones,
    Herramientas,
    Costo,
    Precio,
    Utilidad,
    Porcentaje,
    Estado,
    Columnas
};

enum class Clase { Texto, Numero, Dinero };

QString Titulo(int columna);
Clase ClaseDe(int columna);
// As it is shown.
QString Texto(const lectura::Servicio &servicio, int columna);
// By which it is sorted and compared; of a column of numbers.
double Numero(const lectura::Servicio &servicio, int columna);
// "Activo", "Parte de baja", ...
QString NombreDe(lectura::Situacion situacion);
QString Dinero(double importe);
QString Cifra(double numero);
// A frequency as a person says it: "30 días, 250 HRS".
QString Frecuencia(double dias, double lectura, const QString &unidad);

} // namespace servicios
