// Moving services between parts by dragging them from the list onto the tree.

#include "component/Contador16.h"
#include "component/Trampa.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

using namespace Publico;

namespace
{

// The part to move from. Without one there is nothing to look at: an error of the procedure that asks.
const comunesQVX::Nodo &ParteElegida(const comunesQVX::TreeView &arbol)
{
    const comunesQVX::Nodo *nodo = arbol.SelectedItem();
    if (!nodo)
        throw qvx::ErrorEjecucion(qvx::errores::ObjetoNoEstablecido, "No hay una parte seleccionada en el árbol");
    return *nodo;
}

} // namespace

void frmKT580::lvServicios_OLEStartDrag(QString &texto)
{
    Trampa::delHost(*this, [&] {
        QString folios; // given only when the walk reaches its end
        for (Contador16 fila; fila < ui->lvServicios->Count(); ++fila) {
            if (!ui->lvServicios->Seleccionada(fila))
                continue;
            if (!folios.isEmpty())
                folios += "\r\n";
            folios += ui->lvServicios->Texto(fila);
        }
        texto = folios;
    });
}

void frmKT580::tvPartes_OLEDragOver(const QPoint &posicion)
{
    ui->tvPartes->setDropHighlight(ui->tvPartes->HitTest(posicion));
}

void frmKT580::tvPartes_OLEDragDrop(const QString &texto)
{
    Trampa::en(*this, "tvPartes_OLEDragDrop", 7500040, [&] {
        const comunesQVX::Nodo *destino = ui->tvPartes->DropHighlight();
        if (!destino)
            return;
        ui->tvPartes->setDropHighlight(nullptr);
        if (DadaDeBaja(&ParteElegida(*ui->tvPartes))) {
            Advertir("El servicio seleccionado es de una parte dada de baja, no se puede copiar", 7500038);
            return;
        }
        if (DadaDeBaja(destino)) {
            Advertir("No se puede copiar el servicio, la parte está dada de baja", 7500039);
            return;
        }
        Copia_Servicio(texto, destino->Text());
    });
}

// Although its messages speak of copying, it moves the service: the key stays and only the part changes. Its trap
// carries another name than the procedure, on purpose.
void frmKT580::Copia_Servicio(const QString &folio, const QString &textoDestino)
{
    Trampa::en(*this, "Copiar_Servicio", 7500043, [&] {
        ParteElegida(*ui->tvPartes);
        const QString origen = TomarParte();
        // The key keeps the blank before the dash, which does not count when keys are compared. The root's text has no
        // dash, so that a drop on it passes this test and leaves the service under "RAIZ": meant so.
        const QString destino = textoDestino.section(QLatin1Char('-'), 0, 0);
        if (destino == ClaveRaiz) {
            Advertir("No se puede crear un servicio a la raíz", 7500041);
            return;
        }
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        const QString fecha = Utilerias->TextoFecha(Utilerias->FechaServidor());
        const QString operador = Sistema->UsuarioActual();
        Sistema->Conexion().BeginTrans();
        strSQL = "SELECT * FROM Plan_Mantenimiento ";
        strSQL += "WHERE  Pm_ID = '" + folio + "' ";
        strSQL += "   AND Tep_ID = '" + origen + "' ";
        strSQL += "   AND Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ";
        // Several folios, or a text that is none, match nothing. The transaction stays as it is: it ends with the
        // event.
        if (Sistema->Conexion().Execute(strSQL).Eof())
            return;

        strSQL = "UPDATE Plan_Mantenimiento SET ";
        strSQL += "Tep_ID = '" + destino + "', ";
        strSQL += "Oper_Ult_Modif = '" + operador + "', ";
        strSQL += "Fecha_Ult_Modif = '" + fecha + "' ";
        strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + tipoEquipo + "'";
        strSQL += "   AND Tep_ID = '" + origen + "'";
        strSQL += "   AND Pm_ID = '" + folio + "' ";
        Sistema->Conexion().Execute(strSQL);
        strSQL = "UPDATE Plan_Mantenimiento_Detalle SET ";
        strSQL += "Tep_ID = '" + destino + "' ";
        strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + tipoEquipo + "'";
        strSQL += "   AND Tep_ID = '" + origen + "'";
        strSQL += "   AND Pm_ID = '" + folio + "' ";
        Sistema->Conexion().Execute(strSQL);
        if (!Utilerias->RegistrarCambio("Plan_Mantenimiento", {tipoEquipo, folio})) {
            Sistema->Conexion().RollbackTrans();
            Advertir(Utilerias->UltimoErrorDatos(), 7500042);
            return;
        }
        Sistema->Conexion().CommitTrans();
        CargarPartes();
        ui->tvPartes->Primero()->setExpanded(true);
        if (ui->tvPartes->isEnabled())
            ui->tvPartes->setFocus();
        SeleccionarParte("N" + origen);
        tvPartes_NodeClick(ui->tvPartes->SelectedItem());
    });
}
