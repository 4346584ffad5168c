#include "app/programa/PaginaPrograma.h"

#include "app/Rotulo.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/programa/DialogoDatosDePrograma.h"
#include "app/programa/GraficaDeCarga.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/ModeloPrograma.h"
#include "app/programa/PanelQueSi.h"
#include "app/programa/TextosDePrograma.h"
#include "controls/DeAmbos.h"
#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Sesion.h"
#include "session/Utilerias.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeView>
#include <algorithm>

namespace
{

const QString ListaDeFechas = "Programa";
constexpr int AnchoDeRuta = 230;
constexpr int AnchoDeServicio = 160;
constexpr int AnchoDeMotivo = 220;
constexpr int LetrasDeBusqueda = 18; // of its box at least, where there is little room

using ClaseEnTabla = qvx::ColumnaDeTabla::Clase;

} // namespace

PaginaPrograma::PaginaPrograma(const QString &base_, QWidget *padre)
    : QWidget(padre)
    , base(base_)
    , modelo(new ModeloPrograma(this))
    , lvPrograma(new QTreeView)
    , totales(new qvx::ModeloTabla({{"Totales de"},
                                    {"Fechas", ClaseEnTabla::Numero},
                                    {"Mano de obra HR", ClaseEnTabla::Numero},
                                    {"Paro sumado HR", ClaseEnTabla::Numero},
                                    {"Costo", ClaseEnTabla::Dinero},
                                    {"Costo de hoy", ClaseEnTabla::Dinero},
                                    {"Precio", ClaseEnTabla::Dinero}},
                                   0, this))
    , lvTotales(new qvx::VistaTabla("lvTotalesDePrograma", "Totales del programa"))
    , grafica(new GraficaDeCarga)
    , queSi(new PanelQueSi)
    , fichas(new QTabWidget)
    , lblTipo(new QLabel)
    , lblDatos(RotuloLargo("lblDatosDePrograma"))
    , lblConciliacion(RotuloLargo("lblConciliacion"))
    , lblAviso(RotuloLargo("lblAvisoDePrograma"))
    , lblCuenta(new QLabel)
    , lblLargoPlazo(RotuloLargo("lblLargoPlazo"))
    , lblAhorro(RotuloLargo("lblAhorroDeParos"))
    , txtBuscar(new QLineEdit)
    , cboMes(new QComboBox)
    , cboOficio(new QComboBox)
    , spnDias(new QSpinBox)
{
    setObjectName("PaginaPrograma");
    fichas->setObjectName("tabPrograma");
    fichas->setDocumentMode(true);
    fichas->tabBar()->setDrawBase(false); // a white line, on a dark desktop too
    fichas->addTab(FichaDeFechas(), "Fechas");
    fichas->addTab(FichaDeCarga(), "Carga");
    fichas->addTab(AgregarTabla("lvRefacciones", "Refacciones por mes",
                                [this] { return ConSubtotales(programa::HojaDeRefacciones(*medido, *programado)); }),
                   "Refacciones");
    fichas->addTab(FichaDeCostos(), "Costos");
    fichas->addTab(FichaDeParos(), "Paros");
    fichas->addTab(FichaDeApartes(), "Sin programar");
    fichas->addTab(AgregarTabla("lvUmbrales", "Servicios por días o por lectura",
                                [this] { return programa::HojaDeUmbrales(*medido, *programado); }),
                   "Días o lectura");
    fichas->addTab(queSi, "¿Y si…?");
    connect(fichas, &QTabWidget::currentChanged, this, &PaginaPrograma::MostrarFicha);
    connect(queSi, &PanelQueSi::Tomado, this, &PaginaPrograma::EditarDatos);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(12, 12, 12, 8);
    disposicion->addWidget(Arriba());
    disposicion->addWidget(lblDatos);
    disposicion->addWidget(lblAviso);
    disposicion->addWidget(fichas, 1);
    disposicion->addWidget(lblConciliacion);
    disposicion->addWidget(Acciones());
    conPrograma.append(fichas);
    setFocusProxy(txtBuscar);
    Mostrar();
}

PaginaPrograma::~PaginaPrograma() = default;

