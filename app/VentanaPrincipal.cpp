#include "app/VentanaPrincipal.h"

#include "app/AcercaDe.h"
#include "app/Ajustes.h"
#include "app/BarraDeEstado.h"
#include "app/DialogoIntegridad.h"
#include "app/MenuEdicion.h"
#include "app/ModoLectura.h"
#include "app/OrdenDeMenu.h"
#include "app/Paginas.h"
#include "app/PantallaDelPlan.h"
#include "app/Trampas.h"
#include "app/buscar/DialogoBuscar.h"
#include "app/catalogos/DialogoCostos.h"
#include "app/catalogos/DialogoGastos.h"
#include "app/catalogos/PaginaCatalogos.h"
#include "app/comparar/MenuDeComparar.h"
#include "app/historial/MenuDeHistorial.h"
#include "app/historial/PaginaHistorial.h"
#include "app/programa/PaginaPrograma.h"
#include "app/servicios/PaginaServicios.h"
#include "app/tipos/PaginaTipos.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/Conexion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <utility>

namespace
{

constexpr QSize TamanoDeInicio(1280, 760);
constexpr auto PaginaAbierta = "ventana/pagina";
const QString PaginaDeTipos = "Tipos";
const QString PaginaDelPlan = "Plan";
const QString PaginaDeServicios = "Servicios";
const QString PaginaDelPrograma = "Programa";
const QString PaginaDeCatalogos = "Catalogos";
const QString PaginaDelHistorial = "Historial";

} // namespace

VentanaPrincipal::VentanaPrincipal(QWidget *pantalla, const QString &tipoEquipo_, const QString &operador,
                                   const QString &baseDatos)
    : tipoEquipo(tipoEquipo_)
    , nombreDeBase(baseDatos)
    , plan(new PantallaDelPlan(pantalla, this))
    , paginas(new Paginas(this))
    , barra(new BarraDeEstado(operador, baseDatos, this))
{
    setWindowTitle("Plan de mantenimiento por tipo de equipo");
    new ModoLectura(this);
    pantalla->setProperty("Padre", QVariant::fromValue(static_cast<QObject *>(this)));
    setStatusBar(barra);
    PonerPaginas();
    PonerMenus();
    coloresQVX::colorQVX::AplicarA(*this); // each widget that comes into a dressed window is dressed at once
    connect(plan, &PantallaDelPlan::Abierta, this, [this] { tipoEquipo.clear(); });
    connect(plan, &PantallaDelPlan::Cambio, this,
            [this] { barra->Sugerir(paginas->Actual().nombre == PaginaDelPlan ? plan->Sugerencia() : QString()); });
    resize(qvx::Formulario::Cabida(*this, TamanoDeInicio));
    if (auto *forma = qobject_cast<qvx::Formulario *>(pantalla))
        connect(forma, &qvx::Formulario::Descargado, this, &QWidget::close);
}

VentanaPrincipal::~VentanaPrincipal() = default;

// One page, one line: what is not here has no tab, no command and no key.
void VentanaPrincipal::PonerPaginas()
{
    paginas->Agregar({PaginaDeTipos, "&Tipos de equipo", "mnuPaginaTipos", QKeySequence(Qt::Key_F6), "Tipos de equipo",
                      [this] { return HacerTipos(); }});
    paginas->Agregar(
        {PaginaDelPlan, "&Plan", "mnuPagina1", QKeySequence(Qt::Key_F7), "Partes", [this] { return plan->Forma(); }});
    paginas->Agregar({PaginaDeServicios, "&Servicios", "mnuPaginaServicios", QKeySequence(Qt::Key_F8),
                      "Todos los servicios de un plan", [this] { return HacerServicios(); }});
    // F10 opens the menus on most desktops.
    paginas->Agregar({PaginaDelPrograma, "Pro&grama", "mnuPaginaPrograma", QKeySequence(Qt::Key_F11),
                      "El programa del año", [this] { return HacerPrograma(); }});
    paginas->Agregar({PaginaDeCatalogos, "&Catálogos", "mnuPagina2", QKeySequence(Qt::Key_F9), "Catálogos",
                      [this] { return HacerCatalogos(); }});
    paginas->Agregar({PaginaDelHistorial, "&Historial", "mnuPaginaHistorial", QKeySequence(Qt::Key_F12), "Historial",
                      [this] { return HacerHistorial(); }});
    setCentralWidget(paginas);
    connect(paginas, &Paginas::Mostrada, this, &VentanaPrincipal::AlMostrarPagina);
    paginas->Mostrar(PaginaDelPlan);
}

QWidget *VentanaPrincipal::HacerTipos()
{
    auto *tipos = new PaginaTipos(enServidor);
    connect(tipos, &PaginaTipos::PlanPedido, this, [this](const QString &tipo) { MostrarEnPlan(tipo); });
    return tipos;
}

QWidget *VentanaPrincipal::HacerServicios()
{
    auto *servicios = new PaginaServicios;
    connect(servicios, &PaginaServicios::PlanCambiado, this, &VentanaPrincipal::PlanCambiado);
    connect(servicios, &PaginaServicios::ServicioPedido, this, &VentanaPrincipal::AbrirServicio);
    connect(servicios, &PaginaServicios::HistorialPedido, this, &VentanaPrincipal::MostrarHistorial);
    return servicios;
}

