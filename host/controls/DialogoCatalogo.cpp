#include "controls/DialogoCatalogo.h"

#include "data/ErrorEjecucion.h"
#include "plan/Catalogos.h"
#include "session/Sesion.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace qvx
{

namespace
{

bool MueveLaLista(int tecla)
{
    return tecla == Qt::Key_Up || tecla == Qt::Key_Down || tecla == Qt::Key_PageUp || tecla == Qt::Key_PageDown;
}

} // namespace

QString DialogoCatalogo::Elegir(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                                QWidget *duena)
{
    DialogoCatalogo dialogo(catalogo, maximo, filtro, duena);
    dialogo.setFont(fuente);
    dialogo.Llenar();
    return dialogo.exec() == QDialog::Accepted ? dialogo.ClaveElegida() : QString();
}

DialogoCatalogo::DialogoCatalogo(QString codigo, int maximo_, QString filtro_, QWidget *duena)
    : QDialog(duena)
    , catalogo(std::move(codigo))
    , maximo(maximo_)
    , filtro(std::move(filtro_))
    , txtBuscar(new QLineEdit(this))
    , lvEntradas(new QTreeWidget(this))
    , aviso(new QLabel(" ", this))
{
    setWindowTitle(CatalogoPorCodigo(catalogo).titulo);
    resize(560, 440);

    txtBuscar->setObjectName("txtBuscar");
    txtBuscar->setPlaceholderText("Escriba parte de la clave o de la descripción");
    txtBuscar->setAccessibleName("Buscar");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);

    lvEntradas->setObjectName("lvEntradas");
    lvEntradas->setAccessibleName("Entradas del catálogo");
    lvEntradas->setHeaderLabels({"Clave", "Descripción"});
    lvEntradas->setRootIsDecorated(false);
    lvEntradas->setUniformRowHeights(true);
    lvEntradas->setAllColumnsShowFocus(true);
    lvEntradas->setAlternatingRowColors(true);

    aviso->setObjectName("lblAviso");
    aviso->setWordWrap(true);
    aviso->setTextFormat(Qt::PlainText);

    auto *botones = new QDialogButtonBox;
    cmdAceptar = botones->addButton("Aceptar", QDialogButtonBox::AcceptRole);
    cmdAceptar->setObjectName("cmdAceptar");
    cmdAceptar->setEnabled(false);
    botones->addButton("Cancelar", QDialogButtonBox::RejectRole)->setObjectName("cmdCancelar");

    auto *columna = new QVBoxLayout(this);
    columna->addWidget(txtBuscar);
    columna->addWidget(lvEntradas);
    columna->addWidget(aviso);
    columna->addWidget(botones);
    txtBuscar->setFocus();

    connect(txtBuscar, &QLineEdit::textChanged, this, &DialogoCatalogo::AlEscribir);
    connect(lvEntradas, &QTreeWidget::itemSelectionChanged, this,
            [this] { cmdAceptar->setEnabled(!ClaveElegida().isEmpty()); });
    connect(lvEntradas, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(botones, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

// Nothing is chosen until the person types or moves, so that a careless Enter takes nothing.
void DialogoCatalogo::Llenar()
{
    lvEntradas->clear();
    const QString texto = txtBuscar->text().trimmed();
    auto entradas = BuscarEntradas(Sesion::Actual().Conexion(), catalogo, texto, filtro, maximo == 0 ? 0 : maximo + 1);
    const bool cortada = maximo > 0 && entradas.size() > maximo;
    if (cortada)
        entradas.removeLast();

    QList<QTreeWidgetItem *> filas;
    filas.reserve(entradas.size());
    for (const auto &[clave, descripcion] : entradas)
        filas.append(new QTreeWidgetItem(QStringList{clave, descripcion}));
    lvEntradas->addTopLevelItems(filas);
    lvEntradas->resizeColumnToContents(0);
    if (!texto.isEmpty() && !filas.isEmpty())
        lvEntradas->setCurrentItem(filas.first());

    if (cortada)
        aviso->setText(QString("Se muestran las primeras %1; escriba para acotar").arg(maximo));
    else
        aviso->setText(filas.isEmpty() ? "Ninguna entrada coincide" : " ");
}

void DialogoCatalogo::AlEscribir()
{
    try {
        Llenar();
    } catch (const ErrorEjecucion &error) {
        aviso->setText(error.Descripcion());
    }
}

QString DialogoCatalogo::ClaveElegida() const
{
    const auto elegidas = lvEntradas->selectedItems();
    return elegidas.isEmpty() ? QString() : elegidas.first()->text(0);
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
