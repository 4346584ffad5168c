#include "app/catalogos/DialogoImportarCatalogo.h"

#include "app/Ajustes.h"
#include "app/Trampas.h"
#include "app/catalogos/ModeloDeImportacion.h"
#include "controls/DeAmbos.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "ui_DialogoImportarCatalogo.h"

#include <QFileInfo>
#include <QHeaderView>

namespace
{

using Clase = FilaImportada::Clase;
using Muestra = ModeloDeImportacion::Muestra;

constexpr int ColumnasPorFila = 3;
constexpr int FilasQueMiden = 200; // the width of a column
constexpr int LetrasDeCelda = 48;  // of the widest column

QString ClaveDeAjuste(const qvx::TablaDeCatalogo &tabla)
{
    return "importar/" + tabla.nombre;
}

} // namespace

bool DialogoImportarCatalogo::Importar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const QByteArray &datos,
                                       const QString &nombre)
{
    bool escrito = false;
    ConTrampa(*duena, 1000030, [&] {
        const qvx::DeAmbos<DialogoImportarCatalogo> dialogo(new DialogoImportarCatalogo(duena, tabla, datos, nombre));
        escrito = dialogo->exec() == QDialog::Accepted;
    });
    return escrito;
}

bool DialogoImportarCatalogo::ImportarArchivo(QWidget *duena, const qvx::TablaDeCatalogo &tabla)
{
    const QString ruta = qvx::Sesion::Actual().Interaccion().ElegirArchivo(
        {"Importar " + tabla.titulo.toLower(), "Archivo CSV|*.csv *.txt", "", "", false}, duena->window());
    QByteArray datos;
    if (!ruta.isEmpty())
        ConTrampa(*duena, 1000031, [&] { datos = csv::LeerArchivo(ruta); });
    return !datos.isEmpty() && Importar(duena, tabla, datos, QFileInfo(ruta).fileName());
}

DialogoImportarCatalogo::DialogoImportarCatalogo(QWidget *duena, const qvx::TablaDeCatalogo &tabla_,
                                                 const QByteArray &datos_, const QString &nombre)
    : QDialog(duena)
    , ui(std::make_unique<Ui::DialogoImportarCatalogo>())
    , tabla(tabla_)
    , datos(datos_)
    , situacion(qvx::LeerSituacion(Base(), tabla_))
    , modelo(new ModeloDeImportacion(tabla_, this))
{
    const csv::Codificacion codificacion = csv::ProponerCodificacion(datos);
    csv::Texto(datos, codificacion); // or there is nothing to look at
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    Disponer(nombre);
    ui->cboCodificacion->setCurrentIndex(ui->cboCodificacion->findData(static_cast<int>(codificacion)));
    LeerTexto();
    Conectar();
    if (codificacion == csv::Codificacion::Windows1252) {
        ui->cboMostrar->setCurrentIndex(ui->cboMostrar->findData(static_cast<int>(Muestra::Acentos)));
        modelo->Mostrar(Muestra::Acentos);
        ui->lblAviso->setText("No está en UTF-8: se leyó como Windows-1252. Revise las filas con acentos.");
    }
}

DialogoImportarCatalogo::~DialogoImportarCatalogo() = default;

void DialogoImportarCatalogo::Disponer(const QString &nombre)
{
    setWindowTitle("Importar " + tabla.titulo.toLower());
    ui->lblOrigen->setText(
        nombre + ": las celdas vacías y lo que la hoja no nombra se quedan como están. Se escribe todo o nada.");
    ui->cboCodificacion->addItem("UTF-8", static_cast<int>(csv::Codificacion::Utf8));
    ui->cboCodificacion->addItem("Windows-1252", static_cast<int>(csv::Codificacion::Windows1252));
    ui->cboDelimitador->addItem("Punto y coma ;", QString(";"));
    ui->cboDelimitador->addItem("Coma ,", QString(","));
    ui->cboDelimitador->addItem("Tabulador", QString("\t"));
    ui->cboDecimal->addItem("Punto 1234.50", static_cast<int>(csv::Decimal::Punto));
    ui->cboDecimal->addItem("Coma 1234,50", static_cast<int>(csv::Decimal::Coma));
    ui->cboMostrar->addItem("Todas las filas", static_cast<int>(Muestra::Todas));
    ui->cboMostrar->addItem("Solo cambios", static_cast<int>(Muestra::Cambios));
    ui->cboMostrar->addItem("Solo errores", static_cast<int>(Muestra::Errores));
    ui->cboMostrar->addItem("Solo con acentos", static_cast<int>(Muestra::Acentos));
    for (const ColumnaDeImportacion &columna : ColumnasDeImportacion(tabla)) {
        auto *combo = new QComboBox(this);
        combo->setObjectName("cboColumna_" + columna.nombre);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        auto *rotulo = new QLabel(columna.titulo, this);
        rotulo->setBuddy(combo);
        const auto lugar = static_cast<int>(columnas.size());
        const int enFila = 2 * (lugar % ColumnasPorFila);
        ui->rejillaColumnas->addWidget(rotulo, lugar / ColumnasPorFila, enFila);
        ui->rejillaColumnas->addWidget(combo, lugar / ColumnasPorFila, enFila + 1);
        columnas.append(combo);
    }
    QWidget *anterior = ui->chkTitulos; // beside the controls of the form, which are in their order
    for (QComboBox *combo : std::as_const(columnas)) {
        setTabOrder(anterior, combo);
        anterior = combo;
    }
    setTabOrder(anterior, ui->cboMostrar);
    ui->lvFilas->setModel(modelo);
    ui->lvFilas->setFocus(); // Enter imports what is seen
    ui->lvFilas->ensurePolished();
    ui->lvFilas->header()->setResizeContentsPrecision(FilasQueMiden);
    resize(qvx::Formulario::Cabida(*this, size()));
}

