#pragma once

#include "component/FormularioConPadre.h"
#include "data/Conexion.h"

#include <functional>
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

    // What an accept writes the same way in every statement.
    struct Auditoria {
        QString operador;
        QString fecha;
    };

    void ConectarEventos();
    void Numerar();
    void ConectarTeclas();
    void ConectarGrid(Grid *grid, const std::function<void(int)> &cambio, const QString &catalogo);
    void DefinirGrids();

    void chkRequiereParo_Click();
    void txtTiempoEstimado_Change();
    void CopiarTiempo();
    void ssTabQvx_Click(int pagina);
    void Grid_KeyPress(int codigo);
    void CargarLineas(const QString &tipoEquipo, const QString &parte, const QString &servicio);
    int CargarLinea(Grid &grid, const qvx::Recordset &linea);
    static void CargarCosto(Grid &grid, int fila, const qvx::Recordset &linea);
    static void PonerFrecuencia(textoQVX::txtQVX &caja, double frecuencia);

    // Grids and costing
    void ssManoObra_AfterColUpdate(int columna);
    void ssRefacciones_AfterColUpdate(int columna);
    void ssHerramientas_AfterColUpdate(int columna);
    void Grid_BtnClick(Grid &grid, int columna, const QString &catalogo);
    void Grid_BeforeUpdate(Grid &grid);
    void Buscar_Producto_Herramientas();
    void Buscar_Producto_MR(const QString &tipo);
    void Buscar_Gasto();
    void CalcularImporte(Grid &grid, int fila);
    double SumaImportes(const Grid &grid) const;
    void Importe();

    // Validation
    bool Validar();
    bool ValidarEncabezado();
    bool ValidarHayLineas();
    bool ValidarManoObra();
    bool ValidarRefacciones();
    bool ValidarHerramientas();
    bool RechazarCampo(textoQVX::txtQVX *campo, const QString &texto, int identificador);
    bool RechazarLinea(int pagina, const QString &texto, int identificador);
    QString EstadoProducto(const Grid &grid, int fila) const;
    bool SinCantidad(const Grid &grid, int fila) const;
    QString DescripcionProducto(const Grid &grid, int fila) const;

    // Saving
    void cmdAceptar();
    bool GuardarServicio(const Auditoria &auditoria);
    QString InsertarServicio(const Auditoria &auditoria) const;
    QString ActualizarServicio(const Auditoria &auditoria) const;
    QString RequiereParo() const;
    QString ClavesDeLinea() const;
    bool GuardarManoObra();
    bool GuardarRefacciones();
    bool GuardarHerramientas();
    bool GuardarLineas(const Grid &grid, int identificador, const std::function<QString(int fila)> &sentencia);
    void controles1_Cancelar();

    std::unique_ptr<Ui::frmServicio> ui;
    QString formatoProducto;
    QString formatoGasto;
};
