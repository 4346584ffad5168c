// The three grids of resources and the costing of the service. The cells are the only store of the lines until a save.

#include "component/Contador16.h"
#include "component/Trampa.h"
#include "controls/SSOleDBGrid.h"
#include "controls/txtQVX.h"
#include "data/Texto.h"
#include "frmServicio/frmServicio.h"
#include "ui_frmServicio.h"

#include <cmath>

using namespace Publico;
using SSDataWidgets_B_OLEDB::Columna;

namespace
{

const QString FormatoCantidad = "#,##0.000######";
const QString FormatoCosto = "$#,##0.0000#####";
const QString FormatoImporte = "$#,##0.00#######";

} // namespace

void frmServicio::DefinirGrids()
{
    const auto &[manoObra, refaccion, herramienta] = ClasesDeLinea;
    recursos = {
        {manoObra, ui->ssManoObra, 1, &frmServicio::ssManoObra_AfterColUpdate, "mano de obra", "mano de onbra", 7500066,
         7500067, 7500068, 7500069, 7500081},
        {refaccion, ui->ssRefacciones, 2, &frmServicio::ssRefacciones_AfterColUpdate, "refacción", "refacción", 7500070,
         7500071, 7500072, 7500075, 7500082},
        {herramienta, ui->ssHerramientas, 3, &frmServicio::ssHerramientas_AfterColUpdate, "herramienta", "herramienta",
         7500076, 7500077, 7500078, 7500079, 7500083},
    };
    const QList<Columna> comunes{
        {.nombre = "Producto", .titulo = "Clave", .ancho = 120, .boton = true},
        {.nombre = "Descripción", .titulo = "Producto", .ancho = 220, .bloqueada = true},
        {.nombre = "Cantidad", .titulo = "Cantidad", .formato = FormatoCantidad, .ancho = 90},
        {.nombre = "Unidad", .titulo = "Unidad", .ancho = 70, .bloqueada = true},
    };
    const QList<Columna> costos{
        {.nombre = "COSTO", .titulo = "Costo", .formato = FormatoCosto, .ancho = 110, .bloqueada = true},
        {.nombre = "Importe", .titulo = "Importe", .formato = FormatoImporte, .ancho = 120, .bloqueada = true},
    };
    const QList<Columna> gasto{
        {.nombre = "Gasto", .titulo = "Clave", .ancho = 80, .boton = true},
        {.nombre = "DESCRIPCIONTG", .titulo = "Tipo gasto", .ancho = 160, .bloqueada = true},
    };
    const QList<Columna> sinImporte{{.nombre = "COSTO", .titulo = "Costo", .bloqueada = true}};
    ui->ssManoObra->DefinirColumnas(comunes + costos);
    ui->ssRefacciones->DefinirColumnas(comunes + costos + gasto);
    ui->ssHerramientas->DefinirColumnas(comunes + sinImporte);
}

void frmServicio::ssManoObra_AfterColUpdate(const Recurso &recurso, int columna)
{
    Trampa::enEditor(*this, "ssManoObra_BeforeRowColChange()", 7500087, [&] { CambiarColumna(recurso, columna); });
}

// This grid's event has no identifier of its own.
void frmServicio::ssRefacciones_AfterColUpdate(const Recurso &recurso, int columna)
{
    Trampa::delHost(*this, [&] { CambiarColumna(recurso, columna); });
}

void frmServicio::ssHerramientas_AfterColUpdate(const Recurso &recurso, int columna)
{
    Trampa::enEditor(*this, "ssHerramientas_BeforeRowColChange()", 7500086, [&] { CambiarColumna(recurso, columna); });
}

void frmServicio::CambiarColumna(const Recurso &recurso, int columna)
{
    Grid &grid = *recurso.grid;
    const QString nombre = grid.NombreColumna(columna).toUpper();
    if (nombre == "PRODUCTO" && grid.EsNumerico(grid.Row(), "Producto"))
        Buscar_Producto(recurso);
    if (nombre == "GASTO")
        Buscar_Gasto();
    if (nombre == "CANTIDAD" && recurso.clase.conCosto)
        CalcularImporte(grid, grid.Row());
}

// A key chosen in the search dialog counts as typed.
void frmServicio::Grid_BtnClick(const Recurso &recurso, int columna)
{
    Trampa::delHost(*this, [&] {
        Grid &grid = *recurso.grid;
        const QString nombre = grid.NombreColumna(columna);
        const qvx::Vigia vigia(*this);
        const QString clave = Utilerias->BuscarEnCatalogo(nombre == "Gasto" ? "TIPO_GASTO" : recurso.clase.catalogo, 0,
                                                          "", QFont(), this);
        vigia.Revisar();
        if (clave.isEmpty())
            return;
        grid.setCelda(grid.Row(), nombre, clave);
        Q_EMIT grid.AfterColUpdate(columna);
    });
}

