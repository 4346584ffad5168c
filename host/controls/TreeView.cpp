#include "controls/TreeView.h"

#include "data/ErrorEjecucion.h"

#include <QPainter>
#include <QPointer>
#include <QStyledItemDelegate>
#include <utility>

namespace comunesQVX
{

constexpr int EsperaDespliegue = 700; // milliseconds over a closed node before a drag opens it

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

Nodo::Nodo(const QString &claveNodo, const QString &texto) : clave(claveNodo)
{
    setText(texto);
    setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
}

void Nodo::setImage(int indice)
{
    imagen = indice;
    emitDataChanged();
}

// The picture is the list's; a node that keeps one needs two more pieces of memory.
QVariant Nodo::data(int columna, int papel) const
{
    const auto *arbol = static_cast<const TreeView *>(treeWidget());
    if (papel == Qt::DecorationRole && arbol)
        return arbol->Imagenes().Imagen(imagen);
    return QTreeWidgetItem::data(columna, papel);
}

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
    DesecharEdicion();
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
        throw qvx::ErrorEjecucion(qvx::errores::NodoNoEncontrado, "No se encontró el nodo " + clave + " en el árbol");
    return nodo;
}

Nodo *TreeView::Primero() const
{
    return static_cast<Nodo *>(topLevelItem(0));
}

void TreeView::Remove(const QString &clave)
{
    Nodo *nodo = Item(clave);
    DesecharEdicion();
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

bool TreeView::ConfirmarEntrada()
{
    QWidget *editor = state() == EditingState ? itemWidget(currentItem(), 0) : nullptr;
    if (editor) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::SubmitModelCache);
    }
    return true;
}

// The toolkit would end it as confirmed when its node goes.
void TreeView::DesecharEdicion()
{
    if (state() == EditingState)
        closeEditor(itemWidget(currentItem(), 0), QAbstractItemDelegate::RevertModelCache);
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
    const QPointer<TreeView> vivo = this;
    Q_EMIT AfterLabelEdit(cancelar, edicion.texto);
    if (!vivo)
        return;
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

} // namespace comunesQVX
