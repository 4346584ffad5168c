#include "app/buscar/DialogoBuscar.h"

#include "app/Trampas.h"
#include "app/catalogos/Nombres.h"
#include "controls/Formulario.h"
#include "controls/Teclas.h"
#include "controls/colorQVX.h"
#include "ui_DialogoBuscar.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>

namespace
{

using qvx::Hallazgo;

constexpr QSize TamanoDeBusqueda{980, 560};
constexpr int AnchoDeParte = 280; // at least
constexpr int MaximoPorClase = 200;
constexpr int EsperaAlEscribir = 120; // ms without a key
constexpr int PapelLugar = Qt::UserRole;
enum Columna { DeParte, DeClase, DeFolio, DeTexto, DeEstado };

QString NombreDeClase(Hallazgo::Clase clase)
{
    switch (clase) {
    case Hallazgo::Clase::Parte:
        return "Parte";
    case Hallazgo::Clase::Servicio:
        return "Servicio";
    case Hallazgo::Clase::Producto:
        return "Producto";
    }
    return {};
}

} // namespace

DialogoBuscar::DialogoBuscar(const QString &tipoEquipo_, QWidget *duena)
    : QDialog(duena), ui(std::make_unique<Ui::DialogoBuscar>()), tipoEquipo(tipoEquipo_)
{
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    ui->lvHallazgos->ensurePolished();
    ui->lvHallazgos->setTextElideMode(Qt::ElideLeft); // of a path, its end is the part
    if (!tipoEquipo.isEmpty())
        ui->cboDonde->addItem("En el plan " + tipoEquipo, tipoEquipo);
    ui->cboDonde->addItem("En todos los planes", QString());
    ui->lvHallazgos->header()->setStretchLastSection(false);
    columnas.emplace("hallazgos", *ui->lvHallazgos);
    escritura.setSingleShot(true);
    escritura.setInterval(EsperaAlEscribir);
    despues.setSingleShot(true);
    Conectar();
    Contar(false);
    resize(qvx::Formulario::Cabida(*this, TamanoDeBusqueda));
}

DialogoBuscar::~DialogoBuscar() = default;

