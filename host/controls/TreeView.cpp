#include "controls/Comunes.h"
#include "data/ErrorEjecucion.h"

#include <QDragMoveEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTimer>
#include <utility>

namespace comunesQVX
{

namespace
{

constexpr int EsperaDespliegue = 700; // milliseconds over a closed node before a drag opens it
constexpr int Enter = 13;
constexpr int Supr = 46;

[[noreturn]] void NoEncontrado(const QString &clave)
{
    throw qvx::ErrorEjecucion(qvx::errores::NodoNoEncontrado, "No se encontró el nodo " + clave + " en el árbol");
}

} // namespace

// Keeps what was typed into a label instead of writing it to the node, and paints the drop highlight.
class TreeView::Delegado : public QStyledItemDelegate
{
public:
    explicit Delegado(TreeView *duenio) : QStyledItemDelegate(duenio), arbol(duenio) {}

    void setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &indice) const override
    {
        const auto *nodo = static_cast<const Nodo *>(arbol->itemFromIndex(indice));
        arbol->confirmada = Edicion{nodo->Key(), editor->property("text").toString()};
    }

    void paint(QPainter *pintor, const QStyleOptionViewItem &opcion, const QModelIndex &indice) const override
    {
        QStyledItemDelegate::paint(pintor, opcion, indice);
        if (arbol->resaltado && arbol->itemFromIndex(indice) == arbol->resaltado)
            Resaltar(*pintor, opcion);
    }

private:
    static void Resaltar(QPainter &pintor, const QStyleOptionViewItem &opcion)
    {
        const QColor color = opcion.palette.color(QPalette::Active, QPalette::Highlight);
        QColor fondo = color;
        fondo.setAlpha(60);
        pintor.save();
        pintor.setRenderHint(QPainter::Antialiasing);
        pintor.setPen(QPen(color, 2));
        pintor.setBrush(fondo);
        pintor.drawRoundedRect(QRectF(opcion.rect).adjusted(1, 1, -1, -1), 3, 3);
        pintor.restore();
    }

    TreeView *arbol;
};

TreeView::TreeView(QWidget *padre) : QTreeWidget(padre)
{
    setItemDelegate(new Delegado(this));
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(SelectedClicked);
    setDragDropMode(DropOnly);
    setDropIndicatorShown(false);
    setAutoExpandDelay(EsperaDespliegue);
    connect(this, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *nodo) { Q_EMIT Expand(static_cast<Nodo *>(nodo)); });
    connect(this, &QTreeWidget::itemCollapsed, this,
            [this](QTreeWidgetItem *nodo) { Q_EMIT Collapse(static_cast<Nodo *>(nodo)); });
}

void TreeView::Clear()
{
    porClave.clear();
    resaltado = nullptr;
    claveEditada.clear();
    pulsado = false;
    clear();
}

Nodo *TreeView::Add(const QString &padre, const QString &clave, const QString &texto, int imagen)
{
    if (porClave.contains(clave))
        throw qvx::ErrorEjecucion(qvx::errores::ClaveRepetida, "El árbol ya tiene un nodo con la clave " + clave);
    return Agregar(padre.isEmpty() ? nullptr : Item(padre), clave, texto, imagen);
}

Nodo *TreeView::Agregar(Nodo *padre, const QString &clave, const QString &texto, int imagen)
{
    ensurePolished(); // rows measured before the first show would keep the height of another look
    auto *nodo = new Nodo(clave, texto);
    nodo->imagen = imagen;
    nodo->setIcon(0, imagenes.Imagen(imagen));
    porClave.insert(clave, nodo);
    if (padre)
        padre->addChild(nodo);
    else
        addTopLevelItem(nodo);
    return nodo;
}

Nodo *TreeView::Item(const QString &clave) const
{
    Nodo *nodo = porClave.value(clave);
    if (!nodo)
        NoEncontrado(clave);
    return nodo;
}

Nodo *TreeView::Primero() const
{
    return static_cast<Nodo *>(topLevelItem(0));
}