void DialogoImportarCatalogo::Conectar()
{
    connect(ui->cboCodificacion, &QComboBox::activated, this, &DialogoImportarCatalogo::LeerTexto);
    connect(ui->cboDelimitador, &QComboBox::activated, this, [this] {
        delimitadorElegido = true;
        LeerFilas();
    });
    connect(ui->cboDecimal, &QComboBox::activated, this, [this] {
        decimalElegido = true;
        Juzgar();
    });
    connect(ui->chkTitulos, &QCheckBox::clicked, this, [this](bool puestos) { LeerColumnas(puestos); });
    for (int i = 0; i < columnas.size(); ++i)
        connect(columnas.at(i), &QComboBox::activated, this, [this, i] { ElegirColumna(i); });
    connect(ui->cboMostrar, &QComboBox::activated, this,
            [this] { modelo->Mostrar(static_cast<Muestra>(ui->cboMostrar->currentData().toInt())); });
    // The whole reason, which the list may cut short.
    connect(ui->lvFilas->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &fila) {
        const QString motivo = fila.siblingAtColumn(ModeloDeImportacion::Motivo).data().toString();
        ui->lblAviso->setText(motivo.isEmpty() ? alPie : motivo);
    });
    connect(ui->cmdGuardarErrores, &QPushButton::clicked, this, &DialogoImportarCatalogo::GuardarErrores);
    connect(ui->cmdImportar, &QPushButton::clicked, this, &DialogoImportarCatalogo::Escribir);
    connect(ui->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

void DialogoImportarCatalogo::LeerTexto()
{
    try {
        texto = csv::Texto(datos, static_cast<csv::Codificacion>(ui->cboCodificacion->currentData().toInt()));
    } catch (const qvx::ErrorEjecucion &error) {
        return NoLeer(error.Descripcion());
    }
    LeerFilas();
}

void DialogoImportarCatalogo::LeerFilas()
{
    if (!delimitadorElegido) {
        const auto propuesto = csv::ProponerDelimitador(texto);
        ui->cboDelimitador->setCurrentIndex(propuesto ? ui->cboDelimitador->findData(QString(*propuesto)) : -1);
    }
    if (ui->cboDelimitador->currentIndex() < 0)
        return NoLeer("No se sabe qué separa las celdas: elija el delimitador.");
    try {
        leidas = csv::Partir(texto, ui->cboDelimitador->currentData().toString().at(0));
    } catch (const qvx::ErrorEjecucion &error) {
        return NoLeer(error.Descripcion());
    }
    if (leidas.isEmpty())
        return NoLeer("No hay ninguna fila.");
    LeerColumnas({});
}

void DialogoImportarCatalogo::LeerColumnas(std::optional<bool> conTitulos)
{
    hoja = Corresponder(tabla, leidas, Recordadas(), conTitulos);
    ui->chkTitulos->setChecked(hoja.conTitulos);
    PonerColumnas();
    Juzgar();
}

void DialogoImportarCatalogo::PonerColumnas()
{
    for (int i = 0; i < columnas.size(); ++i) {
        columnas.at(i)->clear();
        columnas.at(i)->addItem("(ninguna)", -1);
        for (int j = 0; j < hoja.titulos.size(); ++j)
            columnas.at(i)->addItem(hoja.titulos.at(j).simplified(), j);
        columnas.at(i)->setCurrentIndex(hoja.correspondencia.value(i, -1) + 1);
    }
}

void DialogoImportarCatalogo::ElegirColumna(int columna)
{
    const int elegida = columnas.at(columna)->currentData().toInt();
    if (elegida < 0)
        hoja.correspondencia.remove(columna);
    else
        hoja.correspondencia.insert(columna, elegida);
    Juzgar();
}

void DialogoImportarCatalogo::Juzgar()
{
    const csv::Cifras cifras = CifrasDe(tabla, hoja);
    if (!decimalElegido)
        ui->cboDecimal->setCurrentIndex(cifras.decimal ? ui->cboDecimal->findData(static_cast<int>(*cifras.decimal))
                                                       : -1);
    if (!hoja.correspondencia.contains(0))
        return NoLeer("Elija de qué columna sale la clave.");
    if (ui->cboDecimal->currentIndex() < 0)
        return NoLeer("No se sabe si " + cifras.dudoso + " lleva decimales o miles: elija en Decimales.");
    importacion =
        JuzgarImportacion(tabla, situacion, hoja, static_cast<csv::Decimal>(ui->cboDecimal->currentData().toInt()));
    // A sheet of another catalogue has the columns of this one, and more.
    const QStringList sinUsar = TitulosSinUsar(hoja);
    Mostrar(importacion.Cuantas(Clase::Erronea) > 0 ? "Corrija los errores en la hoja y vuelva a importarla."
            : importacion.Cambios().isEmpty()       ? "No hay nada que cambiar."
            : sinUsar.isEmpty()
                ? ""
                : "¿Es este el catálogo? La hoja trae lo que aquí no se guarda: " + sinUsar.join(", ") + ".");
}

// Nothing can be judged until the person says how.
void DialogoImportarCatalogo::NoLeer(const QString &motivo)
{
    importacion = {};
    Mostrar(motivo);
}

void DialogoImportarCatalogo::Mostrar(const QString &aviso)
{
    modelo->Poner(importacion);
    const int letra = fontMetrics().averageCharWidth();
    for (int columna = 0; columna < modelo->columnCount(); ++columna) {
        ui->lvFilas->resizeColumnToContents(columna);
        if (ui->lvFilas->columnWidth(columna) > LetrasDeCelda * letra)
            ui->lvFilas->setColumnWidth(columna, LetrasDeCelda * letra);
    }
    const int erroneas = importacion.Cuantas(Clase::Erronea);
    ui->lblCuentas->setText(importacion.Cuentas());
    alPie = aviso;
    ui->lblAviso->setText(alPie);
    ui->cmdGuardarErrores->setEnabled(erroneas > 0);
    ui->cmdImportar->setEnabled(erroneas == 0 && !importacion.Cambios().isEmpty());
}

void DialogoImportarCatalogo::GuardarErrores()
{
    const QString ruta = qvx::Sesion::Actual().Interaccion().ElegirArchivo(
        {"Guardar errores", "Archivo CSV|*.csv", "Errores.csv", "", true}, this);
    if (ruta.isEmpty())
        return;
    ConTrampa(*this, 1000034, [&] {
        csv::Escribir(ruta, importacion.Errores(), {});
        ui->lblAviso->setText("Los errores quedaron en " + ruta + ".");
    });
}

// What could not be written is judged again by what the catalogue has become.
void DialogoImportarCatalogo::Escribir()
{
    bool escrito = false;
    ConTrampa(*this, 1000032, [&] {
        qvx::EscribirCambios(Base(), qvx::Sesion::Actual().Firmante(), tabla, importacion.Cambios());
        escrito = true;
    });
    if (escrito) {
        Recordar();
        return accept();
    }
    ConTrampa(*this, 1000033, [&] {
        situacion = qvx::LeerSituacion(Base(), tabla);
        Juzgar();
    });
}

QMap<QString, QString> DialogoImportarCatalogo::Recordadas() const
{
    QMap<QString, QString> recordadas;
    const QVariantMap guardadas = ajustes::Abrir().value(ClaveDeAjuste(tabla)).toMap();
    for (auto i = guardadas.begin(); i != guardadas.end(); ++i)
        recordadas.insert(i.key(), i->toString());
    return recordadas;
}

void DialogoImportarCatalogo::Recordar() const
{
    QVariantMap guardadas;
    const auto conocidas = ColumnasDeImportacion(tabla);
    for (auto i = hoja.correspondencia.begin(); i != hoja.correspondencia.end(); ++i)
        if (hoja.conTitulos)
            guardadas.insert(conocidas.at(i.key()).nombre, hoja.titulos.at(i.value()));
    if (!guardadas.isEmpty())
        ajustes::Abrir().setValue(ClaveDeAjuste(tabla), guardadas);
}
