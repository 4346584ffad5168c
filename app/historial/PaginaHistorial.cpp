#include "app/historial/PaginaHistorial.h"

#include "app/Ajustes.h"
#include "app/ModoLectura.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/comparar/VistaComparacion.h"
#include "app/historial/CambioDeOperacion.h"
#include "app/historial/FiltrosDeHistorial.h"
#include "app/historial/TextosDeHistorial.h"
#include "controls/DeAmbos.h"
#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/Conexion.h"
#include "plan/OperacionEnCurso.h"
#include "plan/RegistrosDeCatalogo.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSplitter>

namespace
{

constexpr auto ListaDeOperaciones = "historial";
constexpr int ColumnaDeDetalle = 4;
constexpr int EsperaDelDetalle = 150; // milliseconds
constexpr int EsperaDeTransaccion = 200;
constexpr int FilasDeUnaVez = 5000; // more are read when they are asked for

QList<qvx::ColumnaDeTabla> ColumnasDeOperacion()
{
    using Clase = qvx::ColumnaDeTabla::Clase;
    const QList<Clase> clases{Clase::Folio, Clase::Texto,  Clase::Texto,  Clase::Texto,  Clase::Texto,
                              Clase::Texto, Clase::Numero, Clase::Numero, Clase::Numero, Clase::Texto};
    QList<qvx::ColumnaDeTabla> columnas;
    for (const QString &titulo : historial::Titulos())
        columnas.append({titulo, clases.at(columnas.size()), clases.at(columnas.size()) == Clase::Texto});
    return columnas;
}

} // namespace

PaginaHistorial::PaginaHistorial(QWidget *padre)
    : QWidget(padre)
    , filtros(new FiltrosDeHistorial)
    , txtBuscar(new QLineEdit)
    , lblCuenta(new QLabel)
    , modelo(new qvx::ModeloTabla(ColumnasDeOperacion(), 0, this))
    , lvOperaciones(new qvx::VistaTabla("lvOperaciones", "Operaciones"))
    , cboPlan(new QComboBox)
    , lblDetalle(new QLabel)
    , cmdVerDetalle(new QPushButton("Ver &lo que cambió"))
    , vista(new VistaComparacion)
    , lblTamano(new QLabel)
{
    setObjectName("PaginaHistorial");
    lvOperaciones->Poner(modelo, ColumnaDeDetalle, -1);
    ajustes::ReponerColumnas(ListaDeOperaciones, *lvOperaciones);
    connect(lvOperaciones->selectionModel(), &QItemSelectionModel::currentChanged, this, &PaginaHistorial::AlElegir);
    connect(filtros, &FiltrosDeHistorial::Cambio, this, &PaginaHistorial::Actualizar);
    detalle.setSingleShot(true);
    connect(&detalle, &QTimer::timeout, this, [this] { ConTrampa(*this, 1000154, [this] { LeerDetalle(); }); });
    medida.setSingleShot(true);
    connect(&medida, &QTimer::timeout, this, [this] { ConTrampa(*this, 1000155, [this] { Medir(); }); });
    auto *tablas = new QSplitter(Qt::Vertical);
    tablas->addWidget(lvOperaciones);
    tablas->addWidget(Detalle());
    tablas->setChildrenCollapsible(false);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(12, 12, 12, 8);
    disposicion->addWidget(filtros);
    disposicion->addWidget(Busqueda());
    disposicion->addWidget(tablas, 1);
    disposicion->addWidget(Acciones());
    setFocusProxy(lvOperaciones);
    AlElegir();
}

PaginaHistorial::~PaginaHistorial()
{
    ajustes::RecordarColumnas(ListaDeOperaciones, *lvOperaciones);
}

QWidget *PaginaHistorial::Busqueda()
{
    txtBuscar->setObjectName("txtBuscarOperaciones");
    txtBuscar->setAccessibleName("Buscar operaciones");
    txtBuscar->setPlaceholderText("Buscar: persona, operación, detalle, plan, fecha");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);
    connect(txtBuscar, &QLineEdit::textChanged, this, [this](const QString &texto) {
        const qvx::Operacion *elegida = Elegida();
        const qint64 numero = elegida ? elegida->numero : 0;
        modelo->Buscar(texto);
        Elegir(numero);
    });
    lblCuenta->setObjectName("lblCuentaDeOperaciones");
    auto *busqueda = new QWidget;
    auto *fila = new QHBoxLayout(busqueda);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(txtBuscar, 1);
    fila->addWidget(lblCuenta);
    return busqueda;
}

