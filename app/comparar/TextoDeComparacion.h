#pragma once

#include "app/comparar/Comparacion.h"
#include "app/reportes/Hoja.h"

#include <QStringList>

namespace comparar
{

// "Parte 0002 IMPULSOR", and what becomes of it: "se agrega".
QString Nombrado(const Nodo &nodo);
QString Dicho(Suerte suerte);

// "Partes: 1 nueva, 2 quitadas. Servicios: …", or that there is no difference.
QString Resumen(const Comparacion &comparacion);

// What differs, line by line, for a terminal.
QStringList Renglones(const Comparacion &comparacion);

// What differs, a row for each field, for a spreadsheet.
Hoja EnHoja(const Comparacion &comparacion);

} // namespace comparar
