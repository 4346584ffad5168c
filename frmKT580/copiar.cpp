// Giving the plan of the equipment type on the screen to another type, in one transaction and entirely in the database.

#include "component/Trampa.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "data/Texto.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

using namespace Publico;

void frmKT580::Controles_B3Click()
{
    Trampa::delHost(*this, [&] {
        const QString origen = ui->txtTipoEquipo->Text();
        if (origen.isEmpty()) {
            Advertir("Seleccione un tipo de equipo para copiar el plan de mantenimiento", 7500032);
            return;
        }
        const qvx::Vigia vigia(*this);
        const QString destino = Utilerias->BuscarEnCatalogo("TIPO_EQUIPO", 100, "", QFont(), this);
        vigia.Revisar();
        if (destino.isEmpty())
            return;
        // Compared as the database does: a copy to the same type would delete its plan.
        if (qvx::SinBlancosAlFinal(destino) == qvx::SinBlancosAlFinal(origen)) {
            Advertir("El tipo de equipo seleccionado es igual al actual", 7500033);
            return;
        }
        // Its result is not looked at: the question is asked always, on purpose.
        strSQL = "SELECT Te_Cve_Tipo_Equipo FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '" + destino + "' ";
        Sistema->Conexion().Execute(strSQL);
        if (Preguntar("El tipo de equipo seleccionado ya tiene un plan de de mantenimiento, ¿Desea reemplazarlo?",
                      qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, 7500049)
            != qvx::mensaje::Si)
            return;
        ReemplazarPlan(origen, destino);
    });
}

void frmKT580::ReemplazarPlan(const QString &origen, const QString &destino)
{
    bool transaccionAbierta = false;
    try {
        transaccionAbierta = true;
        Sistema->Conexion().BeginTrans();
        CopiarPlan(origen, destino);
        Sistema->Conexion().CommitTrans();
        transaccionAbierta = false;
        ui->txtTipoEquipo->setText(destino); // as it is, also out of the form of the keys
        txtTipoEquipo_Validate();
        txtTipoEquipo_Seleccion();
        if (ui->txtTipoEquipo->Lista())
            ui->txtTipoEquipo->setFocus();
    } catch (const qvx::ErrorEjecucion &error) {
        if (transaccionAbierta)
            Sistema->Conexion().RollbackTrans();
        Mensaje(error.Descripcion(), qvx::mensaje::Critico, "Error al copiar", 7500034);
    }
}

// Keys, states and audit values stay the source's. The expense type of the spare-part lines is not copied, on purpose.
void frmKT580::CopiarPlan(const QString &origen, const QString &destino)
{
    for (const char *tabla : {"Plan_Mantenimiento_Detalle", "Plan_Mantenimiento", "Tipo_Equipo_Parte"}) {
        strSQL = QString("DELETE FROM ") + tabla + " WHERE Te_Cve_Tipo_Equipo = '" + destino + "' ";
        Sistema->Conexion().Execute(strSQL);
    }
    const auto copiar = [&](const QString &tabla, const QString &columnas, const QString &desde) {
        strSQL = "insert into " + tabla + "(";
        strSQL += "Te_Cve_Tipo_Equipo,";
        strSQL += columnas;
        strSQL += ") ";
        strSQL += "SELECT ";
        strSQL += "'" + destino + "',";
        strSQL += columnas;
        strSQL += desde;
        strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + origen + "'  ";
        Sistema->Conexion().Execute(strSQL);
    };
    copiar("Tipo_Equipo_Parte",
           "Tep_ID,Tep_Descripcion,Tep_Padre,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,Oper_Ult_Modif,Fecha_Ult_Modif,"
           "Es_Cve_Estado ",
           "from Tipo_Equipo_Parte ");
    copiar("Plan_Mantenimiento",
           "Tep_ID,Pm_ID,Ts_Cve_Tipo_Servicio,Pm_Frecuencia,Pm_Lectura,Pm_Unidad_Lectura,Pm_Precio,Pm_Tiempo_Estimado,"
           "Pm_Prioridad,Pm_Requiere_Paro,Pm_Tiempo_Paro,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,Oper_Ult_Modif,"
           "Fecha_Ult_Modif,Es_Cve_Estado ",
           "FROM Plan_Mantenimiento  ");
    copiar("Plan_Mantenimiento_Detalle",
           "Tep_ID,Pm_ID,Pmd_ID,Pmd_Tipo,Pr_Cve_Producto,Pmd_Cantidad,Pmd_Unidad,Pmd_Costo,Pmd_Importe ",
           "FROM Plan_Mantenimiento_Detalle ");
}