QWidget *PaginaHistorial::Detalle()
{
    lblDetalle->setObjectName("lblDetalle");
    lblDetalle->setTextFormat(Qt::PlainText);
    cmdVerDetalle->setObjectName("cmdVerDetalle");
    cmdVerDetalle->setAutoDefault(false);
    connect(cmdVerDetalle, &QPushButton::clicked, this,
            [this] { ConTrampa(*this, 1000156, [this] { MostrarDetalle(); }); });
    cboPlan->setObjectName("cboPlanDelDetalle");
    cboPlan->setAccessibleName("Plan del detalle");
    connect(cboPlan, &QComboBox::currentIndexChanged, this,
            [this] { ConTrampa(*this, 1000157, [this] { MostrarDetalle(); }); });
    auto *panel = new QWidget;
    auto *disposicion = new QVBoxLayout(panel);
    disposicion->setContentsMargins(0, 4, 0, 0);
    auto *fila = new QHBoxLayout;
    fila->addWidget(lblDetalle, 1);
    fila->addWidget(cmdVerDetalle);
    fila->addWidget(cboPlan);
    disposicion->addLayout(fila);
    disposicion->addWidget(vista, 1);
    return panel;
}

QPushButton *PaginaHistorial::Boton(const QString &nombre, const QString &texto, void (PaginaHistorial::*hacer)())
{
    auto *boton = new QPushButton(texto);
    boton->setObjectName(nombre);
    boton->setAutoDefault(false);
    connect(boton, &QPushButton::clicked, this, hacer);
    return boton;
}

QWidget *PaginaHistorial::Acciones()
{
    cmdDeshacer = Boton("cmdDeshacerOperacion", "Deshacer esta &operación…", &PaginaHistorial::Deshacer);
    cmdDejar = Boton("cmdDejarComoAntes", "Dejar el &plan como estaba antes…", &PaginaHistorial::DejarComoAntes);
    lblTamano->setObjectName("lblTamanoDeHistoria");
    auto *acciones = new QWidget;
    auto *fila = new QHBoxLayout(acciones);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(cmdDeshacer);
    fila->addWidget(cmdDejar);
    fila->addStretch();
    fila->addWidget(lblTamano);
    fila->addWidget(Boton("cmdActualizarHistorial", "Actuali&zar", &PaginaHistorial::Actualizar));
    return acciones;
}

void PaginaHistorial::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    Actualizar();
}

void PaginaHistorial::Limitar(const QString &tipo, const QString &parte, const QString &folio)
{
    txtBuscar->clear();
    filtros->Limitar(tipo, parte, folio);
    Actualizar();
}

void PaginaHistorial::Actualizar()
{
    ConTrampa(*this, 1000158, [this] { Leer(); });
}

void PaginaHistorial::Leer()
{
    const bool primera = operaciones.isEmpty();
    const qvx::Operacion *elegida = Elegida();
    const qint64 numero = elegida ? elegida->numero : 0;
    puede = qvx::LeerDerechos(Base()).planes;
    filtros->Ofrecer(Base());
    operaciones = qvx::LeerOperaciones(Base(), filtros->Filtro(Base()));
    QList<QVariantList> filas;
    filas.reserve(operaciones.size());
    for (const qvx::Operacion &operacion : std::as_const(operaciones))
        filas.append(historial::Fila(operacion));
    modelo->Llenar(filas);
    Elegir(numero);
    if (primera)
        lvOperaciones->AjustarColumnas();
    medida.start(0);
}

void PaginaHistorial::Elegir(qint64 numero)
{
    const int visible = numero == 0 ? -1 : modelo->VisibleConClave(QString::number(numero));
    const QModelIndex indice = modelo->index(qMax(0, visible), 0);
    lvOperaciones->setCurrentIndex(indice);
    if (indice.isValid())
        lvOperaciones->scrollTo(indice);
    AlElegir();
    Contar();
}

const qvx::Operacion *PaginaHistorial::Elegida() const
{
    const QModelIndex actual = lvOperaciones->currentIndex();
    return actual.isValid() && actual.row() < modelo->rowCount() ? &operaciones.at(modelo->Numero(actual.row()))
                                                                 : nullptr;
}

void PaginaHistorial::Contar()
{
    const int cuantas = modelo->rowCount();
    const bool cortadas = operaciones.size() >= qvx::FiltroDeHistoria().maximo;
    QString cuenta = cuantas == operaciones.size()
                         ? Cuantos(cuantas, "operación", "operaciones")
                         : QLocale().toString(cuantas) + " de " + QLocale().toString(operaciones.size());
    if (cortadas)
        cuenta = "Las últimas " + cuenta + ": las anteriores, con un filtro";
    lblCuenta->setText(cuenta);
}

