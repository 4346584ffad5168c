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

// The screen turns them on and off as it goes, and is told nothing. An extra button is another command's from one
// moment to the next, which its caption tells.
void Apagar(const toolbarQVX::Controles &barra)
{
    static const QStringList cambian{"Nuevo", "Eliminar", "Reactivar", "Aceptar"};
    static const QStringList extras{"B1", "B2", "B3"};
    for (QAction *orden : barra.actions()) {
        const bool extra = extras.contains(orden->objectName());
        if (!extra && !cambian.contains(orden->objectName()))
            continue;
        const auto apagar = [orden, extra] { orden->setEnabled(extra && orden->text() == "Exportar XML"); };
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
