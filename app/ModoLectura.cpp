#include "app/ModoLectura.h"

#include "app/Trampas.h"
#include "controls/Controles.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "data/Conexion.h"

#include <QAction>
#include <QApplication>
#include <QEvent>

namespace
{

// An extra button's command is known by its caption.
bool Cambia(const QAction &orden)
{
    static const QStringList cambian{"Nuevo", "Eliminar", "Reactivar", "Aceptar"};
    const bool extra = QStringList{"B1", "B2", "B3"}.contains(orden.objectName());
    return cambian.contains(orden.objectName()) || (extra && orden.text() != "Exportar XML");
}

// The screen turns them on and off as it goes, and is told nothing.
void Apagar(const toolbarQVX::Controles &barra)
{
    for (QAction *orden : barra.actions()) {
        const auto apagar = [orden] { orden->setEnabled(!Cambia(*orden) && orden->isEnabled()); };
        if (Cambia(*orden) || orden->objectName().startsWith(QLatin1Char('B')))
            QObject::connect(orden, &QAction::changed, orden, apagar);
        apagar();
    }
}

} // namespace

ModoLectura::ModoLectura(QObject *padre) : QObject(padre)
{
    if (Base().SoloLectura())
        qApp->installEventFilter(this);
}

bool ModoLectura::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() != QEvent::Polish)
        return false;
    if (const auto *barra = qobject_cast<toolbarQVX::Controles *>(objeto))
        Apagar(*barra);
    if (auto *lista = qobject_cast<comunesQVX::ListView *>(objeto))
        lista->setDragDropMode(QAbstractItemView::NoDragDrop);
    if (auto *arbol = qobject_cast<comunesQVX::TreeView *>(objeto))
        arbol->setDragDropMode(QAbstractItemView::NoDragDrop);
    return false;
}

QString QuienMira()
{
    return Base().SoloLectura() ? "Esta sesión" : "Su usuario";
}
