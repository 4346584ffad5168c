#include "app/reportes/Paginador.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

namespace impreso
{

namespace
{

// In points.
constexpr double LetraNormal = 8.5;
constexpr double LetraDeTitulo = 13;
constexpr double LetraDeSeccion = 10;
constexpr double LetraDePie = 7.5;
constexpr double Margen = 3;          // inside a cell
constexpr double Sangria = 10;        // of a level
constexpr double SangriaMayor = 0.3;  // of the width: below it the deepest still have room
constexpr double Separacion = 6;      // of a text behind a number
constexpr double AltoConCasilla = 14; // so that there is room to write
constexpr double Casilla = 9;         // its side
constexpr double SobreCasilla = 1.5;  // that the text stands lower, beside the middle of the box
constexpr double RenglonEscrito = 22; // room for handwriting
constexpr double AltoDePie = 16;
constexpr int MaximoDeLineas = 14;         // of a cell: what is longer would not find a page, and ends with "…"
constexpr qsizetype MaximoDeLetras = 5000; // that so many lines may hold

const QColor Gris(0x55, 0x55, 0x55);
const QColor Raya(0xb8, 0xb8, 0xb8);
const QColor Sombra(0xe9, 0xec, 0xef);

} // namespace

Paginador::Paginador(const Documento &documento_, QPagedPaintDevice &hoja_)
    : documento(documento_)
    , hoja(hoja_)
    , resolucion(hoja_.logicalDpiY())
    , area(hoja_.pageLayout().paintRectPixels(hoja_.logicalDpiX()).size())
{
}

QFont Paginador::Letra(double puntos, bool negrita) const
{
    QFont letra("DejaVu Sans");
    letra.setPointSizeF(puntos);
    letra.setBold(negrita);
    return letra;
}

QFont Paginador::LetraDe(const Bloque &bloque) const
{
    if (bloque.clase == Bloque::Clase::Titulo)
        return Letra(LetraDeTitulo, true);
    if (bloque.clase == Bloque::Clase::Seccion)
        return Letra(LetraDeSeccion, true);
    return Letra(LetraNormal, bloque.negrita);
}

// Between the heading and the foot.
QRectF Paginador::Cuerpo() const
{
    const double cabeza = Puntos(LetraDeTitulo * 1.6 + LetraNormal * 1.8 + 8);
    return {0, cabeza, area.width(), area.height() - cabeza - Puntos(AltoDePie)};
}

double Paginador::Texto(const QString &texto, const QFont &letra, const QRectF &sitio, bool derecha,
                        QPainter *pintor) const
{
    if (texto.size() > MaximoDeLetras)
        return Texto(texto.left(MaximoDeLetras - 1) + "…", letra, sitio, derecha, pintor);
    const QFontMetricsF medidas(letra, &hoja);
    const double ancho = medidas.horizontalAdvance(texto);
    if (ancho <= sitio.width() && !texto.contains(QLatin1Char('\n'))) { // most are
        if (pintor) {
            pintor->setFont(letra);
            pintor->drawText(QPointF(derecha ? sitio.right() - ancho : sitio.left(), sitio.top() + medidas.ascent()),
                             texto);
        }
        return medidas.height();
    }
    if (derecha) { // a number is never broken: it would be read as another
        QFont menor = letra;
        menor.setPointSizeF(letra.pointSizeF() * sitio.width() / ancho * 0.98);
        const double suyo = QFontMetricsF(menor, &hoja).horizontalAdvance(texto);
        if (pintor) {
            pintor->setFont(menor);
            pintor->drawText(QPointF(sitio.right() - suyo, sitio.top() + medidas.ascent()), texto);
        }
        return medidas.height();
    }
    QString partido = texto;
    QTextLayout disposicion(partido.replace(QLatin1Char('\n'), QChar::LineSeparator), letra, &hoja);
    QTextOption opcion(Qt::AlignLeft);
    opcion.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    disposicion.setTextOption(opcion);
    disposicion.beginLayout();
    double alto = 0;
    qsizetype puestas = 0; // letters
    for (int linea = 0; linea < MaximoDeLineas; ++linea) {
        QTextLine renglon = disposicion.createLine();
        if (!renglon.isValid())
            break;
        renglon.setLineWidth(std::max(1.0, sitio.width()));
        renglon.setPosition(QPointF(0, alto));
        alto += renglon.height();
        puestas = renglon.textStart() + renglon.textLength();
    }
    disposicion.endLayout();
    if (puestas < texto.size())
        return Texto(texto.left(std::max<qsizetype>(0, puestas - 2)) + "…", letra, sitio, derecha, pintor);
    if (pintor)
        disposicion.draw(pintor, sitio.topLeft());
    return alto;
}

QList<QRectF> Paginador::Celdas(const Tabla &tabla, double arriba, double alto) const
{
    double todo = 0;
    for (const Columna &columna : tabla.columnas)
        todo += columna.ancho;
    QList<QRectF> celdas;
    double izquierda = 0;
    for (const Columna &columna : tabla.columnas) {
        const double ancho = area.width() * columna.ancho / todo;
        celdas.append({izquierda, arriba, ancho, alto});
        izquierda += ancho;
    }
    return celdas;
}

double Paginador::Cabeza(int tabla, double arriba, QPainter *pintor) const
{
    Bloque bloque;
    bloque.clase = Bloque::Clase::Fila;
    bloque.tabla = tabla;
    bloque.negrita = true;
    bloque.sombra = true;
    for (const Columna &columna : documento.tablas.at(tabla).columnas)
        bloque.textos.append(columna.titulo);
    return Fila(bloque, arriba, pintor);
}

double Paginador::Fila(const Bloque &bloque, double arriba, QPainter *pintor) const
{
    const Tabla &tabla = documento.tablas.at(bloque.tabla);
    const QFont letra = LetraDe(bloque);
    const double margen = Puntos(Margen);
    const double sangria = std::min(Puntos(Sangria) * bloque.nivel, area.width() * SangriaMayor);
    const bool tramo = bloque.clase == Bloque::Clase::Tramo;
    double alto = bloque.casilla ? Puntos(AltoConCasilla) : 0;
    const QList<QRectF> celdas = tramo ? QList<QRectF>{{0, arriba, area.width(), 0}} : Celdas(tabla, arriba, 0);
    const auto poner = [&](QPainter *con) {
        for (qsizetype i = 0; i < celdas.size() && i < bloque.textos.size(); ++i) {
            QRectF sitio = celdas.at(i).adjusted(margen, margen / 2, -margen, 0);
            const bool derecha = !tramo && tabla.columnas.at(i).derecha;
            if (i == 0)
                sitio.setLeft(sitio.left() + sangria + (bloque.casilla ? Puntos(Casilla * 1.6) : 0));
            else if (tabla.columnas.at(i - 1).derecha && !derecha)
                sitio.setLeft(sitio.left() + Puntos(Separacion));
            if (bloque.casilla)
                sitio.translate(0, Puntos(SobreCasilla));
            alto = std::max(alto, Texto(bloque.textos.at(i), letra, sitio, derecha, con));
        }
    };
    poner(nullptr);
    alto += margen + (bloque.casilla ? Puntos(SobreCasilla) : 0);
    if (!pintor)
        return alto;
    if (bloque.sombra)
        pintor->fillRect(QRectF(0, arriba, area.width(), alto), Sombra);
    pintor->setPen(QPen(Raya, Puntos(0.4)));
    pintor->drawLine(QPointF(0, arriba + alto), QPointF(area.width(), arriba + alto));
    pintor->setPen(Qt::black);
    if (bloque.casilla) {
        pintor->setPen(QPen(Qt::black, Puntos(0.7)));
        pintor->drawRect(QRectF(margen + sangria, arriba + margen / 2 + Puntos(2), Puntos(Casilla), Puntos(Casilla)));
    }
    const double suyo = alto;
    poner(pintor);
    return suyo;
}

double Paginador::Datos(const Bloque &bloque, double arriba, QPainter *pintor) const
{
    const qsizetype pares = std::max<qsizetype>(1, bloque.textos.size() / 2);
    const double ancho = area.width() / static_cast<double>(pares);
    const QFont titulo = Letra(LetraNormal, true);
    const QFont letra = Letra(LetraNormal, false);
    double alto = 0;
    for (qsizetype par = 0; par * 2 + 1 < bloque.textos.size(); ++par) {
        const QString rotulo = bloque.textos.at(par * 2) + ": ";
        const double suyo = QFontMetricsF(titulo, &hoja).horizontalAdvance(rotulo);
        QRectF sitio(ancho * static_cast<double>(par), arriba, ancho - Puntos(Margen), 0);
        Texto(rotulo, titulo, sitio, false, pintor);
        sitio.setLeft(sitio.left() + suyo);
        alto = std::max(alto, Texto(bloque.textos.at(par * 2 + 1), letra, sitio, false, pintor));
    }
    return alto + Puntos(Margen);
}

double Paginador::Campos(const Bloque &bloque, double arriba, QPainter *pintor) const
{
    const double ancho = area.width() / static_cast<double>(std::max<qsizetype>(1, bloque.textos.size()));
    const QFont letra = Letra(LetraNormal, true);
    const QFontMetricsF medidas(letra, &hoja);
    const double abajo = arriba + Puntos(RenglonEscrito);
    for (qsizetype i = 0; pintor && i < bloque.textos.size(); ++i) {
        const QString rotulo = bloque.textos.at(i) + ":";
        const double izquierda = ancho * static_cast<double>(i);
        Texto(rotulo, letra, {izquierda, abajo - medidas.height(), ancho, 0}, false, pintor);
        pintor->setPen(QPen(Qt::black, Puntos(0.5)));
        pintor->drawLine(QPointF(izquierda + medidas.horizontalAdvance(rotulo + " "), abajo),
                         QPointF(izquierda + ancho - Puntos(8), abajo));
    }
    return Puntos(RenglonEscrito + 2);
}

double Paginador::Firmas(const Bloque &bloque, double arriba, QPainter *pintor) const
{
    const double ancho = area.width() / static_cast<double>(std::max<qsizetype>(1, bloque.textos.size()));
    const double abajo = arriba + Puntos(RenglonEscrito * 2);
    const QFont letra = Letra(LetraNormal, false);
    const QFontMetricsF medidas(letra, &hoja);
    for (qsizetype i = 0; pintor && i < bloque.textos.size(); ++i) {
        const double izquierda = ancho * static_cast<double>(i) + Puntos(8);
        pintor->setPen(QPen(Qt::black, Puntos(0.5)));
        pintor->drawLine(QPointF(izquierda, abajo), QPointF(izquierda + ancho - Puntos(16), abajo));
        const double suyo = medidas.horizontalAdvance(bloque.textos.at(i));
        Texto(bloque.textos.at(i), letra, {izquierda + (ancho - Puntos(16) - suyo) / 2, abajo + Puntos(2), suyo + 1, 0},
              false, pintor);
    }
    return Puntos(RenglonEscrito * 2 + 4) + medidas.height();
}

double Paginador::Recuadro(const Bloque &bloque, double arriba, QPainter *pintor) const
{
    const QFont letra = Letra(LetraNormal, true);
    const QFontMetricsF medidas(letra, &hoja);
    const double alto = Puntos(RenglonEscrito) * bloque.renglones + medidas.height();
    if (pintor) {
        pintor->setPen(QPen(Qt::black, Puntos(0.6)));
        pintor->drawRect(QRectF(0, arriba + Puntos(4), area.width(), alto));
        Texto(bloque.textos.value(0) + ":", letra, {Puntos(Margen), arriba + Puntos(5), area.width(), 0}, false,
              pintor);
        pintor->setPen(QPen(Raya, Puntos(0.4)));
        for (int i = 1; i < bloque.renglones; ++i) {
            const double y = arriba + Puntos(4) + medidas.height() + Puntos(RenglonEscrito) * i;
            pintor->drawLine(QPointF(Puntos(Margen), y), QPointF(area.width() - Puntos(Margen), y));
        }
        pintor->setPen(Qt::black);
    }
    return alto + Puntos(8);
}

double Paginador::Poner(const Bloque &bloque, double arriba, QPainter *pintor) const
{
    using Clase = Bloque::Clase;
    if (pintor)
        pintor->setPen(Qt::black);
    switch (bloque.clase) {
    case Clase::Fila:
    case Clase::Tramo:
        return Fila(bloque, arriba, pintor);
    case Clase::Datos:
        return Datos(bloque, arriba, pintor);
    case Clase::Campos:
        return Campos(bloque, arriba, pintor);
    case Clase::Firmas:
        return Firmas(bloque, arriba, pintor);
    case Clase::Recuadro:
        return Recuadro(bloque, arriba, pintor);
    case Clase::Salto:
        return 0;
    default:
        break;
    }
    const double sobre = bloque.clase == Clase::Seccion ? Puntos(8) : 0;
    const double alto =
        Texto(bloque.textos.value(0), LetraDe(bloque), {0, arriba + sobre, area.width(), 0}, false, pintor);
    if (bloque.clase == Clase::Seccion && pintor) {
        pintor->setPen(QPen(Gris, Puntos(0.8)));
        pintor->drawLine(QPointF(0, arriba + sobre + alto), QPointF(area.width(), arriba + sobre + alto));
        pintor->setPen(Qt::black);
    }
    return sobre + alto + Puntos(Margen);
}

// A table's heading stands over its first row, and over the first one of each page.
bool Paginador::ConCabeza(qsizetype bloque) const
{
    const int tabla = documento.bloques.at(bloque).tabla;
    return tabla >= 0 && (bloque == 0 || documento.bloques.at(bloque - 1).tabla != tabla);
}

double Paginador::Juntos(qsizetype desde) const
{
    double alto = 0;
    for (qsizetype i = desde; i < documento.bloques.size(); ++i) {
        const Bloque &bloque = documento.bloques.at(i);
        alto += alturas.at(i) + (ConCabeza(i) && i > desde ? cabezas.at(bloque.tabla) : 0);
        if (!bloque.conLoQueSigue || bloque.clase == Bloque::Clase::Salto)
            break;
    }
    return alto;
}

bool Paginador::Repartir(const Avance &avance)
{
    const auto todo = static_cast<int>(documento.bloques.size());
    comienzos = {0};
    siguen = {QString()};
    alturas.clear();
    alturas.reserve(todo);
    cabezas.clear();
    for (int tabla = 0; tabla < documento.tablas.size(); ++tabla)
        cabezas.append(Cabeza(tabla, 0, nullptr));
    for (int i = 0; i < todo; ++i) {
        alturas.append(Poner(documento.bloques.at(i), 0, nullptr));
        if (!avance(i, todo * 2))
            return false;
    }
    const double cabe = Cuerpo().height();
    double usado = 0;
    QString titulo;
    for (qsizetype i = 0; i < todo; ++i) {
        const Bloque &bloque = documento.bloques.at(i);
        if (bloque.clase == Bloque::Clase::Titulo)
            titulo = bloque.textos.value(0);
        if (bloque.clase == Bloque::Clase::Salto) {
            usado = cabe + 1;
            continue;
        }
        const double cabeza = bloque.tabla >= 0 ? cabezas.at(bloque.tabla) : 0;
        const bool primero = i == comienzos.constLast();
        // What is longer than a page together begins where it comes.
        const double junto = Juntos(i);
        const double pide = (junto + cabeza > cabe ? alturas.at(i) : junto) + (ConCabeza(i) ? cabeza : 0);
        if (!primero && usado + pide > cabe) {
            comienzos.append(i);
            siguen.append(bloque.clase == Bloque::Clase::Titulo ? QString() : titulo);
            usado = cabeza;
        } else if (primero || ConCabeza(i)) {
            usado += cabeza;
        }
        usado += alturas.at(i);
    }
    return true;
}

void Paginador::Encabezar(QPainter &pintor, const QString &sigue) const
{
    const QFont titulo = Letra(LetraDeTitulo, true);
    const QFont letra = Letra(LetraNormal, false);
    const double alto = QFontMetricsF(titulo, &hoja).height();
    pintor.setPen(Qt::black);
    const QFontMetricsF medidas(letra, &hoja);
    const QString planta = medidas.elidedText(documento.planta, Qt::ElideRight, area.width() * 0.45);
    const double suyo = medidas.horizontalAdvance(planta);
    Texto(QFontMetricsF(titulo, &hoja).elidedText(documento.titulo, Qt::ElideRight, area.width() - suyo - Puntos(10)),
          titulo, {0, 0, area.width(), 0}, false, &pintor);
    Texto(planta, letra, {area.width() - suyo - 1, 0, suyo + 1, 0}, true, &pintor);
    double sitio = area.width();
    if (!sigue.isEmpty()) {
        const QString seguido = medidas.elidedText(sigue + " (sigue)", Qt::ElideMiddle, area.width() * 0.6);
        const double largo = medidas.horizontalAdvance(seguido);
        Texto(seguido, letra, {area.width() - largo - 1, alto, largo + 1, 0}, true, &pintor);
        sitio -= largo + Puntos(10);
    }
    Texto(medidas.elidedText(documento.tipo, Qt::ElideRight, sitio), letra, {0, alto, area.width(), 0}, false, &pintor);
    const double y = alto + medidas.height() + Puntos(2);
    pintor.setPen(QPen(Gris, Puntos(1)));
    pintor.drawLine(QPointF(0, y), QPointF(area.width(), y));
}

void Paginador::Numerar(QPainter &pintor, int pagina) const
{
    const QFont letra = Letra(LetraDePie, false);
    const QFontMetricsF medidas(letra, &hoja);
    const double y = area.height() - medidas.height();
    const QString numero = QString("Página %1 de %2").arg(pagina + 1).arg(Paginas());
    const double suyo = medidas.horizontalAdvance(numero);
    pintor.setPen(QPen(Raya, Puntos(0.5)));
    pintor.drawLine(QPointF(0, y - Puntos(2)), QPointF(area.width(), y - Puntos(2)));
    pintor.setPen(Gris);
    Texto(medidas.elidedText(documento.pie, Qt::ElideMiddle, area.width() - suyo - Puntos(10)), letra,
          {0, y, area.width(), 0}, false, &pintor);
    Texto(numero, letra, {area.width() - suyo - 1, y, suyo + 1, 0}, true, &pintor);
}

void Paginador::Pintar(QPainter &pintor, int pagina) const
{
    Encabezar(pintor, siguen.at(pagina));
    Numerar(pintor, pagina);
    const qsizetype desde = comienzos.at(pagina);
    const qsizetype hasta = pagina + 1 < Paginas() ? comienzos.at(pagina + 1) : documento.bloques.size();
    double arriba = Cuerpo().top();
    for (qsizetype i = desde; i < hasta; ++i) {
        const Bloque &bloque = documento.bloques.at(i);
        if (bloque.tabla >= 0 && (i == desde || ConCabeza(i)))
            arriba += Cabeza(bloque.tabla, arriba, &pintor);
        arriba += Poner(bloque, arriba, &pintor);
    }
}

} // namespace impreso
