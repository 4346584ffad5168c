#include "controls/Comunes.h"

namespace comunesQVX
{

int CodigoTecla(int teclaQt)
{
    switch (teclaQt) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_F2:
        return 113;
    case Qt::Key_F5:
        return 116;
    default:
        return 0;
    }
}

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

} // namespace comunesQVX
