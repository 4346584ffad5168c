#include "frmKT580/frmKT580.h"

#include "component/Trampa.h"
#include "controls/Etiqueta.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "controls/colorQVX.h"
#include "controls/txtQVX.h"
#include "frmKT580/Ordenes.h"
#include "ui_frmKT580.h"

#include <QHideEvent>

using namespace Publico;
using comunesQVX::ListView;
using comunesQVX::TreeView;
using textoQVX::txtQVX;
using toolbarQVX::Controles;
using toolbarQVX::Estado;

namespace
{

// Margins of the screen, in twips.
constexpr int MargenInferior = 100;
constexpr int EntreArbolYLista = 500;

} // namespace

frmKT580 &frmKT580::Instancia()
{
    static QPointer<frmKT580> instancia;
    if (!instancia || !instancia->Cargado()) {
        auto nueva = std::unique_ptr<frmKT580>(new frmKT580);
        nueva->Cargar();
        instancia = nueva.release();
    }
    return *instancia;
}

frmKT580::frmKT580() : ui(std::make_unique<Ui::frmKT580>())
{
    ui->setupUi(this);
    comunesQVX::ImageList imagenes;
    for (const char *nombre : {"parte", "parte_abierta", "parte_baja", "parte_baja_abierta"})
        imagenes.Agregar(QIcon(QString(":/controls/%1.svg").arg(nombre)));
    ui->tvPartes->setImageList(imagenes);

    const int pulgada = logicalDpiX();
    ui->lvServicios->AgregarColumna("Folio", Qt::AlignLeft, pulgada);
    ui->lvServicios->AgregarColumna("Servicio", Qt::AlignLeft, pulgada);
    ui->lvServicios->AgregarColumna("Descripción", Qt::AlignLeft, pulgada);
    ui->lvServicios->AgregarColumna("Días", Qt::AlignHCenter, pulgada);
    ui->lvServicios->AgregarColumna("Lectura", Qt::AlignHCenter, pulgada);
    ui->lvServicios->AgregarColumna("Tiempo estimado", Qt::AlignRight, pulgada);
    ui->lvServicios->AgregarColumna("Requiere paro", Qt::AlignHCenter, pulgada);
    ui->lvServicios->AgregarColumna("Prioridad", Qt::AlignLeft, pulgada);
    ConectarEventos();
}

frmKT580::~frmKT580() = default;

void frmKT580::ConectarEventos()
{
    connect(ui->Controles, &Controles::Nuevo, this, &frmKT580::Controles_Nuevo);
    connect(ui->Controles, &Controles::Editar, this, &frmKT580::Controles_Editar);
    connect(ui->Controles, &Controles::Eliminar, this, &frmKT580::Controles_Eliminar);
    connect(ui->Controles, &Controles::Reactivar, this, &frmKT580::Controles_Reactivar);
    connect(ui->Controles, &Controles::Info, this, &frmKT580::Controles_Info);
    connect(ui->Controles, &Controles::B1Click, this, &frmKT580::Controles_B1Click);
    connect(ui->Controles, &Controles::B2Click, this, &frmKT580::Controles_B2Click);
    connect(ui->Controles, &Controles::B3Click, this, &frmKT580::Controles_B3Click);
    connect(ui->Controles, &Controles::Cerrar, this, &frmKT580::Descargar);

    connect(ui->txtTipoEquipo, &txtQVX::Change, this, &frmKT580::txtTipoEquipo_Change);
    connect(ui->txtTipoEquipo, &txtQVX::Confirmado, this, &frmKT580::txtTipoEquipo_Validate);
    connect(ui->txtTipoEquipo, &txtQVX::Resuelto, this, &frmKT580::txtTipoEquipo_Seleccion);

    connect(ui->tvPartes, &TreeView::AfterLabelEdit, this, &frmKT580::tvPartes_AfterLabelEdit);
    connect(ui->tvPartes, &TreeView::KeyDown, this, &frmKT580::tvPartes_KeyDown);
    connect(ui->tvPartes, &TreeView::NodeClick, this, &frmKT580::tvPartes_NodeClick);
    connect(ui->tvPartes, &TreeView::Expand, this, &frmKT580::tvPartes_Redibujar);
    connect(ui->tvPartes, &TreeView::Collapse, this, &frmKT580::tvPartes_Redibujar);
    connect(ui->tvPartes, &TreeView::OLEDragOver, this, &frmKT580::tvPartes_OLEDragOver);
    connect(ui->tvPartes, &TreeView::OLEDragDrop, this, &frmKT580::tvPartes_OLEDragDrop);

    connect(ui->lvServicios, &ListView::DblClick, this, &frmKT580::lvServicios_DblClick);
    connect(ui->lvServicios, &ListView::KeyDown, this, &frmKT580::lvServicios_KeyDown);
    connect(ui->lvServicios, &ListView::OLEStartDrag, this, &frmKT580::lvServicios_OLEStartDrag);
}

