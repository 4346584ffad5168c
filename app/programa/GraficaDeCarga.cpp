#include "app/programa/GraficaDeCarga.h"

#include "data/Texto.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr int MaximoDeOficios = 7; // with a colour of their own
constexpr double AnchoDeBarra = 0.66;
constexpr int Rayas = 5;
// Told apart by their lightness too, on light and on dark; none is red, which is what is too much.
constexpr std::array<QRgb, MaximoDeOficios + 1> Colores{0xff2f6fb5, 0xffe0a030, 0xff3f9a8a, 0xff8e6bbf,
                                                        0xff7fb8e6, 0xff6d7f2a, 0xffc4a6d6, 0xff8a8f98};
const QColor Exceso(0xd6, 0x28, 0x28);

QString Horas(double horas)
{
    return qvx::NumeroConFormato(horas, "#,##0.##") + " HR";
}

// A round step of which a few make up the height.
double PasoDe(double maximo)
{
    const double grueso = std::pow(10.0, std::floor(std::log10(maximo / Rayas)));
    for (const double veces : {1.0, 2.0, 5.0})
        if (grueso * veces * Rayas >= maximo)
            return grueso * veces;
    return grueso * 10;
}

} // namespace

GraficaDeCarga::GraficaDeCarga(QWidget *padre) : QWidget(padre)
{
    setObjectName("grfCarga");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName("Mano de obra por oficio y mes");
}

void GraficaDeCarga::Poner(const programa::PlanMedido &medido, const programa::Programa &programa,
                           programa::Carga carga)
{
    meses.clear();
    oficios.clear();
    totales.clear();
    capacidad.clear();
    for (int mes = 0; mes < programa.meses.Cuantos(); ++mes)
        meses.append(programa.meses.Nombre(mes));
    std::stable_sort(carga.oficios.begin(), carga.oficios.end(),
                     [](const programa::Serie &una, const programa::Serie &otra) { return una.total > otra.total; });
    for (const programa::Serie &serie : std::as_const(carga.oficios)) {
        const bool aparte = oficios.size() < MaximoDeOficios;
        if (aparte || oficios.size() == MaximoDeOficios) {
            const lectura::Producto &producto = medido.lineas.productos.at(serie.producto);
            oficios.append({aparte ? serie.producto : -1,
                            aparte ? (producto.descripcion.isEmpty() ? producto.clave : producto.descripcion)
                                   : QString("Otros oficios"),
                            QList<double>(meses.size(), 0)});
        }
        for (int mes = 0; mes < meses.size(); ++mes)
            oficios.last().porMes[mes] += serie.porMes.at(mes).Numero();
    }
    for (const programa::Cantidad &total : std::as_const(carga.porMes))
        totales.append(total.Numero());
    for (const programa::Cantidad &cabe : std::as_const(carga.capacidad))
        capacidad.append(cabe.Numero());
    mesActual = std::clamp(mesActual, 0, std::max(0, static_cast<int>(meses.size()) - 1));
    oficioActual = -1;
    Describir();
    update();
}

QSize GraficaDeCarga::sizeHint() const
{
    return {fontMetrics().height() * 40, fontMetrics().height() * 18};
}

QSize GraficaDeCarga::minimumSizeHint() const
{
    return {fontMetrics().height() * 20, fontMetrics().height() * 11};
}

int GraficaDeCarga::AltoDeLeyenda() const
{
    const int linea = fontMetrics().height() * 3 / 2;
    int ancho = 0;
    int lineas = 1;
    for (const Oficio &oficio : oficios) {
        const int suyo = fontMetrics().horizontalAdvance(oficio.nombre) + linea * 2;
        if (ancho > 0 && ancho + suyo > width() - linea) {
            ++lineas;
            ancho = 0;
        }
        ancho += suyo;
    }
    return (lineas + 1) * linea; // the last one is of capacity and excess
}

QRectF GraficaDeCarga::Campo() const
{
    const int letra = fontMetrics().height();
    const int izquierda = fontMetrics().horizontalAdvance(Horas(Maximo())) + letra;
    return QRectF(rect()).adjusted(izquierda, AltoDeLeyenda() + letra / 2.0, -letra, -letra * 2.0);
}

double GraficaDeCarga::Maximo() const
{
    double maximo = 1;
    for (const QList<double> &alturas : {totales, capacidad})
        for (const double altura : alturas)
            maximo = std::max(maximo, altura);
    const double paso = PasoDe(maximo);
    return std::ceil(maximo / paso) * paso;
}

QRectF GraficaDeCarga::Columna(int mes) const
{
    const QRectF campo = Campo();
    const double ancho = campo.width() / static_cast<double>(std::max<qsizetype>(1, meses.size()));
    return {campo.left() + ancho * mes, campo.top(), ancho, campo.height()};
}