// The plan that is meant when an operation changed several.
QString PaginaHistorial::PlanPorDejar() const
{
    const qvx::Operacion *elegida = Elegida();
    if (!elegida)
        return {};
    return elegida->tipos.size() == 1 ? elegida->tipos.constFirst() : filtros->Tipo();
}

void PaginaHistorial::AlElegir()
{
    const qvx::Operacion *elegida = Elegida();
    const bool rehacer = elegida && elegida->clase == qvx::ClaseDeshacer && !elegida->deshace.isEmpty();
    cmdDeshacer->setText(rehacer ? "&Rehacer lo que deshizo…" : "Deshacer esta &operación…");
    cmdDeshacer->setEnabled(puede && elegida && elegida->deshechaPor == 0);
    cmdDejar->setEnabled(puede && !PlanPorDejar().isEmpty());
    cmdDejar->setToolTip(elegida && PlanPorDejar().isEmpty()
                             ? QString("La operación cambió varios planes: elija arriba cuál")
                             : QString());
    QString motivo;
    if (!elegida)
        motivo = operaciones.isEmpty() && filtros->Vacios()
                     ? QString("Todavía no se ha hecho nada a los planes desde que se lleva la historia.")
                     : QString("Ninguna operación cumple con los filtros.");
    else if (!puede)
        motivo = QuienMira() + " puede mirar, no deshacer.";
    lblDetalle->setText(motivo);
    lblDetalle->setVisible(!motivo.isEmpty());
    detalle.start(EsperaDelDetalle);
}

// Inside a transaction of the screen, whose question waits for an answer, it would hold up plans.
void PaginaHistorial::LeerDetalle()
{
    if (Base().EnTransaccion())
        return detalle.start(EsperaDeTransaccion);
    const qvx::Operacion *elegida = Elegida();
    const QSignalBlocker callada(cboPlan);
    const QString actual = cboPlan->currentData().toString();
    cboPlan->clear();
    for (const QString &tipo : elegida ? elegida->tipos : QStringList())
        cboPlan->addItem("Plan del tipo de equipo " + tipo, tipo);
    cboPlan->setCurrentIndex(qMax(0, cboPlan->findData(actual)));
    cboPlan->setVisible(cboPlan->count() > 1);
    const bool muchas = elegida && elegida->partes + elegida->servicios + elegida->lineas > FilasDeUnaVez;
    vista->setVisible(elegida && !muchas);
    cmdVerDetalle->setVisible(muchas);
    if (elegida && !muchas)
        MostrarDetalle();
}

void PaginaHistorial::MostrarDetalle()
{
    const qvx::Operacion *elegida = Elegida();
    if (!elegida || cboPlan->currentIndex() < 0)
        return;
    cmdVerDetalle->hide();
    vista->show();
    vista->Mostrar(historial::LoQueHicieron(Base(), cboPlan->currentData().toString(), {elegida->numero}));
}

void PaginaHistorial::Medir()
{
    if (Base().EnTransaccion())
        return medida.start(EsperaDeTransaccion);
    lblTamano->setText(historial::Tamano(qvx::LeerTamanoDeHistoria(Base())));
}

void PaginaHistorial::Deshacer()
{
    if (const qvx::Operacion *elegida = Elegida())
        Preguntar({elegida->clase == qvx::ClaseDeshacer && !elegida->deshace.isEmpty()
                       ? historial::Peticion::Que::Rehacer
                       : historial::Peticion::Que::Deshacer,
                   elegida->numero,
                   {}});
}

void PaginaHistorial::DejarComoAntes()
{
    if (const qvx::Operacion *elegida = Elegida())
        Preguntar({historial::Peticion::Que::DejarComoAntes, elegida->numero, PlanPorDejar()});
}

void PaginaHistorial::Preguntar(const historial::Peticion &peticion)
{
    ConTrampa(*this, 1000159, [&] {
        const qvx::DeAmbos<DialogoDeshacer> dialogo(new DialogoDeshacer(peticion, this));
        if (!dialogo->Preguntar())
            return;
        Q_EMIT PlanCambiado();
        Leer();
        Elegir(dialogo->Hecho().numero);
    });
}

// From the search the arrows move in the list.
bool PaginaHistorial::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == txtBuscar && evento->type() == QEvent::KeyPress
        && comunesQVX::MueveLaLista(static_cast<QKeyEvent *>(evento)->key())) {
        QCoreApplication::sendEvent(lvOperaciones, evento);
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}
