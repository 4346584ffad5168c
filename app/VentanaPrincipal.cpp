#include "app/VentanaPrincipal.h"

#include "app/DialogoIntegridad.h"
#include "app/InteraccionDelEscritorio.h"
#include "app/Trampas.h"
#include "app/catalogos/AvisoDeGastos.h"
#include "app/catalogos/DialogoCostos.h"
#include "app/catalogos/DialogoGastos.h"
#include "app/catalogos/PaginaCatalogos.h"
#include "controls/Formulario.h"
#include "controls/TreeView.h"
#include "controls/colorQVX.h"
#include "controls/txtQVX.h"
#include "session/Aplicacion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <functional>
#include <utility>

namespace
{

enum Pagina { PaginaDelPlan, PaginaDeCatalogos };

// Names are no markup.
QLabel *Rotulo(const QString &texto)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setTextFormat(Qt::PlainText);
    return rotulo;
}

} // namespace

VentanaPrincipal::VentanaPrincipal(QWidget *pantalla_, const QString &tipoEquipo_, const QString &operador,
                                   const QString &baseDatos)
    : tipoEquipo(tipoEquipo_), tabPaginas(new QTabWidget(this)), pantalla(pantalla_)
{
    coloresQVX::colorQVX::AplicarA(*this);
    setWindowTitle("Plan de mantenimiento por tipo de equipo");
    pantalla->setProperty("Padre", QVariant::fromValue(static_cast<QObject *>(this)));
    PonerPaginas(pantalla);
    PonerMenu();
    statusBar()->addWidget(Rotulo("Operador: " + operador));
    PonerSugerencia();
    PonerAvance();
    statusBar()->addPermanentWidget(Rotulo(baseDatos));
    resize(qvx::Formulario::Cabida(*this, {1280, 760}));
    if (auto *forma = qobject_cast<qvx::Formulario *>(pantalla))
        connect(forma, &qvx::Formulario::Descargado, this, &QWidget::close);
}

void VentanaPrincipal::PonerPaginas(QWidget *pantalla)
{
    tabPaginas->setObjectName("tabPaginas");
    tabPaginas->setDocumentMode(true);
    tabPaginas->addTab(pantalla, "Plan");
    tabPaginas->addTab(new QWidget, "Catálogos");
    setCentralWidget(tabPaginas);
    connect(tabPaginas, &QTabWidget::currentChanged, this, &VentanaPrincipal::AlCambiarDePagina);
}

void VentanaPrincipal::AlCambiarDePagina(int pagina)
{
    QWidget *foco = tabPaginas->currentWidget()->focusWidget(); // where it was left
    if (pagina == PaginaDeCatalogos && !catalogos)
        PonerCatalogos();
    if (pagina == PaginaDelPlan && std::exchange(porReleer, false))
        Releer();
    (foco ? foco : tabPaginas->currentWidget())->setFocus();
    cambio.start(0);
}

void VentanaPrincipal::PonerCatalogos()
{
    QWidget *lugar = tabPaginas->widget(PaginaDeCatalogos);
    auto *disposicion = new QVBoxLayout(lugar);
    disposicion->setContentsMargins(0, 0, 0, 0);
    catalogos = new PaginaCatalogos(lugar);
    disposicion->addWidget(catalogos);
    lugar->setFocusProxy(catalogos);
    connect(catalogos, &PaginaCatalogos::Cambiado, this, [this] { porReleer = true; });
    connect(catalogos, &PaginaCatalogos::CopiaPedida, this, &VentanaPrincipal::CopiarPlan);
}

// The screen's own command, with its questions; which type the plan goes to is known.
void VentanaPrincipal::CopiarPlan(const QString &nuevo, const QString &origen)
{
    tabPaginas->setCurrentIndex(PaginaDelPlan);
    auto *copiar = pantalla->findChild<QAction *>("B3");
    if (!tipo || !copiar)
        return;
    tipo->Elegir(origen);
    if (auto *personas = dynamic_cast<InteraccionDelEscritorio *>(&qvx::Sesion::Actual().Interaccion()))
        personas->Anticipar("TIPO_EQUIPO", nuevo);
    copiar->trigger();
}

// The screen's equipment type, anew.
void VentanaPrincipal::Releer()
{
    if (tipo && !tipo->Text().isEmpty())
        tipo->Elegir(tipo->Text());
}

