#pragma once

#include "app/reportes/Csv.h"
#include "plan/RegistrosDeCatalogo.h"

// Rows of a catalogue as a spreadsheet takes them, so that importing them changes nothing.
Hoja EnHoja(const qvx::TablaDeCatalogo &tabla, const QList<qvx::RegistroDeCatalogo> &registros);
// Writes a table: a workbook when the file's name ends in .xlsx, text in this format when it ends in .csv. Raises a
// data error, also for any other name; then the file is as it was.
void ExportarHoja(const Hoja &hoja, const QString &ruta, const csv::Formato &formato);
// Likewise rows of a catalogue.
void ExportarCatalogo(const qvx::TablaDeCatalogo &tabla, const QList<qvx::RegistroDeCatalogo> &registros,
                      const QString &ruta, const csv::Formato &formato);
// Whether a file of this name is a workbook.
bool EsLibro(const QString &ruta);
