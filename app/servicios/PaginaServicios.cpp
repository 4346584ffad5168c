#include "app/servicios/PaginaServicios.h"

#include "app/FilaDeAcciones.h"
#include "app/ModoLectura.h"
#include "app/Rotulo.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/servicios/ArbolDePartes.h"
#include "app/servicios/CuadroDeTotales.h"
#include "app/servicios/EncabezadoConFiltros.h"
#include "app/servicios/ModeloPartes.h"
#include "app/servicios/ModeloServicios.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Utilerias.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QSplitter>
#include <algorithm>
#include <cmath>

namespace
{

constexpr int AnchoDeRuta = 280;
constexpr int AnchoDeNombre = 170;
constexpr int AnchoDePartes = 350;
constexpr int AnchoMenorDeTipo = 40;
constexpr int FilasQueSeMiden = 60; // for the width of a column: a thousand take longer than to read the plan
constexpr int MargenDeCelda = 12;

QString AyudaDeFiltro(int columna)
{
    return servicios::ClaseDe(columna) == servicios::Clase::Texto
               ? QString("Palabras, en cualquier orden, sin acentos ni mayúsculas")
               : QString("Un número, o una condición: >100, <=5, 10..20");
}

} // namespace

PaginaServicios::PaginaServicios(QWidget *padre)
    : QWidget(padre)
    , modelo(new ModeloServicios(this))
    , partes(new ModeloPartes(this))
    , totales(new qvx::ModeloTabla(totales::Columnas(), 0, this))
    , lvServicios(new QTreeView)
    , encabezado(new EncabezadoConFiltros(lvServicios))
    , tvPartes(new ArbolDePartes(partes, lvServicios))
    , lvTotales(new qvx::VistaTabla("lvTotales", "Totales"))
    , lblTipo(new QLabel)
    , txtBuscar(new QLineEdit)
    , cboAgrupar(new QComboBox)
    , lblCuenta(new QLabel)
    , lblAviso(RotuloLargo("lblAvisoDelPlan"))
    , lblNota(RotuloLargo("lblNotaDeTotales"))
{
    setObjectName("PaginaServicios");
    PonerTabla();
    PonerArbol();
    PonerTotales();
    auto *tablas = new QSplitter(Qt::Vertical);
    tablas->addWidget(lvServicios);
    tablas->addWidget(lvTotales);
    tablas->setStretchFactor(0, 1);
    tablas->setCollapsible(0, false);
    auto *lados = new QSplitter(Qt::Horizontal);
    lados->addWidget(tvPartes);
    lados->addWidget(tablas);
    lados->setStretchFactor(1, 1);
    lados->setSizes({AnchoDePartes, 1000});
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(12, 12, 12, 8);
    disposicion->addWidget(Busqueda());
    disposicion->addWidget(lblAviso);
    disposicion->addWidget(lados, 1);
    disposicion->addWidget(lblNota);
    disposicion->addWidget(Acciones());
    setFocusProxy(txtBuscar);
    Avisar();
    PonerEstado();
}

QWidget *PaginaServicios::Busqueda()
{
    lblTipo->setObjectName("lblTipoDelPlan");
    lblTipo->setTextFormat(Qt::PlainText);
    lblTipo->setMinimumWidth(AnchoMenorDeTipo); // where there is little room, its key alone
    auto *cmdTipo = new QPushButton("&Tipo de equipo…");
    cmdTipo->setObjectName("cmdTipoDelPlan");
    cmdTipo->setAutoDefault(false);
    connect(cmdTipo, &QPushButton::clicked, this, &PaginaServicios::ElegirTipo);
    txtBuscar->setObjectName("txtBuscarServicios");
    txtBuscar->setAccessibleName("Buscar servicios");
    txtBuscar->setPlaceholderText("Buscar: parte, folio, servicio, prioridad, estado");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);
    connect(txtBuscar, &QLineEdit::textChanged, this,
            [this](const QString &texto) { Conservando([&] { modelo->Buscar(texto); }); });
    cboAgrupar->setObjectName("cboAgrupar");
    cboAgrupar->setAccessibleName("Agrupar");
    cboAgrupar->addItems({"Sin agrupar", "Por parte", "Por tipo de servicio"}); // as Grupos has them
    connect(cboAgrupar, &QComboBox::currentIndexChanged, this,
            [this](int cual) { Conservando([&] { modelo->Agrupar(static_cast<ModeloServicios::Grupos>(cual)); }); });
    lblCuenta->setObjectName("lblCuentaDeServicios");
    auto *busqueda = new QWidget;
    auto *fila = new QHBoxLayout(busqueda);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(lblTipo);
    fila->addWidget(cmdTipo);
    fila->addWidget(txtBuscar, 1);
    fila->addWidget(cboAgrupar);
    fila->addWidget(lblCuenta);
    return busqueda;
}

