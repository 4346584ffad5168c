#pragma once

#include <QList>
#include <QPageLayout>
#include <QString>
#include <QStringList>

// A report as values: what stands in it, not where. Paginador puts it on pages.
namespace impreso
{

struct Columna {
    QString titulo;
    double ancho = 1; // beside the others
    bool derecha = false;
};

// A heading of several columns that stands over its rows, on every page anew.
struct Tabla {
    QList<Columna> columnas;
};

// What is never split between two pages.
struct Bloque {
    enum class Clase {
        Titulo,   // in large letters
        Parrafo,  // text over the whole width
        Seccion,  // a heading with a line below
        Fila,     // of a table, a cell for each column
        Tramo,    // of a table, one text over its whole width
        Datos,    // captions and their values, side by side
        Campos,   // captions and room to write behind them, side by side
        Recuadro, // a caption and room to write below it
        Firmas,   // lines to sign on
        Salto     // what follows stands on a page of its own
    };
    Clase clase = Clase::Parrafo;
    QStringList textos; // of Datos caption, value, caption, value
    int tabla = -1;     // whose row it is
    int nivel = 0;      // indented so many times
    int renglones = 1;  // of a Recuadro
    bool negrita = false;
    bool sombra = false;
    bool conLoQueSigue = false; // never the last of its page
    bool casilla = false;       // a row that begins with a box to tick
};

struct Documento {
    QString planta;
    QString titulo;
    QString tipo; // of equipment
    QString pie;  // beside the page's number: date, operator, database
    QPageLayout::Orientation orientacion = QPageLayout::Portrait;
    QList<Tabla> tablas;
    QList<Bloque> bloques;

    int AgregarTabla(const QList<Columna> &columnas);
    void Agregar(Bloque::Clase clase, const QStringList &textos);
    // Of the table that was added last.
    Bloque &Fila(const QStringList &celdas);
    Bloque &Tramo(const QString &texto);
    void Salto();
};

} // namespace impreso
