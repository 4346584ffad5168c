#pragma once

#include "app/lectura/Totales.h"
#include "controls/ModeloTabla.h"

// What services add up to, as rows of a table: once, and per year.
namespace totales
{

QList<qvx::ColumnaDeTabla> Columnas();
// de: whose totals they are.
QList<QVariantList> Filas(const QString &de, const lectura::Totales &totales);
// What of the services shown is counted though it is not in force, and what is not counted per year; "" for nothing.
QString Nota(const lectura::Totales &totales);

} // namespace totales
