// What the person does to the tree: keys, mouse and drags.

#include "controls/Teclas.h"
#include "controls/TreeView.h"

#include <QDragMoveEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <utility>

namespace comunesQVX
{

// A selected node stays selected until another one is: neither Ctrl nor a click beside the nodes takes it away.
QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex &indice, const QEvent *evento) const
{
    const auto orden = QTreeWidget::selectionCommand(indice, evento);
    const bool quita = evento && (!indice.isValid() || orden & QItemSelectionModel::Deselect);
    return quita ? QItemSelectionModel::NoUpdate : orden;
}

// A click on the selected node begins the editing a while later: by then the person may be elsewhere, and a label that
// nobody looks at would be written when the tree is used next.
bool TreeView::edit(const QModelIndex &indice, EditTrigger motivo, QEvent *evento)
{
    if (!hasFocus() || !QTreeWidget::edit(indice, motivo, evento))
        return false;
    const QString texto = indice.data(Qt::EditRole).toString();
    auto *linea = qobject_cast<QLineEdit *>(indexWidget(indice));
    if (linea && texto.size() > linea->maxLength()) { // the toolkit's editor would save it cut
        linea->setMaxLength(static_cast<int>(texto.size()));
        linea->setText(texto);
        linea->selectAll();
    }
    return true;
}

void TreeView::keyPressEvent(QKeyEvent *evento)
{
    const int codigo = CodigoTecla(evento->key());
    // What a label's editor leaves over, such as the Enter that ends it, is no key of the tree.
    if (state() == EditingState) {
        evento->setAccepted(codigo == tecla::Enter);
        return;
    }
    const QPointer<TreeView> vivo = this;
    if (codigo != 0)
        Q_EMIT KeyDown(codigo);
    if (!vivo || (codigo != 0 && codigo != tecla::Supr))
        return;
    const QString antes = ClaveElegida();
    if (!MoverConTecla(evento->key()))
        QTreeWidget::keyPressEvent(evento);
    SubirSeleccion();
    if (ClaveElegida() != antes)
        Elegido();
}

// Opening and closing nodes from inside the toolkit's own handler would not survive a handler that rebuilds the tree.
bool TreeView::MoverConTecla(int tecla)
{
    QTreeWidgetItem *nodo = currentItem();
    if (!nodo)
        return false;
    const bool abrir = tecla == Qt::Key_Right || tecla == Qt::Key_Plus;
    const bool cerrar = tecla == Qt::Key_Left || tecla == Qt::Key_Minus;
    const bool conHijos = nodo->childCount() > 0;
    if (conHijos && (nodo->isExpanded() ? cerrar : abrir))
        nodo->setExpanded(abrir);
    else if ((tecla == Qt::Key_Up || tecla == Qt::Key_Down) && !SelectedItem())
        setCurrentItem(nodo);
    else
        return tecla == Qt::Key_Plus || tecla == Qt::Key_Minus || tecla == Qt::Key_Asterisk;
    return true;
}

// A node hidden by closing one above it gives the selection to that one: commands must not reach what nobody sees.
void TreeView::SubirSeleccion()
{
    Nodo *visible = SelectedItem();
    for (Nodo *nodo = visible ? visible->Parent() : nullptr; nodo; nodo = nodo->Parent())
        if (!nodo->isExpanded())
            visible = nodo;
    if (visible != SelectedItem())
        setSelectedItem(visible);
}

void TreeView::Elegido()
{
    if (Nodo *nodo = SelectedItem())
        Q_EMIT NodeClick(nodo);
}

void TreeView::focusInEvent(QFocusEvent *evento)
{
    enfocadoAlPulsar = evento->reason() == Qt::MouseFocusReason;
    QTreeWidget::focusInEvent(evento);
}

void TreeView::mousePressEvent(QMouseEvent *evento)
{
    if (evento->button() != Qt::LeftButton)
        return;
    claveAlPulsar = ClaveElegida();
    QTreeWidget::mousePressEvent(evento);
    const Nodo *nodo = HitTest(evento->position().toPoint());
    pulsado = nodo && nodo->isSelected();
}

// A click that only brings the focus back to the tree does not begin to edit.
void TreeView::mouseReleaseEvent(QMouseEvent *evento)
{
    if (evento->button() != Qt::LeftButton)
        return;
    setEditTriggers(std::exchange(enfocadoAlPulsar, false) ? NoEditTriggers : SelectedClicked);
    QTreeWidget::mouseReleaseEvent(evento);
    SubirSeleccion();
    if (std::exchange(pulsado, false) || ClaveElegida() != claveAlPulsar) {
        claveAlPulsar = ClaveElegida();
        Elegido();
    }
}

bool TreeView::AceptaArrastre(const QDropEvent &evento) const
{
    return modoSoltar == 1 && evento.mimeData()->hasText() && (evento.possibleActions() & Qt::CopyAction);
}

void TreeView::dragEnterEvent(QDragEnterEvent *evento)
{
    if (!AceptaArrastre(*evento)) {
        evento->ignore();
        return;
    }
    setState(DraggingState); // lets a closed node open under the pointer
    evento->setDropAction(Qt::CopyAction);
    evento->accept();
}

// The inherited handler scrolls near the edges and opens nodes; it refuses the drag, since the nodes take no rows.
void TreeView::dragMoveEvent(QDragMoveEvent *evento)
{
    if (!AceptaArrastre(*evento)) {
        evento->ignore();
        return;
    }
    QTreeWidget::dragMoveEvent(evento);
    evento->setDropAction(Qt::CopyAction);
    evento->accept();
    puntoArrastre = evento->position().toPoint();
    Q_EMIT OLEDragOver(puntoArrastre);
}

void TreeView::dragLeaveEvent(QDragLeaveEvent *evento)
{
    QTreeWidget::dragLeaveEvent(evento);
    setDropHighlight(nullptr);
}

// The drag's own event loop ends first: a question asked inside it would have the drag's pointer.
void TreeView::dropEvent(QDropEvent *evento)
{
    if (!AceptaArrastre(*evento)) {
        evento->ignore();
        return;
    }
    stopAutoScroll();
    setState(NoState);
    evento->setDropAction(Qt::CopyAction);
    evento->accept();
    QTimer::singleShot(0, this, [vivo = QPointer<TreeView>(this), texto = evento->mimeData()->text()] {
        if (vivo)
            Q_EMIT vivo->OLEDragDrop(texto);
        if (vivo)
            vivo->setDropHighlight(nullptr);
    });
}

void TreeView::scrollContentsBy(int dx, int dy)
{
    QTreeWidget::scrollContentsBy(dx, dy);
    if (state() == DraggingState)
        Q_EMIT OLEDragOver(puntoArrastre);
}

} // namespace comunesQVX
