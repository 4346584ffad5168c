// Retiring a part with everything below it, and bringing it back. Rows are only updated.

#include "component/Trampa.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

#include <QScopedValueRollback>

using namespace Publico;

namespace
{

// The SET list of a change of state; retiring also signs the retirement.
QString CambioDeEstado(const QString &operador, const QString &fecha, const QString &estado)
{
    QString sql = "UPDATE Tipo_Equipo_Parte SET";
    sql += "   Oper_Ult_Modif = '" + operador + "', ";
    sql += "   Fecha_Ult_Modif = '" + fecha + "', ";
    if (estado == "BA") {
        sql += "   Oper_Baja = '" + operador + "', ";
        sql += "   Fecha_Baja = '" + fecha + "', ";
    }
    sql += "   Es_Cve_Estado = '" + estado + "' ";
    return sql;
}

} // namespace

// Every child is written and logged twice, by its parent's loop and by its own call; that is meant so, and so is that
// the answer of the inner calls is not passed on. Only that the plan goes on below what was reached is everybody's: no
// part of it is retired alone.
bool frmKT580::Update_Partes(const QString &tipoEquipo, const QString &parte, const QString &estado)
{
    return Trampa::guardando(textoError, [&] {
        const QScopedValueRollback bajo(nivel, nivel + 1);
        demasiadoHondo = demasiadoHondo && nivel > 1;
        RevisarNivel();
        const QString operador = Sistema->UsuarioActual();
        const QString fecha = Utilerias->TextoFecha(Utilerias->FechaServidor());
        const QString accion = estado == "BA" ? "Baja" : "Reactivación";
        strSQL = CambioDeEstado(operador, fecha, estado);
        strSQL += "WHERE Tep_ID = '" + parte + "' AND Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
        Sistema->Conexion().Execute(strSQL);
        Utilerias->Bitacora("Tipo_Equipo_Parte", tipoEquipo + parte, accion);

        strSQL = "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + parte + "' AND Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "' ";
        for (auto hijos = Sistema->Conexion().Execute(strSQL); !hijos.Eof(); hijos.MoveNext()) {
            const QString hijo = hijos["Tep_ID"];
            strSQL = CambioDeEstado(operador, fecha, estado);
            strSQL += "WHERE ";
            strSQL += "   Tep_ID = '" + hijo + "' ";
            strSQL += "   AND Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
            strSQL += "   AND Tep_Padre = '" + parte + "' ";
            Sistema->Conexion().Execute(strSQL);
            Utilerias->Bitacora("Tipo_Equipo_Parte", tipoEquipo + hijo, accion);
            Update_Partes(tipoEquipo, hijo, estado);
            if (demasiadoHondo)
                return false;
        }
        return true;
    });
}

void frmKT580::Controles_Eliminar()
{
    Trampa::enTransaccion(*this, "Controles_Eliminar()", 7500011, [&] {
        if (!ui->tvPartes->SelectedItem())
            return;
        const QString parte = TomarParte();
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        if (parte.isEmpty() || parte == ClaveRaiz) {
            Advertir("La parte del equipo no es válido para esta operación", 7500008);
            return;
        }
        // Run for no use of its rows.
        strSQL = "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + parte + "' AND Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "' ";
        Sistema->Conexion().Execute(strSQL);

        Sistema->Conexion().BeginTrans();
        if (!Update_Partes(tipoEquipo, parte, "BA")) {
            Sistema->Conexion().RollbackTrans();
            Sistema->Detallar(textoError);
            Advertir("Error al dar de baja la parte del equipo", 7500009);
            return;
        }
        if (!Utilerias->RegistrarCambio("Tipo_Equipo_Parte", {parte, tipoEquipo})) {
            Sistema->Conexion().RollbackTrans();
            Advertir(Utilerias->UltimoErrorDatos(), 7500010);
            return;
        }
        Sistema->Conexion().CommitTrans();
        CargarPartes();
        LimpiarControles();
        ui->tvPartes->Primero()->setExpanded(true);
        VaciarServicios();
    });
}

void frmKT580::Controles_Reactivar()
{
    Trampa::enTransaccion(*this, "Controles_Reactivar()", 7500015, [&] {
        const QString operador = Sistema->UsuarioActual();
        const QString fecha = Utilerias->TextoFecha(Utilerias->FechaServidor());
        if (!ui->tvPartes->SelectedItem())
            return;
        const QString parte = TomarParte();
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        if (parte.isEmpty() || parte == ClaveRaiz) {
            Advertir("La parte del equipo no es válido para está operación", 7500012);
            return;
        }
        const QString padre = GetPartePadre(tipoEquipo, parte);
        // Run for no use of its rows.
        strSQL = "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + parte + "' and Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "' ";
        Sistema->Conexion().Execute(strSQL);

        // The state in this row is the parent's.
        strSQL = "SELECT Tep_Padre, ";
        strSQL += "   Es_Cve_Estado = (SELECT Es_Cve_Estado FROM Tipo_Equipo_Parte WHERE Tep_ID =  '" + padre
                  + "' AND Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ) ";
        strSQL +=
            "FROM Tipo_Equipo_Parte WHERE Tep_ID =  '" + parte + "' AND Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
        const auto fila = Sistema->Conexion().Execute(strSQL);
        if (fila.Eof())
            return;

        Sistema->Conexion().BeginTrans();
        if (fila["Tep_Padre"] != ClaveRaiz && fila["Es_Cve_Estado"] == "BA")
            ReactivarPadre(tipoEquipo, fila["Tep_Padre"], operador, fecha);
        if (!Update_Partes(tipoEquipo, parte, "AC")) {
            Sistema->Conexion().RollbackTrans();
            Sistema->Detallar(textoError);
            Advertir("Error al reactivar la parte del equipo", 7500013);
            return;
        }
        if (!Utilerias->RegistrarCambio("Tipo_Equipo_Parte", {parte, tipoEquipo})) {
            Sistema->Conexion().RollbackTrans();
            Advertir(Utilerias->UltimoErrorDatos(), 7500014);
            return;
        }
        Sistema->Conexion().CommitTrans();
        LimpiarControles();
        CargarPartes();
        ui->tvPartes->Primero()->setExpanded(true);
        VaciarServicios();
    });
}

// Asked inside the transaction. Cancel only spares the parent: the part and its sub-parts come back all the same. Only
// the direct parent is reactivated.
void frmKT580::ReactivarPadre(const QString &tipoEquipo, const QString &padre, const QString &operador,
                              const QString &fecha)
{
    constexpr int estilo = qvx::mensaje::AceptarCancelar + qvx::mensaje::Informacion + qvx::mensaje::SegundoBoton;
    if (Preguntar("Se reactivará la parte y la subparte seleccionada", estilo, 7500045) != qvx::mensaje::Aceptar)
        return;
    strSQL = CambioDeEstado(operador, fecha, "AC");
    strSQL += "WHERE Tep_ID = '" + padre + "' AND Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
    Sistema->Conexion().Execute(strSQL);
    Utilerias->Bitacora("Tipo_Equipo_Parte", tipoEquipo + padre, "Reactivación");
}
