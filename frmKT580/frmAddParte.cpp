#include "frmKT580/frmAddParte.h"

#include "component/Trampa.h"
#include "controls/Controles.h"
#include "controls/Etiqueta.h"
#include "controls/colorQVX.h"
#include "controls/txtQVX.h"
#include "data/Texto.h"
#include "ui_frmAddParte.h"

using namespace Publico;
using toolbarQVX::Controles;

frmAddParte::frmAddParte(FormularioConPadre &pantalla_)
    : FormularioConPadre(&pantalla_), ui(std::make_unique<Ui::frmAddParte>()), pantalla(pantalla_)
{
    ui->setupUi(this);
    ui->Controles->setJuegoComandos(Controles::Dialogo);
    connect(ui->Controles, &Controles::Aceptar, this, &frmAddParte::cmdAceptar);
    connect(ui->Controles, &Controles::Cancelar, this, &frmAddParte::Descargar);
    connect(ui->Controles, &Controles::Cerrar, this, &frmAddParte::Descargar);
}

frmAddParte::~frmAddParte() = default;

void frmAddParte::Form_Load()
{
    setPadre(pantalla.Padre());
    ui->colorQVX->Aplicar();
    ui->txtClave->setFormato(Mascara("FTO_TIPO_EQUIPO_PARTE"));
    ui->txtTipoEquipo->setFormato(Mascara("FTO_TIPO_EQUIPO"));
    ui->Controles->Ofrecer({.aceptar = true});
}

void frmAddParte::Form_Activate()
{
    if (ui->txtTexto->Lista())
        ui->txtTexto->setFocus();
}

void frmAddParte::LlenarTipo(const QString &tipoEquipo, const QString &nombreTipo)
{
    ui->txtTipoEquipo->setText(tipoEquipo);
    ui->txtNTipoEquipo->setText(nombreTipo);
}

void frmAddParte::LlenarPadre(const QString &padre, const QString &ruta)
{
    ui->txtPadre->setText(padre);
    ui->txtNPadre->setText(padre == ClaveRaiz ? TextoRaiz : ruta);
}

// The key of a new part is a proposal that may be written over; that of an existing one finds its row. A hyphen in it
// would end the key in the node's text: the box takes none.
void frmAddParte::LlenarParte(const QString &clave, const QString &descripcion)
{
    ui->txtClave->setText(clave);
    propuesta = ui->txtClave->Text();
    ui->txtClave->setSoloLectura(!Nuevo);
    ui->txtTexto->setText(descripcion);
}

QString frmAddParte::Clave() const
{
    return ui->txtClave->Text();
}

QString frmAddParte::Texto() const
{
    return ui->txtTexto->Text();
}

bool frmAddParte::Validar()
{
    const struct {
        const textoQVX::txtQVX *campo;
        int identificador;
        const char *texto;
    } pruebas[]{
        {ui->txtNTipoEquipo, 7500092, "Se debe especificar un tipo de equipo válido"},
        {ui->txtNPadre, 7500093, "Debe especificar una parte válida"},
        {ui->txtClave, 7500094, "Debe especificar una clave para el parte"},
        {ui->txtTexto, 7500095, "Debe especificar una descripción"},
    };
    for (const auto &prueba : pruebas) {
        if (!prueba.campo->Text().isEmpty())
            continue;
        Advertir(QString::fromUtf8(prueba.texto), prueba.identificador);
        return false;
    }
    return true;
}

void frmAddParte::cmdAceptar()
{
    Trampa::enTransaccion(*this, "cmdAceptar()", 7500097, [&] {
        if (!Validar())
            return;
        operador = Sistema->UsuarioActual();
        fecha = Utilerias->TextoFecha(Utilerias->FechaServidor());
        Sistema->Conexion().BeginTrans();
        const QString clave = ClaveLibre();
        strSQL = Nuevo ? Insertar(clave) : Actualizar();
        Sistema->Conexion().Execute(strSQL);
        if (!Utilerias->RegistrarCambio("Tipo_Equipo_Parte", {clave, ui->txtTipoEquipo->Text()})) {
            Sistema->Conexion().RollbackTrans();
            Advertir(Utilerias->UltimoErrorDatos(), 7500096);
            return;
        }
        Sistema->Conexion().CommitTrans();
        ui->txtClave->setText(clave);
        Aceptado = true;
        hide();
    });
}

// The key to write: a new one where someone else has taken the key that was proposed. One that the planner typed stays
// as it is.
QString frmAddParte::ClaveLibre() const
{
    const QString clave = ui->txtClave->Text();
    const QString tipoEquipo = ui->txtTipoEquipo->Text();
    if (!Nuevo || clave != propuesta)
        return clave;
    strSQL = "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' AND Tep_ID = '"
             + clave + "' ";
    if (Sistema->Conexion().Execute(strSQL).Eof())
        return clave;
    const qint32 numero =
        Utilerias->SiguienteClave("Tipo_Equipo_Parte", "Tep_ID", "Te_Cve_Tipo_Equipo", tipoEquipo, "", "", "", "", "");
    return qvx::ClaveConFormato(QString::number(numero), ui->txtClave->Formato());
}

// The state is left to the database: a new part is active.
QString frmAddParte::Insertar(const QString &clave) const
{
    QString sql = "INSERT INTO Tipo_Equipo_Parte (";
    sql += "   Tep_Padre, ";
    sql += "   Tep_ID, ";
    sql += "   Te_Cve_Tipo_Equipo, ";
    sql += "   Tep_Descripcion, ";
    sql += "   Oper_Alta,";
    sql += "   Fecha_Alta,";
    sql += "   Oper_Ult_Modif,";
    sql += "   Fecha_Ult_Modif";
    sql += ") VALUES(";
    sql += "'" + ui->txtPadre->Text() + "', ";
    sql += "'" + clave + "', ";
    sql += "'" + ui->txtTipoEquipo->Text() + "', ";
    sql += "'" + ui->txtTexto->Text() + "', ";
    sql += "'" + operador + "',";
    sql += "'" + fecha + "',";
    sql += "'" + operador + "',";
    sql += "'" + fecha + "')";
    return sql;
}

QString frmAddParte::Actualizar() const
{
    QString sql = "UPDATE Tipo_Equipo_Parte SET ";
    sql += "   Tep_Descripcion = '" + ui->txtTexto->Text() + "', ";
    sql += "   Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "', ";
    sql += "   Oper_Ult_Modif = '" + operador + "',";
    sql += "   Fecha_Ult_Modif= '" + fecha + "'";
    sql +=
        "WHERE Tep_ID = '" + ui->txtClave->Text() + "' and Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "' ";
    return sql;
}