void PaginaServicios::PonerTabla()
{
    lvServicios->setObjectName("lvServiciosDelPlan");
    lvServicios->setAccessibleName("Servicios del plan");
    lvServicios->setHeader(encabezado);
    lvServicios->setModel(modelo);
    lvServicios->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvServicios->setUniformRowHeights(true);
    lvServicios->setAllColumnsShowFocus(true);
    lvServicios->setAlternatingRowColors(true);
    lvServicios->setRootIsDecorated(false);
    lvServicios->setExpandsOnDoubleClick(false);
    lvServicios->setContextMenuPolicy(Qt::ActionsContextMenu);
    lvServicios->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    lvServicios->setTextElideMode(Qt::ElideMiddle); // both ends of a path tell
    lvServicios->installEventFilter(this);
    QStringList titulos;
    QStringList ayudas;
    for (int columna = 0; columna < servicios::Columnas; ++columna) {
        titulos.append(servicios::Titulo(columna));
        ayudas.append(AyudaDeFiltro(columna));
    }
    encabezado->PonerFiltros(titulos, ayudas);
    encabezado->setResizeContentsPrecision(FilasQueSeMiden);
    encabezado->setSortIndicator(servicios::Folio, Qt::AscendingOrder);
    encabezado->setSortIndicatorShown(true);
    connect(encabezado, &QHeaderView::sortIndicatorChanged, this,
            [this](int columna, Qt::SortOrder sentido) { Conservando([&] { modelo->sort(columna, sentido); }); });
    connect(encabezado, &EncabezadoConFiltros::Filtrado, this, [this](int columna, const QString &texto) {
        Conservando([&] { modelo->PonerEnColumna(columna, texto); });
    });
    connect(encabezado, &EncabezadoConFiltros::Entrado, this, [this](int columna) {
        if (modelo->rowCount() > 0)
            lvServicios->scrollTo(modelo->index(qMax(0, lvServicios->currentIndex().row()), columna));
    });
    columnas.emplace("servicios", *lvServicios);
    connect(lvServicios, &QTreeView::doubleClicked, this, &PaginaServicios::Abrir);
    connect(lvServicios->selectionModel(), &QItemSelectionModel::selectionChanged, this, &PaginaServicios::PonerEstado);
}

void PaginaServicios::PonerArbol()
{
    tvPartes->setObjectName("tvPartesDelPlan");
    tvPartes->setAccessibleName("Partes del plan");
    tvPartes->setContextMenuPolicy(Qt::ActionsContextMenu);
    tvPartes->header()->setStretchLastSection(false);
    tvPartes->header()->setResizeContentsPrecision(FilasQueSeMiden);
    tvPartes->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tvPartes->header()->setSectionResizeMode(ModeloPartes::Parte, QHeaderView::Stretch);
    connect(tvPartes->selectionModel(), &QItemSelectionModel::currentChanged, this, &PaginaServicios::AlCambiarParte);
    connect(tvPartes, &ArbolDePartes::ServiciosSoltados, this, &PaginaServicios::AlSoltarServicios);
    connect(tvPartes, &ArbolDePartes::ParteSoltada, this, &PaginaServicios::AlSoltarParte);
}

void PaginaServicios::PonerTotales()
{
    lvTotales->Poner(totales, 0, -1);
    lvTotales->header()->setSectionsClickable(false);
    lvTotales->setSelectionMode(QAbstractItemView::NoSelection);
    lvTotales->setTabKeyNavigation(false);
    constexpr int Filas = 6;
    const int alto = QFontMetrics(font()).height() * (Filas + 1) * 4 / 3 + 2 * lvTotales->frameWidth();
    lvTotales->setMaximumHeight(alto + alto / 3);
    lvTotales->setMinimumHeight(alto / 3); // on a low screen the services go before their sums
    lvServicios->setMinimumHeight(alto);
}

