// The editor's accept: validates, then writes the service and replaces all its lines in one transaction.

#include "component/Contador16.h"
#include "component/Trampa.h"
#include "controls/SSOleDBGrid.h"
#include "controls/txtQVX.h"
#include "data/Texto.h"
#include "frmServicio/frmServicio.h"
#include "session/Trabajo.h"
#include "ui_frmServicio.h"

using namespace Publico;

void frmServicio::cmdAceptar()
{
    Trampa::enEditor(*this, "cmdAceptar()", 7500084, [&] {
        if (!Validar())
            return;
        const Auditoria auditoria{Sistema->UsuarioActual(), Utilerias->TextoFecha(Utilerias->FechaServidor())};
        Sistema->Conexion().BeginTrans();
        if (!GuardarServicio(auditoria))
            return;
        strSQL = "DELETE FROM Plan_Mantenimiento_Detalle ";
        strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "' ";
        strSQL += "AND Tep_ID = '" + ui->txtParte->Text() + "' ";
        strSQL += "AND Pm_ID = '" + folio + "' ";
        Sistema->Conexion().Execute(strSQL);
        for (const Recurso &recurso : recursos)
            if (!GuardarLineas(recurso))
                return;
        Sistema->Conexion().CommitTrans();
        ui->txtID->setText(folio);
        controles1_Cancelar();
    });
}

bool frmServicio::GuardarServicio(const Auditoria &auditoria)
{
    bool registrado = false;
    const bool escrito = Trampa::deshaciendo(*this, "cmdAceptar()", 7500080, [&] {
        folio = Nuevo ? ClaveLibre() : ui->txtID->Text();
        strSQL = Nuevo ? InsertarServicio(auditoria) : ActualizarServicio(auditoria);
        Sistema->Conexion().Execute(strSQL);
        registrado =
            Utilerias->RegistrarCambio("Plan_Mantenimiento", {ui->txtTipoEquipo->Text(), folio, ui->txtParte->Text()});
    });
    if (!escrito || registrado)
        return escrito;
    Sistema->Conexion().RollbackTrans();
    Mensaje("ERROR", qvx::mensaje::Critico, "ERROR", 7500080);
    return false;
}

// The key that was proposed, or a new one when someone else has taken it meanwhile.
QString frmServicio::ClaveLibre() const
{
    strSQL = "SELECT Pm_ID FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text()
             + "' AND Pm_ID = '" + ui->txtID->Text() + "' ";
    return Sistema->Conexion().Execute(strSQL).Eof() ? ui->txtID->Text() : ClaveNueva();
}

QString frmServicio::InsertarServicio(const Auditoria &auditoria) const
{
    QString sql = "INSERT INTO Plan_Mantenimiento (";
    sql += "Te_Cve_Tipo_Equipo, ";
    sql += "Tep_ID, ";
    sql += "Pm_ID, ";
    sql += "Ts_Cve_Tipo_Servicio, ";
    sql += "Pm_Frecuencia, ";
    sql += "Pm_Lectura, ";
    sql += "Pm_Unidad_Lectura, ";
    sql += "Pm_Precio, ";
    sql += "Pm_Tiempo_Estimado, ";
    sql += "Pm_Prioridad, ";
    sql += "Pm_Requiere_Paro, ";
    sql += "Pm_Tiempo_Paro, ";
    sql += "Oper_Alta, ";
    sql += "Fecha_Alta, ";
    sql += "Oper_Ult_Modif, ";
    sql += "Fecha_Ult_Modif) ";
    sql += "VALUES (";
    sql += "'" + ui->txtTipoEquipo->Text() + "', ";
    sql += "'" + ui->txtParte->Text() + "', ";
    sql += "'" + folio + "', ";
    sql += "'" + ui->txtTipoServicio->Text() + "', ";
    sql += ui->txtDias->NumeroSQL() + ", ";
    sql += ui->txtLectura->NumeroSQL() + ", ";
    sql += "'" + ui->txtUnidad->Text() + "', ";
    sql += ui->txtPrecio->NumeroSQL() + ", ";
    sql += ui->txtTiempoEstimado->NumeroSQL() + ", ";
    sql += "'" + ui->txtPrioridad->Text() + "', ";
    sql += "'" + RequiereParo() + "', ";
    sql += ui->txtTiempoParo->NumeroSQL() + ", ";
    sql += "'" + auditoria.operador + "', ";
    sql += "'" + auditoria.fecha + "', ";
    sql += "'" + auditoria.operador + "', ";
    sql += "'" + auditoria.fecha + "')";
    return sql;
}

