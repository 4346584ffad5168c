#include "app/Ventana.h"

#include "app/MenuArchivo.h"
#include "app/OrdenDeMenu.h"
#include "app/VentanaDelManual.h"

#include <QApplication>
#include <QMenuBar>

bool Ventana::Ocupada() const
{
    return QApplication::activeModalWidget() != nullptr;
}

void Ventana::PonerArchivo(bool hayBase)
{
    auto *archivo = new MenuArchivo(*this, hayBase);
    connect(archivo, &MenuArchivo::BasePedida, this, &Ventana::BasePedida);
    connect(archivo, &MenuArchivo::CierrePedido, this, &Ventana::CierrePedido);
    menuBar()->addMenu(archivo);
}

QMenu *Ventana::PonerAyuda(const std::function<QString()> &capitulo)
{
    QMenu *ayuda = menuBar()->addMenu("A&yuda");
    ayuda->setObjectName("mnuAyuda");
    AgregarOrden(*ayuda, *this, "mnuManual", "&Manual", QKeySequence(Qt::Key_F1),
                 [this, capitulo] { AbrirManual(capitulo()); });
    AgregarOrden(*ayuda, *this, "mnuTeclas", "&Teclas", {}, [this] { AbrirManual("Teclas"); });
    return ayuda;
}

void Ventana::AbrirManual(const QString &capitulo)
{
    if (!manual)
        manual = new VentanaDelManual(this);
    manual->Abrir(capitulo);
}