void TreeView::Remove(const QString &clave)
{
    Nodo *nodo = Item(clave);
    if (state() == EditingState)
        closeEditor(itemWidget(currentItem(), 0), QAbstractItemDelegate::RevertModelCache);
    Olvidar(nodo);
    // The toolkit would select a neighbour by itself.
    if (!porClave.contains(ClaveElegida()))
        setSelectedItem(nullptr);
    delete nodo;
}

void TreeView::Olvidar(const Nodo *rama)
{
    porClave.remove(rama->clave);
    if (resaltado == rama)
        resaltado = nullptr;
    if (claveEditada == rama->clave)
        claveEditada.clear();
    for (int i = 0; i < rama->childCount(); ++i)
        Olvidar(static_cast<const Nodo *>(rama->child(i)));
}

// By selection: a tree that gets the focus has a current node at once, which nobody chose.
Nodo *TreeView::SelectedItem() const
{
    const QModelIndexList elegidos = selectionModel()->selectedIndexes();
    return elegidos.isEmpty() ? nullptr : static_cast<Nodo *>(itemFromIndex(elegidos.first()));
}

QString TreeView::ClaveElegida() const
{
    const Nodo *nodo = SelectedItem();
    return nodo ? nodo->clave : QString();
}

void TreeView::setSelectedItem(Nodo *nodo)
{
    // Ending the editing of a label may rebuild the tree.
    const QString clave = nodo ? nodo->clave : QString();
    ConfirmarEntrada();
    setCurrentItem(porClave.value(clave));
}

void TreeView::EnsureVisible(Nodo *nodo)
{
    if (nodo)
        scrollToItem(nodo);
}

void TreeView::StartLabelEdit()
{
    Nodo *nodo = SelectedItem();
    if (!nodo || state() == EditingState)
        return;
    setCurrentItem(nodo);
    editItem(nodo);
}

void TreeView::ConfirmarEntrada()
{
    if (state() != EditingState)
        return;
    if (QWidget *editor = itemWidget(currentItem(), 0)) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::SubmitModelCache);
    }
}

// Tab ends the editing and edits no other label.
void TreeView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint fin)
{
    const bool desechada = fin == QAbstractItemDelegate::RevertModelCache;
    QTreeWidget::closeEditor(editor, desechada ? fin : QAbstractItemDelegate::NoHint);
    const std::optional<Edicion> edicion = std::exchange(confirmada, std::nullopt);
    if (edicion && !desechada)
        TerminarEdicion(*edicion);
}

void TreeView::TerminarEdicion(Edicion edicion)
{
    bool cancelar = false;
    claveEditada = edicion.clave;
    Q_EMIT AfterLabelEdit(cancelar, edicion.texto);
    Nodo *nodo = porClave.value(std::exchange(claveEditada, QString()));
    if (nodo && !cancelar && !edicion.texto.isEmpty())
        nodo->setText(edicion.texto);
}

Nodo *TreeView::HitTest(const QPoint &posicion) const
{
    return static_cast<Nodo *>(itemAt(posicion));
}

void TreeView::setDropHighlight(Nodo *nodo)
{
    if (resaltado == nodo)
        return;
    resaltado = nodo;
    viewport()->update();
}

// A selected node stays selected until another one is: Ctrl does not take it away.
QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex &indice, const QEvent *evento) const
{
    const auto orden = QTreeWidget::selectionCommand(indice, evento);
    return orden & QItemSelectionModel::Deselect ? QItemSelectionModel::NoUpdate : orden;
}

void TreeView::keyPressEvent(QKeyEvent *evento)
{
    const int codigo = CodigoTecla(evento->key());
    // What a label's editor leaves over, such as the Enter that ends it, is no key of the tree.
    if (state() == EditingState) {
        evento->setAccepted(codigo == Enter);
        return;
    }
    if (codigo != 0)
        Q_EMIT KeyDown(codigo);
    if (codigo != 0 && codigo != Supr)
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
    QTimer::singleShot(0, this, [this, texto = evento->mimeData()->text()] {
        Q_EMIT OLEDragDrop(texto);
        setDropHighlight(nullptr);
    });
}

void TreeView::scrollContentsBy(int dx, int dy)
{
    QTreeWidget::scrollContentsBy(dx, dy);
    if (state() == DraggingState)
        Q_EMIT OLEDragOver(puntoArrastre);
}

} // namespace comunesQVX
