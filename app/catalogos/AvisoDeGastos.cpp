#include "app/catalogos/AvisoDeGastos.h"

#include "app/Textos.h"
#include "app/Trampas.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "plan/Gastos.h"

#include <QEvent>
#include <QLoggingCategory>

namespace
{

// Neither the start nor the loading of a tree waits for it.
constexpr int Calma = 500; // milliseconds

} // namespace

Q_LOGGING_CATEGORY(registroGastos, "quorvex.gastos")

AvisoDeGastos::AvisoDeGastos(QObject *ventana) : QObject(ventana)
{
    ventana->installEventFilter(this);
    espera.setSingleShot(true);
    espera.setInterval(Calma);
    connect(&espera, &QTimer::timeout, this, &AvisoDeGastos::Contar);
}

void AvisoDeGastos::Mirar(const QString &tipoEquipo)
{
    if (tipo != tipoEquipo)
        cuantas = 0;
    tipo = tipoEquipo;
    if (tipo.isEmpty())
        espera.stop();
    else
        espera.start();
}

bool AvisoDeGastos::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::WindowActivate && cuantas > 0)
        espera.start();
    return QObject::eventFilter(objeto, evento);
}

QString AvisoDeGastos::Texto() const
{
    return cuantas == 0 ? QString()
                        : "Hay " + Cuantos(cuantas, "refacción", "refacciones")
                              + " sin tipo de gasto: Herramientas, Completar tipos de gasto…";
}

// Nobody asked for it: where it cannot be counted, the next command says what is wrong with the database.
void AvisoDeGastos::Contar()
{
    qvx::Conexion &conexion = Base();
    if (conexion.EnTransaccion()) {
        espera.start();
        return;
    }
    try {
        cuantas = qvx::ContarSinGasto(conexion, tipo);
    } catch (const qvx::ErrorEjecucion &error) {
        cuantas = 0;
        qCWarning(registroGastos) << "No se contaron las refacciones sin tipo de gasto:" << error.Descripcion();
    }
    Q_EMIT Cambio();
}