// What to do next, as the screen's controls stand.
void VentanaPrincipal::PonerSugerencia()
{
    sugerencia = Entre("lblSugerencia");
    tipo = pantalla->findChild<textoQVX::txtQVX *>("txtTipoEquipo");
    nombreTipo = pantalla->findChild<textoQVX::txtQVX *>("txtNTipoEquipo");
    partes = pantalla->findChild<comunesQVX::TreeView *>("tvPartes");
    if (!tipo || !nombreTipo || !partes)
        return;
    cambio.setSingleShot(true);
    connect(&cambio, &QTimer::timeout, this, [this] {
        if (tipo && nombreTipo && partes)
            sugerencia->setText(Sugerencia());
    });
    const auto mirar = [this] { cambio.start(0); };
    connect(tipo, &textoQVX::txtQVX::Change, this, [this, mirar] {
        tipoResuelto = false;
        mirar();
    });
    connect(tipo, &textoQVX::txtQVX::Resuelto, this, [this, mirar] {
        tipoResuelto = true;
        mirar();
    });
    gastos = new AvisoDeGastos(this);
    const auto contar = [this] { gastos->Mirar(tipoResuelto ? TipoEnPantalla() : QString()); };
    connect(gastos, &AvisoDeGastos::Cambio, this, mirar);
    connect(tipo, &textoQVX::txtQVX::Resuelto, this, contar);
    connect(partes->model(), &QAbstractItemModel::rowsInserted, this, contar);
    connect(partes->model(), &QAbstractItemModel::rowsInserted, this, mirar);
    connect(partes->model(), &QAbstractItemModel::rowsRemoved, this, mirar);
    connect(partes->selectionModel(), &QItemSelectionModel::selectionChanged, this, mirar);
    mirar();
}

QString VentanaPrincipal::Sugerencia() const
{
    if (tabPaginas->currentIndex() != PaginaDelPlan)
        return {};
    if (tipo->Text().isEmpty())
        return "Elija un tipo de equipo: escriba su clave o pulse F3.";
    if (!tipoResuelto)
        return "Pulse Entrar para ver el plan del tipo de equipo.";
    if (nombreTipo->Text().isEmpty())
        return "El tipo de equipo «" + tipo->Text() + "» no existe o está dado de baja: corrija la clave o pulse F3.";
    if (partes->Count() <= 1)
        return "Este tipo de equipo no tiene plan todavía: elija RAIZ y pulse Nuevo, o pulse Importar XML.";
    if (const QString pendiente = gastos->Texto(); !pendiente.isEmpty())
        return pendiente;
    return partes->SelectedItem() ? QString() : QString("Elija una parte para ver sus servicios.");
}

// A label that takes the room between the operator and the database, whatever it says.
QLabel *VentanaPrincipal::Entre(const QString &nombre)
{
    QLabel *rotulo = Rotulo({});
    rotulo->setObjectName(nombre);
    rotulo->setIndent(24);
    rotulo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(rotulo, 1);
    return rotulo;
}

// While a job runs, how far it is stands in the place of what to do next.
void VentanaPrincipal::PonerAvance()
{
    QLabel *avance = Entre("lblAvance");
    avance->hide();
    const auto *aplicacion = qobject_cast<qvx::Aplicacion *>(QCoreApplication::instance());
    if (!aplicacion)
        return;
    connect(aplicacion, &qvx::Aplicacion::Avance, avance, [this, avance](int sentencias) {
        avance->setText("Trabajando… " + QLocale().toString(sentencias)
                        + (sentencias == 1 ? " sentencia" : " sentencias"));
        sugerencia->hide();
        avance->show();
    });
    connect(aplicacion, &qvx::Aplicacion::Reposo, avance, [this, avance] {
        avance->clear();
        avance->hide();
        sugerencia->show();
    });
}

void VentanaPrincipal::PonerMenu()
{
    QMenu *ver = menuBar()->addMenu("&Ver");
    ver->setObjectName("mnuVer");
    for (int pagina = 0; pagina < tabPaginas->count(); ++pagina) {
        QAction *accion = ver->addAction("&" + tabPaginas->tabText(pagina), this,
                                         [this, pagina] { tabPaginas->setCurrentIndex(pagina); });
        accion->setObjectName(QString("mnuPagina%1").arg(pagina + 1));
        accion->setShortcut(QKeySequence(QString("Alt+%1").arg(pagina + 1)));
    }
    QMenu *herramientas = menuBar()->addMenu("&Herramientas");
    herramientas->setObjectName("mnuHerramientas");
    const auto agregar = [&](const QString &nombre, const QString &texto, const std::function<void()> &abrir) {
        herramientas->addAction(texto, this, abrir)->setObjectName(nombre);
    };
    agregar("mnuRevisarIntegridad", "&Revisar integridad…", [this] { AbrirDialogo<DialogoIntegridad>(1000006); });
    agregar("mnuActualizarCostos", "&Actualizar costos…",
            [this] { AbrirDialogo<DialogoCostos>(1000045, TipoEnPantalla()); });
    agregar("mnuCompletarGastos", "&Completar tipos de gasto…",
            [this] { AbrirDialogo<DialogoGastos>(1000046, TipoEnPantalla()); });
}

// The screen then reads its equipment type again: what it shows may have been changed.
template <class Dialogo, class... Datos>
void VentanaPrincipal::AbrirDialogo(int identificador, const Datos &...datos)
{
    ConTrampa(*this, identificador, [&] {
        Dialogo dialogo(datos..., this);
        dialogo.exec();
        if (dialogo.HuboCambios())
            Releer();
    });
}

QString VentanaPrincipal::TipoEnPantalla() const
{
    return tipo ? tipo->Text() : QString();
}

void VentanaPrincipal::closeEvent(QCloseEvent *evento)
{
    pantalla->close();
    evento->accept();
}
