#include "app/catalogos/DialogoExportarCatalogo.h"

#include "app/Ajustes.h"
#include "app/RutaParaGuardar.h"
#include "app/catalogos/ExportacionDeCatalogo.h"
#include "controls/DeAmbos.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"
#include "ui_DialogoExportarCatalogo.h"

#include <QPushButton>

namespace
{

constexpr auto Delimitador = "exportar/delimitador";
constexpr auto ConComa = "exportar/decimalConComa";

int Decir(const QWidget &duena, const QString &texto, int estilo, const QString &identificador)
{
    return qvx::Sistema().Mensaje(texto, estilo, "Quorvex", duena.window()->winId(), "QVX", "ERR-ID:" + identificador);
}

} // namespace

void DialogoExportarCatalogo::Exportar(QWidget *duena, const Hoja &hoja, bool libro)
{
    csv::Formato formato;
    if (!libro) {
        const qvx::DeAmbos<DialogoExportarCatalogo> dialogo(new DialogoExportarCatalogo(duena));
        if (dialogo->exec() != Accepted)
            return;
        formato = dialogo->Formato();
    }
    const QString ruta = RutaParaGuardar(*duena, "Exportar " + hoja.nombre.toLower(),
                                         libro ? "Libro XLSX|*.xlsx" : "Archivo CSV|*.csv", hoja.nombre);
    if (ruta.isEmpty())
        return;
    try {
        ExportarHoja(hoja, ruta, formato);
    } catch (const qvx::ErrorEjecucion &error) {
        Decir(*duena, error.Descripcion(), qvx::mensaje::Critico, "1000035");
    }
}

DialogoExportarCatalogo::DialogoExportarCatalogo(QWidget *duena)
    : QDialog(duena), ui(std::make_unique<Ui::DialogoExportarCatalogo>())
{
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    ui->cboDelimitador->addItem("Punto y coma ;", QString(";"));
    ui->cboDelimitador->addItem("Coma ,", QString(","));
    ui->cboDelimitador->addItem("Tabulador", QString("\t"));
    ui->cboDecimal->addItem("Punto 1234.50");
    ui->cboDecimal->addItem("Coma 1234,50");
    const QSettings recordados = ajustes::Abrir();
    ui->cboDelimitador->setCurrentIndex(qMax(0, ui->cboDelimitador->findData(recordados.value(Delimitador))));
    ui->cboDecimal->setCurrentIndex(recordados.value(ConComa).toBool() ? 1 : 0);
    auto *aceptar = ui->botones->addButton("&Aceptar", QDialogButtonBox::AcceptRole);
    aceptar->setObjectName("cmdAceptar");
    ui->botones->addButton("&Cancelar", QDialogButtonBox::RejectRole)->setObjectName("cmdCancelar");
    connect(ui->botones, &QDialogButtonBox::accepted, this, [this] {
        Recordar();
        accept();
    });
    connect(ui->botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

DialogoExportarCatalogo::~DialogoExportarCatalogo() = default;

csv::Formato DialogoExportarCatalogo::Formato() const
{
    return {ui->cboDelimitador->currentData().toString().at(0),
            ui->cboDecimal->currentIndex() == 0 ? csv::Decimal::Punto : csv::Decimal::Coma};
}

void DialogoExportarCatalogo::Recordar() const
{
    QSettings recordados = ajustes::Abrir();
    recordados.setValue(Delimitador, QString(Formato().delimitador));
    recordados.setValue(ConComa, Formato().decimal == csv::Decimal::Coma);
}
