#include "app/catalogos/PaginaCatalogos.h"

#include "app/Ajustes.h"
#include "app/AvisoDeLectura.h"
#include "app/FilaDeAcciones.h"
#include "app/Trampas.h"
#include "app/catalogos/Nombres.h"
#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "data/Conexion.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "session/Sesion.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
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

} // namespace

PaginaCatalogos::PaginaCatalogos(QWidget *padre)
    : QWidget(padre)
    , lstCatalogos(new QListWidget)
    , txtBuscar(new QLineEdit)
    , cboEstado(new QComboBox)
    , lvRegistros(new qvx::VistaTabla("lvRegistros", "Registros del catálogo"))
    , lblCuenta(new QLabel)
    , lblDerecho(new QLabel)
    , lblAviso(new AvisoDeLectura("lblAvisoDelCatalogo"))
{
    setObjectName("PaginaCatalogos");
    PonerCatalogos();
    PonerLista();
    auto *derecha = new QVBoxLayout;
    derecha->addWidget(Busqueda());
    derecha->addWidget(lblAviso);
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
    connect(cboEstado, &QComboBox::currentIndexChanged, this, [this] { Actualizar(); });
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

QWidget *PaginaCatalogos::Acciones()
{
    auto *fila = new FilaDeAcciones(*this, *lvRegistros);
    const auto mandar = [this](void (PaginaCatalogos::*hacer)()) { return [this, hacer] { (this->*hacer)(); }; };
    const auto boton = [&](const QString &nombre, const QString &texto, const QKeySequence &tecla, auto hacer) {
        return fila->ConBoton(nombre, texto, tecla, mandar(hacer));
    };
    deCambio = {boton("Nuevo", "&Nuevo…", QKeySequence("Ctrl+N"), &PaginaCatalogos::Nuevo),
                boton("Editar", "&Editar…", QKeySequence("F2"), &PaginaCatalogos::Editar),
                boton("Baja", "Dar de &baja…", {}, &PaginaCatalogos::DarDeBaja),
                boton("Reactivar", "Rea&ctivar", {}, &PaginaCatalogos::Reactivar),
                boton("Eliminar", "E&liminar…", QKeySequence(Qt::Key_Delete), &PaginaCatalogos::Eliminar),
                boton("Reemplazar", "Reem&plazar por…", {}, &PaginaCatalogos::Reemplazar)};
    deUno = deCambio.mid(1);
    accBaja = deUno.at(1);
    accReactivar = deUno.at(2);
    accUsos = boton("Usos", "¿Dónde se &usa?…", QKeySequence("Ctrl+U"), &PaginaCatalogos::VerUsos);
    fila->Separar();
    // The way to spreadsheets and back.
    QMenu *hoja = fila->ConMenu("Hoja", "&Hoja de cálculo");
    const auto entrada = [&](const QString &nombre, const QString &texto, const QKeySequence &tecla, auto hacer) {
        QAction *accion = fila->Accion(nombre, texto, tecla, mandar(hacer));
        hoja->addAction(accion);
        return accion;
    };
    deCambio =
        QList<QAction *>{
            entrada("Importar", "&Importar CSV…", QKeySequence("Ctrl+I"), &PaginaCatalogos::Importar),
            entrada("Pegar", "&Pegar lo copiado de una hoja", QKeySequence::Paste, &PaginaCatalogos::Pegar)}
        + deCambio;
    hoja->addSeparator();
    entrada("ExportarCsv", "Exportar &CSV…", {}, &PaginaCatalogos::ExportarCsv);
    entrada("ExportarXlsx", "Exportar &XLSX…", {}, &PaginaCatalogos::ExportarXlsx);
    return fila;
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
    lblAviso->Olvidar();
    lblAviso->Intentar(1000220, [this] {
        puedeCambiar = qvx::LeerDerechos(Base()).catalogos;
        lblDerecho->setVisible(!puedeCambiar);
        lblDerecho->setText(Base().SoloLectura()
                                ? "Esta sesión puede mirar los catálogos, no cambiarlos."
                                : "Usted puede mirar los catálogos. Los cambia quien tiene en el servidor el rol "
                                  "quorvex_catalogos: pídalo a quien lo administra.");
        Leer();
    });
    Elegir({});
}

void PaginaCatalogos::Actualizar()
{
    lblAviso->Intentar(1000221, [this] {
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
