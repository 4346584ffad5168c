#pragma once

#include "app/Ajustes.h"
#include "plan/Integridad.h"

#include <QDialog>
#include <memory>
#include <optional>

namespace Ui
{
class DialogoIntegridad;
}

// "Revisar integridad": what the tree does not reach, of every equipment type, and its correction with the operator's
// consent.
class DialogoIntegridad : public QDialog
{
    Q_OBJECT

public:
    // Searches at once; raises data errors.
    explicit DialogoIntegridad(QWidget *duena);
    ~DialogoIntegridad() override;

    // Something was corrected: what a screen shows is no longer what the database holds.
    bool HuboCambios() const { return huboCambios; }

private:
    void Buscar();
    QList<int> Seleccionadas() const;
    void AlSeleccionar();
    void OfrecerPartes(const QList<int> &servicios);
    void AlElegirParte();
    void Corregir();
    bool Consiente(const QList<int> &filas);

    std::unique_ptr<Ui::DialogoIntegridad> ui;
    QList<qvx::Correccion> filas; // as the list shows them
    QString tipoOfrecido;         // whose parts cboParte holds
    bool huboCambios = false;
    std::optional<ajustes::Columnas> columnas; // goes before its list
};
