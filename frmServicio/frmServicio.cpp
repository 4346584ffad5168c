#include "frmServicio/frmServicio.h"

#include "component/Trampa.h"
#include "controls/Controles.h"
#include "controls/Etiqueta.h"
#include "controls/SSOleDBGrid.h"
#include "controls/Teclas.h"
#include "controls/colorQVX.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"
#include "ui_frmServicio.h"

#include <QKeyEvent>
#include <QShortcut>
#include <algorithm>

using namespace Publico;
using ssTabQvx::ssTbQvx;
using textoQVX::txtQVX;
using toolbarQVX::Controles;

frmServicio::frmServicio(const QWidget *duena) : FormularioConPadre(duena), ui(std::make_unique<Ui::frmServicio>())
{
    ui->setupUi(this);
    ui->Controles1->setJuegoComandos(Controles::Dialogo);
    ui->Controles1->Ofrecer({.aceptar = true});
    ui->txtTiempoParo->setEnabled(false);
    ui->chkRequiereParo->installEventFilter(this);
    DefinirGrids();
    ConectarEventos();
    ConectarTeclas();
    ssTabQvx_Click(0);
}

frmServicio::~frmServicio() = default;

void frmServicio::ConectarEventos()
{
    connect(ui->Controles1, &Controles::Aceptar, this, &frmServicio::cmdAceptar);
    connect(ui->Controles1, &Controles::Cancelar, this, &frmServicio::controles1_Cancelar);
    connect(ui->chkRequiereParo, &QCheckBox::toggled, this, &frmServicio::chkRequiereParo_Click);
    connect(ui->txtTiempoEstimado, &txtQVX::Change, this, &frmServicio::txtTiempoEstimado_Change);
    connect(ui->txtPrecio, &txtQVX::Change, this, &frmServicio::Importe);
    connect(ui->ssTabQvx, &ssTbQvx::Click, this, &frmServicio::ssTabQvx_Click);
    connect(ui->ssTabQvx, &ssTbQvx::KeyPress, this, &frmServicio::Grid_KeyPress);

    for (const Recurso &recurso : recursos)
        ConectarGrid(recurso);
}

void frmServicio::ConectarGrid(const Recurso &recurso)
{
    const Grid *grid = recurso.grid;
    connect(grid, &Grid::AfterColUpdate, this,
            [this, &recurso](int columna) { (this->*recurso.alCambiar)(recurso, columna); });
    connect(grid, &Grid::BeforeUpdate, this, [&recurso] { Grid_BeforeUpdate(recurso); });
    connect(grid, &Grid::BtnClick, this, [this, &recurso](int columna) { Grid_BtnClick(recurso, columna); });
    connect(grid, &Grid::KeyPress, this, &frmServicio::Grid_KeyPress);
}

void frmServicio::ConectarTeclas()
{
    for (int pagina = 0; pagina < 4; ++pagina)
        connect(new QShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + pagina)), this),
                &QShortcut::activated, this, [this, pagina] { ui->ssTabQvx->IrA(pagina); });
}

void frmServicio::Contexto(const QString &tipoEquipo, const QString &nombreTipo, const QString &parte,
                           const QString &nombreParte)
{
    ui->txtTipoEquipo->setText(tipoEquipo);
    ui->txtNTipoEquipo->setText(nombreTipo);
    ui->txtParte->setText(parte);
    ui->txtNParte->setText(nombreParte);
}

void frmServicio::Form_Load()
{
    Trampa::enEditor(*this, "Form_Load()", 7500085, [&] {
        ui->colorQVX->Aplicar();
        AlinearCampos();
        formatoProducto = Mascara("FTO_PRODUCTO", "0000000000");
        formatoGasto = Mascara("FTO_TIPO_GASTO");
        if (Nuevo) {
            ui->txtID->setText(ClaveNueva());
            ui->txtNTiposervicio->setText("");
        }
        ui->txtTipoServicio->setFormato(Mascara("FTO_TIPO_SERVICIO"));
        ui->txtPrioridad->setFormato(Mascara("FTO_PRIORIDAD_SERVICIO"));
        ui->txtUnidad->setFormato(Mascara("FTO_UNIDAD"));
        ui->ssTabQvx->setTab(0);
        ui->txtTipoServicio->setFocus();
    });
}

// The fields of the two frames below each other begin at one place, however wide the letter is.
void frmServicio::AlinearCampos()
{
    const auto grids = {ui->dServicio, ui->dFrecuencia};
    int ancho = 0;
    for (const QGridLayout *grid : grids)
        for (int fila = 0; fila < grid->rowCount(); ++fila)
            if (const QLayoutItem *etiqueta = grid->itemAtPosition(fila, 0))
                ancho = std::max(ancho, etiqueta->sizeHint().width());
    for (QGridLayout *grid : grids)
        grid->setColumnMinimumWidth(0, ancho);
}

// The next free key of the equipment type.
QString frmServicio::ClaveNueva() const
{
    return Utilerias->SiguienteClaveTexto("Plan_Mantenimiento", "Pm_ID", "Te_Cve_Tipo_Equipo",
                                          ui->txtTipoEquipo->Text(), "", "");
}

bool frmServicio::TieneClave() const
{
    return !ui->txtID->Text().isEmpty();
}

void frmServicio::SoloLectura()
{
    for (QWidget *campo : std::initializer_list<QWidget *>{
             ui->txtTipoServicio, ui->txtPrecio, ui->txtTiempoEstimado, ui->txtPrioridad, ui->txtDias, ui->txtLectura,
             ui->txtUnidad, ui->chkRequiereParo, ui->ssManoObra, ui->ssRefacciones, ui->ssHerramientas})
        campo->setEnabled(false);
    ui->Controles1->Ofrecer({});
}

void frmServicio::chkRequiereParo_Click()
{
    Trampa::enEditor(*this, "chkRequiereParo_Click()", 7500051, [&] {
        const bool conParo = ui->chkRequiereParo->isChecked();
        ui->txtTiempoParo->setEnabled(conParo && ui->chkRequiereParo->isEnabled());
        if (conParo)
            CopiarTiempo();
        else
            ui->txtTiempoParo->setNumero(0);
    });
}

void frmServicio::txtTiempoEstimado_Change()
{
    if (ui->chkRequiereParo->isChecked())
        Trampa::delHost(*this, [&] { CopiarTiempo(); });
}

// The downtime takes the estimated hours: the number and not its text, which may be shown with fewer decimals.
void frmServicio::CopiarTiempo()
{
    if (ui->txtTiempoEstimado->Text().isEmpty())
        ui->txtTiempoParo->setText("");
    else
        ui->txtTiempoParo->setNumero(ui->txtTiempoEstimado->Numero());
}

void frmServicio::ssTabQvx_Click(int pagina)
{
    ui->fr2->setVisible(pagina == 1);
    ui->fr3->setVisible(pagina == 2);
    ui->fr4->setVisible(pagina == 3);
    if (pagina == 3)
        Importe();
}

// Enter moves on as Tab does.
void frmServicio::Grid_KeyPress(int codigo)
{
    if (codigo == comunesQVX::tecla::Enter)
        Utilerias->EnviarTecla("\t");
}

bool frmServicio::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == ui->chkRequiereParo && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            Utilerias->EnviarTecla("\t");
            return true;
        }
    }
    return FormularioConPadre::eventFilter(objeto, evento);
}

void frmServicio::controles1_Cancelar()
{
    Descargar();
}