QString frmServicio::ActualizarServicio(const Auditoria &auditoria) const
{
    QString sql = "UPDATE Plan_Mantenimiento SET ";
    sql += "   Ts_Cve_Tipo_Servicio = '" + ui->txtTipoServicio->Text() + "',";
    sql += "   Pm_Frecuencia = " + ui->txtDias->NumeroSQL() + ",";
    sql += "   Pm_Lectura = " + ui->txtLectura->NumeroSQL() + ",";
    sql += "   Pm_Unidad_Lectura = '" + ui->txtUnidad->Text() + "',";
    sql += "   Pm_Precio = " + ui->txtPrecio->NumeroSQL() + ",";
    sql += "   Pm_Tiempo_Estimado = " + ui->txtTiempoEstimado->NumeroSQL() + ",";
    sql += "   Pm_Prioridad = '" + ui->txtPrioridad->Text() + "',";
    sql += "   Pm_Requiere_Paro = '" + RequiereParo() + "',";
    sql += "   Pm_Tiempo_Paro = " + ui->txtTiempoParo->NumeroSQL() + ",";
    sql += "   Oper_Ult_Modif = '" + auditoria.operador + "',";
    sql += "   Fecha_Ult_Modif= '" + auditoria.fecha + "'";
    sql += "WHERE Pm_ID = '" + folio + "' and Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "' and Tep_ID = '"
           + ui->txtParte->Text() + "' ";
    return sql;
}

QString frmServicio::RequiereParo() const
{
    return ui->chkRequiereParo->isChecked() ? "SI" : "NO";
}

// The keys that every line begins with: the service's, and a new one of its own.
QString frmServicio::ClavesDeLinea() const
{
    const QString tipo = ui->txtTipoEquipo->Text();
    const QString clave =
        Utilerias->SiguienteClaveTexto("Plan_Mantenimiento_Detalle", "Pmd_ID", "Te_Cve_Tipo_Equipo", tipo, "", "");
    return "'" + tipo + "', " + "'" + ui->txtParte->Text() + "', " + "'" + folio + "', " + "'" + clave + "', ";
}

// Tools are stored without cost, and in another order of columns than the other kinds.
QString frmServicio::InsertarLinea(const Recurso &recurso, int fila) const
{
    const Grid &grid = *recurso.grid;
    const auto numero = [&](const QString &columna) { return qvx::NumeroATexto(grid.Numero(fila, columna)); };
    const auto texto = [&](const QString &columna) { return "'" + grid.Celda(fila, columna) + "'"; };
    QString sql = "INSERT INTO Plan_Mantenimiento_Detalle (";
    sql += "Te_Cve_Tipo_Equipo, ";
    sql += "Tep_ID, ";
    sql += "Pm_ID, ";
    sql += "Pmd_ID, ";
    sql += "Pmd_Tipo, ";
    sql += "Pr_Cve_Producto, ";
    sql += recurso.clase.conCosto ? "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe"
                                  : "Pmd_Costo, Pmd_Cantidad, Pmd_Importe, Pmd_Unidad";
    if (recurso.clase.conGasto)
        sql += ", Pmd_Tipo_Gasto";
    sql += " ) VALUES (";
    sql += ClavesDeLinea();
    sql += QString("'") + recurso.clase.tipo + "', ";
    sql += texto("Producto") + ", ";
    if (recurso.clase.conCosto)
        sql += numero("Cantidad") + ", " + texto("Unidad") + ", " + numero("COSTO") + ", " + numero("Importe");
    else
        sql += "0, " + numero("Cantidad") + ", 0, " + texto("Unidad");
    if (recurso.clase.conGasto)
        sql += ", " + texto("Gasto");
    return sql + ") ";
}

// Rows without a description are no lines and are dropped. False when one could not be written; that has been reported.
bool frmServicio::GuardarLineas(const Recurso &recurso)
{
    return Trampa::deshaciendo(*this, "cmdAceptar()", recurso.sinGuardar, [&] {
        for (Contador16 fila; fila < recurso.grid->Rows(); ++fila) {
            if (recurso.grid->Celda(fila, "Descripción").isEmpty())
                continue;
            strSQL = InsertarLinea(recurso, fila);
            Sistema->Conexion().Execute(strSQL);
            // The screen may be drawn again; keys and clicks wait, or a second accept would begin inside this one.
            qvx::Trabajo::Dibujar();
        }
    });
}
