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
    if (const auto *arbol = static_cast<const TreeView *>(treeWidget()))
        setIcon(0, arbol->Imagenes().Imagen(indice));
}

} // namespace comunesQVX
