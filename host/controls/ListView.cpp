#include "controls/ListView.h"

#include "controls/Teclas.h"

#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPointer>
#include <algorithm>

namespace comunesQVX
{

namespace
{

// What hangs from the pointer: the dragged rows' texts in one line.
QPixmap Muestra(const QString &texto, QWidget *lista)
{
    QLabel muestra(QString(texto).replace("\r\n", ", "), lista);
    muestra.setFrameShape(QFrame::Box);
    muestra.setMargin(4);
    muestra.setAutoFillBackground(true);
    muestra.adjustSize();
    return muestra.grab();
}

} // namespace

ListView::ListView(QWidget *padre) : QTreeWidget(padre)
{
    setColumnCount(0);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(DragOnly);
    setDragEnabled(false);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
}

void ListView::AgregarColumna(const QString &titulo, Qt::Alignment alineacion, int ancho)
{
    const int columna = columnCount();
    const Qt::Alignment centrada = alineacion | Qt::AlignVCenter;
    setColumnCount(columna + 1);
    headerItem()->setText(columna, titulo);
    headerItem()->setTextAlignment(columna, centrada);
    setColumnWidth(columna, ancho);
    alineaciones.append(centrada);
}

// No column is narrower than its title, whatever letter and look it is shown in; while the list is empty none is wider,
// where the list is too narrow for all.
void ListView::AjustarTitulos()
{
    int total = 0;
    for (int columna = 0; columna < columnCount(); ++columna) {
        if (columna == titulos.size())
            titulos.append(header()->sectionSizeHint(columna));
        setColumnWidth(columna, std::max(columnWidth(columna), titulos.at(columna)));
        total += columnWidth(columna);
    }
    for (int columna = 0; columna < columnCount() && Count() == 0 && total > viewport()->width(); ++columna)
        setColumnWidth(columna, titulos.at(columna));
}

bool ListView::event(QEvent *evento)
{
    const QEvent::Type tipo = evento->type();
    const bool otraLetra = tipo == QEvent::StyleChange || tipo == QEvent::FontChange;
    if (!otraLetra && tipo != QEvent::Show && tipo != QEvent::Resize)
        return QTreeWidget::event(evento); // after a key or a click there may be no list any more
    const bool resultado = QTreeWidget::event(evento);
    if (otraLetra)
        titulos.clear();
    if (isVisible())
        AjustarTitulos();
    return resultado;
}

void ListView::Clear()
{
    clear();
}

void ListView::AgregarFila(const QStringList &textos)
{
    ensurePolished(); // rows measured before the first show would keep the height of another look
    auto *fila = new QTreeWidgetItem(textos);
    fila->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren);
    for (int columna = 0; columna < alineaciones.size(); ++columna)
        fila->setTextAlignment(columna, alineaciones.at(columna));
    addTopLevelItem(fila);
}

QString ListView::Texto(int fila, int columna) const
{
    const QTreeWidgetItem *item = topLevelItem(fila);
    return item ? item->text(columna) : QString();
}

bool ListView::Seleccionada(int fila) const
{
    const QTreeWidgetItem *item = topLevelItem(fila);
    return item && item->isSelected();
}

bool ListView::HaySeleccion() const
{
    return selectionModel()->hasSelection();
}

QString ListView::TextoSeleccionado() const
{
    if (currentItem() && currentItem()->isSelected())
        return currentItem()->text(0);
    for (int fila = 0; fila < Count(); ++fila)
        if (Seleccionada(fila))
            return Texto(fila);
    return {};
}

void ListView::keyPressEvent(QKeyEvent *evento)
{
    const int codigo = CodigoTecla(evento->key());
    if (codigo == tecla::Enter && HaySeleccion()) {
        // A key held down since before a dialog closed must not open it again.
        if (!evento->isAutoRepeat())
            Q_EMIT DblClick();
        return;
    }
    const QPointer<ListView> viva = this;
    if (codigo != 0)
        Q_EMIT KeyDown(codigo);
    if (!viva)
        return;
    const bool flecha = evento->key() == Qt::Key_Up || evento->key() == Qt::Key_Down;
    if (flecha && !HaySeleccion() && currentItem())
        currentItem()->setSelected(true);
    else
        QTreeWidget::keyPressEvent(evento);
}

void ListView::mouseDoubleClickEvent(QMouseEvent *evento)
{
    QTreeWidget::mouseDoubleClickEvent(evento);
    if (evento->button() == Qt::LeftButton)
        Q_EMIT DblClick();
}

void ListView::startDrag(Qt::DropActions)
{
    QString texto;
    Q_EMIT OLEStartDrag(texto);
    if (texto.isEmpty())
        return;
    auto *datos = new QMimeData;
    datos->setText(texto);
    auto *arrastre = new QDrag(this);
    arrastre->setMimeData(datos);
    arrastre->setPixmap(Muestra(texto, viewport()));
    arrastre->exec(Qt::CopyAction, Qt::CopyAction);
}

} // namespace comunesQVX