QWidget *PaginaPrograma::Arriba()
{
    lblTipo->setObjectName("lblTipoDelPrograma");
    lblTipo->setTextFormat(Qt::PlainText);
    lblCuenta->setObjectName("lblCuentaDePrograma");
    txtBuscar->setObjectName("txtBuscarPrograma");
    txtBuscar->setAccessibleName("Buscar en el programa");
    txtBuscar->setPlaceholderText("Buscar: parte, folio, servicio, prioridad, motivo");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->setMinimumWidth(txtBuscar->fontMetrics().averageCharWidth() * LetrasDeBusqueda);
    txtBuscar->installEventFilter(this);
    cboMes->setObjectName("cboMesDelPrograma");
    cboMes->setAccessibleName("Mes");
    cboOficio->setObjectName("cboOficioDelPrograma");
    cboOficio->setAccessibleName("Oficio");
    connect(txtBuscar, &QLineEdit::textChanged, this, [this](const QString &texto) {
        modelo->Buscar(texto);
        Sumar();
    });
    connect(cboMes, &QComboBox::currentIndexChanged, this, &PaginaPrograma::Limitar);
    connect(cboOficio, &QComboBox::currentIndexChanged, this, &PaginaPrograma::Limitar);
    auto *arriba = new QWidget;
    auto *fila = new QHBoxLayout(arriba);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(lblTipo);
    auto *cmdTipo = Boton(*fila, "cmdTipoDelPrograma", "&Tipo de equipo…", nullptr);
    connect(cmdTipo, &QPushButton::clicked, this, &PaginaPrograma::ElegirTipo);
    auto *cmdDatos = Boton(*fila, "cmdDatosDePrograma", "Dat&os del programa…", nullptr);
    connect(cmdDatos, &QPushButton::clicked, this, [this] { EditarDatos(datos); });
    fila->addWidget(txtBuscar, 1);
    fila->addWidget(cboMes);
    fila->addWidget(cboOficio);
    fila->addWidget(lblCuenta);
    return arriba;
}

QPushButton *PaginaPrograma::Boton(QHBoxLayout &fila, const QString &nombre, const QString &texto, QMenu *menu)
{
    auto *boton = new QPushButton(texto);
    boton->setObjectName(nombre);
    boton->setAutoDefault(false);
    if (menu)
        boton->setMenu(menu);
    fila.addWidget(boton);
    return boton;
}

void PaginaPrograma::PonerTipo(const QString &tipoEquipo)
{
    if (tipoEquipo == tipo)
        return;
    tipo = tipoEquipo;
    alDia = false;
    if (isVisible())
        Actualizar();
}

void PaginaPrograma::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    Actualizar();
}

void PaginaPrograma::Actualizar()
{
    ConTrampa(*this, 1000201, [this] { Leer(); });
}

// Data that were only used stay for their type as long as the page does.
void PaginaPrograma::Leer()
{
    if (tipo.isEmpty())
        return Mostrar();
    try {
        puede = qvx::LeerDerechos(Base()).planes;
        auto nuevo = std::make_unique<programa::PlanMedido>(programa::LeerPlanMedido(Base(), tipo));
        const auto kept = qvx::LeerDatosDePrograma(Base(), tipo);
        const bool otro = !medido || medido->plan.tipoEquipo != nuevo->plan.tipoEquipo;
        const bool sinGuardar = !otro && datos.sello == (kept ? kept->sello : QString()) && !guardados;
        if (!sinGuardar) {
            datos = kept.value_or(programa::DatosDeInicio(tipo, qvx::Sesion::Actual().Ahora().date()));
            guardados = kept.has_value();
        }
        modelo->Poner(nullptr, nullptr);
        queSi->Poner(nullptr, nullptr);
        programado.reset();
        medido = std::move(nuevo);
        leida = QTime::currentTime();
        alDia = true;
    } catch (const qvx::ErrorEjecucion &) {
        alDia = false;
        Avisar();
        throw;
    }
    Programar();
}

void PaginaPrograma::Programar()
{
    modelo->Poner(nullptr, nullptr);
    queSi->Poner(nullptr, nullptr);
    fallo.clear();
    try {
        if (medido->plan.tipoActivo)
            programado = std::make_unique<programa::Programa>(programa::Programar(medido->entradas, datos));
        else
            programado.reset();
    } catch (const qvx::ErrorEjecucion &error) {
        programado.reset();
        fallo = error.Descripcion();
    }
    Mostrar();
}

