// The list of the selected part's services: filling it, and opening, creating and deleting a service from it.

#include "component/Trampa.h"
#include "controls/Controles.h"
#include "controls/DeAmbos.h"
#include "controls/FormatoLista.h"
#include "controls/ListView.h"
#include "controls/Teclas.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "frmKT580/frmKT580.h"
#include "frmServicio/frmServicio.h"
#include "ui_frmKT580.h"

using namespace Publico;

QString frmKT580::FiltroServicios(const QString &tipoEquipo, const QString &parte) const
{
    return " Plan_Mantenimiento.Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' " + "   AND Plan_Mantenimiento.Tep_ID = '"
           + parte + "'";
}

// The trap carries another name than the procedure, on purpose.
void frmKT580::LlenarServicios()
{
    Trampa::en(*this, "AgregarItemLv()", 7500021, [&] {
        const comunesQVX::Nodo *nodo = ui->tvPartes->SelectedItem();
        if (!nodo)
            return;
        strSQL = Utilerias->ConsultaPorNombre("PLAN_MANTENIMIENTO")
                     .replace("{PARAMETROS}", FiltroServicios(ui->txtTipoEquipo->Text(), parteActual));
        if (!Utilerias->LlenarLista(strSQL, *ui->lvServicios)) {
            VaciarServicios();
            Mensaje(Utilerias->UltimoErrorDatos(), qvx::mensaje::Critico, "Llenar servicios", 7500020);
            return;
        }
        const bool seElimina = !DadaDeBaja(nodo) && ui->lvServicios->Count() > 0;
        ui->lvServicios->setToolTip(seElimina ? "Presione Supr para eliminar un servicio" : "");
        qvx::FormatoLista().Aplicar(*ui->lvServicios);
    });
}

// An empty list offers no deletion.
void frmKT580::VaciarServicios()
{
    ui->lvServicios->Clear();
    ui->lvServicios->setToolTip("");
}

// The context that the editor works in, copied from the screen.
void frmKT580::PrepararEditor(frmServicio &editor, const QString &ruta)
{
    editor.setPadre(Padre());
    editor.Contexto(ui->txtTipoEquipo->Text(), ui->txtNTipoEquipo->Text(), parteActual,
                    parteActual == ClaveRaiz ? TextoRaiz : ruta);
}

void frmKT580::lvServicios_DblClick()
{
    Trampa::en(*this, "lvServicios_DblClick()", 7500031, [&] {
        if (ui->lvServicios->Count() == 0)
            return;
        if (!ui->tvPartes->SelectedItem()) {
            VaciarServicios();
            return;
        }
        if (!ui->lvServicios->HaySeleccion())
            return;
        const QString folio = ui->lvServicios->TextoSeleccionado();
        TomarParte();
        const auto ruta = Ruta(ui->txtTipoEquipo->Text(), parteActual, 7500030);
        if (!ruta)
            return;
        const qvx::Vigia vigia(*this);
        const qvx::DeAmbos<frmServicio> editor(new frmServicio(this));
        editor->Nuevo = false;
        PrepararEditor(*editor, *ruta);
        editor->Cargar();
        if (DadaDeBaja(ui->tvPartes->SelectedItem()))
            editor->SoloLectura();
        if (editor->Editar_Servicios(ui->txtTipoEquipo->Text(), parteActual, folio))
            editor->MostrarModal();
        vigia.Revisar();
        unsetCursor();
        editor->Descargar();
        tvPartes_NodeClick(ui->tvPartes->SelectedItem());
    });
}

bool frmKT580::Nuevo_Servicio()
{
    return Trampa::guardando(textoError, [&] {
        TomarParte();
        if (parteActual == ClaveRaiz) {
            Advertir("No se puede crear un serviciop de la raíz", 7500028);
            return true;
        }
        const auto ruta = Ruta(ui->txtTipoEquipo->Text(), parteActual, 7500029);
        if (!ruta)
            return true;
        const qvx::Vigia vigia(*this);
        const qvx::DeAmbos<frmServicio> editor(new frmServicio(this));
        editor->Nuevo = true;
        PrepararEditor(*editor, *ruta);
        editor->Cargar();
        if (editor->TieneClave())
            editor->MostrarModal();
        vigia.Revisar();
        unsetCursor();
        editor->Descargar();

        comunesQVX::Nodo *nodo = ui->tvPartes->SelectedItem();
        tvPartes_NodeClick(nodo);
        ui->tvPartes->setSelectedItem(nodo);
        const toolbarQVX::Estado &estado = ui->Controles->Ofrecido();
        ui->Controles->Ofrecer({.info = estado.info, .extras = estado.extras});
        return true;
    });
}

void frmKT580::lvServicios_KeyDown(int codigo)
{
    Trampa::en(*this, "lvServicios_KeyDown", 7500037, [&] {
        if (ui->lvServicios->Count() == 0 || codigo != comunesQVX::tecla::Supr)
            return;
        TomarParte();
        if (!ui->lvServicios->HaySeleccion())
            return;
        if (DadaDeBaja(ui->tvPartes->SelectedItem()))
            return;
        if (Preguntar("¿Desea eliminar el servicio?", qvx::mensaje::Pregunta + qvx::mensaje::SiNo, 7500050)
            != qvx::mensaje::Si)
            return;
        Sistema->Conexion().BeginTrans();
        if (Eliminar_Servicio()) {
            Sistema->Conexion().CommitTrans();
            LlenarServicios();
            LimpiarControles();
            return;
        }
        Sistema->Conexion().RollbackTrans();
        Mensaje(textoError, qvx::mensaje::Critico, "lvServicios_KeyDown()", 7500036);
        textoError.clear();
    });
}

bool frmKT580::Eliminar_Servicio()
{
    return Trampa::guardando(textoError, [&] {
        const QString condicion = "WHERE Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "' " + "AND Tep_ID = '"
                                  + TomarParte() + "' " + "AND Pm_ID = '" + ui->lvServicios->TextoSeleccionado() + "'";
        strSQL = "DELETE Plan_Mantenimiento_Detalle  " + condicion;
        Sistema->Conexion().Execute(strSQL);
        strSQL = "DELETE Plan_Mantenimiento  " + condicion;
        Sistema->Conexion().Execute(strSQL);
        return true;
    });
}
