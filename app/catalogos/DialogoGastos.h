#pragma once

#include "app/Ajustes.h"

#include <QDialog>
#include <memory>
#include <optional>

class FiltroDeLista;
class ModeloGastos;

namespace Ui
{
class DialogoGastos;
}

// "Completar tipos de gasto": the spare parts that no expense type on offer pays for, with one to choose for each.
class DialogoGastos : public QDialog
{
    Q_OBJECT

public:
    // tipoEquipo: the one on the screen, "" for none. Reads at once; raises data errors.
    DialogoGastos(const QString &tipoEquipo, QWidget *duena);
    ~DialogoGastos() override;

    // Something was written: what a screen shows is no longer what the database holds.
    bool HuboCambios() const { return huboCambios; }

private:
    void Leer();
    void Ofrecer();
    void Contar();
    void AlSeleccionar();
    void AlElegir();
    void Completar();
    QList<int> Seleccionadas() const;

    std::unique_ptr<Ui::DialogoGastos> ui;
    ModeloGastos *modelo;
    FiltroDeLista *lista;
    bool puede = false; // whoever is signed in may change plans
    bool huboCambios = false;
    std::optional<ajustes::Columnas> columnas; // goes before its list
};