// Everything that a programme says, anew; months and trades of the filters as they were, where there are still.
void PaginaPrograma::Mostrar()
{
    Avisar();
    for (QWidget *cosa : std::as_const(conPrograma))
        cosa->setEnabled(programado != nullptr);
    programa::Carga carga;
    if (programado) {
        ano = programa::Total(*programado, medido->medidas);
        carga = programa::CalcularCarga(*programado, medido->lineas);
    }
    const QString mes = cboMes->currentText();
    const QVariant oficio = cboOficio->currentData();
    {
        const QSignalBlocker callado(cboMes);
        const QSignalBlocker callada(cboOficio);
        cboMes->clear();
        cboMes->addItem("Todo el año", -1);
        cboOficio->clear();
        cboOficio->addItem("Todos los oficios", -1);
        if (programado) {
            for (int i = 0; i < programado->meses.Cuantos(); ++i)
                cboMes->addItem(programado->meses.Nombre(i), i);
            for (const programa::Serie &serie : std::as_const(carga.oficios))
                cboOficio->addItem(medido->lineas.productos.at(serie.producto).descripcion, serie.producto);
        }
        cboMes->setCurrentIndex(std::max(0, cboMes->findText(mes)));
        cboOficio->setCurrentIndex(std::max(0, cboOficio->findData(oficio)));
    }
    for (Tabla &tabla : tablas)
        tabla.porPoner = true;
    if (programado) {
        modelo->Poner(medido.get(), programado.get());
        grafica->Poner(*medido, *programado, std::move(carga));
        queSi->Poner(medido.get(), programado.get());
        lblLargoPlazo->setText(TextoDeLargoPlazo(*medido, *programado, ano));
        if (!columnas)
            DisponerColumnas();
    }
    Limitar();
    MostrarFicha();
}

// Once, to what is shown first or as the person left them.
void PaginaPrograma::DisponerColumnas()
{
    columnas.emplace(ListaDeFechas, *lvPrograma);
    if (columnas->Propias()) {
        const QHeaderView *titulos = lvPrograma->header();
        return lvPrograma->sortByColumn(titulos->sortIndicatorSection(), titulos->sortIndicatorOrder());
    }
    for (int columna = 0; columna < ModeloPrograma::Columnas; ++columna)
        lvPrograma->resizeColumnToContents(columna);
    lvPrograma->setColumnWidth(ModeloPrograma::Ruta, AnchoDeRuta);
    lvPrograma->setColumnWidth(ModeloPrograma::Servicio, AnchoDeServicio);
    lvPrograma->setColumnWidth(ModeloPrograma::Motivo, AnchoDeMotivo);
}

void PaginaPrograma::Limitar()
{
    modelo->Limitar(cboMes->currentData().toInt(), cboOficio->currentData().toInt());
    Sumar();
}

void PaginaPrograma::Sumar()
{
    const auto fila = [](const QString &de, qsizetype cuantas, const programa::Medida &suma) {
        return QVariantList{de,
                            double(cuantas),
                            suma.manoObra.Redondeada(2).Numero(),
                            suma.paro.Redondeada(2).Numero(),
                            suma.costo.Redondeada(2).Numero(),
                            suma.costoHoy.Redondeada(2).Numero(),
                            suma.precio.Redondeada(2).Numero()};
    };
    if (!programado) {
        totales->Llenar({});
        lblCuenta->clear();
        return;
    }
    totales->Llenar({fila("Lo que se muestra", modelo->Mostradas().size(),
                          modelo->Mostradas().size() == programado->filas.size()
                              ? ano
                              : programa::Total(*programado, modelo->Mostradas(), medido->medidas)),
                     fila("Todo el año", programado->filas.size(), ano)});
    QString cuenta = Cuantos(modelo->Mostradas().size(), "fecha", "fechas");
    if (modelo->Mostradas().size() < programado->filas.size())
        cuenta += " de " + Cuantos(programado->filas.size(), "", "").trimmed();
    lblCuenta->setText(cuenta);
    if (isVisible())
        lvTotales->AjustarColumnas();
}

