#pragma once

#include "app/reportes/Cifras.h"
#include "app/reportes/Hoja.h"

#include <QStringList>
#include <optional>

// Tables as text: files of comma-separated values, and cells that were copied from a spreadsheet.
namespace csv
{

// A row, and the line of the text that it begins on, from 1.
struct Fila {
    int renglon = 0;
    QStringList celdas;
};

// Whether a row has letters that a wrong encoding would show wrongly.
bool ConAcentos(const Fila &fila);

// ';', ',' or TAB, whichever parts the first rows best; ';' for a text of one column, nothing when two do it equally.
std::optional<QChar> ProponerDelimitador(const QString &texto);
// The rows that hold anything. A quote opens a cell at its beginning alone: 3" is three inches. Raises a data error
// that names the line for a quote that is not closed, and for text behind the one that closes.
QList<Fila> Partir(const QString &texto, QChar delimitador);

// A text without the apostrophe that keeps spreadsheets from taking it for a formula.
QString SinResguardo(const QString &texto);

struct Formato {
    QChar delimitador = QLatin1Char(';');
    Decimal decimal = Decimal::Punto;
};
// The table as cells that a spreadsheet pastes: a TAB between them, guarded in the same way.
QString ParaPegar(const Hoja &hoja);
// Writes the table as UTF-8 with a byte order mark and CRLF. Texts that a spreadsheet would run are guarded by an
// apostrophe; reading them again gives what was written. Raises a data error; then the file is as it was.
void Escribir(const QString &ruta, const Hoja &hoja, const Formato &formato);

} // namespace csv
