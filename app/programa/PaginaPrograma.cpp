#include "app/programa/PaginaPrograma.h"

#include "app/RutaParaGuardar.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/catalogos/DialogoExportarCatalogo.h"
#include "app/programa/DialogoDatosDePrograma.h"
#include "app/programa/DialogoDeReporte.h"
#include "app/programa/GraficaDeCarga.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/Ics.h"
#include "app/programa/ModeloPrograma.h"
#include "app/programa/PanelQueSi.h"
#include "app/programa/PaqueteDelMes.h"
#include "app/programa/TextosDePrograma.h"
#include "controls/DeAmbos.h"
#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Planta.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"
#include "session/Utilerias.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeView>
#include <algorithm>

namespace
{

const QString ListaDeFechas = "Programa";
constexpr int AnchoDeRuta = 230;
constexpr int AnchoDeServicio = 160;
constexpr int AnchoDeMotivo = 220;
constexpr int DiasParaJuntar = 7;
constexpr int MaximoParaJuntar = 365;

using ClaseEnTabla = qvx::ColumnaDeTabla::Clase;

// As a list shows it: dates are texts there, and sort as such.
QList<qvx::ColumnaDeTabla> ColumnasDe(const Hoja &hoja)
{
    QList<qvx::ColumnaDeTabla> columnas;
    for (const ColumnaDeHoja &columna : hoja.columnas)
        columnas.append({columna.titulo, columna.clase == ColumnaDeHoja::Clase::Numero   ? ClaseEnTabla::Numero
                                         : columna.clase == ColumnaDeHoja::Clase::Dinero ? ClaseEnTabla::Dinero
                                                                                         : ClaseEnTabla::Texto});
    return columnas;
}

QList<QVariantList> FilasDe(const Hoja &hoja)
{
    QList<QVariantList> filas = hoja.filas;
    for (QVariantList &fila : filas)
        for (qsizetype i = 0; i < fila.size(); ++i)
            if (!fila.at(i).isValid())
                continue;
            else if (hoja.columnas.at(i).clase == ColumnaDeHoja::Clase::Fecha)
                fila[i] = programa::Escrita(fila.at(i).toDate());
            else if (hoja.columnas.at(i).clase != ColumnaDeHoja::Clase::Texto)
                fila[i] = programa::Cantidad::De(fila.at(i).toDouble()).Redondeada(2).Numero();
    return filas;
}

QLabel *RotuloDePrograma(const QString &nombre)
{
    auto *rotulo = new QLabel;
    rotulo->setObjectName(nombre);
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setWordWrap(true);
    return rotulo;
}

QWidget *EnColumna(const QList<QWidget *> &cosas, QWidget *estirada)
{
    auto *ficha = new QWidget;
    auto *columna = new QVBoxLayout(ficha);
    for (QWidget *cosa : cosas)
        columna->addWidget(cosa, cosa == estirada ? 1 : 0);
    return ficha;
}

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
    , lblDatos(RotuloDePrograma("lblDatosDePrograma"))
    , lblConciliacion(RotuloDePrograma("lblConciliacion"))
    , lblAviso(RotuloDePrograma("lblAvisoDePrograma"))
    , lblCuenta(new QLabel)
    , lblLargoPlazo(RotuloDePrograma("lblLargoPlazo"))
    , lblAhorro(RotuloDePrograma("lblAhorroDeParos"))
    , txtBuscar(new QLineEdit)
    , cboMes(new QComboBox)
    , cboOficio(new QComboBox)
    , spnDias(new QSpinBox)
{
    setObjectName("PaginaPrograma");
    fichas->setObjectName("tabPrograma");
    fichas->setDocumentMode(true);
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

QWidget *PaginaPrograma::FichaDeFechas()
{
    lvPrograma->setObjectName("lvPrograma");
    lvPrograma->setAccessibleName("Fechas del programa");
    lvPrograma->setModel(modelo);
    lvPrograma->setRootIsDecorated(false);
    lvPrograma->setUniformRowHeights(true);
    lvPrograma->setAllColumnsShowFocus(true);
    lvPrograma->setAlternatingRowColors(true);
    lvPrograma->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvPrograma->setTextElideMode(Qt::ElideMiddle); // both ends of a path tell
    lvPrograma->setSortingEnabled(true);
    lvPrograma->sortByColumn(ModeloPrograma::Programada, Qt::AscendingOrder);
    lvPrograma->header()->setStretchLastSection(false);
    lvPrograma->installEventFilter(this);
    connect(lvPrograma, &QTreeView::doubleClicked, this, &PaginaPrograma::Abrir);
    lvTotales->Poner(totales, 0, -1);
    lvTotales->header()->setSectionsClickable(false);
    lvTotales->setSelectionMode(QAbstractItemView::NoSelection);
    lvTotales->setTabKeyNavigation(false);
    lvTotales->setFixedHeight(QFontMetrics(font()).height() * 6);
    return EnColumna({lvPrograma, lvTotales}, lvPrograma);
}

QWidget *PaginaPrograma::FichaDeCarga()
{
    connect(grafica, &GraficaDeCarga::Elegido, this, &PaginaPrograma::AlElegirCarga);
    auto *lados = new QSplitter(Qt::Vertical);
    lados->addWidget(grafica);
    lados->addWidget(AgregarTabla("lvCarga", "Mano de obra por oficio y mes",
                                  [this] { return programa::HojaDeCarga(*medido, *programado); }));
    lados->setStretchFactor(0, 2);
    lados->setStretchFactor(1, 1);
    return EnColumna({lados}, lados);
}

QWidget *PaginaPrograma::FichaDeCostos()
{
    auto *lista = AgregarTabla("lvCostosDePrograma", "Costos por mes",
                               [this] { return ConTotal(programa::HojaDeCostos(*medido, *programado)); });
    return EnColumna({lista, lblLargoPlazo}, lista);
}

QWidget *PaginaPrograma::FichaDeParos()
{
    spnDias->setObjectName("spnDiasEntreParos");
    spnDias->setRange(1, MaximoParaJuntar);
    spnDias->setValue(DiasParaJuntar);
    spnDias->setSuffix(" días");
    auto *juntar = new QWidget;
    auto *fila = new QHBoxLayout(juntar);
    fila->setContentsMargins(0, 0, 0, 0);
    auto *titulo = new QLabel("&Juntar los paros que distan hasta");
    titulo->setBuddy(spnDias);
    fila->addWidget(titulo);
    fila->addWidget(spnDias);
    fila->addWidget(lblAhorro, 1);
    auto *paros = AgregarTabla("lvParos", "Paros por fecha",
                               [this] { return ConTotal(programa::HojaDeParos(*medido, *programado)); });
    auto *juntos = AgregarTabla("lvParosJuntos", "Paros que se pueden juntar",
                                [this] { return programa::HojaDeParosJuntos(*medido, *programado, spnDias->value()); });
    connect(spnDias, &QSpinBox::valueChanged, this, [this] {
        for (Tabla &tabla : tablas)
            tabla.porPoner = tabla.porPoner || tabla.vista->objectName() == "lvParosJuntos";
        MostrarFicha();
    });
    auto *abajo = EnColumna({juntar, juntos}, juntos);
    auto *lados = new QSplitter(Qt::Vertical);
    lados->addWidget(paros);
    lados->addWidget(abajo);
    return EnColumna({lados}, lados);
}

QWidget *PaginaPrograma::FichaDeApartes()
{
    return AgregarTabla("lvSinProgramar", "Servicios sin programar",
                        [this] { return programa::HojaDeApartes(*medido, *programado); });
}

qvx::VistaTabla *PaginaPrograma::AgregarTabla(const QString &nombre, const QString &titulo,
                                              const std::function<Hoja()> &hoja)
{
    auto *vista = new qvx::VistaTabla(nombre, titulo);
    tablas.append({vista, hoja});
    return vista;
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

QAction *PaginaPrograma::AgregarAccion(QMenu &menu, const QString &nombre, const QString &texto,
                                       const QKeySequence &tecla, const std::function<void()> &hacer)
{
    QAction *accion = menu.addAction(texto);
    accion->setObjectName("acc" + nombre);
    accion->setShortcut(tecla);
    accion->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(accion, &QAction::triggered, this, hacer);
    addAction(accion);
    return accion;
}

QWidget *PaginaPrograma::Acciones()
{
    auto *acciones = new QWidget;
    auto *fila = new QHBoxLayout(acciones);
    fila->setContentsMargins(0, 0, 0, 0);
    auto *abrir = Boton(*fila, "cmdAbrirDelPrograma", "A&brir servicio", nullptr);
    connect(abrir, &QPushButton::clicked, this, &PaginaPrograma::Abrir);
    conPrograma.append(abrir);
    fila->addStretch();
    auto *quitar = Boton(*fila, "cmdQuitarFiltrosDelPrograma", "&Quitar filtros", nullptr);
    connect(quitar, &QPushButton::clicked, this, &PaginaPrograma::QuitarFiltros);
    auto *actualizar = Boton(*fila, "cmdActualizarPrograma", "Actuali&zar", nullptr);
    connect(actualizar, &QPushButton::clicked, this, &PaginaPrograma::Actualizar);
    auto *menu = new QMenu(this);
    AgregarAccion(*menu, "ExportarProgramaCsv", "Esta tabla como C&SV…", {}, [this] { Exportar(false); });
    AgregarAccion(*menu, "ExportarProgramaXlsx", "Esta tabla como &XLSX…", {}, [this] { Exportar(true); });
    menu->addSeparator();
    AgregarAccion(*menu, "ExportarCalendario", "&Calendario (ICS)…", {}, [this] { ExportarCalendario(); });
    conPrograma.append(Boton(*fila, "cmdExportarPrograma", "E&xportar", menu));
    auto *papel = new QMenu(this);
    AgregarAccion(*papel, "ImprimirPlan", "&Plan de mantenimiento…", {}, [this] { ImprimirPlan(); });
    AgregarAccion(*papel, "ImprimirHojas", "&Hojas de trabajo…", QKeySequence::Print, [this] { ImprimirHojas(); });
    AgregarAccion(*papel, "ImprimirMateriales", "&Materiales…", {}, [this] { ImprimirMateriales(); });
    papel->addSeparator();
    AgregarAccion(*papel, "PaqueteDelMes", "Pa&quete del mes…", {}, [this] { HacerPaquete(); });
    conPrograma.append(Boton(*fila, "cmdImprimirPrograma", "&Imprimir", papel));
    return acciones;
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
            for (const programa::Serie &serie : programa::CalcularCarga(*programado, medido->lineas).oficios)
                cboOficio->addItem(medido->lineas.productos.at(serie.producto).descripcion, serie.producto);
        }
        cboMes->setCurrentIndex(std::max(0, cboMes->findText(mes)));
        cboOficio->setCurrentIndex(std::max(0, cboOficio->findData(oficio)));
    }
    for (Tabla &tabla : tablas)
        tabla.porPoner = true;
    if (programado) {
        modelo->Poner(medido.get(), programado.get());
        grafica->Poner(*medido, *programado);
        queSi->Poner(medido.get(), programado.get());
        lblLargoPlazo->setText(TextoDeLargoPlazo(*medido, *programado));
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

// The tables of a tab are made when it is looked at.
void PaginaPrograma::MostrarFicha()
{
    if (!programado)
        return;
    for (Tabla &tabla : tablas) {
        if (!tabla.porPoner || !fichas->currentWidget()
            || (tabla.vista != fichas->currentWidget() && !fichas->currentWidget()->isAncestorOf(tabla.vista)))
            continue;
        const Hoja hoja = tabla.hoja();
        QAbstractItemModel *anterior = tabla.vista->model();
        const QByteArray disposicion = tabla.vista->Dispuesta() ? tabla.vista->Disposicion() : QByteArray();
        auto *nuevo = new qvx::ModeloTabla(ColumnasDe(hoja), 0, tabla.vista);
        nuevo->Llenar(FilasDe(hoja));
        tabla.vista->Poner(nuevo, EstiradaDe(hoja), -1);
        if (!disposicion.isEmpty())
            tabla.vista->Disponer(disposicion);
        delete anterior;
        tabla.porPoner = false;
    }
    lblAhorro->setText(TextoDeAhorro(*medido, *programado, spnDias->value()));
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
    totales->Llenar({fila("Lo que se muestra", modelo->Mostradas().size(), modelo->Suma()),
                     fila("Todo el año", programado->filas.size(), programa::Total(*programado, medido->medidas))});
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

// Of what the tab shows, the first table; of the dates those that the filters leave, in their order.
Hoja PaginaPrograma::HojaMostrada() const
{
    for (const Tabla &tabla : tablas)
        if (tabla.vista == fichas->currentWidget() || fichas->currentWidget()->isAncestorOf(tabla.vista))
            return tabla.vista->objectName() == "lvRefacciones" ? programa::HojaDeRefacciones(*medido, *programado)
                   : tabla.vista->objectName() == "lvCostosDePrograma" ? programa::HojaDeCostos(*medido, *programado)
                   : tabla.vista->objectName() == "lvParos"            ? programa::HojaDeParos(*medido, *programado)
                                                                       : tabla.hoja();
    return programa::HojaDeFechas(*medido, *programado, modelo->Mostradas());
}

void PaginaPrograma::Exportar(bool libro)
{
    if (programado)
        DialogoExportarCatalogo::Exportar(this, HojaMostrada(), libro);
}

void PaginaPrograma::ExportarCalendario()
{
    if (!programado)
        return;
    ConTrampa(*this, 1000203, [this] {
        const QString ruta = RutaParaGuardar(*this, "Exportar calendario", "Calendario|*.ics", "Programa " + tipo);
        if (!ruta.isEmpty())
            programa::EscribirIcs(
                ruta, programa::Ics(*medido, *programado, base, QDateTime::currentDateTimeUtc(), modelo->Mostradas()));
    });
}

programa::Encargo PaginaPrograma::EncargoDe() const
{
    qvx::Sesion &sesion = qvx::Sesion::Actual();
    return {qvx::NombreDePlanta(Base()), sesion.Operador(), base, sesion.Ahora()};
}

QList<int> PaginaPrograma::Elegidas() const
{
    QList<int> visibles;
    for (const QModelIndex &indice : lvPrograma->selectionModel()->selectedRows())
        visibles.append(indice.row());
    std::sort(visibles.begin(), visibles.end());
    QList<int> filas;
    for (const int visible : std::as_const(visibles))
        filas.append(modelo->Fila(visible));
    return filas;
}

void PaginaPrograma::ImprimirPlan()
{
    ConTrampa(*this, 1000208, [this] {
        if (medido)
            DialogoDeReporte(
                {DialogoDeReporte::Clase::Plan, "Plan de mantenimiento", {}, puede}, EncargoDe(),
                [this](const programa::Encargo &encargo, int) { return programa::ReporteDePlan(*medido, encargo); },
                this)
                .exec();
    });
}

// What is chosen, or all that is shown.
void PaginaPrograma::ImprimirHojas()
{
    ConTrampa(*this, 1000209, [this] {
        if (!programado)
            return;
        const QList<int> elegidas = Elegidas();
        QList<QList<int>> cuales{modelo->Mostradas()};
        QStringList alcances{"Lo que se muestra: " + Cuantos(cuales.constFirst().size(), "fecha", "fechas")};
        if (!elegidas.isEmpty()) {
            cuales.prepend(elegidas);
            alcances.prepend("Lo seleccionado: " + Cuantos(elegidas.size(), "fecha", "fechas"));
        }
        DialogoDeReporte(
            {DialogoDeReporte::Clase::Hojas, "Hojas de trabajo", alcances, puede}, EncargoDe(),
            [&, this](const programa::Encargo &encargo, int alcance) {
                return programa::HojasDeTrabajo(*medido, programa::LaboresDe(*medido, *programado, cuales.at(alcance)),
                                                encargo);
            },
            this)
            .exec();
    });
}

void PaginaPrograma::ImprimirMateriales()
{
    ConTrampa(*this, 1000210, [this] {
        if (!programado)
            return;
        const QStringList alcances{"Todo el año", "Lo que se muestra", "Una ronda: cada servicio una vez"};
        DialogoDeReporte(
            {DialogoDeReporte::Clase::Materiales, "Materiales", alcances, puede}, EncargoDe(),
            [&, this](const programa::Encargo &encargo, int alcance) {
                const QList<qint64> veces =
                    alcance == 2 ? programa::UnaRonda(*medido)
                                 : programa::VecesDe(*medido, *programado,
                                                     alcance == 0 ? programa::Todas(*programado) : modelo->Mostradas());
                return programa::ReporteDeMateriales(*medido, veces, "Materiales, " + alcances.at(alcance).toLower(),
                                                     encargo);
            },
            this)
            .exec();
    });
}

// Of the month that the filter shows; the next one of the programme without one.
void PaginaPrograma::HacerPaquete()
{
    ConTrampa(*this, 1000211, [this] {
        if (!programado)
            return;
        int mes = cboMes->currentData().toInt();
        if (mes < 0)
            mes = std::max(0, programado->meses.Lugar(qvx::Sesion::Actual().Ahora().date().addMonths(1)));
        const QString nombre = "Paquete " + tipo + " " + programado->meses.Primero(mes).toString("yyyy-MM");
        QString ruta = RutaParaGuardar(*this, "Paquete del mes: " + programado->meses.Nombre(mes),
                                       "Hojas, surtido y calendario|*.pdf", nombre);
        if (ruta.isEmpty())
            return;
        ruta.chop(4);
        const auto paquete = programa::PaqueteDelMes::En(ruta);
        AvanceDeReporte avance(*this, "Paquete del mes");
        const bool a4 = ajustes::Abrir().value("reportes/papelA4").toBool();
        if (paquete.Escribir(*medido, *programado, mes, EncargoDe(), a4 ? impreso::Papel::A4 : impreso::Papel::Carta,
                             [&](int hecho, int todo) { return avance(hecho, todo); }))
            qvx::Sistema().Mensaje("El paquete de " + programado->meses.Nombre(mes) + " está en tres archivos:\n\n"
                                       + paquete.Archivos().join(QLatin1Char('\n')),
                                   qvx::mensaje::Informacion, "Quorvex", window()->winId(), "QVX", "ERR-ID:1000212");
    });
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
