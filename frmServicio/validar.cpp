// The checks of the editor's accept, in their fixed order: the first that fails tells its message, and nothing is
// written.

#include "component/Contador16.h"
#include "controls/SSOleDBGrid.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"
#include "data/Texto.h"
#include "frmServicio/frmServicio.h"
#include "ui_frmServicio.h"

#include <QHash>
#include <algorithm>

using namespace Publico;

namespace
{

using Grid = SSDataWidgets_B_OLEDB::SSOleDBGrid;

bool SinDescripcion(const Grid &grid, int fila)
{
    return !grid.Celda(fila, "Producto").isEmpty() && grid.Celda(fila, "Descripción").isEmpty();
}

bool SinCantidad(const Grid &grid, int fila)
{
    return !grid.Celda(fila, "Descripción").isEmpty() && grid.Numero(fila, "Cantidad") == 0;
}

QString DescripcionProducto(const Grid &grid, int fila)
{
    return Utilerias->ValorDe("Producto", "Pr_Cve_Producto", "Pr_Descripcion", grid.Celda(fila, "Producto"));
}

// The products of a grid, with the last row of each. Rows without a key hold the same product.
class Productos
{
public:
    explicit Productos(const Grid &grid)
    {
        for (int fila = 0; fila < grid.Rows(); ++fila) {
            productos.append(grid.Celda(fila, "Producto"));
            ultima.insert(productos.constLast(), fila);
        }
    }
    // Whether a later row of the grid holds the same product.
    bool Repetido(int fila) const { return ultima.value(productos.at(fila)) > fila; }

private:
    QStringList productos;
    QHash<QString, int> ultima;
};

} // namespace

bool frmServicio::Validar()
{
    return ValidarEncabezado() && ValidarHayLineas()
           && std::all_of(recursos.cbegin(), recursos.cend(), [this](const Recurso &r) { return ValidarLineas(r); });
}

bool frmServicio::RechazarCampo(textoQVX::txtQVX *campo, const QString &texto, int identificador)
{
    Advertir(texto, identificador);
    ui->ssTabQvx->setTab(0);
    if (campo->Lista())
        campo->setFocus();
    return false;
}

bool frmServicio::RechazarLinea(int pagina, const QString &texto, int identificador)
{
    Advertir(texto, identificador);
    ui->ssTabQvx->setTab(pagina);
    return false;
}

bool frmServicio::ValidarEncabezado()
{
    if (ui->txtNTipoEquipo->Text().isEmpty()) {
        Advertir("No se ha especificado un tipo de equipo", 7500052);
        return false;
    }
    if (ui->txtParte->Text().isEmpty()) {
        Advertir("No se ha especificado una parte", 7500053);
        return false;
    }
    if (ui->txtNTiposervicio->Text().isEmpty())
        return RechazarCampo(ui->txtTipoServicio, "El tipo de servicio no es válido", 7500054);
    if (ui->txtTiempoEstimado->Text().isEmpty())
        return RechazarCampo(ui->txtTiempoEstimado, "No se ha especificado un tiempo", 7500055);
    const bool conParo = ui->chkRequiereParo->isChecked();
    if (conParo && ui->txtTiempoParo->Text().isEmpty())
        return RechazarCampo(ui->txtTiempoParo, "Indiquie las horas para el tiempo de paro", 7500056);
    if (conParo && ui->txtTiempoParo->Numero() > ui->txtTiempoEstimado->Numero())
        return RechazarCampo(ui->txtTiempoParo,
                             "Las horas para el tiempo de paro no pueden ser mayor a las horas estimadas", 7500057);
    if (ui->txtNPrioridad->Text().isEmpty())
        return RechazarCampo(ui->txtPrioridad, "No se ha especificado la prioridad", 7500058);
    if (ui->txtDias->Text().isEmpty() && ui->txtLectura->Text().isEmpty())
        return RechazarCampo(ui->txtDias, "Debe indicar un tipo de frecuencia", 7500059);
    if (!ui->txtLectura->Text().isEmpty() && ui->txtUnidad->Text().isEmpty())
        return RechazarCampo(ui->txtUnidad, "Indique la unidad de medida de la lectura", 7500060);
    if (!ui->txtUnidad->Text().isEmpty() && ui->txtNUnidadM->Text().isEmpty())
        return RechazarCampo(ui->txtUnidad, "Indique una unidad de medida válida", 7500061);
    return true;
}

