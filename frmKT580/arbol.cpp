// The tree of parts: always rebuilt whole from its table, never patched node by node.

#include "component/PunteroReloj.h"
#include "component/Trampa.h"
#include "controls/Teclas.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "frmKT580/Ordenes.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

#include <QScopedValueRollback>

using namespace Publico;
using comunesQVX::Nodo;
namespace tecla = comunesQVX::tecla;

namespace
{

constexpr int Activa = 1;
constexpr int Baja = 3;
constexpr int BajaAbierta = 4;

} // namespace

void frmKT580::CargarPartes()
{
    Trampa::en(*this, "CargarPartes()", 7500001, [&] {
        ui->tvPartes->Clear();
        ui->tvPartes->Add("", "N" + ClaveRaiz, TextoRaiz, Activa)->Tag = 1;
        demasiadoHondo = false;
        AddSubParte(ClaveRaiz);
        ui->tvPartes->Primero()->setExpanded(true);
    });
}

// Adds the children of one part, depth first; retired parts are shown, with image 3.
void frmKT580::AddSubParte(const QString &padre)
{
    Trampa::en(*this, "AddSubParte()", 7500002, [&] {
        const QScopedValueRollback bajo(nivel, nivel + 1);
        RevisarNivel();
        strSQL = "SELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + padre + "' and Te_Cve_Tipo_Equipo = '"
                 + ui->txtTipoEquipo->Text() + "' ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC";
        for (auto hijos = Sistema->Conexion().Execute(strSQL); !hijos.Eof() && !demasiadoHondo; hijos.MoveNext()) {
            const QString parte = hijos["Tep_ID"];
            ui->tvPartes->Add("N" + padre, "N" + parte, parte + " - " + hijos["Tep_Descripcion"],
                              hijos["Es_Cve_Estado"] == "AC" ? Activa : Baja);
            AddSubParte(parte);
        }
    });
}

void frmKT580::RevisarNivel()
{
    if (nivel <= MaximoNiveles)
        return;
    demasiadoHondo = true;
    throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento,
                              QString("El plan tiene más de %1 niveles").arg(MaximoNiveles));
}

QString frmKT580::GetPartePadre(const QString &tipoEquipo, const QString &tepId)
{
    strSQL = "SELECT Tep_Padre FROM Tipo_Equipo_Parte WHERE Tep_ID = '" + tepId + "' and Te_Cve_Tipo_Equipo = '"
             + tipoEquipo + "' ";
    const auto parte = Sistema->Conexion().Execute(strSQL);
    return parte.Eof() ? QString() : parte["Tep_Padre"];
}

// The selected part's key, taken afresh: the node's key without its letter.
QString frmKT580::TomarParte()
{
    const Nodo *nodo = ui->tvPartes->SelectedItem();
    if (!nodo)
        throw qvx::ErrorEjecucion(qvx::errores::ObjetoNoEstablecido, "No hay una parte seleccionada");
    parteActual = nodo->Key().mid(1);
    return parteActual;
}

// The picture is the test of a retired part, not its state.
bool frmKT580::DadaDeBaja(const Nodo *nodo)
{
    return nodo->Image() == Baja || nodo->Image() == BajaAbierta;
}

// The control itself never changes the label: the tree is read again, or stays as it was.
void frmKT580::tvPartes_AfterLabelEdit(bool &cancelar, QString &texto)
{
    cancelar = true;
    if (texto.isEmpty())
        return;
    Trampa::delHost(*this, [&] {
        const QString parte = TomarParte();
        // Hyphens inside a description are lost too, on purpose.
        texto = texto.remove(parte).remove(QLatin1Char('-')).trimmed().toUpper();
        strSQL = "UPDATE Tipo_Equipo_Parte SET ";
        strSQL += "   Tep_Descripcion = '" + texto + "', ";
        strSQL += "   Oper_Ult_Modif = '" + Sistema->UsuarioActual() + "', ";
        strSQL += "   Fecha_Ult_Modif = '" + Utilerias->TextoFecha(Utilerias->FechaServidor()) + "'";
        strSQL += "WHERE Tep_ID = '" + parte + "' and Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "'";
        Sistema->Conexion().Execute(strSQL);

        const PunteroReloj reloj;
        CargarPartes();
        SeleccionarParte("N" + parte);
    });
}

// Makes a node visible and selected, if the tree has it.
void frmKT580::SeleccionarParte(const QString &clave)
{
    if (!ui->tvPartes->Contains(clave))
        return;
    Nodo *nodo = ui->tvPartes->Item(clave);
    ui->tvPartes->EnsureVisible(nodo);
    ui->tvPartes->setSelectedItem(nodo);
}

void frmKT580::tvPartes_KeyDown(int codigo)
{
    if (codigo == tecla::F5)
        CargarPartes();
    else if (codigo == tecla::F2)
        ui->tvPartes->StartLabelEdit();
    else if (codigo == tecla::Enter)
        Utilerias->EnviarTecla("\t");
}

void frmKT580::tvPartes_NodeClick(Nodo * /*nodo*/)
{
    const Nodo *nodo = ui->tvPartes->SelectedItem();
    if (!nodo)
        return;
    const QString parte = TomarParte();
    toolbarQVX::Estado estado{.extras = ui->tvPartes->Count() > 1 ? ordenes::ConPlan : ordenes::SinPlan};
    if (parte == ClaveRaiz) {
        estado.nuevo = true;
    } else if (DadaDeBaja(nodo)) {
        estado.reactivar = estado.info = true;
    } else {
        estado.nuevo = estado.editar = estado.eliminar = estado.info = true;
        estado.extras[0] = ordenes::EliminarParte;
        estado.extras[1] = ordenes::AgregarServicio;
    }
    ui->Controles->Ofrecer(estado);
    LlenarServicios();
}

// Assigning them their own values makes the control draw the node and its first child again.
void frmKT580::tvPartes_Redibujar(Nodo *nodo)
{
    nodo->setText(nodo->Text());
    for (Nodo *otro : {nodo, nodo->Child()})
        if (otro && otro->Image() >= Activa && otro->Image() <= BajaAbierta)
            otro->setImage(otro->Image());
}