void VentanaPrincipal::AbrirServicio(const QString &tipo, const QString &parte, const QString &folio)
{
    if (Ver(tipo, parte, folio))
        plan->AbrirServicio();
}

QWidget *VentanaPrincipal::HacerPrograma()
{
    auto *programa = new PaginaPrograma(enServidor ? nombreDeBase : direccion);
    connect(programa, &PaginaPrograma::ServicioPedido, this, &VentanaPrincipal::AbrirServicio);
    return programa;
}

QWidget *VentanaPrincipal::HacerCatalogos()
{
    auto *catalogos = new PaginaCatalogos;
    connect(catalogos, &PaginaCatalogos::Cambiado, this, &VentanaPrincipal::PlanCambiado);
    connect(catalogos, &PaginaCatalogos::CopiaPedida, this, &VentanaPrincipal::CopiarPlan);
    return catalogos;
}

QWidget *VentanaPrincipal::HacerHistorial()
{
    auto *historial = new PaginaHistorial;
    connect(historial, &PaginaHistorial::PlanCambiado, this, &VentanaPrincipal::PlanCambiado);
    return historial;
}

void VentanaPrincipal::AlMostrarPagina(const QString &nombre)
{
    if (nombre == PaginaDelPlan && std::exchange(porReleer, false))
        plan->Releer();
    if (nombre == PaginaDeServicios)
        static_cast<PaginaServicios *>(paginas->Hecha(nombre))->PonerTipo(plan->HayTipo() ? plan->Tipo() : tipoEquipo);
    if (nombre == PaginaDelPrograma)
        static_cast<PaginaPrograma *>(paginas->Hecha(nombre))->PonerTipo(plan->HayTipo() ? plan->Tipo() : tipoEquipo);
    Q_EMIT plan->Cambio();
}

void VentanaPrincipal::CopiarPlan(const QString &nuevo, const QString &origen)
{
    paginas->Mostrar(PaginaDelPlan);
    plan->Copiar(nuevo, origen);
}

void VentanaPrincipal::ImportarPlan(const QString &archivo)
{
    paginas->Mostrar(PaginaDelPlan);
    plan->Importar(archivo);
}

QString VentanaPrincipal::TipoEnPantalla() const
{
    return plan->Tipo();
}

QString VentanaPrincipal::TipoDeLaPagina() const
{
    if (paginas->Actual().nombre == PaginaDeServicios)
        return static_cast<PaginaServicios *>(paginas->Hecha(PaginaDeServicios))->Tipo();
    return plan->HayTipo() ? plan->Tipo() : QString();
}

VentanaPrincipal::Elegido VentanaPrincipal::LoElegido() const
{
    if (paginas->Actual().nombre == PaginaDeServicios) {
        const auto *servicios = static_cast<PaginaServicios *>(paginas->Hecha(PaginaDeServicios));
        return {servicios->Tipo(), servicios->ParteActual(), servicios->FolioActual()};
    }
    return {plan->Tipo(), plan->ParteElegida(), plan->FolioElegido()};
}

void VentanaPrincipal::PlanDeshecho()
{
    PlanCambiado();
    if (paginas->Actual().nombre != PaginaDelPlan)
        ActualizarPagina();
}

void VentanaPrincipal::MostrarHistorial(const QString &tipo, const QString &parte, const QString &folio)
{
    if (Ocupada())
        return;
    paginas->Mostrar(PaginaDelHistorial);
    static_cast<PaginaHistorial *>(paginas->Hecha(PaginaDelHistorial))->Limitar(tipo, parte, folio);
}

bool VentanaPrincipal::Ocupada() const
{
    return Ventana::Ocupada() || Base().EnTransaccion();
}

qvx::Interaccion &VentanaPrincipal::Personas() const
{
    return qvx::Sesion::Actual().Interaccion();
}

bool VentanaPrincipal::MostrarEnPlan(const QString &tipo, const QString &parte, const QString &servicio)
{
    if (Ocupada())
        return false;
    tipoEquipo.clear();
    paginas->Mostrar(PaginaDelPlan);
    return plan->Mostrar(tipo, parte, servicio);
}

void VentanaPrincipal::Buscar()
{
    DialogoBuscar dialogo(plan->HayTipo() ? plan->Tipo() : QString(), this);
    if (dialogo.exec() != QDialog::Accepted)
        return;
    const qvx::Hallazgo &hallado = *dialogo.Elegido();
    Ver(hallado.tipoEquipo, hallado.parte, hallado.folio);
}

// The same, and says why it cannot be seen.
bool VentanaPrincipal::Ver(const QString &tipo, const QString &parte, const QString &servicio)
{
    const bool visto = MostrarEnPlan(tipo, parte, servicio);
    if (!visto)
        qvx::Sistema().Mensaje(
            "El plan no enseña lo que se encontró: el tipo de equipo o una parte de arriba está dado de "
            "baja, o la parte ya no existe. Véalo en Herramientas, Revisar integridad.",
            qvx::mensaje::Exclamacion, "Quorvex", winId(), "QVX", "ERR-ID:1000072");
    return visto;
}

