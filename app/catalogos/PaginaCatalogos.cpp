#include "app/catalogos/PaginaCatalogos.h"

#include "app/Ajustes.h"
#include "app/Trampas.h"
#include "app/catalogos/DialogoExportarCatalogo.h"
#include "app/catalogos/DialogoImportarCatalogo.h"
#include "app/catalogos/DialogoRegistro.h"
#include "app/catalogos/DialogoUsos.h"
#include "app/catalogos/ExportacionDeCatalogo.h"
#include "app/catalogos/Nombres.h"
#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"
#include "session/Utilerias.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

using qvx::RegistroDeCatalogo;
using qvx::Sesion;
using qvx::TablaDeCatalogo;
using ClaseDeColumna = qvx::ColumnaDeCatalogo::Clase;

namespace
{

constexpr int ColumnaClave = 0;
constexpr int ColumnaDescripcion = 1;
constexpr int AnchoDeCatalogos = 170;

QList<qvx::ColumnaDeTabla> Columnas(const TablaDeCatalogo &tabla)
{
    QList<qvx::ColumnaDeTabla> columnas{{"Clave", qvx::ColumnaDeTabla::Clase::Texto, true}};
    for (const auto &columna : tabla.columnas)
        columnas.append({columna.titulo,
                         columna.clase == ClaseDeColumna::Numero ? qvx::ColumnaDeTabla::Clase::Dinero
                                                                 : qvx::ColumnaDeTabla::Clase::Texto,
                         columna.clase == ClaseDeColumna::Texto});
    columnas.append({"Estado"});
    return columnas;
}

QVariantList Fila(const TablaDeCatalogo &tabla, const RegistroDeCatalogo &registro)
{
    QVariantList fila{registro.clave};
    for (int i = 0; i < tabla.columnas.size(); ++i) {
        const QString &valor = registro.valores.at(i);
        if (tabla.columnas.at(i).clase == ClaseDeColumna::Numero)
            fila.append(valor.toDouble());
        else
            fila.append(tabla.columnas.at(i).clase == ClaseDeColumna::ClaseDeProducto ? nombres::ClaseDeProducto(valor)
                                                                                      : valor);
    }
    return fila << nombres::Estado(registro.estado);
}

// The code under which the search dialog shows the entries that can stand for one.
QString CodigoDeBusqueda(const TablaDeCatalogo &tabla, const RegistroDeCatalogo &registro)
{
    const int clase = tabla.Lugar(ClaseDeColumna::ClaseDeProducto);
    return qvx::CodigoDeCatalogo(tabla.nombre, clase < 0 ? QString() : registro.valores.at(clase));
}

} // namespace

PaginaCatalogos::PaginaCatalogos(QWidget *padre)
    : QWidget(padre)
    , lstCatalogos(new QListWidget)
    , txtBuscar(new QLineEdit)
    , cboEstado(new QComboBox)
    , lvRegistros(new qvx::VistaTabla("lvRegistros", "Registros del catálogo"))
    , lblCuenta(new QLabel)
    , lblDerecho(new QLabel)
{
    setObjectName("PaginaCatalogos");
    PonerCatalogos();
    PonerLista();
    auto *derecha = new QVBoxLayout;
    derecha->addWidget(Busqueda());
    derecha->addWidget(lvRegistros, 1);
    derecha->addWidget(lblDerecho);
    derecha->addWidget(Acciones());
    auto *disposicion = new QHBoxLayout(this);
    disposicion->setContentsMargins(12, 12, 12, 8);
    disposicion->setSpacing(10);
    disposicion->addWidget(lstCatalogos);
    disposicion->addLayout(derecha, 1);
}

PaginaCatalogos::~PaginaCatalogos()
{
    RecordarColumnas();
}

// Of the catalogue that is still shown.
void PaginaCatalogos::RecordarColumnas() const
{
    if (modelo)
        ajustes::RecordarColumnas(mostrado, *lvRegistros);
}

