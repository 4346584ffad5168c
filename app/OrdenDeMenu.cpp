#include "app/OrdenDeMenu.h"

#include "app/Ventana.h"

#include <QAction>
#include <QMenu>

QAction *AgregarOrden(QMenu &menu, const Ventana &ventana, const QString &nombre, const QString &texto,
                      const QKeySequence &tecla, const std::function<void()> &hacer)
{
    QAction *orden = menu.addAction(texto);
    orden->setObjectName(nombre);
    orden->setShortcut(tecla);
    orden->setAutoRepeat(false);
    QObject::connect(orden, &QAction::triggered, &ventana, [&ventana, hacer] {
        if (!ventana.Ocupada())
            hacer();
    });
    return orden;
}
