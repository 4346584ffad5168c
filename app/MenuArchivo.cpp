#include "app/MenuArchivo.h"

#include "app/Ajustes.h"
#include "app/DialogoServidor.h"
#include "app/OrdenDeMenu.h"
#include "app/Ventana.h"
#include "session/Interaccion.h"

#include <QFileInfo>

namespace
{

constexpr auto Carpeta = "abrir/carpeta";
constexpr int ConTecla = 9; // of the recent ones, those that a digit chooses

} // namespace

MenuArchivo::MenuArchivo(Ventana &ventana_, bool hayBase) : QMenu("&Archivo", &ventana_), ventana(ventana_)
{
    setObjectName("mnuArchivo");
    AgregarOrden(*this, ventana, "mnuAbrirBase", "A&brir base de datos…", QKeySequence("Ctrl+O"),
                 [this] { AbrirArchivo(); });
    AgregarOrden(*this, ventana, "mnuEntrarServidor", "&Entrar a un servidor…", QKeySequence("Ctrl+Shift+O"),
                 [this] { EntrarAServidor(); });
    recientes = addMenu("&Recientes");
    recientes->setObjectName("mnuRecientes");
    connect(this, &QMenu::aboutToShow, this, &MenuArchivo::LlenarRecientes);
    AgregarOrden(*this, ventana, "mnuCerrarBase", "&Cerrar la base de datos", QKeySequence("Ctrl+Shift+W"), [this] {
        Q_EMIT CierrePedido();
    })->setEnabled(hayBase);
    addSeparator();
    AgregarOrden(*this, ventana, "mnuSalir", "&Salir", QKeySequence("Ctrl+Q"), [this] { ventana.close(); });
}

void MenuArchivo::AbrirArchivo()
{
    const QString archivo = ventana.Personas().ElegirArchivo(
        {"Abrir base de datos", "Base de datos de Quorvex|*.db", {}, ajustes::Abrir().value(Carpeta).toString(), false},
        &ventana);
    if (archivo.isEmpty())
        return;
    ajustes::Abrir().setValue(Carpeta, QFileInfo(archivo).absolutePath());
    Q_EMIT BasePedida(archivo);
}

void MenuArchivo::EntrarAServidor()
{
    if (const QString direccion = DialogoServidor::Preguntar(&ventana); !direccion.isEmpty())
        Q_EMIT BasePedida(direccion);
}

void MenuArchivo::LlenarRecientes()
{
    recientes->clear();
    int numero = 0;
    for (const QString &direccion : ajustes::Recientes()) {
        ++numero;
        const QString texto = QString(direccion).replace("&", "&&");
        AgregarOrden(*recientes, ventana, QString("mnuReciente%1").arg(numero),
                     numero <= ConTecla ? QString("&%1 %2").arg(QString::number(numero), texto) : texto, {},
                     [this, direccion] { Q_EMIT BasePedida(direccion); });
    }
    recientes->setEnabled(!recientes->isEmpty());
}