void PaginaCatalogos::PonerCatalogos()
{
    lstCatalogos->setObjectName("lstCatalogos");
    lstCatalogos->setAccessibleName("Catálogos");
    lstCatalogos->setFixedWidth(AnchoDeCatalogos);
    lstCatalogos->setSpacing(3);
    for (const TablaDeCatalogo &tabla : qvx::TablasDeCatalogo())
        lstCatalogos->addItem(tabla.titulo);
    lstCatalogos->setCurrentRow(0);
    setFocusProxy(lstCatalogos);
    connect(lstCatalogos, &QListWidget::currentRowChanged, this, &PaginaCatalogos::AlCambiarDeCatalogo);
}

QWidget *PaginaCatalogos::Busqueda()
{
    txtBuscar->setObjectName("txtBuscar");
    txtBuscar->setPlaceholderText("Escriba palabras de la clave o de la descripción");
    txtBuscar->setAccessibleName("Buscar");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);
    connect(txtBuscar, &QLineEdit::textChanged, this, [this](const QString &texto) {
        const QString clave = Elegido() ? Elegido()->clave : QString();
        modelo->Buscar(texto);
        Elegir(clave);
    });
    cboEstado->setObjectName("cboEstado");
    cboEstado->setAccessibleName("Qué registros se muestran");
    cboEstado->addItems({"Activos", "Dados de baja", "Todos"});
    connect(cboEstado, &QComboBox::currentIndexChanged, this, [this] {
        const QString clave = Elegido() ? Elegido()->clave : QString();
        Leer();
        Elegir(clave);
    });
    lblCuenta->setObjectName("lblCuenta");
    auto *busqueda = new QWidget;
    auto *fila = new QHBoxLayout(busqueda);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(txtBuscar, 1);
    fila->addWidget(cboEstado);
    fila->addWidget(lblCuenta);
    return busqueda;
}

void PaginaCatalogos::PonerLista()
{
    lvRegistros->setContextMenuPolicy(Qt::ActionsContextMenu);
    lvRegistros->installEventFilter(this);
    connect(lvRegistros, &qvx::VistaTabla::doubleClicked, this, &PaginaCatalogos::Editar);
    lblDerecho->setObjectName("lblDerecho");
    lblDerecho->setWordWrap(true);
    lblDerecho->hide();
}

QAction *PaginaCatalogos::Accion(const QString &nombre, const QString &texto, const QKeySequence &tecla,
                                 void (PaginaCatalogos::*hacer)())
{
    auto *accion = new QAction(texto, this);
    accion->setObjectName("acc" + nombre);
    accion->setShortcut(tecla);
    accion->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(accion, &QAction::triggered, this, hacer);
    addAction(accion);
    lvRegistros->addAction(accion);
    return accion;
}

QAction *PaginaCatalogos::ConBoton(QHBoxLayout &fila, const QString &nombre, const QString &texto,
                                   const QKeySequence &tecla, void (PaginaCatalogos::*hacer)())
{
    QAction *accion = Accion(nombre, texto, tecla, hacer);
    auto *boton = new QPushButton(texto);
    boton->setObjectName("cmd" + nombre);
    boton->setAutoDefault(false);
    if (!tecla.isEmpty())
        boton->setToolTip(tecla.toString(QKeySequence::NativeText));
    connect(boton, &QPushButton::clicked, accion, &QAction::trigger);
    connect(accion, &QAction::enabledChanged, boton, &QWidget::setEnabled);
    fila.addWidget(boton);
    return accion;
}