// One counter for the three grids, never reset: a service needs labour, but neither spare parts nor tools. The tool
// grid is walked as many times as the spare-part grid has rows. Both are meant so.
bool frmServicio::ValidarHayLineas()
{
    if (ui->ssManoObra->Rows() < 1)
        return RechazarLinea(1, "Debe especificar una mano de obra", 7500062);
    Contador16 lineas;
    const auto contar = [&](const Grid &grid, int vueltas) {
        for (Contador16 fila; fila < vueltas; ++fila)
            if (!grid.Celda(fila, "Descripción").isEmpty())
                ++lineas;
        return lineas > 0;
    };
    if (!contar(*ui->ssManoObra, ui->ssManoObra->Rows()))
        return RechazarLinea(1, "Debe especificar una mano de obra", 7500063);
    if (!contar(*ui->ssRefacciones, ui->ssRefacciones->Rows()))
        return RechazarLinea(2, "Debe especificar una refacción", 7500064);
    if (!contar(*ui->ssHerramientas, ui->ssRefacciones->Rows()))
        return RechazarLinea(3, "Debe especificar una herramienta", 7500065);
    return true;
}

bool frmServicio::DeBaja(const Grid &grid, int fila) const
{
    const QString clave = qvx::ClaveConFormato(grid.Celda(fila, "Producto"), formatoProducto);
    return Utilerias->ValorDe("Producto", "Pr_Cve_Producto", "Es_Cve_Estado", clave) == "BA";
}

// A column of the expense type whose key is in the row; its description there may be that of another one.
QString frmServicio::DeGasto(const Grid &grid, int fila, const QString &columna) const
{
    const QString clave = qvx::ClaveConFormato(grid.Celda(fila, "Gasto"), formatoGasto);
    return Utilerias->ValorDe("Tipo_Gasto", "Tg_Cve_Tipo_Gasto", columna, clave);
}

bool frmServicio::ValidarLineas(const Recurso &recurso)
{
    const Grid &grid = *recurso.grid;
    const Productos productos(grid);
    const bool conGasto = recurso.clase.conGasto;
    const auto rechazar = [&](const QString &texto, int identificador) {
        return RechazarLinea(recurso.pagina, texto, identificador);
    };
    for (Contador16 fila; fila < grid.Rows(); ++fila) {
        if (SinDescripcion(grid, fila))
            return rechazar("Debe especificar una " + recurso.nombre + " válida", recurso.desconocido);
        if (conGasto && grid.Celda(fila, "DESCRIPCIONTG").isEmpty())
            return rechazar("Debe especificar un tipo de gasto válido", 7500073);
        if (DeBaja(grid, fila))
            return rechazar("La " + recurso.nombreDeBaja + ": " + grid.Celda(fila, "Descripción")
                                + " no se puede registrar porque está dada de baja",
                            recurso.deBaja);
        if (SinCantidad(grid, fila))
            return rechazar("Debe especificar una cantidad para la " + recurso.nombre, recurso.sinCantidad);
        if (conGasto && DeGasto(grid, fila, "Es_Cve_Estado") == "BA")
            return rechazar("El tipo de gasto: " + DeGasto(grid, fila, "Tg_Descripcion")
                                + " no se puede registrar porque está dado de baja",
                            7500074);
        if (productos.Repetido(fila))
            return rechazar("La " + recurso.nombre + " " + DescripcionProducto(grid, fila) + " ya ha sido ingresada!",
                            recurso.repetido);
    }
    return true;
}
