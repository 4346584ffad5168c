#pragma once

#include "app/reportes/Csv.h"
#include "plan/RegistrosDeCatalogo.h"

#include <QMap>

// What a spreadsheet would make of a catalogue, before anything is written. Rows that it does not name are left alone.

// The columns of a catalogue as a spreadsheet has them: the key, the others, the state.
struct ColumnaDeImportacion {
    QString nombre; // in the table
    QString titulo; // for the person
    QStringList sinonimos;
};
QList<ColumnaDeImportacion> ColumnasDeImportacion(const qvx::TablaDeCatalogo &tabla);
// A row in the order of these columns, and in a spreadsheet's words: a state is "Activo", a class "Refacción".
QStringList EnPalabras(const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro);

// The rows of a spreadsheet, and from which of its columns those of the catalogue are taken.
struct HojaLeida {
    bool conTitulos = false;
    QStringList titulos; // of the spreadsheet's columns, numbered when it has none
    QList<csv::Fila> filas;
    QMap<int, int> correspondencia; // place among ColumnasDeImportacion -> the spreadsheet's column
};
// Headings are matched without case, accents and signs: as recordados has them (name in the table -> heading), as the
// catalogue calls its columns, as others do. Without headings the columns are taken in their order. conTitulos: whether
// the first row has headings; when nothing is said it has when it names a column.
HojaLeida Corresponder(const qvx::TablaDeCatalogo &tabla, const QList<csv::Fila> &filas,
                       const QMap<QString, QString> &recordados = {}, std::optional<bool> conTitulos = {});
// Headings that no column of the catalogue was found for.
QStringList TitulosSinUsar(const HojaLeida &hoja);
// How the columns that hold numbers are written.
csv::Cifras CifrasDe(const qvx::TablaDeCatalogo &tabla, const HojaLeida &hoja);

struct FallaDeImportacion {
    int renglon; // line of the text
    QString columna;
    QString valor;
    QString motivo; // a sentence on what is expected
};

struct FilaImportada {
    enum class Clase { Nueva, Cambiada, Igual, Repetida, Erronea };
    int renglon = 0;
    Clase clase = Clase::Erronea;
    bool conAcentos = false;      // a wrong encoding would show it wrongly
    QStringList escritos;         // the cells as they came, as ColumnasDeImportacion; null without a column of theirs
    QString clave;                // in its mask, "" when it is wrong
    qvx::CambioDeCatalogo cambio; // of a row that is not wrong; the same twice where nothing changes
    QList<FallaDeImportacion> fallas;
    QString aviso; // what is to be known of a row that is not wrong
};
// "nueva", "cambiada"...
QString NombreDe(FilaImportada::Clase clase);

struct ImportacionDeCatalogo {
    QList<FilaImportada> filas;

    int Cuantas(FilaImportada::Clase clase) const;
    QString Cuentas() const;                      // in one sentence
    QList<qvx::CambioDeCatalogo> Cambios() const; // of new and changed rows
    Hoja Errores() const;                         // as a table to be saved
};
// Judges every row by the rules of the catalogue.
ImportacionDeCatalogo JuzgarImportacion(const qvx::TablaDeCatalogo &tabla, const qvx::SituacionDeCatalogo &situacion,
                                        const HojaLeida &hoja, csv::Decimal decimal);