QRectF GraficaDeCarga::Tramo(int mes, int oficio) const
{
    const QRectF columna = Columna(mes);
    double abajo = 0;
    for (int i = 0; i < oficio; ++i)
        abajo += oficios.at(i).porMes.at(mes);
    const double escala = columna.height() / Maximo();
    const double alto = oficios.at(oficio).porMes.at(mes) * escala;
    return {columna.left() + columna.width() * (1 - AnchoDeBarra) / 2, columna.bottom() - abajo * escala - alto,
            columna.width() * AnchoDeBarra, alto};
}

QPair<int, int> GraficaDeCarga::En(QPointF punto) const
{
    for (int mes = 0; mes < meses.size(); ++mes) {
        const QRectF columna = Columna(mes);
        if (punto.x() < columna.left() || punto.x() >= columna.right() || punto.y() < columna.top())
            continue;
        for (int oficio = 0; oficio < oficios.size(); ++oficio)
            if (Tramo(mes, oficio).contains(punto))
                return {mes, oficio};
        return {mes, -1};
    }
    return {-1, -1};
}

QString GraficaDeCarga::Dicho(int mes, int oficio) const
{
    if (mes < 0 || mes >= meses.size())
        return {};
    QString dicho = meses.at(mes) + ": " + Horas(totales.at(mes));
    if (oficio >= 0)
        dicho = meses.at(mes) + ", " + oficios.at(oficio).nombre + ": " + Horas(oficios.at(oficio).porMes.at(mes))
                + " de " + Horas(totales.at(mes));
    if (!capacidad.isEmpty())
        dicho += ", capacidad " + Horas(capacidad.at(mes))
                 + (totales.at(mes) > capacidad.at(mes) ? ", faltan " + Horas(totales.at(mes) - capacidad.at(mes))
                                                        : QString());
    return dicho;
}

// For who cannot see it.
void GraficaDeCarga::Describir()
{
    setAccessibleDescription(Dicho(mesActual, oficioActual));
}

void GraficaDeCarga::paintEvent(QPaintEvent *)
{
    QPainter pintor(this);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.fillRect(rect(), palette().base());
    PintarEjes(pintor);
    PintarBarras(pintor);
    PintarCapacidad(pintor);
    PintarLeyenda(pintor);
    if (totales.isEmpty() || *std::max_element(totales.begin(), totales.end()) <= 0)
        pintor.drawText(Campo(), Qt::AlignCenter, "No hay mano de obra en HR en este programa.");
}

void GraficaDeCarga::PintarEjes(QPainter &pintor) const
{
    const QRectF campo = Campo();
    const double maximo = Maximo();
    const double paso = PasoDe(maximo);
    QColor raya = palette().text().color();
    raya.setAlphaF(0.2F);
    for (int cual = 0; cual <= std::lround(maximo / paso); ++cual) {
        const double horas = cual * paso;
        const double y = campo.bottom() - campo.height() * horas / maximo;
        pintor.setPen(raya);
        pintor.drawLine(QPointF(campo.left(), y), QPointF(campo.right(), y));
        pintor.setPen(palette().text().color());
        pintor.drawText(QRectF(0, y - fontMetrics().height(), campo.left() - fontMetrics().height() / 2.0,
                               fontMetrics().height() * 2),
                        Qt::AlignRight | Qt::AlignVCenter, Horas(horas));
    }
    for (int mes = 0; mes < meses.size(); ++mes) {
        const QRectF columna = Columna(mes);
        const bool cabe = fontMetrics().horizontalAdvance(meses.at(mes)) < columna.width();
        pintor.drawText(QRectF(columna.left(), columna.bottom(), columna.width(), fontMetrics().height() * 1.8),
                        Qt::AlignCenter, cabe ? meses.at(mes) : meses.at(mes).left(3));
    }
}

void GraficaDeCarga::PintarBarras(QPainter &pintor) const
{
    for (int mes = 0; mes < meses.size(); ++mes) {
        for (int oficio = 0; oficio < oficios.size(); ++oficio)
            pintor.fillRect(Tramo(mes, oficio), QColor(Colores.at(oficio)));
        if (hasFocus() && mes == mesActual) {
            const QRectF columna = Columna(mes);
            const QRectF marco =
                oficioActual < 0 ? columna.adjusted(2, 0, -2, 0) : Tramo(mes, oficioActual).adjusted(-2, -2, 2, 2);
            pintor.setPen(QPen(palette().text().color(), 1, Qt::DashLine));
            pintor.setBrush(Qt::NoBrush);
            pintor.drawRect(marco);
        }
    }
}

