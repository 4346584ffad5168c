#include "app/tipos/PaginaTipos.h"

#include "app/Ajustes.h"
#include "app/AvisoDeLectura.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/catalogos/Nombres.h"
#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/Conexion.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

constexpr auto NombreDeLista = "tipos";
constexpr int ClaveDelTipo = 0;
constexpr int DescripcionDelTipo = 1;
constexpr int PrimeraCifra = 7;
constexpr int UltimaCifra = 11;
constexpr int ServiciosPorVez = 5000; // some 50 ms
constexpr int Espera = 200;           // milliseconds, for the end of a transaction

QList<qvx::ColumnaDeTabla> ColumnasDeTipos()
{
    using Clase = qvx::ColumnaDeTabla::Clase;
    return {{"Clave", Clase::Texto, true},
            {"Descripción", Clase::Texto, true},
            {"Estado", Clase::Texto, true},
            {"Partes", Clase::Numero},
            {"De baja", Clase::Numero},
            {"Servicios", Clase::Numero},
            {"De baja", Clase::Numero},
            {"Sin fecha", Clase::Numero},
            {"Pérdida", Clase::Numero},
            {"Costo/año", Clase::Dinero},
            {"Horas/año", Clase::Numero},
            {"Por lectura", Clase::Numero},
            {"Último cambio"}};
}

double Redondo(double numero, double partes)
{
    return std::round(numero * partes) / partes;
}

QVariantList Fila(const TipoDeEquipo &tipo)
{
    constexpr double Centavos = 100;
    constexpr double Decimos = 10;
    QVariantList fila{tipo.clave, tipo.descripcion, nombres::Estado(tipo.estado), tipo.partes.activos,
                      tipo.partes.deBaja};
    fila << (tipo.servicios ? QVariantList{tipo.servicios->activos, tipo.servicios->deBaja}
                            : QVariantList{QVariant(), QVariant()});
    const auto &cifras = tipo.cifras;
    fila << (cifras ? QVariantList{cifras->sinFecha, cifras->conPerdida, Redondo(cifras->costoAnual, Centavos),
                                   Redondo(cifras->horasAnuales, Decimos), cifras->porLectura}
                    : QVariantList(UltimaCifra - PrimeraCifra + 1));
    return fila << tipo.UltimoCambio();
}

} // namespace

PaginaTipos::PaginaTipos(bool deUnaVez, QWidget *padre)
    : QWidget(padre)
    , txtFiltro(new QLineEdit)
    , lvTipos(new qvx::VistaTabla("lvTipos", "Tipos de equipo"))
    , modelo(new qvx::ModeloTabla(ColumnasDeTipos(), 0, this))
    , lblAviso(new AvisoDeLectura("lblAvisoDeTipos"))
    , lblCuenta(new QLabel)
    , lblCifras(new QLabel)
    , cmdAbrir(new QPushButton("Abrir el &plan"))
    , serviciosPorVez(deUnaVez ? std::numeric_limits<int>::max() : ServiciosPorVez)
{
    setObjectName("PaginaTipos");
    lvTipos->installEventFilter(this);
    lvTipos->Poner(modelo, DescripcionDelTipo, ClaveDelTipo);
    ajustes::ReponerColumnas(NombreDeLista, *lvTipos);
    connect(lvTipos, &qvx::VistaTabla::doubleClicked, this, &PaginaTipos::Abrir);
    connect(lvTipos->selectionModel(), &QItemSelectionModel::currentChanged, this, &PaginaTipos::PonerEstado);
    cuenta.setSingleShot(true);
    connect(&cuenta, &QTimer::timeout, this, [this] { lblAviso->Intentar(1000061, [this] { Contar(); }); });
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(12, 12, 12, 8);
    disposicion->setSpacing(10);
    disposicion->addWidget(Busqueda());
    disposicion->addWidget(lblAviso);
    disposicion->addWidget(lvTipos, 1);
    auto *pie = new QHBoxLayout;
    cmdAbrir->setObjectName("cmdAbrirPlan");
    cmdAbrir->setToolTip("Entrar");
    cmdAbrir->setAutoDefault(false);
    connect(cmdAbrir, &QPushButton::clicked, this, &PaginaTipos::Abrir);
    lblCifras->setObjectName("lblCifras");
    pie->addWidget(cmdAbrir);
    pie->addStretch();
    pie->addWidget(lblCifras);
    disposicion->addLayout(pie);
    setFocusProxy(txtFiltro);
    PonerEstado();
}

PaginaTipos::~PaginaTipos()
{
    ajustes::RecordarColumnas(NombreDeLista, *lvTipos);
}

QWidget *PaginaTipos::Busqueda()
{
    txtFiltro->setObjectName("txtFiltroTipos");
    txtFiltro->setPlaceholderText("Escriba palabras de la clave, de la descripción o del estado");
    txtFiltro->setAccessibleName("Filtrar los tipos de equipo");
    txtFiltro->setClearButtonEnabled(true);
    txtFiltro->installEventFilter(this);
    connect(txtFiltro, &QLineEdit::textChanged, this, [this](const QString &texto) {
        const QString clave = Elegida();
        modelo->Buscar(texto);
        Elegir(clave);
    });
    lblCuenta->setObjectName("lblCuentaTipos");
    auto *busqueda = new QWidget;
    auto *fila = new QHBoxLayout(busqueda);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(txtFiltro, 1);
    fila->addWidget(lblCuenta);
    return busqueda;
}

