#pragma once

#include "app/reportes/Impreso.h"

#include <QPagedPaintDevice>
#include <functional>

class QPainter;

namespace impreso
{

// Is told how far the work is, of how much, and answers whether it goes on.
using Avance = std::function<bool(int hecho, int todo)>;

// Puts a report on the pages of a printer or a PDF, in two rounds: where each page begins, and then each page with its
// number of how many. Rows are not split, headings of tables are repeated, and no heading is alone at a page's end.
class Paginador
{
public:
    Paginador(const Documento &documento, QPagedPaintDevice &hoja);

    // Where pages begin. False when it was stopped.
    bool Repartir(const Avance &avance);
    // The first block of each page.
    const QList<qsizetype> &Comienzos() const { return comienzos; }
    // Of each page the title that it goes on with, "" where it begins one.
    const QList<QString> &Siguen() const { return siguen; }
    int Paginas() const { return static_cast<int>(comienzos.size()); }
    void Pintar(QPainter &pintor, int pagina) const;

private:
    double Puntos(double puntos) const { return puntos * resolucion / 72; }
    QFont Letra(double puntos, bool negrita) const;
    QFont LetraDe(const Bloque &bloque) const;
    QRectF Cuerpo() const;
    QList<QRectF> Celdas(const Tabla &tabla, double arriba, double alto) const;
    // With dibujar at a place, else only how high it is.
    double Texto(const QString &texto, const QFont &letra, const QRectF &sitio, bool derecha, QPainter *pintor) const;
    double Poner(const Bloque &bloque, double arriba, QPainter *pintor) const;
    double Fila(const Bloque &bloque, double arriba, QPainter *pintor) const;
    double Cabeza(int tabla, double arriba, QPainter *pintor) const;
    double Datos(const Bloque &bloque, double arriba, QPainter *pintor) const;
    double Campos(const Bloque &bloque, double arriba, QPainter *pintor) const;
    double Firmas(const Bloque &bloque, double arriba, QPainter *pintor) const;
    double Recuadro(const Bloque &bloque, double arriba, QPainter *pintor) const;
    // The height of a block with those that it must not be parted from.
    double Juntos(qsizetype desde) const;
    bool ConCabeza(qsizetype bloque) const;
    void Encabezar(QPainter &pintor, const QString &sigue) const;
    void Numerar(QPainter &pintor, int pagina) const;

    const Documento &documento;
    QPagedPaintDevice &hoja;
    double resolucion;
    QSizeF area; // of the page inside its margins
    QList<qsizetype> comienzos;
    QList<QString> siguen;
    QList<double> alturas;
    QList<double> cabezas; // of each table its heading's height
};

} // namespace impreso
