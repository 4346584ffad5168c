#pragma once

#include "app/lectura/Totales.h"
#include "controls/ModeloTabla.h"

// What services add up to, as rows of a table: once, and per year.
namespace totales
{

QList<qvx::ColumnaDeTabla> Columnas();
// de: whose totals they are, which says how many of them are not in force.
QList<QVariantList> Filas(const QString &de, const lectura::Totales &totales);

} // namespace totales