// A row that was touched always has a quantity, and an amount where the kind has amounts.
void frmServicio::Grid_BeforeUpdate(const Recurso &recurso)
{
    Grid &grid = *recurso.grid;
    const int fila = grid.Row();
    if (!grid.Celda(fila, "Cantidad").isEmpty())
        return;
    grid.setCelda(fila, "Cantidad", "0");
    if (recurso.clase.conCosto)
        grid.setCelda(fila, "Importe", "0");
}

// The product on offer with the key of the row, which then takes the form of the product keys. A key that is unknown or
// retired leaves the row's cells as they are, its own too.
void frmServicio::Buscar_Producto(const Recurso &recurso)
{
    const auto buscar = [&] {
        Grid &grid = *recurso.grid;
        const int fila = grid.Row();
        const QString clave = qvx::ClaveConFormato(grid.Celda(fila, "Producto"), formatoProducto);
        strSQL = " SELECT Pr_Cve_Producto AS Clave ,";
        strSQL += "   Pr_Descripcion AS Descripcion,  ";
        strSQL += "   Pr_Unidad_Control_1 AS Unidad,  ";
        strSQL += "   Pr_Costo_Estandar  as Costo ";
        strSQL += " FROM Producto ";
        strSQL += " WHERE  Pr_Cve_Producto  = '" + clave + "'";
        strSQL += "   AND Es_Cve_Estado <> 'BA'";
        const auto producto = Sistema->Conexion().Execute(strSQL);
        if (producto.Eof())
            return;
        grid.setCelda(fila, "Producto", clave);
        grid.setCelda(fila, "Descripción", producto["Descripcion"]);
        grid.setCelda(fila, "Unidad", producto["Unidad"]);
        if (!recurso.clase.conCosto)
            return;
        grid.setCelda(fila, "COSTO", producto["Costo"]);
        CalcularImporte(grid, fila); // another product, another cost: the amount must not stay the old one
    };
    if (recurso.clase.conCosto)
        Trampa::enEditor(*this, "Buscar_Producto_MR()", 7500089, buscar);
    else
        Trampa::enEditor(*this, "Buscar_Producto_Herramientas()", 7500088, buscar);
}

void frmServicio::Buscar_Gasto()
{
    Trampa::enEditor(*this, "Buscar_Gasto()", 7500090, [&] {
        Grid &grid = *ui->ssRefacciones;
        const int fila = grid.Row();
        const QString clave = qvx::ClaveConFormato(grid.Celda(fila, "Gasto"), formatoGasto);
        strSQL = " SELECT Tg_Cve_Tipo_Gasto AS Clave ,";
        strSQL += "   Tg_Descripcion AS Descripcion  ";
        strSQL += " FROM Tipo_Gasto ";
        strSQL += " WHERE  Tg_Cve_Tipo_Gasto  = '" + clave + "'";
        strSQL += "   AND Es_Cve_Estado <> 'BA'";
        const auto gasto = Sistema->Conexion().Execute(strSQL);
        if (gasto.Eof())
            return;
        grid.setCelda(fila, "Gasto", clave);
        grid.setCelda(fila, "DESCRIPCIONTG", gasto["Descripcion"]);
    });
}

void frmServicio::CalcularImporte(Grid &grid, int fila)
{
    if (!grid.EsNumerico(fila, "Cantidad") || !grid.EsNumerico(fila, "COSTO"))
        return;
    const double importe = grid.Numero(fila, "Cantidad") * grid.Numero(fila, "COSTO");
    if (!std::isfinite(importe))
        throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento, "Desbordamiento");
    grid.setCelda(fila, "Importe", qvx::NumeroATexto(importe));
}

double frmServicio::SumaImportes(const Grid &grid)
{
    double suma = 0;
    for (Contador16 fila; fila < grid.Rows(); ++fila)
        suma += grid.Numero(fila, "Importe");
    return suma;
}

// Recomputed when the price changes and when the costing page is chosen; tools never add to the cost.
void frmServicio::Importe()
{
    Trampa::delHost(*this, [&] {
        const double precio = ui->txtPrecio->Numero();
        ui->txtPrecioTab->setNumero(precio);
        const double manoObra = SumaImportes(*ui->ssManoObra);
        ui->txtManoObra->setNumero(manoObra);
        const double refacciones = SumaImportes(*ui->ssRefacciones);
        ui->txtRefacciones->setNumero(refacciones);
        const double total = manoObra + refacciones;
        ui->txtTotales->setNumero(total);
        const double utilidad = precio - total;
        ui->txtUtilidad->setNumero(utilidad);
        ui->txtPorcentaje->setNumero(precio == 0 ? 0 : utilidad / precio * 100);
    });
}
