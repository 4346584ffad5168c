#include "app/Escritorio.h"

#include "app/Acceso.h"
#include "app/Ajustes.h"
#include "app/Componente.h"
#include "app/InteraccionDelEscritorio.h"
#include "app/Reporte.h"
#include "app/VentanaPrincipal.h"
#include "app/VentanaSinBase.h"
#include "app/respaldo/CopiaDelDia.h"
#include "app/respaldo/MenuDeRespaldo.h"
#include "data/Conexion.h"
#include "plan/Restauracion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QApplication>
#include <QFileInfo>
#include <QPointer>
#include <QScopeGuard>
#include <QTimer>

namespace
{

// A file by its whole path, wherever the program is started.
QString DireccionDe(const Argumentos &argumentos)
{
    return argumentos.servidor ? argumentos.direccion : QFileInfo(argumentos.baseDatos).absoluteFilePath();
}

QString NombreDe(const Argumentos &argumentos)
{
    if (!argumentos.servidor)
        return argumentos.baseDatos;
    return argumentos.servidor->Nombre() + (qvx::Sesion::Actual().Conexion().SoloLectura() ? ", solo para mirar" : "");
}

} // namespace

Escritorio::Escritorio() = default;

Escritorio::~Escritorio()
{
    Terminar();
}

void Escritorio::Empezar(const Argumentos &nuevos, std::unique_ptr<qvx::Conexion> conexion,
                         std::unique_ptr<qvx::Interaccion> personas)
{
    argumentos = nuevos;
    sesion = IniciarSesion(argumentos, std::move(conexion), std::move(personas));
    ventana = std::make_unique<VentanaPrincipal>(CrearPantalla(), argumentos.tipoEquipo, sesion->Operador(),
                                                 NombreDe(argumentos));
    // When what was saved has been shown.
    sesion->Conexion().AlAvisar([this](const QString &aviso) {
        QTimer::singleShot(0, ventana.get(), [this, aviso] {
            ventana->Personas().Mensaje(
                {aviso, qvx::mensaje::Exclamacion, "Quorvex", ventana->winId(), "QVX", "ERR-ID:1000227", {}});
        });
    });
    ventana->Retomar(DireccionDe(argumentos), argumentos.servidor.has_value());
    // The command that asks for it belongs to the window that goes.
    connect(ventana.get(), &VentanaPrincipal::BasePedida, this, &Escritorio::Cambiar, Qt::QueuedConnection);
    connect(ventana.get(), &VentanaPrincipal::CierrePedido, this, &Escritorio::Cerrar, Qt::QueuedConnection);
    PonerCopias();
    Mostrar(*ventana);
}

// Served to a browser there is no window manager: the window takes the whole screen.
void Escritorio::Mostrar(QWidget &cual)
{
    if (qEnvironmentVariableIsSet("QVX_PANTALLA_COMPLETA"))
        cual.showFullScreen();
    else
        cual.show();
}

// Between two windows there is none, and the program goes on.
void Escritorio::EntreVentanas(const std::function<void()> &pasos)
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const auto otraVez = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(true); });
    Terminar();
    pasos();
}

void Escritorio::Cerrar()
{
    if (!ventana || ventana->Ocupada())
        return;
    EntreVentanas([this] {
        sinBase = std::make_unique<VentanaSinBase>();
        connect(sinBase.get(), &VentanaSinBase::BasePedida, this, &Escritorio::Cambiar, Qt::QueuedConnection);
        Mostrar(*sinBase);
    });
}