QWidget *PaginaServicios::Acciones()
{
    auto *fila = new FilaDeAcciones(*this, *lvServicios);
    const auto mandar = [this](void (PaginaServicios::*hacer)()) { return [this, hacer] { (this->*hacer)(); }; };
    const auto boton = [&](const QString &nombre, const QString &texto, const QKeySequence &tecla, auto hacer) {
        return fila->ConBoton(nombre, texto, tecla, mandar(hacer));
    };
    accAbrir = boton("AbrirServicio", "A&brir", {}, &PaginaServicios::Abrir);
    deServicios = {boton("MoverServicios", "M&over…", QKeySequence("Ctrl+M"), &PaginaServicios::Mover),
                   boton("DuplicarServicios", "D&uplicar…", QKeySequence("Ctrl+D"), &PaginaServicios::Duplicar),
                   boton("CambiarServicios", "&Cambiar…", QKeySequence("F2"), &PaginaServicios::Cambiar),
                   boton("EliminarServicios", "E&liminar…", QKeySequence(Qt::Key_Delete), &PaginaServicios::Eliminar)};
    accMoverParte = boton("MoverParte", "Mover &parte…", QKeySequence("Ctrl+Shift+M"), &PaginaServicios::MoverParte);
    tvPartes->addAction(accMoverParte);
    accHistorialDeServicio = fila->Accion("HistorialDeServicio", "&Historial de este servicio", {},
                                          mandar(&PaginaServicios::HistorialDeServicio));
    accHistorialDeParte =
        fila->Accion("HistorialDeParte", "Historial de esta &parte", {}, mandar(&PaginaServicios::HistorialDeParte));
    tvPartes->addAction(accHistorialDeParte);
    fila->Separar();
    boton("QuitarFiltros", "&Quitar filtros", QKeySequence("Ctrl+Shift+F"), &PaginaServicios::QuitarFiltros);
    boton("ActualizarPlan", "Actuali&zar", {}, &PaginaServicios::Actualizar);
    QMenu *hoja = fila->ConMenu("HojaDeServicios", "&Hoja de cálculo");
    const auto entrada = [&](const QString &nombre, const QString &texto, const QKeySequence &tecla, auto hacer) {
        hoja->addAction(fila->Accion(nombre, texto, tecla, mandar(hacer)));
    };
    entrada("CopiarServicios", "&Copiar los seleccionados", QKeySequence::Copy, &PaginaServicios::Copiar);
    entrada("ExportarServiciosCsv", "Exportar C&SV…", {}, &PaginaServicios::ExportarCsv);
    entrada("ExportarServiciosXlsx", "Exportar &XLSX…", {}, &PaginaServicios::ExportarXlsx);
    return fila;
}

const lectura::Plan &PaginaServicios::Plan() const
{
    return modelo->Plan();
}

QList<int> PaginaServicios::Elegidos() const
{
    QList<int> elegidos;
    for (const QModelIndex &indice : lvServicios->selectionModel()->selectedRows())
        if (const int servicio = modelo->Servicio(indice); servicio >= 0)
            elegidos.append(servicio);
    std::sort(elegidos.begin(), elegidos.end());
    return elegidos;
}

QString PaginaServicios::ParteElegida() const
{
    return partes->Clave(tvPartes->currentIndex());
}

QString PaginaServicios::ParteActual() const
{
    const QString parte = ParteElegida();
    return qvx::claves::EsRaiz(parte) ? QString() : parte;
}

QString PaginaServicios::FolioActual() const
{
    const int servicio = modelo->Servicio(lvServicios->currentIndex());
    return servicio < 0 ? QString() : Plan().servicios.at(servicio).leido.folio;
}

void PaginaServicios::HistorialDeServicio()
{
    Q_EMIT HistorialPedido(tipo, {}, FolioActual());
}

void PaginaServicios::HistorialDeParte()
{
    Q_EMIT HistorialPedido(tipo, ParteActual(), {});
}

