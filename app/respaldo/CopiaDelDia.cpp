#include "app/respaldo/CopiaDelDia.h"

#include "app/Ajustes.h"
#include "app/Espera.h"
#include "app/Trampas.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>
#include <memory>

namespace respaldo
{

namespace
{

constexpr int SegundosHastaRepetir = 3600;
constexpr int MilisegundosDeEspera = 500;

struct Dia {
    QDate copiado;
    QDateTime fallo;
};

} // namespace

qvx::LugarDeCopias LugarDe(const QString &base)
{
    const QFileInfo archivo(base);
    const QString elegida = ajustes::CarpetaDeCopias();
    return {archivo.absoluteFilePath(), elegida.isEmpty() ? archivo.absolutePath() + "/respaldos" : elegida,
            ajustes::CopiasQueQuedan()};
}

void CopiarCadaDia(qvx::Sesion &sesion, const QString &base, std::function<void(const QString &motivo)> avisar)
{
    const auto dia = std::make_shared<Dia>();
    sesion.Conexion().AntesDeEscribir([&sesion, base, avisar = std::move(avisar), dia] {
        const QDateTime ahora = sesion.Ahora();
        if (dia->copiado == ahora.date()
            || (dia->fallo.isValid() && qAbs(dia->fallo.secsTo(ahora)) < SegundosHastaRepetir))
            return;
        const Espera espera; // a large file takes a while
        try {
            qvx::RespaldarDelDia(LugarDe(base), ahora.date());
            dia->copiado = ahora.date();
        } catch (const qvx::ErrorEjecucion &error) {
            dia->fallo = ahora;
            avisar("No se hizo la copia de seguridad de hoy. " + error.Descripcion()
                   + " Los cambios se guardan de todos modos. La copia se intentará de nuevo dentro de una hora; "
                     "en Archivo, Restaurar se le elige otra carpeta.");
        }
    });
}

void AvisarDespues(QWidget &ventana, const QString &motivo)
{
    // By a timer, which waits for the running job.
    QTimer::singleShot(MilisegundosDeEspera, &ventana, [&ventana, motivo] {
        if (QApplication::activeModalWidget() || QApplication::activePopupWidget() || Base().EnTransaccion())
            return AvisarDespues(ventana, motivo);
        qvx::Sistema().Mensaje(motivo, qvx::mensaje::Exclamacion, "Quorvex", ventana.winId(), "QVX", "ERR-ID:1000120");
    });
}

} // namespace respaldo
