#include "app/MenuEdicion.h"

#include <QApplication>
#include <QMenuBar>

MenuEdicion::MenuEdicion(QWidget &ventana_) : QMenu("E&dición", &ventana_), ventana(ventana_)
{
    setObjectName("mnuEdicion");
    Agregar("mnuDeshacer", "Deshacer lo &escrito", "Ctrl+Z", "undo", true);
    addSeparator();
    Agregar("mnuCortar", "Cor&tar", "Ctrl+X", "cut", true);
    Agregar("mnuCopiar", "&Copiar", "Ctrl+C", "copy", false);
    Agregar("mnuPegar", "&Pegar", "Ctrl+V", "paste", true);
    addSeparator();
    Agregar("mnuSeleccionarTodo", "&Seleccionar todo", "Ctrl+A", "selectAll", false);
    connect(this, &QMenu::aboutToShow, this, &MenuEdicion::PonerEstado);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget * /*anterior*/, QWidget *actual) {
        if (actual && actual->window() == &ventana && !qobject_cast<QMenuBar *>(actual))
            caja = actual;
    });
}

// hacer: the slot of text boxes. cambia: it changes the text.
void MenuEdicion::Agregar(const QString &nombre, const QString &texto, const QString &tecla, const char *hacer,
                          bool cambia)
{
    QAction *orden = addAction(texto + "\t" + tecla, this, [this, hacer] {
        if (caja)
            QMetaObject::invokeMethod(caja, hacer);
    });
    orden->setObjectName(nombre);
    orden->setData(QVariant::fromValue(QPair<QByteArray, bool>(hacer, cambia)));
}

// A box that is only read is not changed; a list has another meaning of "everything", and no text.
void MenuEdicion::PonerEstado()
{
    const bool esTexto = caja && caja->metaObject()->indexOfSlot("copy()") >= 0;
    const bool soloSeLee = esTexto && caja->property("readOnly").toBool();
    for (QAction *orden : actions())
        if (orden->data().isValid())
            orden->setEnabled(esTexto && !(soloSeLee && orden->data().value<QPair<QByteArray, bool>>().second));
}
