#include "app/respaldo/DialogoCopias.h"

#include "app/Ajustes.h"
#include "app/Espera.h"
#include "app/Rotulo.h"
#include "app/Trampas.h"
#include "app/comparar/DialogoPrevia.h"
#include "app/respaldo/CopiaDelDia.h"
#include "app/respaldo/Textos.h"
#include "controls/Formulario.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"
#include "controls/colorQVX.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "plan/Guion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QVBoxLayout>
#include <cmath>
#include <optional>

namespace
{

using ClaseDeCelda = qvx::ColumnaDeTabla::Clase;

constexpr QSize TamanoDeCopias{880, 640};
// To a tenth of a megabyte.
double Megas(qint64 octetos)
{
    return std::round(static_cast<double>(octetos) / 100000) / 10;
}

QString ClaseDe(const qvx::Copia &copia)
{
    if (copia.automatica)
        return "Automática";
    return copia.version < qvx::VersionEsquema ? "De una versión anterior" : "Propia";
}

QPushButton *Boton(const QString &nombre, const QString &texto)
{
    auto *boton = new QPushButton(texto);
    boton->setObjectName(nombre);
    boton->setAutoDefault(false);
    return boton;
}

QLabel *RotuloDe(QWidget *companero, const QString &nombre, const QString &texto)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setObjectName(nombre);
    rotulo->setBuddy(companero);
    return rotulo;
}

} // namespace

DialogoCopias::DialogoCopias(const QString &base_, QWidget *duena)
    : QDialog(duena)
    , base(base_)
    , lugar(respaldo::LugarDe(base))
    , modeloCopias(new qvx::ModeloTabla(
          {{"Fecha"}, {"MB", ClaseDeCelda::Numero}, {"Versión", ClaseDeCelda::Numero}, {"Clase"}, {"Archivo"}}, 0,
          this))
    , modeloPlanes(new qvx::ModeloTabla(
          {{"Clave"}, {"Tipo de equipo"}, {"Partes", ClaseDeCelda::Numero}, {"Servicios", ClaseDeCelda::Numero}}, 0,
          this))
    , lvCopias(new qvx::VistaTabla("lvCopias", "Copias de la base de datos"))
    , lvPlanes(new qvx::VistaTabla("lvPlanes", "Planes de la copia elegida"))
    , lblAviso(RotuloLargo("lblAviso"))
    , txtCarpeta(new QLineEdit(lugar.carpeta))
    , numCopias(new QSpinBox)
    , cmdPlan(Boton("cmdPlan", "Restaurar el &plan…"))
    , cmdTodo(Boton("cmdTodo", "Restaurar &todo…"))
{
    setObjectName("DialogoCopias");
    setWindowTitle("Restaurar de una copia");
    coloresQVX::colorQVX::AplicarA(*this);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(14, 14, 14, 12);
    disposicion->setSpacing(8);
    auto *partes = new QSplitter(Qt::Vertical);
    partes->addWidget(ParteDeCopias());
    partes->addWidget(ParteDePlanes());
    partes->setStretchFactor(0, 3);
    partes->setStretchFactor(1, 2);
    partes->setChildrenCollapsible(false);
    disposicion->addWidget(RotuloLargo(
        "lblExplicacion",
        "Elija una copia. De ella se restaura el plan de un tipo de equipo, o toda la base de datos con sus catálogos. "
        "La copia no cambia. Antes de restaurar todo se copia lo que hay."));
    disposicion->addWidget(partes, 1);
    disposicion->addWidget(lblAviso);
    disposicion->addWidget(ParteDeAjustes());
    disposicion->addWidget(Botones());
    resize(qvx::Formulario::Cabida(*this, TamanoDeCopias));
    Leer({});
}

QWidget *DialogoCopias::ParteDeCopias()
{
    lvCopias->Poner(modeloCopias, 4, -1);
    lvCopias->setTextElideMode(Qt::ElideMiddle);
    connect(lvCopias->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &DialogoCopias::AlElegirCopia);
    return lvCopias;
}

QWidget *DialogoCopias::ParteDePlanes()
{
    lvPlanes->Poner(modeloPlanes, 1, 0);
    connect(lvPlanes->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &DialogoCopias::AlElegirPlan);
    connect(lvPlanes, &QTreeView::activated, this, [this] { RestaurarElPlan(); });
    return lvPlanes;
}

