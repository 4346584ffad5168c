#include "session/Aplicacion.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"
#include "session/Trabajo.h"

#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QThread>
#include <QTranslator>
#include <optional>

namespace qvx
{

namespace
{

bool TransaccionAbierta()
{
    return Sesion::Abierta() && Sesion::Actual().Conexion().EnTransaccion();
}

void Avisar(const QString &error)
{
    if (!error.isEmpty() && Sesion::Abierta())
        Sistema().Mensaje(error, mensaje::Critico, "Quorvex", 0, "QVX", "ERR-ID:1000000");
}

// The toolkit's words in Spanish. Its translation still has some under the name of the class that spoke them before.
class Traductor : public QTranslator
{
public:
    using QTranslator::QTranslator;

    QString translate(const char *contexto, const char *texto, const char *comentario, int cuantos) const override
    {
        const QString traducido = QTranslator::translate(contexto, texto, comentario, cuantos);
        if (traducido.isEmpty() && qstrcmp(contexto, "QAbstractFileIconProvider") == 0)
            return QTranslator::translate("QFileDialog", texto, comentario, cuantos);
        return traducido;
    }
};

// Keys and clicks that waited for a job come all at once. What one of them has left to be called, such as the end of a
// label's editing, is done before the next begins a job.
void HacerLoPendiente(const QObject &receptor, const QEvent &evento)
{
    if (receptor.isWindowType() && evento.spontaneous() && evento.isInputEvent())
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

} // namespace

Aplicacion::Aplicacion(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName("quorvex");
    setApplicationDisplayName("Quorvex");
    setDesktopFileName("org.quorvex.quorvex");
    setWindowIcon(QIcon(":/controls/quorvex.svg"));
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Mexico));
    auto *traductor = new Traductor(this); // the toolkit's own dialogs
    if (traductor->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(traductor);
}

bool Aplicacion::notify(QObject *receptor, QEvent *evento)
{
    // Other threads, the toolkit's own among them, have no business with the session.
    if (QThread::currentThread() != thread())
        return QApplication::notify(receptor, evento);
    QString error;
    // Part of the job that is running: no event of the session, or what the job reads would not be of one moment.
    if (Trabajo::Dibujando()) {
        const bool resultado = Trabajo::Retener(receptor, evento) || Entregar(receptor, evento, error);
        Avisar(error);
        return resultado;
    }
    std::optional<Trabajo> trabajo;
    if (Trabajo::Empieza()) {
        const QPointer<QObject> vivo = receptor;
        HacerLoPendiente(*receptor, *evento);
        if (!vivo)
            return true;
        trabajo.emplace(*this);
    }
    const bool abiertaAntes = TransaccionAbierta();
    if (Sesion::Abierta())
        Sesion::Actual().Conexion().EntrarEnEvento();
    const bool resultado = Entregar(receptor, evento, error);
    if (Sesion::Abierta())
        Sesion::Actual().Conexion().SalirDeEvento();
    if (!abiertaAntes && TransaccionAbierta())
        Sesion::Actual().Conexion().CerrarAbandonada();
    Avisar(error);
    return resultado;
}

bool Aplicacion::Entregar(QObject *receptor, QEvent *evento, QString &error)
{
    try {
        return QApplication::notify(receptor, evento);
    } catch (const ErrorEjecucion &sinTrampa) {
        error = sinTrampa.Descripcion();
        return false;
    }
}

} // namespace qvx
