#pragma once

#include "app/reportes/Hoja.h"

// Writes the table as a workbook: texts as texts, so that a key keeps its zeros, numbers and dates as what they are;
// the headings stay in sight and filter; below stand the totals of the columns that are added up, of what the filter
// shows, with their numbers, so that a program that does not calculate shows them too. Raises a data error; then the
// file is as it was.
void EscribirXlsx(const QString &ruta, const Hoja &hoja);

// Of the library that writes workbooks: "1.1.5".
QString VersionDeXlsx();