QWidget *DialogoCopias::ParteDeAjustes()
{
    auto *ajuste = new QWidget;
    auto *fila = new QHBoxLayout(ajuste);
    fila->setContentsMargins(0, 0, 0, 0);
    txtCarpeta->setObjectName("txtCarpeta");
    txtCarpeta->setAccessibleName("Carpeta de las copias automáticas");
    numCopias->setObjectName("numCopias");
    numCopias->setAccessibleName("Cuántas copias automáticas se conservan");
    numCopias->setRange(1, ajustes::MaximoDeCopias);
    numCopias->setValue(lugar.cuantas);
    fila->addWidget(RotuloDe(txtCarpeta, "lblCarpeta", "Las copias &automáticas van a la carpeta"));
    fila->addWidget(txtCarpeta, 1);
    fila->addWidget(RotuloDe(numCopias, "lblCopias", "y se conservan las &últimas"));
    fila->addWidget(numCopias);
    connect(txtCarpeta, &QLineEdit::editingFinished, this, &DialogoCopias::Ajustar);
    connect(numCopias, &QSpinBox::valueChanged, this, &DialogoCopias::Ajustar);
    return ajuste;
}

QWidget *DialogoCopias::Botones()
{
    auto *botones = new QWidget;
    auto *fila = new QHBoxLayout(botones);
    fila->setContentsMargins(0, 0, 0, 0);
    auto *cmdOtro = Boton("cmdOtro", "&Otro archivo…");
    auto *cmdCerrar = Boton("cmdCerrar", "&Cerrar");
    fila->addWidget(cmdOtro);
    fila->addStretch();
    for (QPushButton *boton : {cmdPlan, cmdTodo, cmdCerrar})
        fila->addWidget(boton);
    connect(cmdOtro, &QPushButton::clicked, this, &DialogoCopias::Agregar);
    connect(cmdPlan, &QPushButton::clicked, this, &DialogoCopias::RestaurarElPlan);
    connect(cmdTodo, &QPushButton::clicked, this, &DialogoCopias::RestaurarElTodo);
    connect(cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
    return botones;
}

// elegir: the file that is chosen then, "" for the newest.
void DialogoCopias::Leer(const QString &elegir)
{
    copias = qvx::Copias(lugar);
    for (const QString &archivo : agregadas)
        if (const QFileInfo datos(archivo); std::none_of(copias.begin(), copias.end(), [&](const qvx::Copia &copia) {
                return copia.archivo == datos.absoluteFilePath();
            }))
            copias.prepend({datos.absoluteFilePath(), datos.lastModified(), datos.size(), 0, false});
    QList<QVariantList> filas;
    int visible = 0;
    for (const qvx::Copia &copia : copias) {
        if (copia.archivo == elegir)
            visible = static_cast<int>(filas.size());
        filas.append({respaldo::Fecha(copia.fecha), Megas(copia.octetos),
                      copia.version > 0 ? QVariant(copia.version) : QVariant(), ClaseDe(copia),
                      QFileInfo(copia.archivo).absolutePath() == QDir(lugar.carpeta).absolutePath()
                          ? QFileInfo(copia.archivo).fileName()
                          : QDir::toNativeSeparators(copia.archivo)});
    }
    modeloCopias->Llenar(filas);
    lvCopias->AjustarColumnas();
    if (!copias.isEmpty())
        lvCopias->setCurrentIndex(modeloCopias->index(modeloCopias->Visible(visible), 0));
    AlElegirCopia();
}

QString DialogoCopias::Elegida() const
{
    const QModelIndex actual = lvCopias->currentIndex();
    return actual.isValid() ? copias.at(modeloCopias->Numero(actual.row())).archivo : QString();
}

QString DialogoCopias::PlanElegido() const
{
    const QModelIndex actual = lvPlanes->currentIndex();
    return actual.isValid() ? modeloPlanes->Clave(actual.row()) : QString();
}

// A copy that cannot be read is told below the lists: it is only looked at.
void DialogoCopias::AlElegirCopia()
{
    QList<QVariantList> filas;
    QString aviso = copias.isEmpty() ? QString("Todavía no hay copias: la primera se hace antes del primer cambio del "
                                               "día, o con Archivo, Copia ahora.")
                                     : QString();
    try {
        if (const QString copia = Elegida(); !copia.isEmpty())
            for (const qvx::PlanDeCopia &plan : qvx::PlanesDeCopia(copia, base))
                filas.append({plan.clave, plan.descripcion, plan.partes, plan.servicios});
    } catch (const qvx::ErrorEjecucion &error) {
        aviso = error.Descripcion();
    }
    cmdTodo->setEnabled(!copias.isEmpty() && aviso.isEmpty());
    modeloPlanes->Llenar(filas);
    lvPlanes->AjustarColumnas();
    lblAviso->setText(aviso);
    lblAviso->setVisible(!aviso.isEmpty());
    AlElegirPlan();
}

void DialogoCopias::AlElegirPlan()
{
    cmdPlan->setEnabled(!PlanElegido().isEmpty());
}

void DialogoCopias::Agregar()
{
    const QString archivo = qvx::Sesion::Actual().Interaccion().ElegirArchivo(
        {"Elegir una copia", "Base de datos de Quorvex|*", {}, lugar.carpeta, false}, this);
    if (archivo.isEmpty())
        return;
    agregadas.append(archivo);
    Leer(QFileInfo(archivo).absoluteFilePath());
}

// An empty box is the folder beside the database.
void DialogoCopias::Ajustar()
{
    const QString escrita = txtCarpeta->text().trimmed();
    const bool vale = escrita.isEmpty() || QDir::isAbsolutePath(escrita);
    if (!vale) {
        lblAviso->setText("La carpeta de las copias se escribe con su ruta completa, como «" + lugar.carpeta
                          + "». Sigue la que estaba.");
        lblAviso->show();
        return;
    }
    ajustes::RecordarCopias({}, numCopias->value());
    const bool deSiempre = escrita.isEmpty() || QDir::cleanPath(escrita) == respaldo::LugarDe(base).carpeta;
    ajustes::RecordarCopias(deSiempre ? QString() : QDir::cleanPath(escrita), numCopias->value());
    const QString anterior = lugar.carpeta;
    lugar = respaldo::LugarDe(base);
    txtCarpeta->setText(lugar.carpeta);
    if (lugar.carpeta != anterior)
        Leer({});
}

void DialogoCopias::RestaurarElPlan()
{
    const QString clave = PlanElegido();
    if (clave.isEmpty())
        return;
    ConTrampa(*this, 1000121, [&] {
        std::optional<Espera> espera(std::in_place);
        const qvx::CopiaLista copia(Elegida(), base);
        const qvx::FilasDelPlan antes = qvx::LeerFilas(Base(), clave);
        const qvx::FilasDelPlan despues = qvx::LeerFilas(copia.Base(), clave);
        const qvx::FilasCambiadas cambios = qvx::Distintas(antes, despues);
        auto comparados = comparar::CompararFilas(Base(), antes, despues, "como está en la copia");
        espera.reset();
        const auto decir = [&](const QString &texto, int estilo, int identificador) {
            return qvx::Sistema().Mensaje(texto, estilo, "Quorvex", winId(), "QVX",
                                          "ERR-ID:" + QString::number(identificador));
        };
        if (cambios.Ninguna()) {
            decir("El plan del tipo de equipo " + clave + " ya es como en la copia: no hay nada que restaurar.",
                  qvx::mensaje::Informacion, 1000122);
            return;
        }
        DialogoPrevia previa({"Restaurar el plan",
                              "El plan quedará como en la copia. Cambian " + respaldo::Texto(cambios)
                                  + "; lo que ya es igual no se toca.",
                              "&Restaurar"},
                             std::move(comparados), this);
        if (previa.exec() != Accepted)
            return;
        espera.emplace();
        qvx::RestaurarPlan(Base(), qvx::Sesion::Actual().Firmante(), antes, despues, respaldo::DeLaCopia(Elegida()));
        huboCambios = true;
        lblAviso->setText("Se restauró el plan del tipo de equipo " + clave + ".");
        lblAviso->show();
    });
}

void DialogoCopias::RestaurarElTodo()
{
    const QString copia = Elegida();
    if (qvx::Sistema().Mensaje(
            "Toda la base de datos quedará como en la copia del " + respaldo::Fecha(QFileInfo(copia).lastModified())
                + ": los planes, los catálogos y los registros. Lo que cambió desde entonces quedará solo en otra "
                  "copia, "
                  "que se hace ahora en la misma carpeta. La ventana se abre de nuevo. ¿Desea continuar?",
            qvx::mensaje::SiNo + qvx::mensaje::Exclamacion + qvx::mensaje::SegundoBoton, "Quorvex", winId(), "QVX",
            "ERR-ID:1000124")
        != qvx::mensaje::Si)
        return;
    todoDe = copia;
    accept();
}