void Escritorio::Cambiar(const QString &direccion)
{
    const ::Ventana &actual = *(ventana ? static_cast<::Ventana *>(ventana.get()) : sinBase.get());
    const auto avisar = [&](const qvx::ErrorEjecucion &error, const QString &detalles) {
        const QString sigue = ventana ? "No se abrió la otra base de datos: sigue abierta la que estaba.\n\n"
                                      : "No se abrió la base de datos.\n\n";
        actual.Personas().Mensaje({sigue + error.Descripcion(), qvx::mensaje::Exclamacion, "Quorvex", actual.winId(),
                                   "QVX", "ERR-ID:1000065", detalles});
    };
    if (actual.Ocupada())
        return;
    std::unique_ptr<qvx::Conexion> conexion;
    Argumentos otros;
    try {
        otros = argumentos.Hacia(direccion);
        ExigirBase(otros);
        conexion = AbrirBaseConVentana(otros);
        if (!conexion)
            return;
        OperadorDe(otros, *conexion); // while the present one is still open
    } catch (const SinAcceso &error) {
        return avisar(error, error.Detalles());
    } catch (const qvx::ErrorEjecucion &error) {
        if (!QFileInfo::exists(direccion) && !otros.servidor)
            ajustes::OlvidarBase(direccion);
        return avisar(error, error.Aclaracion());
    }
    EntreVentanas([&] {
        const int fin = ConReporte([&] {
            Empezar(otros, std::move(conexion), std::make_unique<InteraccionDelEscritorio>());
            return salida::Hecho;
        });
        if (fin != salida::Hecho) // nothing is left to work with
            QCoreApplication::exit(fin);
    });
}

// The copy is made ready while all is as it was: one that cannot be restored from closes nothing.
void Escritorio::Restaurar(const QString &copia)
{
    const auto decir = [this](const QString &texto, int estilo) {
        qvx::Sistema().Mensaje(texto, estilo, "Quorvex", ventana->winId(), "QVX", "ERR-ID:1000129");
    };
    if (ventana->Ocupada())
        return;
    std::unique_ptr<qvx::CopiaLista> lista;
    try {
        lista = std::make_unique<qvx::CopiaLista>(copia, argumentos.baseDatos);
    } catch (const qvx::ErrorEjecucion &error) {
        return decir("No se restauró nada. " + error.Descripcion(), qvx::mensaje::Critico);
    }
    const QString fecha = sesion->Firmante().fecha();
    const qvx::Firmante firmante{sesion->Operador(), [fecha] { return fecha; }};
    const QDateTime ahora = sesion->Ahora();
    const Argumentos mismos = argumentos.Hacia(argumentos.baseDatos);
    QString hecho;
    QString fallo;
    int fin = salida::Hecho;
    EntreVentanas([&] {
        try {
            const QString antes = lista->RestaurarTodo(respaldo::LugarDe(mismos.baseDatos), firmante, ahora);
            hecho = "Se restauró toda la base de datos. Como estaba antes quedó en la copia «" + antes + "».";
        } catch (const qvx::ErrorEjecucion &error) {
            fallo = "No se restauró nada: la base de datos está como estaba. " + error.Descripcion();
        }
        lista.reset();
        fin = ConReporte([&] {
            Empezar(mismos, AbrirBase(mismos), std::make_unique<InteraccionDelEscritorio>());
            return salida::Hecho;
        });
    });
    if (fin != salida::Hecho)
        return QCoreApplication::exit(fin);
    decir(hecho + fallo, fallo.isEmpty() ? qvx::mensaje::Informacion : qvx::mensaje::Critico);
}

// Of a file; the command that restores belongs to the window that goes.
void Escritorio::PonerCopias()
{
    const bool enArchivo = !argumentos.servidor;
    auto *menu = new MenuDeRespaldo(*ventana, enArchivo ? argumentos.baseDatos : QString());
    connect(menu, &MenuDeRespaldo::TodoPedido, this, &Escritorio::Restaurar, Qt::QueuedConnection);
    if (enArchivo)
        respaldo::CopiarCadaDia(*sesion, argumentos.baseDatos, [esta = QPointer(ventana.get())](const QString &motivo) {
            if (esta)
                respaldo::AvisarDespues(*esta, motivo);
        });
}

void Escritorio::Terminar()
{
    if (ventana)
        ventana->close();
    ventana.reset();
    if (sinBase)
        sinBase->close();
    sinBase.reset();
    // The screen is destroyed by an event of its own, and belongs to this session.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    sesion.reset();
}
