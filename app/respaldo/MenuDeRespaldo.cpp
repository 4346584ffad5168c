#include "app/respaldo/MenuDeRespaldo.h"

#include "app/Espera.h"
#include "app/OrdenDeMenu.h"
#include "app/Trampas.h"
#include "app/VentanaPrincipal.h"
#include "app/respaldo/CopiaDelDia.h"
#include "app/respaldo/DialogoCopias.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace
{

int DecirDeCopias(const VentanaPrincipal &ventana, const QString &texto, int identificador)
{
    return qvx::Sistema().Mensaje(texto, qvx::mensaje::Informacion, "Quorvex", ventana.winId(), "QVX",
                                  "ERR-ID:" + QString::number(identificador));
}

} // namespace

MenuDeRespaldo::MenuDeRespaldo(VentanaPrincipal &ventana_, const QString &base_)
    : QObject(&ventana_), ventana(ventana_), base(base_)
{
    auto &menu = *ventana.findChild<QMenu *>("mnuArchivo");
    auto *salir = menu.findChild<QAction *>("mnuSalir", Qt::FindDirectChildrenOnly);
    for (QAction *orden : {AgregarOrden(menu, ventana, "mnuCopiaAhora", "&Copia ahora…", {}, [this] { Copiar(); }),
                           AgregarOrden(menu, ventana, "mnuRestaurar", "Res&taurar…", {}, [this] { Restaurar(); })})
        menu.insertAction(salir, orden);
    menu.insertSeparator(salir);
}

bool MenuDeRespaldo::EnServidor()
{
    if (base.isEmpty())
        DecirDeCopias(ventana,
                      "La base de datos está en un servidor: la respalda y la restaura quien lo administra. El manual "
                      "dice cómo, en «Copias de la base de datos».",
                      1000125);
    return base.isEmpty();
}

void MenuDeRespaldo::Copiar()
{
    if (EnServidor())
        return;
    const qvx::LugarDeCopias lugar = respaldo::LugarDe(base);
    QString destino = qvx::Sesion::Actual().Interaccion().ElegirArchivo(
        {"Copia ahora", "Base de datos de Quorvex|*.db",
         QFileInfo(base).completeBaseName() + "_" + qvx::Sesion::Actual().Ahora().toString("yyyy-MM-dd_HHmm") + ".db",
         QDir(lugar.carpeta).exists() ? lugar.carpeta : QString(), true},
        &ventana);
    if (destino.isEmpty())
        return;
    if (QFileInfo(destino).suffix().isEmpty())
        destino += ".db";
    ConTrampa(ventana, 1000126, [&] {
        {
            const Espera espera;
            qvx::Respaldar(base, destino);
        }
        DecirDeCopias(ventana, "Se hizo la copia «" + QDir::toNativeSeparators(destino) + "».", 1000127);
    });
}

void MenuDeRespaldo::Restaurar()
{
    if (EnServidor())
        return;
    QString todo;
    ConTrampa(ventana, 1000128, [&] {
        DialogoCopias dialogo(base, &ventana);
        dialogo.exec();
        if (dialogo.HuboCambios())
            ventana.PlanCambiado();
        todo = dialogo.TodoDe();
    });
    if (!todo.isEmpty())
        Q_EMIT TodoPedido(todo);
}
