#pragma once

#include "app/programa/PlanMedido.h"

#include <QWidget>

// Hours of labour by month, the trades on top of each other, with the capacity as a stepped line; what is over it is
// red. A trade of a month is chosen with a click, or with the arrows and Enter.
class GraficaDeCarga : public QWidget
{
    Q_OBJECT

public:
    explicit GraficaDeCarga(QWidget *padre = nullptr);

    void Poner(const programa::PlanMedido &medido, const programa::Programa &programa, programa::Carga carga);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    // mes: its place; oficio: the place of its product, -1 for the whole month.
    void Elegido(int mes, int oficio);

protected:
    void paintEvent(QPaintEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;
    void focusOutEvent(QFocusEvent *evento) override;
    bool event(QEvent *evento) override;

private:
    struct Oficio {
        int producto = -1; // -1: several, of those that have few hours
        QString nombre;
        QList<double> porMes;
    };
    // Where the bars stand.
    QRectF Campo() const;
    double Maximo() const;
    QRectF Columna(int mes) const;
    QRectF Tramo(int mes, int oficio) const;
    int AltoDeLeyenda() const;
    // What is at a place: month and trade; no month outside.
    QPair<int, int> En(QPointF punto) const;
    QString Dicho(int mes, int oficio) const;
    void PintarEjes(QPainter &pintor) const;
    void PintarBarras(QPainter &pintor) const;
    void PintarCapacidad(QPainter &pintor) const;
    void PintarLeyenda(QPainter &pintor) const;
    void Describir();

    QStringList meses;
    QList<Oficio> oficios; // from below
    QList<double> totales;
    QList<double> capacidad; // empty for none
    int mesActual = 0;
    int oficioActual = -1;
};
