#pragma once

#include "plan/Deshacer.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;
class QVBoxLayout;
class VistaComparacion;

namespace historial
{

// What a person wants to take back.
struct Peticion {
    enum class Que { Deshacer, Rehacer, DejarComoAntes };
    Que que = Que::Deshacer;
    qint64 operacion = 0;
    QString tipo; // of DejarComoAntes
};

} // namespace historial

// What becomes of the plans when operations are taken back, before anybody consents; or what stands in the way, and the
// ways around it.
class DialogoDeshacer : public QDialog
{
    Q_OBJECT

public:
    // Rehearses it. Raises an ErrorEjecucion in Spanish for what cannot be taken back at all, and data errors.
    DialogoDeshacer(const historial::Peticion &peticion, QWidget *duena);

    // True when it was done.
    bool Preguntar() { return exec() == Accepted; }
    const qvx::Deshecho &Hecho() const { return deshecho; }

protected:
    void showEvent(QShowEvent *evento) override;

private:
    void Disponer();
    QRadioButton *Opcion(QVBoxLayout &disposicion, const QString &nombre, const QString &texto);
    qvx::Deshecho Hacer(bool ensayo) const;
    void Ensayar();
    void Mostrar();
    void MostrarPlan();
    void Aceptar();
    bool HuboMas() const;

    const historial::Peticion peticion;
    qvx::Deshecho deshecho; // as it was rehearsed last, or done
    QString verbo;
    QLabel *lblExplicacion;
    QLabel *lblReparos;
    QListWidget *lvReparos;
    QRadioButton *optPosteriores = nullptr;
    QRadioButton *optOtraClave = nullptr;
    QComboBox *cboPlan;
    VistaComparacion *vista;
    QLabel *lblResumen;
    QPushButton *cmdAceptar;
};
