#include "controls/DialogoCatalogo.h"

#include "controls/DeAmbos.h"
#include "controls/Formulario.h"
#include "controls/ModeloTabla.h"
#include "controls/SSOleDBGrid.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "controls/colorQVX.h"
#include "controls/txtQVX.h"
#include "plan/Catalogos.h"
#include "session/Sesion.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace qvx
{

namespace
{

// The key that whoever asks holds already: a box's text, or the text of the grid's current cell.
QString ClavePresente(const QWidget *duena)
{
    if (const auto *caja = qobject_cast<const textoQVX::txtQVX *>(duena))
        return caja->Text();
    for (const QWidget *control = duena ? duena->focusWidget() : nullptr; control; control = control->parentWidget())
        if (const auto *grid = qobject_cast<const SSDataWidgets_B_OLEDB::SSOleDBGrid *>(control))
            return grid->currentIndex().data(Qt::EditRole).toString();
    return {};
}

enum Columna { Clave, Descripcion, Medida, Costo };

QList<ColumnaDeTabla> Columnas(const QStringList &titulos)
{
    QList<ColumnaDeTabla> columnas;
    for (const QString &titulo : titulos)
        columnas.append({titulo, ColumnaDeTabla::Clase::Texto, columnas.size() < Medida});
    if (columnas.size() > Costo)
        columnas[Costo].clase = ColumnaDeTabla::Clase::Dinero;
    return columnas;
}

} // namespace

QString DialogoCatalogo::Elegir(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                                QWidget *duena, const Alta &alta)
{
    const DeAmbos<DialogoCatalogo> dialogo(new DialogoCatalogo(catalogo, maximo, filtro, duena));
    dialogo->setFont(fuente);
    if (alta)
        dialogo->OfrecerAlta(catalogo, alta);
    return dialogo->exec() == QDialog::Accepted ? dialogo->ClaveElegida() : QString();
}

DialogoCatalogo::DialogoCatalogo(const QString &catalogo, int maximo_, const QString &filtro, QWidget *duena)
    : QDialog(duena ? duena->window() : nullptr)
    , maximo(maximo_)
    , presente(ClavePresente(duena))
    , modelo(new ModeloTabla(Columnas(CatalogoPorCodigo(catalogo).Titulos()), maximo, this))
    , txtBuscar(new QLineEdit(this))
    , lvEntradas(new VistaTabla("lvEntradas", "Entradas del catálogo", this))
    , aviso(new QLabel(" ", this))
{
    coloresQVX::colorQVX::AplicarA(*this);
    setWindowTitle(CatalogoPorCodigo(catalogo).titulo);
    Leer(catalogo, filtro);
    Disponer();
    connect(txtBuscar, &QLineEdit::textChanged, this, &DialogoCatalogo::Filtrar);
    connect(modelo, &QAbstractItemModel::modelReset, this, &DialogoCatalogo::Avisar);
    connect(lvEntradas->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { cmdAceptar->setEnabled(!ClaveElegida().isEmpty()); });
    connect(lvEntradas, &VistaTabla::doubleClicked, this, &QDialog::accept);
    Avisar();
}

// Once; what is typed then looks among what was read.
void DialogoCatalogo::Leer(const QString &catalogo, const QString &filtro)
{
    QList<QVariantList> filas;
    for (const EntradaCatalogo &entrada : LeerEntradas(Sesion::Actual().Conexion(), catalogo, filtro)) {
        QVariantList fila{entrada.clave, entrada.descripcion};
        if (modelo->columnCount() > Medida)
            fila << entrada.unidad << entrada.costo;
        filas.append(fila);
    }
    modelo->Llenar(filas);
}

void DialogoCatalogo::Disponer()
{
    txtBuscar->setObjectName("txtBuscar");
    txtBuscar->setPlaceholderText("Escriba palabras de la clave o de la descripción");
    txtBuscar->setAccessibleName("Buscar");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);

    lvEntradas->Poner(modelo, Descripcion, Clave);

    aviso->setObjectName("lblAviso");
    aviso->setWordWrap(true);
    aviso->setTextFormat(Qt::PlainText);

    botones = new QDialogButtonBox(this);
    cmdAceptar = botones->addButton("Aceptar", QDialogButtonBox::AcceptRole);
    cmdAceptar->setObjectName("cmdAceptar");
    cmdAceptar->setEnabled(false);
    botones->addButton("Cancelar", QDialogButtonBox::RejectRole)->setObjectName("cmdCancelar");
    connect(botones, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *columna = new QVBoxLayout(this);
    columna->setContentsMargins(14, 14, 14, 12);
    columna->addWidget(txtBuscar);
    columna->addWidget(lvEntradas);
    columna->addWidget(aviso);
    columna->addWidget(botones);
    txtBuscar->setFocus();
    resize(Formulario::Cabida(*this, {modelo->columnCount() > Medida ? 720 : 560, 440}));
}

// What is new is what was looked for.
void DialogoCatalogo::OfrecerAlta(const QString &catalogo, const Alta &alta)
{
    QPushButton *nuevo = botones->addButton("&Nuevo…", QDialogButtonBox::ActionRole);
    nuevo->setObjectName("cmdNuevo");
    connect(nuevo, &QPushButton::clicked, this, [this, catalogo, alta] {
        creada = alta(catalogo, txtBuscar->text().trimmed(), this);
        if (!creada.isEmpty())
            accept();
    });
}

// Without a key of its own nothing is chosen until the person types or moves, so that a careless Enter takes nothing.
void DialogoCatalogo::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    ElegirFila(presente.isEmpty() ? -1 : modelo->VisibleConClave(presente));
}

void DialogoCatalogo::Filtrar()
{
    const QString texto = txtBuscar->text().trimmed();
    modelo->Buscar(texto);
    ElegirFila(!texto.isEmpty() && modelo->rowCount() > 0 ? 0 : -1);
}

void DialogoCatalogo::ElegirFila(int fila)
{
    lvEntradas->setCurrentIndex(modelo->index(fila, 0));
    if (fila >= 0)
        lvEntradas->scrollTo(modelo->index(fila, 0), QAbstractItemView::PositionAtCenter);
    cmdAceptar->setEnabled(fila >= 0);
}

void DialogoCatalogo::Avisar()
{
    if (modelo->Cortado())
        aviso->setText(QString("Se muestran las primeras %1; escriba para acotar").arg(maximo));
    else
        aviso->setText(modelo->rowCount() == 0 ? "Ninguna entrada coincide" : " ");
}

QString DialogoCatalogo::ClaveElegida() const
{
    if (!creada.isEmpty())
        return creada;
    const QModelIndexList elegidas = lvEntradas->selectionModel()->selectedRows();
    return elegidas.isEmpty() ? QString() : modelo->Clave(elegidas.constFirst().row());
}

bool DialogoCatalogo::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == txtBuscar && evento->type() == QEvent::KeyPress
        && comunesQVX::MueveLaLista(static_cast<QKeyEvent *>(evento)->key())) {
        QCoreApplication::sendEvent(lvEntradas, evento);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace qvx
