#pragma once

#include "app/Ajustes.h"

#include <QDialog>
#include <memory>
#include <optional>

class FiltroDeLista;
class ModeloCostos;

namespace Ui
{
class DialogoCostos;
}

// "Actualizar costos": the lines whose cost is not the catalogue's, what they and their services would cost, and the
// writing of those that are ticked.
class DialogoCostos : public QDialog
{
    Q_OBJECT

public:
    // tipoEquipo: the one on the screen, "" for none. Reads at once; raises data errors.
    DialogoCostos(const QString &tipoEquipo, QWidget *duena);
    ~DialogoCostos() override;

    // Something was written: what a screen shows is no longer what the database holds.
    bool HuboCambios() const { return huboCambios; }

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    void Leer();
    void Sumar();
    void Marcar(bool marcar);
    void AlternarSeleccion();
    void Actualizar();
    bool Consiente();

    std::unique_ptr<Ui::DialogoCostos> ui;
    ModeloCostos *modelo;
    FiltroDeLista *lista;
    bool puede = false; // whoever is signed in may change plans
    bool huboCambios = false;
    std::optional<ajustes::Columnas> columnas; // goes before its list
};
