#pragma once

#include "app/programa/PlanMedido.h"
#include "app/reportes/Hoja.h"

#include <QTimer>
#include <QWidget>

class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSlider;
class QSpinBox;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// What becomes of the year with another use or another number of machines, beside the scenario that is kept: dates that
// move, hours and cost.
class PanelQueSi : public QWidget
{
    Q_OBJECT

public:
    explicit PanelQueSi(QWidget *padre = nullptr);

    // The kept scenario; they outlive the panel's use of them.
    void Poner(const programa::PlanMedido *medido, const programa::Programa *guardado);
    // What it shows, as a table.
    Hoja Mostrada() const;

Q_SIGNALS:
    // The scenario on the sliders is to become the programme's.
    void Tomado(const qvx::DatosDePrograma &datos);

private:
    void PonerPerillas();
    QWidget *Perilla(const QString &nombre, const QString &titulo, double maximo, int decimales, double valor,
                     const std::function<void(double)> &mover);
    void Calcular();

    const programa::PlanMedido *medido = nullptr;
    const programa::Programa *guardado = nullptr;
    qvx::DatosDePrograma supuesto;
    QList<QVariantList> filas;
    QWidget *perillas = nullptr;
    QLabel *lblFechas;
    qvx::ModeloTabla *modelo;
    qvx::VistaTabla *lvQueSi;
    QPushButton *cmdTomar;
    QPushButton *cmdVolver;
    QTimer espera; // until the slider rests
};
