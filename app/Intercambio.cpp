#include "app/Intercambio.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/Componente.h"
#include "app/InteraccionDeConsola.h"
#include "app/comparar/OrdenesDeComparar.h"
#include "component/Esquema.h"
#include "controls/Controles.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Momento.h"
#include "session/Sesion.h"
#include "system/UnidadC.h"
#include "xml/EsquemaXml.h"

#include <QAction>
#include <QFileInfo>
#include <QTextStream>

namespace
{

template <class Control>
Control &Buscar(const QWidget &pantalla, const QString &nombre)
{
    auto *control = pantalla.findChild<Control *>(nombre);
    if (!control)
        throw qvx::ErrorEjecucion(qvx::errores::ElementoNoEncontrado, "La pantalla no tiene el control " + nombre);
    return *control;
}

// Presses an extra button of the screen, if it offers the command.
bool Pulsar(const QWidget &pantalla, const QString &boton, const QString &comando)
{
    auto &accion = Buscar<QAction>(pantalla, boton);
    if (accion.text() != comando)
        return false;
    accion.trigger();
    return true;
}

bool Exportar(const QWidget &pantalla, const QString &clave)
{
    Buscar<textoQVX::txtQVX>(pantalla, "txtTipoEquipo").Elegir(clave);
    if (Pulsar(pantalla, "B1", "Exportar XML"))
        return true;
    QTextStream(stderr) << "El tipo de equipo " << clave << " no existe, o no tiene partes que exportar." << Qt::endl;
    return false;
}

bool Validar(const QString &archivo)
{
    const qvx::EsquemaXml esquema(qvx::RutaEnUnidadC(KT580::RutaEsquema));
    qvx::Documento documento;
    if (documento.Cargar(archivo, esquema)) {
        QTextStream(stdout) << archivo << ": cumple con el formato del mantenimiento." << Qt::endl;
        return true;
    }
    QTextStream salida(stderr);
    for (const qvx::ErrorXml &error : documento.Errores())
        salida << archivo << ": " << error.Texto() << Qt::endl;
    return false;
}

} // namespace

bool Intercambiar(const Argumentos &argumentos)
{
    if (argumentos.validar)
        return Validar(argumentos.archivo);
    auto consola =
        std::make_unique<InteraccionDeConsola>(QFileInfo(argumentos.archivo).absoluteFilePath(), argumentos.si);
    const InteraccionDeConsola &respuestas = *consola;
    const auto sesion = IniciarSesion(argumentos, AbrirBase(argumentos), std::move(consola));
    const std::unique_ptr<QWidget> pantalla(CrearPantalla());
    const qvx::Momento momento(sesion->Conexion());
    if (argumentos.importar && !argumentos.si)
        MostrarImportacion(sesion->Conexion(), argumentos);
    const bool ofrecido =
        argumentos.importar ? Pulsar(*pantalla, "B2", "Importar XML") : Exportar(*pantalla, argumentos.exportar);
    return ofrecido && !respuestas.Rechazado();
}