// Neighbours are chosen as one range: a view asks all ranges about each row that it paints.
void PaginaServicios::Elegir(const QStringList &folios, const QString &actual)
{
    const QSet<QString> buscados(folios.begin(), folios.end());
    QItemSelection seleccion;
    QModelIndex cursor;
    QModelIndex desde;
    QModelIndex hasta;
    const auto cerrar = [&] {
        if (desde.isValid())
            seleccion.append(QItemSelectionRange(desde, hasta));
        desde = hasta = {};
    };
    modelo->Recorrer([&](int servicio, const QModelIndex &indice) {
        const QString &folio = Plan().servicios.at(servicio).leido.folio;
        if (folio == actual)
            cursor = indice;
        const bool elegido = buscados.contains(folio);
        if (!elegido || indice.parent() != hasta.parent())
            cerrar();
        if (elegido) {
            desde = desde.isValid() ? desde : indice;
            hasta = indice;
        }
    });
    cerrar();
    if (cursor.isValid())
        lvServicios->selectionModel()->setCurrentIndex(cursor, QItemSelectionModel::NoUpdate);
    lvServicios->selectionModel()->select(seleccion, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (cursor.isValid())
        lvServicios->scrollTo(cursor);
}

void PaginaServicios::Conservando(const std::function<void()> &pasos)
{
    QStringList folios;
    for (const int servicio : Elegidos())
        folios.append(Plan().servicios.at(servicio).leido.folio);
    const int cursor = modelo->Servicio(lvServicios->currentIndex());
    const QString actual = cursor < 0 ? QString() : Plan().servicios.at(cursor).leido.folio;
    pasos();
    const bool enGrupos = cboAgrupar->currentIndex() > 0;
    lvServicios->setRootIsDecorated(enGrupos);
    if (enGrupos)
        lvServicios->expandAll();
    Elegir(folios, actual);
    Sumar();
    PonerEstado();
}

void PaginaServicios::PonerTipo(const QString &tipoEquipo)
{
    if (tipoEquipo == tipo)
        return;
    tipo = tipoEquipo;
    alDia = false;
    if (isVisible())
        Actualizar();
}

void PaginaServicios::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    Actualizar();
}

void PaginaServicios::Actualizar()
{
    ConTrampa(*this, 1000081, [this] { Leer(); });
}

// What another plan had chosen stands for nothing in this one. What cannot be read is not taken away.
void PaginaServicios::Leer()
{
    lectura::Plan nuevo;
    try {
        if (!tipo.isEmpty()) {
            puede = qvx::LeerDerechos(Base()).planes;
            nuevo = lectura::LeerPlan(Base(), tipo);
        }
    } catch (const qvx::ErrorEjecucion &) {
        alDia = false;
        Avisar();
        PonerEstado();
        throw;
    }
    const bool otro = nuevo.tipoEquipo != Plan().tipoEquipo;
    const bool primero = !leida.isValid();
    const QString parte = otro ? qvx::claves::Raiz : ParteElegida();
    QSet<QString> abiertas;
    for (const auto &[clave, suya] : Plan().arbol.Partes())
        if (tvPartes->isExpanded(partes->Indice(clave)))
            abiertas.insert(clave);
    Conservando([&] {
        modelo->Poner(std::move(nuevo));
        const QSignalBlocker callado(tvPartes->selectionModel());
        partes->Poner(Plan());
        tvPartes->setExpanded(partes->Indice(qvx::claves::Raiz), true);
        for (const QString &clave : abiertas)
            tvPartes->setExpanded(partes->Indice(clave), true);
        const QModelIndex elegida = partes->Indice(parte);
        tvPartes->setCurrentIndex(elegida.isValid() ? elegida : partes->Indice(qvx::claves::Raiz));
        modelo->Limitar(lectura::ServiciosBajo(Plan(), ParteElegida()));
    });
    leida = QTime::currentTime();
    alDia = true;
    Avisar();
    if ((!primero && !otro) || columnas->Propias())
        return;
    AjustarColumnas();
    lvTotales->AjustarColumnas();
}

// To the first rows, and to the largest number of all: what is cut off a number lies.
void PaginaServicios::AjustarColumnas()
{
    for (int columna = 0; columna < servicios::Columnas; ++columna) {
        lvServicios->resizeColumnToContents(columna);
        const auto mayor = std::max_element(
            Plan().servicios.cbegin(), Plan().servicios.cend(), [&](const auto &uno, const auto &otro) {
                return std::abs(servicios::Numero(uno, columna)) < std::abs(servicios::Numero(otro, columna));
            });
        if (servicios::ClaseDe(columna) == servicios::Clase::Texto || mayor == Plan().servicios.cend())
            continue;
        const int ancho = lvServicios->fontMetrics().horizontalAdvance(servicios::Texto(*mayor, columna));
        lvServicios->setColumnWidth(columna, qMax(lvServicios->columnWidth(columna), ancho + MargenDeCelda));
    }
    lvServicios->setColumnWidth(servicios::Ruta, AnchoDeRuta);
    lvServicios->setColumnWidth(servicios::Nombre, qMin(lvServicios->columnWidth(servicios::Nombre), AnchoDeNombre));
}