QWidget *PaginaCatalogos::Acciones()
{
    auto *acciones = new QWidget;
    auto *fila = new QHBoxLayout(acciones);
    fila->setContentsMargins(0, 0, 0, 0);
    deCambio = {ConBoton(*fila, "Nuevo", "&Nuevo…", QKeySequence("Ctrl+N"), &PaginaCatalogos::Nuevo),
                ConBoton(*fila, "Editar", "&Editar…", QKeySequence("F2"), &PaginaCatalogos::Editar),
                ConBoton(*fila, "Baja", "Dar de &baja…", {}, &PaginaCatalogos::DarDeBaja),
                ConBoton(*fila, "Reactivar", "Rea&ctivar", {}, &PaginaCatalogos::Reactivar),
                ConBoton(*fila, "Eliminar", "E&liminar…", QKeySequence(Qt::Key_Delete), &PaginaCatalogos::Eliminar),
                ConBoton(*fila, "Reemplazar", "Reem&plazar por…", {}, &PaginaCatalogos::Reemplazar)};
    deUno = deCambio.mid(1);
    accBaja = deUno.at(1);
    accReactivar = deUno.at(2);
    accUsos = ConBoton(*fila, "Usos", "¿Dónde se &usa?…", QKeySequence("Ctrl+U"), &PaginaCatalogos::VerUsos);
    fila->addStretch();
    fila->addWidget(HojaDeCalculo());
    return acciones;
}

// The way to spreadsheets and back.
QWidget *PaginaCatalogos::HojaDeCalculo()
{
    auto *boton = new QPushButton("&Hoja de cálculo");
    boton->setObjectName("cmdHoja");
    auto *menu = new QMenu(boton);
    const QList<QAction *> entradas{
        Accion("Importar", "&Importar CSV…", QKeySequence("Ctrl+I"), &PaginaCatalogos::Importar),
        Accion("Pegar", "&Pegar lo copiado de una hoja", QKeySequence::Paste, &PaginaCatalogos::Pegar)};
    deCambio = entradas + deCambio;
    menu->addActions(entradas);
    menu->addSeparator();
    menu->addAction(Accion("ExportarCsv", "Exportar &CSV…", {}, &PaginaCatalogos::ExportarCsv));
    menu->addAction(Accion("ExportarXlsx", "Exportar &XLSX…", {}, &PaginaCatalogos::ExportarXlsx));
    boton->setMenu(menu);
    return boton;
}

const TablaDeCatalogo &PaginaCatalogos::Tabla() const
{
    return qvx::TablasDeCatalogo().at(qMax(0, lstCatalogos->currentRow()));
}

const RegistroDeCatalogo *PaginaCatalogos::Elegido() const
{
    const QModelIndex actual = lvRegistros->currentIndex();
    return actual.isValid() ? &registros.at(modelo->Numero(actual.row())) : nullptr;
}

// A row that is no longer shown leaves the choice to its place.
void PaginaCatalogos::Elegir(const QString &clave)
{
    const int visible = clave.isEmpty() ? -1 : modelo->VisibleConClave(clave);
    const QModelIndex indice = modelo->index(qMax(0, visible), ColumnaClave);
    lvRegistros->setCurrentIndex(indice);
    if (indice.isValid())
        lvRegistros->scrollTo(indice);
    PonerEstado();
}

void PaginaCatalogos::ConTrampa(const std::function<void()> &pasos)
{
    ::ConTrampa(*this, 1000009, pasos);
}

void PaginaCatalogos::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    if (modelo)
        Actualizar();
    else
        AlCambiarDeCatalogo();
}

void PaginaCatalogos::AlCambiarDeCatalogo()
{
    auto *anterior = modelo;
    RecordarColumnas();
    registros.clear();
    mostrado = Tabla().nombre;
    modelo = new qvx::ModeloTabla(Columnas(Tabla()), 0, this);
    lvRegistros->Poner(modelo, ColumnaDescripcion, ColumnaClave);
    ajustes::ReponerColumnas(mostrado, *lvRegistros);
    delete anterior;
    connect(lvRegistros->selectionModel(), &QItemSelectionModel::currentChanged, this, &PaginaCatalogos::PonerEstado);
    txtBuscar->clear();
    ConTrampa([this] {
        puedeCambiar = qvx::LeerDerechos(Base()).catalogos;
        lblDerecho->setVisible(!puedeCambiar);
        lblDerecho->setText("Usted puede mirar los catálogos. Los cambia quien tiene en el servidor el rol "
                            "quorvex_catalogos: pídalo a quien lo administra.");
        Leer();
    });
    Elegir({});
}