void PaginaPrograma::Avisar()
{
    QString aviso;
    if (tipo.isEmpty())
        aviso = "Elija un tipo de equipo para ver su programa del año.";
    else if (!alDia && leida.isValid())
        aviso = NoEsActual(leida, " del tipo de equipo " + medido->plan.tipoEquipo);
    else if (!alDia)
        aviso = "El plan no se pudo leer. Pulse F5 para intentarlo de nuevo.";
    else if (medido->plan.nombreTipo.isEmpty())
        aviso = "El tipo de equipo «" + tipo + "» no está en el catálogo: elija otro.";
    else if (!medido->plan.tipoActivo)
        aviso = "El tipo de equipo está dado de baja: no tiene programa.";
    else if (!fallo.isEmpty())
        aviso = fallo;
    else if (!guardados)
        aviso = datos.sello.isEmpty()
                    ? QString("De este tipo de equipo no se ha guardado cuánto se usa ni desde cuándo se programa: "
                              "escríbalo en Datos del programa.")
                    : QString("Estos datos no se han guardado: valen hasta que cierre el programa o lea otro tipo.");
    else if (medido->plan.servicios.isEmpty())
        aviso = "Este plan no tiene servicios todavía: se agregan en la página Plan.";
    lblAviso->setText(aviso);
    lblAviso->setVisible(!aviso.isEmpty());
    lblTipo->setText(medido ? (medido->plan.tipoEquipo + " " + medido->plan.nombreTipo).trimmed() : tipo);
    lblDatos->setText(programado ? TextoDeDatos(*programado) : QString());
    lblDatos->setVisible(programado != nullptr);
    lblConciliacion->setText(programado ? programa::Texto(programado->conciliacion) + "." : QString());
    lblConciliacion->setVisible(programado != nullptr);
}

void PaginaPrograma::ElegirTipo()
{
    const QFont letra(font());
    ConTrampa(*this, 1000202, [this, letra] {
        const QPointer<PaginaPrograma> viva(this);
        const QString elegido = qvx::Utilerias().BuscarEnCatalogo("TIPO_EQUIPO", 0, {}, letra, this);
        if (viva && !elegido.isEmpty())
            PonerTipo(qvx::SinBlancosAlFinal(elegido));
    });
}

void PaginaPrograma::EditarDatos(const qvx::DatosDePrograma &propuestos)
{
    if (!medido || !medido->plan.tipoActivo)
        return;
    const QPointer<PaginaPrograma> viva(this);
    const qvx::DeAmbos<DialogoDatosDePrograma> dialogo(
        new DialogoDatosDePrograma(*medido, propuestos, puede && alDia, this));
    if (dialogo->exec() != QDialog::Accepted || !viva)
        return;
    datos = dialogo->Datos();
    guardados = dialogo->Guardado();
    if (guardados) // with the version that it has now
        Actualizar();
    else
        Programar();
}

void PaginaPrograma::Abrir()
{
    const QModelIndex indice = lvPrograma->currentIndex();
    if (!indice.isValid())
        return;
    const qvx::ServicioLeido leido = medido->plan.servicios.at(modelo->ServicioEn(indice.row())).leido;
    Q_EMIT ServicioPedido(leido.tipoEquipo, leido.parte, leido.folio);
}

void PaginaPrograma::AlElegirCarga(int mes, int oficio)
{
    cboMes->setCurrentIndex(std::max(0, cboMes->findData(mes)));
    cboOficio->setCurrentIndex(std::max(0, cboOficio->findData(oficio)));
    fichas->setCurrentIndex(0);
    lvPrograma->setFocus();
}

void PaginaPrograma::QuitarFiltros()
{
    txtBuscar->clear();
    cboMes->setCurrentIndex(0);
    cboOficio->setCurrentIndex(0);
}

// From the search the arrows move in the table; Enter opens there.
bool PaginaPrograma::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent *>(evento)->key();
    if (objeto == txtBuscar && comunesQVX::MueveLaLista(tecla)) {
        lvPrograma->setFocus();
        QCoreApplication::sendEvent(lvPrograma, evento);
        return true;
    }
    if (objeto == lvPrograma && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
        Abrir();
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}
