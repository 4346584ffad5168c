// The commands that add a part and change one: they prepare the part dialog and show the tree anew when it saved.

#include "component/PunteroReloj.h"
#include "component/Trampa.h"
#include "controls/DeAmbos.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "data/Texto.h"
#include "frmKT580/frmAddParte.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

using namespace Publico;

// The path of a part as a text. Nothing for a part that is not there, which has been told.
std::optional<QString> frmKT580::Ruta(const QString &tipoEquipo, const QString &parte, int identificador)
{
    strSQL = "SELECT dbo.Get_Ruta_Parte_Tipo_Equipo('" + tipoEquipo + "','" + parte + "')AS Descripcion ";
    const auto fila = Sistema->Conexion().Execute(strSQL);
    if (!fila.Eof())
        return fila["Descripcion"];
    Advertir("No se encontró la ruta de la parte", identificador);
    return {};
}

void frmKT580::Controles_Nuevo()
{
    Trampa::en(*this, "Controles_Nuevo()", 7500004, [&] {
        if (!ui->tvPartes->SelectedItem())
            return;
        const QString padre = TomarParte();
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        const QString clave = QString::number(Utilerias->SiguienteClave(
            "Tipo_Equipo_Parte", "Tep_ID", "Te_Cve_Tipo_Equipo", tipoEquipo, "", "", "", "", ""));
        const auto ruta = Ruta(tipoEquipo, padre, 7500003);
        if (!ruta)
            return;
        const qvx::Vigia vigia(*this);
        const qvx::DeAmbos<frmAddParte> dialogo(new frmAddParte(*this));
        dialogo->Nuevo = true;
        dialogo->Cargar();
        dialogo->LlenarPadre(padre, *ruta);
        dialogo->LlenarTipo(tipoEquipo, ui->txtNTipoEquipo->Text());
        dialogo->LlenarParte(qvx::ClaveConFormato(clave, formatoParte), "");
        dialogo->MostrarModal();
        vigia.Revisar();
        if (dialogo->Aceptado) {
            const PunteroReloj reloj;
            CargarPartes();
            SeleccionarPadreDe("N" + dialogo->Clave());
        }
        dialogo->Descargar();
    });
}

// Shows the new part and leaves its parent selected, where the next part would be added. A part that is not in the tree
// (its parent was deleted meanwhile) is an error that the planner hears of.
void frmKT580::SeleccionarPadreDe(const QString &clave)
{
    comunesQVX::Nodo *nodo = ui->tvPartes->Item(clave);
    ui->tvPartes->EnsureVisible(nodo);
    ui->tvPartes->setSelectedItem(nodo->Parent());
}

void frmKT580::Controles_Editar()
{
    Trampa::en(*this, "Controles_Editar()", 7500007, [&] {
        if (!ui->tvPartes->SelectedItem())
            return;
        const QString parte = TomarParte();
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        if (parte == ClaveRaiz) {
            Advertir("La parte no es válido para esta operación!", 7500005);
            return;
        }
        const auto ruta = Ruta(tipoEquipo, parte, 7500006);
        if (!ruta)
            return;
        strSQL = "SELECT * FROM Tipo_Equipo_Parte WHERE Tep_ID = '" + parte + "' AND Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "' ";
        const auto fila = Sistema->Conexion().Execute(strSQL);
        const QString padre = fila["Tep_Padre"];
        const qvx::Vigia vigia(*this);
        const qvx::DeAmbos<frmAddParte> dialogo(new frmAddParte(*this));
        dialogo->Nuevo = false;
        dialogo->Cargar();
        dialogo->LlenarPadre(padre, *ruta);
        dialogo->LlenarTipo(tipoEquipo, ui->txtNTipoEquipo->Text());
        dialogo->LlenarParte(parte, fila["Tep_Descripcion"]);
        dialogo->MostrarModal();
        vigia.Revisar();
        if (dialogo->Aceptado) {
            CargarPartes();
            ui->tvPartes->Item("N" + parte)->setText(parte + " - " + dialogo->Texto());
            SeleccionarParte("N" + parte);
            if (ui->tvPartes->isEnabled())
                ui->tvPartes->setFocus();
        }
        dialogo->Descargar();
    });
}
