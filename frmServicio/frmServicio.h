#pragma once

#include "component/FormularioConPadre.h"
#include "component/Lineas.h"
#include "data/Conexion.h"

#include <memory>

namespace Ui
{
class frmServicio;
}

namespace SSDataWidgets_B_OLEDB
{
class SSOleDBGrid;
}

namespace textoQVX
{
class txtQVX;
}

// The editor of one maintenance service of one part: header, three grids of resources, costing.
class frmServicio : public FormularioConPadre
{
    Q_OBJECT

public:
    explicit frmServicio(const QWidget *duena);
    ~frmServicio() override;

    // Set by the caller before the load: true creates a service, false edits the one that Editar_Servicios loads.
    bool Nuevo = false;

    // The equipment type and the part that the service belongs to; before the load, which numbers a new service.
    void Contexto(const QString &tipoEquipo, const QString &nombreTipo, const QString &parte,
                  const QString &nombreParte);
    // Whether there is a service to edit: a new one that could not be numbered must not be shown.
    bool TieneClave() const;
    // Services of a retired part are only looked at.
    void SoloLectura();
    // Loads a service with its lines. False when it could not be read; that has been reported.
    bool Editar_Servicios(const QString &tipoEquipo, const QString &parte, const QString &servicio);

protected:
    void Form_Load() override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    using Grid = SSDataWidgets_B_OLEDB::SSOleDBGrid;

    // A kind of lines in the editor.
    struct Recurso {
        ClaseDeLinea clase;
        Grid *grid;
        int pagina; // of the tabs
        void (frmServicio::*alCambiar)(const Recurso &recurso, int columna);
        QString nombre;
        QString nombreDeBaja; // as the message of a retired product writes it
        // Identifiers of the messages.
        int desconocido, deBaja, sinCantidad, repetido, sinGuardar;
    };

    // What an accept writes the same way in every statement.
    struct Auditoria {
        QString operador;
        QString fecha;
    };

    void ConectarEventos();
    QString ClaveNueva() const;
    void AlinearCampos();
    void ConectarTeclas();
    void ConectarGrid(const Recurso &recurso);
    void DefinirGrids();

    void chkRequiereParo_Click();
    void txtTiempoEstimado_Change();
    void CopiarTiempo();
    void ssTabQvx_Click(int pagina);
    void Grid_KeyPress(int codigo);
    void CargarLineas(const QString &tipoEquipo, const QString &parte, const QString &servicio);
    static void CargarLinea(const Recurso &recurso, const qvx::Recordset &linea);
    static void PonerFrecuencia(textoQVX::txtQVX &caja, double frecuencia);

    // Grids and costing
    void ssManoObra_AfterColUpdate(const Recurso &recurso, int columna);
    void ssRefacciones_AfterColUpdate(const Recurso &recurso, int columna);
    void ssHerramientas_AfterColUpdate(const Recurso &recurso, int columna);
    void CambiarColumna(const Recurso &recurso, int columna);
    void Grid_BtnClick(const Recurso &recurso, int columna);
    static void Grid_BeforeUpdate(const Recurso &recurso);
    void Buscar_Producto(const Recurso &recurso);
    void Buscar_Gasto();
    static void CalcularImporte(Grid &grid, int fila);
    static double SumaImportes(const Grid &grid);
    void Importe();

    // Validation
    bool Validar();
    bool ValidarEncabezado();
    bool ValidarHayLineas();
    bool ValidarLineas(const Recurso &recurso);
    bool RechazarCampo(textoQVX::txtQVX *campo, const QString &texto, int identificador);
    bool RechazarLinea(int pagina, const QString &texto, int identificador);
    bool DeBaja(const Grid &grid, int fila) const;
    QString DeGasto(const Grid &grid, int fila, const QString &columna) const;

    // Saving
    void cmdAceptar();
    bool GuardarServicio(const Auditoria &auditoria);
    QString ClaveLibre() const;
    QString InsertarServicio(const Auditoria &auditoria) const;
    QString ActualizarServicio(const Auditoria &auditoria) const;
    QString RequiereParo() const;
    QString ClavesDeLinea() const;
    QString InsertarLinea(const Recurso &recurso, int fila) const;
    bool GuardarLineas(const Recurso &recurso);
    void controles1_Cancelar();

    std::unique_ptr<Ui::frmServicio> ui;
    QList<Recurso> recursos;
    QString folio; // the service's key in the accept that is running
    QString formatoProducto;
    QString formatoGasto;
};