void PaginaCatalogos::Actualizar()
{
    ConTrampa([this] {
        const QString clave = Elegido() ? Elegido()->clave : QString();
        Leer();
        Elegir(clave);
    });
}

void PaginaCatalogos::Leer()
{
    const auto todos = qvx::LeerRegistros(Base(), Tabla());
    const int cuales = cboEstado->currentIndex(); // as the box lists them: active, retired, all
    QList<QVariantList> filas;
    registros.clear();
    for (const RegistroDeCatalogo &registro : todos) {
        if (cuales < 2 && (registro.estado == qvx::estado::Activo) != (cuales == 0))
            continue;
        registros.append(registro);
        filas.append(Fila(Tabla(), registro));
    }
    const bool primeras = modelo->rowCount() == 0;
    modelo->Llenar(filas);
    if (primeras)
        lvRegistros->AjustarColumnas();
}

void PaginaCatalogos::PonerEstado()
{
    const int cuantos = modelo->rowCount();
    lblCuenta->setText(QLocale().toString(cuantos) + (cuantos == 1 ? " registro" : " registros"));
    const RegistroDeCatalogo *elegido = Elegido();
    for (QAction *accion : std::as_const(deCambio))
        accion->setEnabled(puedeCambiar && (elegido || !deUno.contains(accion)));
    accUsos->setEnabled(elegido != nullptr);
    if (!elegido)
        return;
    const bool activo = elegido->estado == qvx::estado::Activo;
    accBaja->setEnabled(puedeCambiar && activo);
    accReactivar->setEnabled(puedeCambiar && !activo);
    deUno.constLast()->setEnabled(puedeCambiar && Tabla().nombre != "Tipo_Equipo");
}

// The row is shown whatever the filter says.
void PaginaCatalogos::Terminar(const QString &clave)
{
    Leer();
    if (modelo->VisibleConClave(clave) < 0)
        txtBuscar->clear();
    Elegir(clave);
    Q_EMIT Cambiado();
}

void PaginaCatalogos::Nuevo()
{
    ConTrampa([this] {
        const auto hecho = DialogoRegistro::Preguntar(this, Tabla(), {});
        if (hecho.clave.isEmpty())
            return;
        Terminar(hecho.clave);
        if (!hecho.copiarDe.isEmpty())
            Q_EMIT CopiaPedida(hecho.clave, hecho.copiarDe);
    });
}

void PaginaCatalogos::Editar()
{
    if (!Elegido() || !puedeCambiar)
        return;
    ConTrampa([this] {
        const QString clave = DialogoRegistro::Preguntar(this, Tabla(), *Elegido()).clave;
        if (!clave.isEmpty())
            Terminar(clave);
    });
}

void PaginaCatalogos::DarDeBaja()
{
    ConTrampa([this] {
        const RegistroDeCatalogo registro = *Elegido();
        const auto respuesta = DialogoUsos::PreguntarBaja(this, Tabla(), registro);
        if (respuesta == DialogoUsos::Respuesta::Reemplazar)
            return Reemplazar();
        if (respuesta != DialogoUsos::Respuesta::Baja)
            return;
        RegistroDeCatalogo despues = registro;
        despues.estado = qvx::estado::Baja;
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), Tabla(), {{registro, despues}});
        Terminar(registro.clave);
    });
}

void PaginaCatalogos::Reactivar()
{
    ConTrampa([this] {
        const RegistroDeCatalogo registro = *Elegido();
        RegistroDeCatalogo despues = registro;
        despues.estado = qvx::estado::Activo;
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), Tabla(), {{registro, despues}});
        Terminar(registro.clave);
    });
}

