#include "session/Aplicacion.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QThread>
#include <QTranslator>

namespace qvx
{

namespace
{

bool TransaccionAbierta()
{
    return Sesion::Abierta() && Sesion::Actual().Conexion().EnTransaccion();
}

} // namespace

Aplicacion::Aplicacion(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName("quorvex");
    setApplicationDisplayName("Quorvex");
    setWindowIcon(QIcon(":/controls/quorvex.svg"));
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Mexico));
    auto *traductor = new QTranslator(this); // the toolkit's own dialogs
    if (traductor->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(traductor);
}

bool Aplicacion::notify(QObject *receptor, QEvent *evento)
{
    // Other threads, the toolkit's own among them, have no business with the session.
    if (QThread::currentThread() != thread())
        return QApplication::notify(receptor, evento);
    const bool abiertaAntes = TransaccionAbierta();
    if (Sesion::Abierta())
        Sesion::Actual().Conexion().EntrarEnEvento();
    bool resultado = false;
    QString error;
    try {
        resultado = QApplication::notify(receptor, evento);
    } catch (const ErrorEjecucion &sinTrampa) {
        error = sinTrampa.Descripcion();
    }
    if (Sesion::Abierta())
        Sesion::Actual().Conexion().SalirDeEvento();
    if (!abiertaAntes && TransaccionAbierta())
        Sesion::Actual().Conexion().CerrarAbandonada();
    if (!error.isEmpty() && Sesion::Abierta())
        Sistema().Mensaje(error, mensaje::Critico, "Quorvex", 0, "QVX", "ERR-ID:1000000");
    return resultado;
}

} // namespace qvx
