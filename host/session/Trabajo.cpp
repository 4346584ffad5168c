#include "session/Trabajo.h"

#include "session/Aplicacion.h"

#include <QScopedValueRollback>
#include <QThread>
#include <utility>

namespace qvx
{

namespace
{

// Milliseconds.
constexpr qint64 Espera = 200;
constexpr qint64 EntreDibujos = 100;

Trabajo *enCurso = nullptr;

int Nivel()
{
    return QThread::currentThread()->loopLevel();
}

void DibujarVentanas()
{
    // Not without the sockets' events: by some of them a window system says that a window may be drawn.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

Trabajo::Trabajo(Aplicacion &aplicacion_) : aplicacion(aplicacion_), anterior(enCurso), nivel(Nivel())
{
    if (anterior)
        anterior->Ceder();
    reloj.start();
    siguiente = Espera;
    enCurso = this;
}

Trabajo::~Trabajo()
{
    Ceder();
    Soltar(true);
    enCurso = anterior;
}

bool Trabajo::Empieza()
{
    return !enCurso || Nivel() > enCurso->nivel;
}

void Trabajo::AntesDeSentencia()
{
    if (enCurso && !enCurso->dibujando)
        enCurso->Contar();
}

void Trabajo::Contar()
{
    ++sentencias;
    if (!reloj.isValid()) {
        reloj.start();
        siguiente = Espera;
    }
    if (reloj.elapsed() < siguiente)
        return;
    const QScopedValueRollback guarda(dibujando, true);
    if (!std::exchange(visible, true))
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    Q_EMIT aplicacion.Avance(sentencias);
    DibujarVentanas();
    siguiente = reloj.elapsed() + EntreDibujos;
}

void Trabajo::Dibujar()
{
    if (!enCurso) // nothing is running that others could disturb
        return DibujarVentanas();
    if (enCurso->dibujando)
        return;
    const QScopedValueRollback guarda(enCurso->dibujando, true);
    DibujarVentanas();
}

bool Trabajo::Dibujando()
{
    return enCurso && enCurso->dibujando && Nivel() == enCurso->nivel;
}

// What the window system says that the person did, its wish to close a window among it, waits in the toolkit already;
// posted keys and clicks do not. Calls that were queued cannot be kept: nobody else can copy them. Those that input has
// left behind were made before the job began.
bool Trabajo::Retener(QObject *receptor, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::Timer: // comes again; the windows' own tell them to draw
        return !receptor->isWindowType();
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: // what is dragged would be gone later
        evento->ignore();
        return true;
    case QEvent::DeferredDelete: // asked for by a loop inside the job, which may still be using the object
    case QEvent::FocusIn:
    case QEvent::FocusOut:    // ends the editing of a label
    case QEvent::InputMethod: // from another program
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        break;
    default:
        if (!evento->isInputEvent())
            return false;
    }
    enCurso->retenidos.push_back({receptor, std::unique_ptr<QEvent>(evento->clone())});
    evento->ignore();
    return true;
}

// Gives the word to the loop inside the job, or to whoever comes after it.
void Trabajo::Ceder()
{
    reloj.invalidate();
    if (std::exchange(visible, false)) {
        QGuiApplication::restoreOverrideCursor();
        Q_EMIT aplicacion.Reposo();
    }
    Soltar(false);
}

// Posts what was held back, in its order. Objects are destroyed only by the loop that the job came from.
void Trabajo::Soltar(bool destrucciones)
{
    for (Retenido &retenido : std::exchange(retenidos, {})) {
        if (!retenido.receptor)
            continue;
        if (retenido.evento->type() == QEvent::DeferredDelete && !destrucciones)
            retenidos.push_back(std::move(retenido));
        else
            QCoreApplication::postEvent(retenido.receptor, retenido.evento.release());
    }
}

} // namespace qvx