void PaginaServicios::Avisar()
{
    QString aviso;
    if (tipo.isEmpty())
        aviso = "Elija un tipo de equipo para ver todos los servicios de su plan.";
    else if (!alDia && leida.isValid())
        aviso = NoEsActual(leida, " del tipo de equipo " + Plan().tipoEquipo);
    else if (!alDia)
        aviso = "El plan no se pudo leer. Pulse F5 para intentarlo de nuevo.";
    else if (Plan().nombreTipo.isEmpty())
        aviso = "El tipo de equipo «" + tipo + "» no está en el catálogo: elija otro.";
    else if (!Plan().tipoActivo)
        aviso = "El tipo de equipo está dado de baja: sus servicios se miran y no se cambian.";
    else if (!puede)
        aviso = QuienMira() + " puede mirar, no cambiar.";
    else if (Plan().servicios.isEmpty())
        aviso = "Este plan no tiene servicios todavía: se agregan en la página Plan.";
    lblAviso->setText(aviso);
    lblAviso->setVisible(!aviso.isEmpty());
    lblTipo->setText(leida.isValid() ? (Plan().tipoEquipo + " " + Plan().nombreTipo).trimmed() : tipo);
}

void PaginaServicios::AlCambiarParte()
{
    Conservando([this] { modelo->Limitar(lectura::ServiciosBajo(Plan(), ParteElegida())); });
}

void PaginaServicios::Sumar()
{
    const auto bajo = [this](const QString &parte) {
        return lectura::Sumar(Plan(), lectura::ServiciosBajo(Plan(), parte));
    };
    QList<QVariantList> filas = totales::Filas("Lo que se muestra", modelo->Total());
    const QString parte = ParteElegida();
    if (!qvx::claves::EsRaiz(parte))
        filas += totales::Filas(parte.isEmpty() ? QString("Fuera del árbol") : parte + " y lo de abajo", bajo(parte));
    filas += totales::Filas("Todo el plan", bajo(qvx::claves::Raiz));
    totales->Llenar(filas);
    lblNota->setText(totales::Nota(modelo->Total()));
    lblNota->setVisible(!lblNota->text().isEmpty());
    if (isVisible())
        lvTotales->AjustarColumnas();
}

void PaginaServicios::PonerEstado()
{
    const auto elegidos = Elegidos().size();
    const auto mostrados = modelo->Mostrados().size();
    QString cuenta = Cuantos(mostrados, "servicio", "servicios");
    if (mostrados < Plan().servicios.size())
        cuenta += " de " + Cuantos(Plan().servicios.size(), "", "").trimmed();
    if (elegidos > 1)
        cuenta += ", " + Cuantos(elegidos, "seleccionado", "seleccionados");
    lblCuenta->setText(cuenta);
    const bool cambia = puede && Plan().tipoActivo;
    for (QAction *accion : std::as_const(deServicios))
        accion->setEnabled(cambia && elegidos > 0);
    accAbrir->setEnabled(!FolioActual().isEmpty());
    accHistorialDeServicio->setEnabled(!FolioActual().isEmpty());
    accHistorialDeParte->setEnabled(!ParteActual().isEmpty());
    const QString parte = ParteElegida();
    accMoverParte->setEnabled(cambia && !parte.isEmpty() && !qvx::claves::EsRaiz(parte));
    tvPartes->Recibir(cambia);
    lvServicios->setDragEnabled(cambia);
}

void PaginaServicios::ElegirTipo()
{
    ConTrampa(*this, 1000090, [this] {
        const QPointer<PaginaServicios> viva(this);
        const QString elegido = qvx::Utilerias().BuscarEnCatalogo("TIPO_EQUIPO", 0, {}, QFont(font()), this);
        if (viva && !elegido.isEmpty())
            PonerTipo(qvx::SinBlancosAlFinal(elegido));
    });
}

void PaginaServicios::QuitarFiltros()
{
    txtBuscar->clear();
    encabezado->Vaciar();
    tvPartes->setCurrentIndex(partes->Indice(qvx::claves::Raiz));
}

// From the search the arrows move in the table; Enter opens there.
bool PaginaServicios::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent *>(evento)->key();
    if (objeto == txtBuscar && comunesQVX::MueveLaLista(tecla)) {
        lvServicios->setFocus();
        QCoreApplication::sendEvent(lvServicios, evento);
        return true;
    }
    if (objeto == lvServicios && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
        Abrir();
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}