void frmKT580::Form_Load()
{
    ui->colorQVX->Aplicar();
    formatoParte = Mascara("FTO_TIPO_EQUIPO_PARTE");
    ui->txtTipoEquipo->setFormato(Mascara("FTO_TIPO_EQUIPO"));
    LimpiarControles();
    ui->tvPartes->setOLEDropMode(1);
    ui->lvServicios->setOLEDragMode(1);
}

// The host's equipment type is applied once each time the screen is shown: coming back from a dialog must not undo
// what the planner chose meanwhile.
void frmKT580::Form_Activate()
{
    if (activada)
        return;
    activada = true;
    Trampa::delHost(*this, [&] {
        const QString parametros = TextoDelPadre("iParametros");
        if (ui->txtTipoEquipo->Text().isEmpty())
            ui->txtTipoEquipo->setFocus();
        if (!parametros.isEmpty())
            ui->txtTipoEquipo->Elegir(parametros);
    });
}

void frmKT580::hideEvent(QHideEvent *evento)
{
    if (!evento->spontaneous())
        activada = false;
    FormularioConPadre::hideEvent(evento);
}

void frmKT580::Form_Resize()
{
    ui->Controles->resize(width(), ui->Controles->height());
    const QRect arbol = ui->tvPartes->geometry();
    const int alto = Pixeles(ScaleHeight() - Twips(arbol.top()) - MargenInferior);
    const int izquierda = Twips(arbol.left()) + Twips(arbol.width()) + EntreArbolYLista;
    const int ancho = Pixeles(ScaleWidth() - izquierda - Twips(arbol.left()));
    ui->tvPartes->resize(arbol.width(), alto);
    ui->lvServicios->setGeometry(Pixeles(izquierda), ui->lvServicios->y(), ancho, alto);
}

void frmKT580::Form_Unload()
{
    deleteLater();
}

// No command is offered but the import.
void frmKT580::LimpiarControles()
{
    ui->Controles->Ofrecer({.extras = ordenes::SinPlan});
}

bool frmKT580::TipoValido() const
{
    return !ui->txtTipoEquipo->Text().isEmpty() && !ui->txtNTipoEquipo->Text().isEmpty();
}

void frmKT580::txtTipoEquipo_Change()
{
    tipoValido = TipoValido();
    VaciarServicios();
    ui->tvPartes->Clear();
    // The tree is empty: there is no part that a command could be meant for.
    ui->Controles->Ofrecer(
        {.extras = {ordenes::Ninguna, ordenes::ImportarXml, tipoValido ? ordenes::CopiarPlan : ordenes::Ninguna}});
}

// The toolbar follows: a choice is confirmed first, and resolved at once.
void frmKT580::txtTipoEquipo_Validate()
{
    Trampa::enEvento([&] {
        tipoValido = TipoValido();
        VaciarServicios();
        if (tipoValido)
            CargarPartes();
        else
            ui->tvPartes->Clear();
    });
}

// No part is selected: only commands on the whole plan.
void frmKT580::txtTipoEquipo_Seleccion()
{
    Estado estado{.extras = ui->Controles->Ofrecido().extras};
    estado.extras[0] = tipoValido && ui->tvPartes->Count() > 1 ? ordenes::ExportarXml : ordenes::Ninguna;
    estado.extras[1] = ordenes::ImportarXml;
    if (tipoValido)
        estado.extras[2] = ordenes::CopiarPlan;
    ui->Controles->Ofrecer(estado);
}

void frmKT580::Controles_Info()
{
    Trampa::en(*this, "Controles_Info()", 7500035, [&] {
        if (!ui->tvPartes->SelectedItem())
            return;
        Utilerias->InformacionRegistro("Tipo_Equipo_Parte", {"Te_Cve_Tipo_Equipo", "Tep_ID"},
                                       {ui->txtTipoEquipo->Text(), TomarParte()}, this);
    });
}

// The command behind an extra button is what it offers.
void frmKT580::Controles_B1Click()
{
    Trampa::enEvento([&] {
        const toolbarQVX::Extra orden = ui->Controles->Ofrecido().extras[0];
        bool hecho = true;
        if (orden == ordenes::EliminarParte)
            hecho = Eliminar_Parte();
        else if (orden == ordenes::ExportarXml)
            hecho = Exportar_xml();
        if (!hecho)
            MostrarError("Controles_B1Click()", orden == ordenes::ExportarXml ? 7500017 : 7500016);
    });
}

void frmKT580::Controles_B2Click()
{
    Trampa::enEvento([&] {
        const toolbarQVX::Extra orden = ui->Controles->Ofrecido().extras[1];
        if (orden == ordenes::ImportarXml)
            return B2Importar();
        if (orden != ordenes::AgregarServicio || Nuevo_Servicio())
            return;
        Sistema->Conexion().RollbackTrans();
        MostrarError("Controles_B2Click()", 7500022);
    });
}

// The error that a command left, if it left one.
void frmKT580::MostrarError(const QString &procedimiento, int identificador)
{
    if (!textoError.isEmpty())
        Mensaje(textoError, qvx::mensaje::Critico, procedimiento, identificador);
    textoError.clear();
}
