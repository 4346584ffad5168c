#include "app/Trampas.h"

#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

void ConTrampa(const QWidget &ventana, int identificador, const std::function<void()> &pasos)
{
    try {
        pasos();
    } catch (const qvx::ErrorEjecucion &error) {
        qvx::Sistema().Mensaje(error.Descripcion(), qvx::mensaje::Critico, "Quorvex", ventana.window()->winId(), "QVX",
                               "ERR-ID:" + QString::number(identificador));
    }
}
