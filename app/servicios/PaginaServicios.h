#pragma once

#include "app/Ajustes.h"
#include "app/lectura/Totales.h"
#include "app/servicios/OrdenesDeServicios.h"

#include <QTime>
#include <QWidget>
#include <functional>
#include <optional>

class ArbolDePartes;
class EncabezadoConFiltros;
class ModeloPartes;
class ModeloServicios;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeView;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// All services of a plan as one table beside the tree of its parts: what they cost, and what is done to many at once.
class PaginaServicios : public QWidget
{
    Q_OBJECT

public:
    explicit PaginaServicios(QWidget *padre = nullptr);

    // Whose plan is shown, "" for none. It is read when the page is shown.
    void PonerTipo(const QString &tipoEquipo);
    const QString &Tipo() const { return tipo; }
    // The part chosen in the tree, "" for none and for the whole plan; and the service with the cursor, "" for none.
    QString ParteActual() const;
    QString FolioActual() const;

public Q_SLOTS:
    // Reads the plan anew, and stays where it was. When it cannot be read, what is shown stays, marked as out of date.
    void Actualizar();

Q_SIGNALS:
    // The plan of the type was written.
    void PlanCambiado(const QString &tipoEquipo);
    // A service is to be opened in its own editor.
    void ServicioPedido(const QString &tipoEquipo, const QString &parte, const QString &folio);
    // The history of a part or of a service is to be shown.
    void HistorialPedido(const QString &tipoEquipo, const QString &parte, const QString &folio);

protected:
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QWidget *Busqueda();
    void PonerTabla();
    void PonerArbol();
    void PonerTotales();
    QWidget *Acciones();
    const lectura::Plan &Plan() const;
    // The services chosen, and the part chosen in the tree: the root's key for the whole plan, "" for none of the tree.
    QList<int> Elegidos() const;
    QString ParteElegida() const;
    void Elegir(const QStringList &folios, const QString &actual);
    // Does what changes which rows there are; those that were chosen are chosen again.
    void Conservando(const std::function<void()> &pasos);
    void Leer();
    void AjustarColumnas();
    void Avisar();
    void AlCambiarParte();
    void Sumar();
    void PonerEstado();
    void Mandar(int identificador, const std::function<ordenes::Desenlace()> &orden);

    void Abrir();
    void Mover();
    void Duplicar();
    void Cambiar();
    void Eliminar();
    void MoverParte();
    void HistorialDeServicio();
    void HistorialDeParte();
    void AlSoltarServicios(const QString &parte, bool copiar);
    void AlSoltarParte(const QString &parte, const QString &nuevoPadre);
    void Objetar(const QString &objecion);
    QList<int> EnOrden(const QList<int> &cuales) const; // as they are shown
    void Copiar();
    void ExportarCsv();
    void ExportarXlsx();
    void ElegirTipo();
    void QuitarFiltros();

    QString tipo;
    QTime leida; // when what is shown was read; not valid before
    bool alDia = false;
    bool puede = false; // whoever is signed in may change plans
    ModeloServicios *modelo;
    ModeloPartes *partes;
    qvx::ModeloTabla *totales;
    QTreeView *lvServicios;
    EncabezadoConFiltros *encabezado;
    ArbolDePartes *tvPartes;
    qvx::VistaTabla *lvTotales;
    QLabel *lblTipo;
    QLineEdit *txtBuscar;
    QComboBox *cboAgrupar;
    QLabel *lblCuenta;
    QLabel *lblAviso;
    QLabel *lblNota;
    QList<QAction *> deServicios; // what is done to the services chosen
    QAction *accAbrir = nullptr;
    QAction *accMoverParte = nullptr;
    QAction *accHistorialDeServicio = nullptr;
    QAction *accHistorialDeParte = nullptr;
    std::optional<ajustes::Columnas> columnas; // goes before its list
};
