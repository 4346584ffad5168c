#include "controls/DialogoCatalogo.h"

#include "controls/DeAmbos.h"
#include "controls/Formulario.h"
#include "controls/ModeloCatalogo.h"
#include "controls/SSOleDBGrid.h"
#include "controls/colorQVX.h"
#include "controls/txtQVX.h"
#include "session/Sesion.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace qvx
{

namespace
{

bool MueveLaLista(int tecla)
{
    return tecla == Qt::Key_Up || tecla == Qt::Key_Down || tecla == Qt::Key_PageUp || tecla == Qt::Key_PageDown;
}

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

} // namespace

QString DialogoCatalogo::Elegir(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                                QWidget *duena)
{
    const DeAmbos<DialogoCatalogo> dialogo(new DialogoCatalogo(catalogo, maximo, filtro, duena));
    dialogo->setFont(fuente);
    return dialogo->exec() == QDialog::Accepted ? dialogo->ClaveElegida() : QString();
}

// Read once; what is typed then looks among what was read.
DialogoCatalogo::DialogoCatalogo(const QString &catalogo, int maximo_, const QString &filtro, QWidget *duena)
    : QDialog(duena ? duena->window() : nullptr)
    , maximo(maximo_)
    , presente(ClavePresente(duena))
    , modelo(new ModeloCatalogo(LeerEntradas(Sesion::Actual().Conexion(), catalogo, filtro),
                                CatalogoPorCodigo(catalogo).Titulos(), maximo, this))
    , txtBuscar(new QLineEdit(this))
    , lvEntradas(new QTreeView(this))
    , aviso(new QLabel(" ", this))
{
    coloresQVX::colorQVX::AplicarA(*this);
    setWindowTitle(CatalogoPorCodigo(catalogo).titulo);
    Disponer();
    connect(txtBuscar, &QLineEdit::textChanged, this, &DialogoCatalogo::Filtrar);
    connect(modelo, &QAbstractItemModel::modelReset, this, &DialogoCatalogo::Avisar);
    connect(lvEntradas->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { cmdAceptar->setEnabled(!ClaveElegida().isEmpty()); });
    connect(lvEntradas, &QTreeView::doubleClicked, this, &QDialog::accept);
    Avisar();
}

void DialogoCatalogo::Disponer()
{
    txtBuscar->setObjectName("txtBuscar");
    txtBuscar->setPlaceholderText("Escriba palabras de la clave o de la descripción");
    txtBuscar->setAccessibleName("Buscar");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);

    lvEntradas->setObjectName("lvEntradas");
    lvEntradas->setAccessibleName("Entradas del catálogo");
    lvEntradas->setRootIsDecorated(false);
    lvEntradas->setUniformRowHeights(true);
    lvEntradas->setAllColumnsShowFocus(true);
    lvEntradas->setAlternatingRowColors(true);
    lvEntradas->setModel(modelo);
    lvEntradas->header()->setSortIndicator(ModeloCatalogo::Clave, Qt::AscendingOrder);
    lvEntradas->setSortingEnabled(true);

    aviso->setObjectName("lblAviso");
    aviso->setWordWrap(true);
    aviso->setTextFormat(Qt::PlainText);

    auto *botones = new QDialogButtonBox;
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
    resize(Formulario::Cabida(*this, {modelo->columnCount() > ModeloCatalogo::Medida ? 720 : 560, 440}));
}

// In the letter and the look that it is shown in: the description takes the room that the others leave.
void DialogoCatalogo::PonerColumnas()
{
    QHeaderView *titulos = lvEntradas->header();
    titulos->setStretchLastSection(false);
    for (int columna = 0; columna < modelo->columnCount(); ++columna) {
        titulos->setSectionResizeMode(columna, columna == ModeloCatalogo::Descripcion ? QHeaderView::Stretch
                                                                                      : QHeaderView::Interactive);
        if (columna != ModeloCatalogo::Descripcion)
            lvEntradas->resizeColumnToContents(columna);
    }
}

// Without a key of its own nothing is chosen until the person types or moves, so that a careless Enter takes nothing.
void DialogoCatalogo::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    PonerColumnas();
    ElegirFila(presente.isEmpty() ? -1 : modelo->FilaDe(presente));
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
    const QModelIndexList elegidas = lvEntradas->selectionModel()->selectedRows();
    return elegidas.isEmpty() ? QString() : modelo->ClaveDe(elegidas.constFirst().row());
}

bool DialogoCatalogo::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == txtBuscar && evento->type() == QEvent::KeyPress
        && MueveLaLista(static_cast<QKeyEvent *>(evento)->key())) {
        QCoreApplication::sendEvent(lvEntradas, evento);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace qvx
