#pragma once

#include "app/historial/DialogoDeshacer.h"
#include "plan/Historia.h"

#include <QTimer>
#include <QWidget>

class FiltrosDeHistorial;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// What was done to the plans, operation by operation, what each of them changed, and the way back.
class PaginaHistorial : public QWidget
{
    Q_OBJECT

public:
    explicit PaginaHistorial(QWidget *padre = nullptr);
    ~PaginaHistorial() override;

    // Shows what was done to a plan alone, to a part of it, or to a service.
    void Limitar(const QString &tipo, const QString &parte, const QString &folio);

public Q_SLOTS:
    // Reads everything anew, and stays on its operation.
    void Actualizar();

Q_SIGNALS:
    // A plan was written.
    void PlanCambiado();

protected:
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QWidget *Busqueda();
    QWidget *Detalle();
    QWidget *Acciones();
    QPushButton *Boton(const QString &nombre, const QString &texto, void (PaginaHistorial::*hacer)());
    void Leer();
    void Elegir(qint64 numero);
    const qvx::Operacion *Elegida() const;
    void AlElegir();
    void LeerDetalle();
    void MostrarDetalle();
    void Medir();
    void Contar();
    void Deshacer();
    void DejarComoAntes();
    void Preguntar(const historial::Peticion &peticion);
    QString PlanPorDejar() const;

    QList<qvx::Operacion> operaciones;
    bool puede = false; // whoever is signed in may change plans
    FiltrosDeHistorial *filtros;
    QLineEdit *txtBuscar;
    QLabel *lblCuenta;
    qvx::ModeloTabla *modelo;
    qvx::VistaTabla *lvOperaciones;
    QComboBox *cboPlan;
    QLabel *lblDetalle;
    QPushButton *cmdVerDetalle;
    VistaComparacion *vista;
    QPushButton *cmdDeshacer = nullptr;
    QPushButton *cmdDejar = nullptr;
    QLabel *lblTamano;
    QTimer detalle; // one reading for the operations that are walked over
    QTimer medida;
};
