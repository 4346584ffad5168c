#pragma once

#include "app/tipos/LecturaDeTipos.h"

#include <QTimer>
#include <QWidget>

class AvisoDeLectura;
class QLabel;
class QLineEdit;
class QPushButton;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// The page with all equipment types and how their plans stand. It shows them as soon as they are counted; what their
// services cost follows, while the page can be worked with.
class PaginaTipos : public QWidget
{
    Q_OBJECT

public:
    // deUnaVez: all figures in one statement, as a server reads them; else a few types at a time, so that an engine
    // inside this program leaves it room to breathe.
    explicit PaginaTipos(bool deUnaVez, QWidget *padre = nullptr);
    ~PaginaTipos() override;

    // Reads everything anew, and stays on its row.
    Q_INVOKABLE void Actualizar();

Q_SIGNALS:
    void PlanPedido(const QString &tipoEquipo);

protected:
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QWidget *Busqueda();
    void Leer(bool todo);
    void Llenar();
    void Contar();
    void ContarDesde(int desde);
    void Terminar();
    void Elegir(const QString &clave);
    QString Elegida() const;
    void Abrir();
    void PonerEstado();

    QLineEdit *txtFiltro;
    qvx::VistaTabla *lvTipos;
    qvx::ModeloTabla *modelo;
    AvisoDeLectura *lblAviso;
    QLabel *lblCuenta;
    QLabel *lblCifras;
    QPushButton *cmdAbrir;
    QList<TipoDeEquipo> tipos;
    bool conServicios = false; // they were counted since the types were read
    bool porAjustar = false;   // the columns, to all that is read for the first time
    QTimer cuenta;             // the next step
    int serviciosPorVez;
};