void PaginaTipos::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    lblAviso->Intentar(1000226, [this] { Leer(false); });
}

void PaginaTipos::Actualizar()
{
    lblAviso->Intentar(1000062, [this] { Leer(true); });
}

void PaginaTipos::Leer(bool todo)
{
    porAjustar = porAjustar || tipos.isEmpty();
    QList<TipoDeEquipo> leidos = LeerTiposDeEquipo(Base());
    if (!todo)
        Conservar(tipos, leidos);
    tipos = leidos;
    conServicios = false;
    Llenar();
    if (porAjustar)
        lvTipos->AjustarColumnas();
    cuenta.start(0);
}

void PaginaTipos::Llenar()
{
    const QString clave = Elegida();
    QList<QVariantList> filas;
    for (const TipoDeEquipo &tipo : std::as_const(tipos))
        filas.append(Fila(tipo));
    modelo->Llenar(filas);
    Elegir(clave);
}

// What is not known yet, a statement at a time: services, then figures. Inside a transaction of the screen, whose
// question waits for an answer, they would hold up plans.
void PaginaTipos::Contar()
{
    if (!isVisible()) // goes on when it is shown again
        return;
    if (Base().EnTransaccion())
        return cuenta.start(Espera);
    if (!conServicios) {
        LeerServicios(Base(), tipos);
        conServicios = true;
        Llenar();
        return cuenta.start(0);
    }
    int desde = 0;
    while (desde < tipos.size() && tipos.at(desde).cifras)
        ++desde;
    if (desde == tipos.size())
        return Terminar();
    ContarDesde(desde);
    cuenta.start(0);
}

void PaginaTipos::ContarDesde(int desde)
{
    int hasta = desde;
    int servicios = tipos.at(desde).servicios->activos;
    for (int lugar = desde + 1; lugar < tipos.size() && servicios < serviciosPorVez; ++lugar) {
        servicios += tipos.at(lugar).servicios->activos;
        if (!tipos.at(lugar).cifras)
            hasta = lugar;
    }
    LeerCifras(Base(), tipos, desde, hasta);
    for (int lugar = desde; lugar <= hasta; ++lugar)
        modelo->Cambiar(lugar, Fila(tipos.at(lugar)));
    PonerEstado();
}

// Rows take their places by figures, and columns the width of theirs, when all of them are known.
void PaginaTipos::Terminar()
{
    if (std::exchange(porAjustar, false))
        lvTipos->AjustarColumnas();
    const QHeaderView &titulos = *lvTipos->header();
    if (titulos.sortIndicatorSection() >= PrimeraCifra && titulos.sortIndicatorSection() <= UltimaCifra) {
        const QString clave = Elegida();
        modelo->sort(titulos.sortIndicatorSection(), titulos.sortIndicatorOrder());
        Elegir(clave);
    }
    PonerEstado();
}

QString PaginaTipos::Elegida() const
{
    const QModelIndex actual = lvTipos->currentIndex();
    return actual.isValid() ? modelo->Clave(actual.row()) : QString();
}

// A row that is no longer shown leaves the choice to the first one.
void PaginaTipos::Elegir(const QString &clave)
{
    const int visible = clave.isEmpty() ? -1 : modelo->VisibleConClave(clave);
    const QModelIndex indice = modelo->index(qMax(0, visible), ClaveDelTipo);
    lvTipos->setCurrentIndex(indice);
    if (indice.isValid())
        lvTipos->scrollTo(indice);
    PonerEstado();
}

void PaginaTipos::PonerEstado()
{
    const int cuantos = modelo->rowCount();
    const QString todos = QLocale().toString(tipos.size());
    lblCuenta->setText(cuantos == tipos.size() ? Cuantos(cuantos, "tipo de equipo", "tipos de equipo")
                                               : QLocale().toString(cuantos) + " de " + todos);
    const auto contados =
        std::count_if(tipos.cbegin(), tipos.cend(), [](const TipoDeEquipo &tipo) { return tipo.cifras.has_value(); });
    lblCifras->setText(contados == tipos.size()
                           ? QString()
                           : "Calculando costos y horas… " + QLocale().toString(contados) + " de " + todos);
    cmdAbrir->setEnabled(lvTipos->currentIndex().isValid());
}

void PaginaTipos::Abrir()
{
    const QModelIndex actual = lvTipos->currentIndex();
    if (!actual.isValid())
        return;
    const TipoDeEquipo &tipo = tipos.at(modelo->Numero(actual.row()));
    if (tipo.estado != qvx::estado::Baja && tipo.estado != qvx::estado::Cancelado) {
        Q_EMIT PlanPedido(tipo.clave);
        return;
    }
    qvx::Sistema().Mensaje("El tipo de equipo «" + tipo.clave + " " + tipo.descripcion + "» está "
                               + nombres::Estado(tipo.estado).toLower()
                               + ", y su plan no se abre. Para trabajar en él, reactívelo en la página Catálogos.",
                           qvx::mensaje::Exclamacion, "Quorvex", window()->winId(), "QVX", "ERR-ID:1000060");
}

// From the filter the arrows move in the list, and Enter opens from both.
bool PaginaTipos::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent *>(evento)->key();
    if (objeto == txtFiltro && comunesQVX::MueveLaLista(tecla)) {
        QCoreApplication::sendEvent(lvTipos, evento);
        return true;
    }
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
        Abrir();
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}
