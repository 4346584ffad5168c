#pragma once

#include "plan/RegistrosDeCatalogo.h"

#include <QWidget>
#include <functional>

class AvisoDeLectura;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// The page on which the catalogues are kept.
class PaginaCatalogos : public QWidget
{
    Q_OBJECT

public:
    explicit PaginaCatalogos(QWidget *padre = nullptr);
    ~PaginaCatalogos() override;

    // Makes an entry of the catalogue that a search dialog shows, with the person; gives its key, "" for none. escrito:
    // what was looked for. Raises data errors.
    static QString CrearDesdeBusqueda(const QString &codigo, const QString &escrito, QWidget *duena);

    // Reads the catalogue anew, and stays on its row where there still is one.
    Q_INVOKABLE void Actualizar();

Q_SIGNALS:
    // A catalogue was changed: what a screen shows of it is no longer what the database holds.
    void Cambiado();
    // A new equipment type is to get the plan of another.
    void CopiaPedida(const QString &nuevo, const QString &origen);

protected:
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    void PonerCatalogos();
    QWidget *Busqueda();
    void PonerLista();
    QWidget *Acciones();
    const qvx::TablaDeCatalogo &Tabla() const;
    // The row chosen, nullptr for none.
    const qvx::RegistroDeCatalogo *Elegido() const;
    void Elegir(const QString &clave);
    void AlCambiarDeCatalogo();
    void RecordarColumnas() const;
    void Leer();
    void PonerEstado();
    void Terminar(const QString &clave);

    void Nuevo();
    void Editar();
    void DarDeBaja();
    void Reactivar();
    void Eliminar();
    void VerUsos();
    void Reemplazar();
    void Importar();
    void Pegar();
    void ExportarCsv();
    void ExportarXlsx();
    void Exportar(bool libro);

    QListWidget *lstCatalogos;
    QLineEdit *txtBuscar;
    QComboBox *cboEstado;
    qvx::VistaTabla *lvRegistros;
    QLabel *lblCuenta;
    QLabel *lblDerecho;
    AvisoDeLectura *lblAviso;
    qvx::ModeloTabla *modelo = nullptr; // of the catalogue that is shown
    QString mostrado;                   // its name
    QList<qvx::RegistroDeCatalogo> registros;
    QList<QAction *> deCambio; // what only who may change catalogues can do
    QList<QAction *> deUno;    // of these, what is done to the row chosen
    QAction *accBaja = nullptr;
    QAction *accReactivar = nullptr;
    QAction *accUsos = nullptr;
    bool puedeCambiar = false;
};
