#pragma once

#include "app/comparar/Fuentes.h"

#include <QWidget>

class ModeloComparacion;
class QCheckBox;
class QLabel;
class QPushButton;
class QTreeView;

// Two plans and in what they differ: what they are, the tree of differences, how many there are, and the way to a
// spreadsheet.
class VistaComparacion : public QWidget
{
    Q_OBJECT

public:
    explicit VistaComparacion(QWidget *padre = nullptr);
    ~VistaComparacion() override;

    void Mostrar(comparar::Comparados comparados);
    const comparar::Comparados &Mostrados() const { return comparados; }

protected:
    void showEvent(QShowEvent *evento) override;

private:
    void Llenar();
    void AjustarColumnas();
    void Exportar();

    comparar::Comparados comparados;
    ModeloComparacion *modelo;
    QTreeView *lvComparacion;
    QLabel *lblLados;
    QLabel *lblAvisos;
    QLabel *lblResumen;
    QCheckBox *chkSoloDiferencias;
    QPushButton *cmdExportar;
};
