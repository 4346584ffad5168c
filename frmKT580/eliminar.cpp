// Deleting a part for good: the statements run first, and the question is asked afterwards, inside the transaction.

#include "component/Trampa.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

using namespace Publico;

// The row is selected by its own key, on purpose: the nested call meets it already gone, and the parts below stay in
// their table, out of the tree's reach.
bool frmKT580::Eliminar_Partes(const QString &tipoEquipo, const QString &parte)
{
    return Trampa::guardando(textoError, [&] {
        strSQL = Utilerias->ConsultaPorNombre("PLAN_MANTENIMIENTO")
                     .replace("{PARAMETROS}", FiltroServicios(tipoEquipo, parte));
        if (!Sistema->Conexion().Execute(strSQL).Eof()) {
            Advertir("La parte seleccionada tiene un plan de mantenimiento, imposible eliminar", 7500044);
            return false;
        }
        strSQL = "DELETE FROM Plan_Mantenimiento_Detalle ";
        strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
        strSQL += "   AND Tep_ID = '" + parte + "' ";
        Sistema->Conexion().Execute(strSQL);
        strSQL = "DELETE FROM Plan_Mantenimiento ";
        strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
        strSQL += "   AND Tep_ID = '" + parte + "' ";
        Sistema->Conexion().Execute(strSQL);
        strSQL = "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_ID = '" + parte + "' and Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "' ORDER BY Tep_ID ";
        auto filas = Sistema->Conexion().Execute(strSQL);
        strSQL = "DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '" + parte + "' and Te_Cve_Tipo_Equipo = '" + tipoEquipo
                 + "'";
        Sistema->Conexion().Execute(strSQL);
        for (; !filas.Eof(); filas.MoveNext())
            if (!Eliminar_Partes(tipoEquipo, filas["Tep_ID"]))
                return false;
        return true;
    });
}

bool frmKT580::Eliminar_Parte()
{
    const bool hecho = Trampa::guardando(textoError, [&] {
        const comunesQVX::Nodo *nodo = ui->tvPartes->SelectedItem();
        if (!nodo)
            return true;
        textoError.clear();
        if (nodo->Key() == "N" + ClaveRaiz) {
            Advertir("No se puede eliminar la raíz", 7500019);
            return true;
        }
        const QString parte = TomarParte();
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        const QString padre = GetPartePadre(tipoEquipo, parte);
        strSQL = "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + parte + "' AND Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "'  ";
        const auto hijos = Sistema->Conexion().Execute(strSQL);

        Sistema->Conexion().BeginTrans();
        if (!Eliminar_Partes(tipoEquipo, parte)) {
            Sistema->Conexion().RollbackTrans();
            // Refused because of its plan, the planner has been told; otherwise the error's text waits to be shown.
            return textoError.isEmpty();
        }
        constexpr int estilo = qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton;
        const int respuesta = hijos.Eof() ? Preguntar("¿Desea eliminar la parte?", estilo, 7500047)
                                          : Preguntar("¿Desea eliminar la parte y subpartes?", estilo, 7500046);
        if (respuesta != qvx::mensaje::Si) {
            Sistema->Conexion().RollbackTrans();
            return true;
        }
        SellarPadre(tipoEquipo, padre);
        Sistema->Conexion().CommitTrans();
        ui->tvPartes->Remove("N" + parte);
        LimpiarControles();
        CargarPartes();
        ui->tvPartes->Primero()->setExpanded(true);
        VaciarServicios();
        txtTipoEquipo_Seleccion();
        return true;
    });
    if (!hecho) // before the caller reports
        Sistema->Conexion().RollbackTrans();
    return hecho;
}

// A parent that lost its last child is signed by who took it.
void frmKT580::SellarPadre(const QString &tipoEquipo, const QString &padre)
{
    strSQL = "SELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + padre + "' and Te_Cve_Tipo_Equipo = '" + tipoEquipo
             + "' ";
    if (!Sistema->Conexion().Execute(strSQL).Eof())
        return;
    strSQL = "UPDATE Tipo_Equipo_Parte SET ";
    strSQL += "   Oper_Ult_Modif = '" + Sistema->UsuarioActual() + "',";
    strSQL += "   Fecha_Ult_Modif = '" + Utilerias->TextoFecha(Utilerias->FechaServidor()) + "'";
    strSQL += "WHERE Tep_ID = '" + padre + "' and Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
    Sistema->Conexion().Execute(strSQL);
    if (comunesQVX::Nodo *superior = ui->tvPartes->SelectedItem()->Parent())
        superior->Tag = 0;
}