void GraficaDeCarga::PintarCapacidad(QPainter &pintor) const
{
    if (capacidad.isEmpty())
        return;
    const double maximo = Maximo();
    QPainterPath linea;
    for (int mes = 0; mes < meses.size(); ++mes) {
        const QRectF columna = Columna(mes);
        const double y = columna.bottom() - columna.height() * capacidad.at(mes) / maximo;
        if (totales.at(mes) > capacidad.at(mes)) {
            const double arriba = columna.bottom() - columna.height() * totales.at(mes) / maximo;
            const QRectF exceso(columna.left() + columna.width() * (1 - AnchoDeBarra) / 2, arriba,
                                columna.width() * AnchoDeBarra, y - arriba);
            QColor velo = Exceso;
            velo.setAlphaF(0.75F);
            pintor.fillRect(exceso, velo);
            pintor.setPen(QPen(Exceso, 2));
            pintor.setBrush(Qt::NoBrush);
            pintor.drawRect(exceso);
        }
        if (mes == 0)
            linea.moveTo(columna.left(), y);
        else
            linea.lineTo(columna.left(), y);
        linea.lineTo(columna.right(), y);
    }
    pintor.setBrush(Qt::NoBrush);
    pintor.setPen(QPen(palette().text().color(), 2));
    pintor.drawPath(linea);
}

void GraficaDeCarga::PintarLeyenda(QPainter &pintor) const
{
    const int linea = fontMetrics().height() * 3 / 2;
    const int lado = fontMetrics().height() * 2 / 3;
    int x = linea / 2;
    int y = 0;
    const auto poner = [&](const QString &nombre, const std::function<void(const QRectF &)> &muestra) {
        const int ancho = fontMetrics().horizontalAdvance(nombre) + linea * 2;
        if (x > linea / 2 && x + ancho > width() - linea / 2) {
            x = linea / 2;
            y += linea;
        }
        muestra({double(x), y + (linea - lado) / 2.0, double(lado), double(lado)});
        pintor.setPen(palette().text().color());
        pintor.drawText(QRectF(x + lado * 1.5, y, ancho, linea), Qt::AlignLeft | Qt::AlignVCenter, nombre);
        x += ancho;
    };
    for (int oficio = 0; oficio < oficios.size(); ++oficio)
        poner(oficios.at(oficio).nombre,
              [&](const QRectF &sitio) { pintor.fillRect(sitio, QColor(Colores.at(oficio))); });
    if (capacidad.isEmpty())
        return;
    x = linea / 2;
    y = AltoDeLeyenda() - linea;
    poner("Capacidad", [&](const QRectF &sitio) {
        pintor.setPen(QPen(palette().text().color(), 2));
        pintor.drawLine(QPointF(sitio.left(), sitio.center().y()), QPointF(sitio.right(), sitio.center().y()));
    });
    poner("Sobre la capacidad", [&](const QRectF &sitio) { pintor.fillRect(sitio, Exceso); });
}

void GraficaDeCarga::mousePressEvent(QMouseEvent *evento)
{
    const auto [mes, oficio] = En(evento->position());
    if (mes < 0 || evento->button() != Qt::LeftButton)
        return;
    mesActual = mes;
    oficioActual = oficio;
    Describir();
    update();
    Q_EMIT Elegido(mes, oficio < 0 ? -1 : oficios.at(oficio).producto);
}

void GraficaDeCarga::keyPressEvent(QKeyEvent *evento)
{
    const int ultimo = static_cast<int>(meses.size()) - 1;
    switch (evento->key()) {
    case Qt::Key_Left:
        mesActual = std::max(0, mesActual - 1);
        break;
    case Qt::Key_Right:
        mesActual = std::min(ultimo, mesActual + 1);
        break;
    case Qt::Key_Up:
        oficioActual = std::min(static_cast<int>(oficios.size()) - 1, oficioActual + 1);
        break;
    case Qt::Key_Down:
        oficioActual = std::max(-1, oficioActual - 1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (mesActual >= 0 && mesActual <= ultimo)
            Q_EMIT Elegido(mesActual, oficioActual < 0 ? -1 : oficios.at(oficioActual).producto);
        return;
    default:
        return QWidget::keyPressEvent(evento);
    }
    Describir();
    const QPointF sitio = Columna(mesActual).center();
    QToolTip::showText(mapToGlobal(sitio.toPoint()), Dicho(mesActual, oficioActual), this);
    update();
}

void GraficaDeCarga::focusInEvent(QFocusEvent *evento)
{
    update();
    QWidget::focusInEvent(evento);
}

void GraficaDeCarga::focusOutEvent(QFocusEvent *evento)
{
    update();
    QWidget::focusOutEvent(evento);
}

bool GraficaDeCarga::event(QEvent *evento)
{
    if (evento->type() == QEvent::ToolTip) {
        const auto *ayuda = static_cast<QHelpEvent *>(evento);
        const auto [mes, oficio] = En(ayuda->pos());
        QToolTip::showText(ayuda->globalPos(), Dicho(mes, oficio), this);
        return true;
    }
    return QWidget::event(evento);
}
