// Loading an existing service into the editor.

#include "component/Trampa.h"
#include "controls/SSOleDBGrid.h"
#include "controls/txtQVX.h"
#include "frmServicio/frmServicio.h"
#include "ui_frmServicio.h"

using namespace Publico;

bool frmServicio::Editar_Servicios(const QString &tipoEquipo, const QString &parte, const QString &servicio)
{
    bool cargado = false;
    Trampa::enEditor(*this, "Editar_Servicios()", 7500091, [&] {
        strSQL = "SELECT * FROM Plan_Mantenimiento ";
        strSQL += "WHERE Plan_Mantenimiento.Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
        strSQL += "AND Plan_Mantenimiento.Tep_ID = '" + parte + "' ";
        strSQL += "AND Plan_Mantenimiento.Pm_ID = '" + servicio + "' ";
        const auto fila = Sistema->Conexion().Execute(strSQL);
        if (fila.Eof())
            throw qvx::ErrorEjecucion(qvx::errores::SinRegistroActual,
                                      "El servicio " + servicio + " ya no existe: otra persona lo eliminó o lo movió.");

        ui->txtTipoEquipo->setText(fila["Te_Cve_Tipo_Equipo"]);
        ui->txtParte->setText(fila["Tep_ID"]);
        ui->txtID->setText(fila["Pm_ID"]);
        ui->txtTipoServicio->setText(fila["Ts_Cve_Tipo_Servicio"]);
        ui->txtPrecio->setNumero(fila.Numero("Pm_Precio"));
        ui->txtTiempoEstimado->setNumero(fila.Numero("Pm_Tiempo_Estimado"));
        ui->chkRequiereParo->setChecked(fila["Pm_Requiere_Paro"] == "SI");
        ui->txtTiempoParo->setNumero(fila.Numero("Pm_Tiempo_Paro"));
        ui->txtPrioridad->setText(fila["Pm_Prioridad"]);
        PonerFrecuencia(*ui->txtDias, fila.Numero("Pm_Frecuencia"));
        PonerFrecuencia(*ui->txtLectura, fila.Numero("Pm_Lectura"));
        ui->txtUnidad->setText(fila["Pm_Unidad_Lectura"]);
        CargarLineas(tipoEquipo, parte, servicio);
        cargado = true;
    });
    return cargado;
}

// A frequency of 0 is one that was not given; shown as such, the service can be saved again as it is.
void frmServicio::PonerFrecuencia(textoQVX::txtQVX &caja, double frecuencia)
{
    if (frecuencia == 0)
        caja.setText("");
    else
        caja.setNumero(frecuencia);
}

void frmServicio::CargarLineas(const QString &tipoEquipo, const QString &parte, const QString &servicio)
{
    for (const Recurso &recurso : recursos)
        recurso.grid->RemoveAll();
    strSQL = "SELECT * FROM Plan_Mantenimiento_Detalle ";
    strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + tipoEquipo + "'";
    strSQL += "   AND Tep_ID = '" + parte + "'";
    strSQL += "   AND Pm_ID = '" + servicio + "' ";
    for (auto linea = Sistema->Conexion().Execute(strSQL); !linea.Eof(); linea.MoveNext())
        for (const Recurso &recurso : recursos)
            if (linea["Pmd_Tipo"] == recurso.clase.tipo)
                CargarLinea(recurso, linea);
}

void frmServicio::CargarLinea(const Recurso &recurso, const qvx::Recordset &linea)
{
    Grid &grid = *recurso.grid;
    const QString producto = linea["Pr_Cve_Producto"];
    const int fila = grid.AddItem();
    grid.setCelda(fila, "Producto", producto);
    grid.setCelda(fila, "Descripción", Utilerias->ValorDe("Producto", "Pr_Cve_Producto", "Pr_Descripcion", producto));
    grid.setCelda(fila, "Cantidad", linea["Pmd_Cantidad"]);
    grid.setCelda(fila, "Unidad", linea["Pmd_Unidad"]);
    if (recurso.clase.conCosto) {
        grid.setCelda(fila, "COSTO", linea["Pmd_Costo"]);
        grid.setCelda(fila, "Importe", linea["Pmd_Importe"]);
    }
    if (recurso.clase.conGasto) {
        const QString gasto = linea["Pmd_Tipo_Gasto"];
        grid.setCelda(fila, "Gasto", gasto);
        grid.setCelda(fila, "DESCRIPCIONTG",
                      Utilerias->ValorDe("TIPO_GASTO", "Tg_Cve_Tipo_Gasto", "Tg_Descripcion", gasto));
    }
}