void DialogoBuscar::Conectar()
{
    ui->txtBuscar->installEventFilter(this);
    connect(ui->txtBuscar, &QLineEdit::textChanged, &escritura, qOverload<>(&QTimer::start));
    connect(ui->cboDonde, &QComboBox::currentIndexChanged, this, [this] { Buscar(); });
    connect(&escritura, &QTimer::timeout, this, [this] { Buscar(); });
    connect(&despues, &QTimer::timeout, this, [this] { BuscarLoDemas(); });
    connect(ui->lvHallazgos, &QTreeWidget::itemActivated, this, [this] { Elegir(); });
    connect(ui->lvHallazgos, &QTreeWidget::currentItemChanged, this,
            [this](const QTreeWidgetItem *actual) { ui->cmdVer->setEnabled(actual && actual->parent()); });
    connect(ui->cmdVer, &QPushButton::clicked, this, [this] { Elegir(); });
    connect(ui->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
}

QString DialogoBuscar::TipoBuscado() const
{
    return ui->cboDonde->currentData().toString();
}

// The parts are there at once; services and products of large databases take longer.
void DialogoBuscar::Buscar()
{
    escritura.stop();
    despues.stop();
    hallados.clear();
    grupos.clear();
    recortado = false;
    fallida = true; // until it is done
    ui->lvHallazgos->clear();
    const qvx::PalabrasBuscadas palabras(ui->txtBuscar->text());
    ConTrampa(*this, 1000070, [&] {
        Mostrar(qvx::Busqueda(Base(), palabras, TipoBuscado(), MaximoPorClase).Partes());
        fallida = false;
    });
    Contar(!palabras.Vacias());
    if (!palabras.Vacias() && !fallida)
        despues.start(0);
}

void DialogoBuscar::BuscarLoDemas()
{
    qvx::Busqueda busqueda(Base(), qvx::PalabrasBuscadas(ui->txtBuscar->text()), TipoBuscado(), MaximoPorClase);
    fallida = true;
    ConTrampa(*this, 1000071, [&] {
        Mostrar(busqueda.Servicios());
        Mostrar(busqueda.Productos());
        fallida = false;
    });
    Contar(false);
}

QTreeWidgetItem *DialogoBuscar::GrupoDe(const Hallazgo &hallazgo)
{
    QTreeWidgetItem *&grupo = grupos[hallazgo.tipoEquipo];
    if (grupo)
        return grupo;
    // In the order of their keys, whatever found them first.
    int lugar = 0;
    while (lugar < ui->lvHallazgos->topLevelItemCount()
           && ui->lvHallazgos->topLevelItem(lugar)->data(0, PapelLugar).toString() < hallazgo.tipoEquipo)
        ++lugar;
    grupo = new QTreeWidgetItem(QStringList(hallazgo.tipoEquipo + "  " + hallazgo.nombreTipo));
    grupo->setData(0, PapelLugar, hallazgo.tipoEquipo);
    QFont negrita = ui->lvHallazgos->font();
    negrita.setBold(true);
    grupo->setFont(0, negrita);
    ui->lvHallazgos->insertTopLevelItem(lugar, grupo);
    grupo->setFirstColumnSpanned(true);
    grupo->setExpanded(true);
    return grupo;
}

void DialogoBuscar::Mostrar(const QList<Hallazgo> &hallazgos)
{
    recortado = recortado || hallazgos.size() >= MaximoPorClase;
    for (const Hallazgo &hallazgo : hallazgos) {
        auto *fila = new QTreeWidgetItem(
            GrupoDe(hallazgo),
            {hallazgo.ruta.isEmpty() ? "(sin parte) " + hallazgo.parte : hallazgo.parte + "  " + hallazgo.ruta,
             NombreDeClase(hallazgo.clase), hallazgo.folio,
             hallazgo.clase == Hallazgo::Clase::Parte ? QString() : hallazgo.texto, nombres::Estado(hallazgo.estado)});
        fila->setData(0, PapelLugar, hallados.size());
        hallados.append(hallazgo);
    }
    if (!ui->lvHallazgos->currentItem() && !hallados.isEmpty())
        ui->lvHallazgos->setCurrentItem(ui->lvHallazgos->topLevelItem(0)->child(0));
    if (columnas->Propias())
        return;
    QHeaderView *titulos = ui->lvHallazgos->header();
    int otras = 0;
    for (const int columna : {DeClase, DeFolio, DeTexto, DeEstado}) {
        ui->lvHallazgos->resizeColumnToContents(columna);
        otras += titulos->sectionSize(columna);
    }
    const bool cabe = otras + AnchoDeParte <= ui->lvHallazgos->viewport()->width();
    titulos->setSectionResizeMode(DeParte, cabe ? QHeaderView::Stretch : QHeaderView::Interactive);
    if (!cabe)
        titulos->resizeSection(DeParte, AnchoDeParte);
}

// faltan: services and products are still being looked for.
void DialogoBuscar::Contar(bool faltan)
{
    const auto cuantos = QLocale().toString(hallados.size());
    QString texto = hallados.size() == 1 ? QString("1 hallazgo.") : cuantos + " hallazgos.";
    if (fallida)
        texto = "No se pudo buscar en todo: lo que falta no se sabe. Pulse Entrar para buscar de nuevo.";
    else if (faltan)
        texto = "Buscando… " + texto;
    else if (ui->txtBuscar->text().trimmed().isEmpty())
        texto = "Escriba lo que busca; no importan los acentos ni las mayúsculas.";
    else if (recortado)
        texto = "Los primeros " + cuantos + " hallazgos: escriba más palabras para ver menos.";
    else if (hallados.isEmpty())
        texto = "Nada tiene todas esas palabras. Quite alguna, o busque en todos los planes.";
    ui->lblCuenta->setText(texto);
    const QTreeWidgetItem *actual = ui->lvHallazgos->currentItem();
    ui->cmdVer->setEnabled(fallida || (actual && actual->parent())); // Enter is the button's
}

void DialogoBuscar::Elegir()
{
    if (escritura.isActive() || fallida) // what is shown is of fewer letters than were typed, or not all of it
        return Buscar();
    const QTreeWidgetItem *fila = ui->lvHallazgos->currentItem();
    if (!fila || !fila->parent())
        return;
    elegido = hallados.at(fila->data(0, PapelLugar).toInt());
    accept();
}

bool DialogoBuscar::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress && comunesQVX::MueveLaLista(static_cast<QKeyEvent *>(evento)->key())) {
        QCoreApplication::sendEvent(ui->lvHallazgos, evento);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}