void VentanaPrincipal::PlanCambiado()
{
    porReleer = true;
    if (paginas->Actual().nombre == PaginaDelPlan && std::exchange(porReleer, false))
        plan->Releer();
}

void VentanaPrincipal::PonerMenus()
{
    PonerArchivo(true);
    auto *edicion = new MenuEdicion(*this);
    new MenuDeHistorial(*edicion, *this);
    edicion->addSeparator();
    AgregarOrden(*edicion, *this, "mnuBuscar", "&Buscar en los planes…", QKeySequence("Ctrl+F"), [this] { Buscar(); });
    menuBar()->addMenu(edicion);
    PonerVer();
    PonerHerramientas();
    PonerAyuda();
}

void VentanaPrincipal::PonerVer()
{
    QMenu *ver = menuBar()->addMenu("&Ver");
    ver->setObjectName("mnuVer");
    for (const Pagina &pagina : paginas->Todas())
        AgregarOrden(*ver, *this, pagina.orden, pagina.titulo, pagina.tecla,
                     [this, nombre = pagina.nombre] { paginas->Mostrar(nombre); });
    ver->addSeparator();
    // On the screen the tree has this key for itself.
    QAction *actualizar = AgregarOrden(*ver, *this, "mnuActualizar", "&Actualizar", QKeySequence(Qt::Key_F5),
                                       [this] { ActualizarPagina(); });
    actualizar->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    for (int lugar = 0; lugar < paginas->count(); ++lugar)
        if (paginas->Todas().at(lugar).nombre != PaginaDelPlan)
            paginas->widget(lugar)->addAction(actualizar);
}

void VentanaPrincipal::ActualizarPagina()
{
    const QString nombre = paginas->Actual().nombre;
    if (nombre == PaginaDelPlan)
        plan->Releer();
    else
        QMetaObject::invokeMethod(paginas->Hecha(nombre), "Actualizar");
}

void VentanaPrincipal::PonerHerramientas()
{
    QMenu *herramientas = menuBar()->addMenu("Herra&mientas");
    herramientas->setObjectName("mnuHerramientas");
    AgregarOrden(*herramientas, *this, "mnuRevisarIntegridad", "&Revisar integridad…", {},
                 [this] { AbrirDialogo<DialogoIntegridad>(1000006); });
    AgregarOrden(*herramientas, *this, "mnuActualizarCostos", "&Actualizar costos…", {},
                 [this] { AbrirDialogo<DialogoCostos>(1000045, TipoEnPantalla()); });
    AgregarOrden(*herramientas, *this, "mnuCompletarGastos", "&Completar tipos de gasto…", {},
                 [this] { AbrirDialogo<DialogoGastos>(1000046, TipoEnPantalla()); });
    PonerComparacion(*herramientas, *this);
}

// The screen then reads its plan again: what it shows may have been changed.
template <class Dialogo, class... Datos>
void VentanaPrincipal::AbrirDialogo(int identificador, const Datos &...datos)
{
    ConTrampa(*this, identificador, [&] {
        Dialogo dialogo(datos..., this);
        dialogo.exec();
        if (dialogo.HuboCambios())
            PlanCambiado();
    });
}

void VentanaPrincipal::PonerAyuda()
{
    QMenu *ayuda = Ventana::PonerAyuda([this] { return paginas->Actual().capitulo; });
    ayuda->addSeparator();
    AgregarOrden(*ayuda, *this, "mnuAcercaDe", "&Acerca de Quorvex", {},
                 [this] { ::MostrarAcercaDe(*this, nombreDeBase, enServidor); });
}

void VentanaPrincipal::Retomar(const QString &direccion_, bool enServidor_)
{
    direccion = direccion_;
    enServidor = enServidor_;
    ajustes::ReponerVentana(*this, TamanoDeInicio);
    if (!tipoEquipo.isEmpty())
        return;
    tipoEquipo = ajustes::PlanDe(direccion);
    const QString abierta = ajustes::Abrir().value(PaginaAbierta).toString();
    if (tipoEquipo.isEmpty())
        paginas->Mostrar(PaginaDeTipos);
    else if (paginas->Hay(abierta))
        paginas->Mostrar(abierta);
}

void VentanaPrincipal::Recordar()
{
    if (direccion.isEmpty() || !isVisible()) // was remembered when it was closed
        return;
    ajustes::RecordarBase(direccion);
    ajustes::RecordarVentana(*this);
    ajustes::Abrir().setValue(PaginaAbierta, paginas->Actual().nombre);
    if (tipoEquipo.isEmpty()) // else the screen was not shown
        ajustes::RecordarPlan(direccion, plan->HayTipo() ? plan->Tipo() : QString());
}

void VentanaPrincipal::closeEvent(QCloseEvent *evento)
{
    Recordar();
    if (QWidget *pantalla = plan->Forma())
        pantalla->close();
    evento->accept();
}