// What is used cannot go: where, is shown instead of a question.
void PaginaCatalogos::Eliminar()
{
    if (!Elegido())
        return;
    ConTrampa([this] {
        const RegistroDeCatalogo registro = *Elegido();
        const qvx::CambioDeCatalogo cambio{registro, std::nullopt};
        const auto situacion = qvx::LeerSituacion(Base(), Tabla(), {registro.clave});
        const QString nombre = "«" + registro.clave + " " + registro.Descripcion() + "»";
        if (const auto objecion = qvx::Objetar(Tabla(), situacion, cambio)) {
            qvx::Sistema().Mensaje(nombre + ": " + objecion->motivo, qvx::mensaje::Exclamacion, "Quorvex",
                                   window()->winId(), "QVX", "ERR-ID:1000010");
            return DialogoUsos::Mostrar(this, Tabla(), registro);
        }
        if (qvx::Sistema().Mensaje("Se eliminará " + nombre + ", que no se usa en ningún plan. ¿Desea continuar?",
                                   qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, "Quorvex",
                                   window()->winId(), "QVX", "ERR-ID:1000011")
            != qvx::mensaje::Si)
            return;
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), Tabla(), {cambio});
        Terminar({});
    });
}

void PaginaCatalogos::VerUsos()
{
    if (Elegido())
        ConTrampa([this] { DialogoUsos::Mostrar(this, Tabla(), *Elegido()); });
}

void PaginaCatalogos::Reemplazar()
{
    ConTrampa([this] {
        const RegistroDeCatalogo registro = *Elegido();
        const QString otra =
            qvx::Utilerias().BuscarEnCatalogo(CodigoDeBusqueda(Tabla(), registro), 0, {}, QFont(font()), this);
        if (otra.isEmpty())
            return;
        const auto nuevo = qvx::LeerSituacion(Base(), Tabla(), {otra}).registros.value(qvx::SinBlancosAlFinal(otra));
        if (const QString objecion = qvx::ObjecionAlReemplazo(Tabla(), registro, nuevo); !objecion.isEmpty()) {
            qvx::Sistema().Mensaje(objecion, qvx::mensaje::Exclamacion, "Quorvex", window()->winId(), "QVX",
                                   "ERR-ID:1000012");
            return;
        }
        if (DialogoUsos::Reemplazar(this, Tabla(), registro, nuevo))
            Terminar(registro.clave);
    });
}

void PaginaCatalogos::Importar()
{
    if (DialogoImportarCatalogo::ImportarArchivo(this, Tabla()))
        Terminar({});
}

// What a spreadsheet put on the clipboard: a text with a tab between its cells.
void PaginaCatalogos::Pegar()
{
    const QString texto = QGuiApplication::clipboard()->text();
    if (!texto.isEmpty()
        && DialogoImportarCatalogo::Importar(this, Tabla(), texto.toUtf8(), "Lo copiado de una hoja de cálculo"))
        Terminar({});
}

void PaginaCatalogos::ExportarCsv()
{
    Exportar(false);
}

void PaginaCatalogos::ExportarXlsx()
{
    Exportar(true);
}

// The whole catalogue, whatever is shown of it: it can then be imported anywhere.
void PaginaCatalogos::Exportar(bool libro)
{
    ConTrampa([this, libro] {
        DialogoExportarCatalogo::Exportar(this, EnHoja(Tabla(), qvx::LeerRegistros(Base(), Tabla())), libro);
    });
}

QString PaginaCatalogos::CrearDesdeBusqueda(const QString &codigo, const QString &escrito, QWidget *duena)
{
    const qvx::Catalogo &catalogo = qvx::CatalogoPorCodigo(codigo);
    const TablaDeCatalogo &tabla = *qvx::TablaDeCatalogoPorNombre(catalogo.tabla);
    RegistroDeCatalogo registro{{}, QStringList(tabla.columnas.size()), qvx::estado::Activo};
    registro.valores[0] = escrito;
    if (const int clase = tabla.Lugar(ClaseDeColumna::ClaseDeProducto); clase >= 0)
        registro.valores[clase] = catalogo.clase;
    return DialogoRegistro::Preguntar(duena, tabla, registro).clave;
}

// From the search the arrows move in the list; Enter edits there.
bool PaginaCatalogos::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent *>(evento)->key();
    if (objeto == txtBuscar && comunesQVX::MueveLaLista(tecla)) {
        QCoreApplication::sendEvent(lvRegistros, evento);
        return true;
    }
    if (objeto == lvRegistros && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
        Editar();
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}
