#pragma once

#include "component/FormularioConPadre.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QThread>

// The error traps of the component's procedures. A trap reports the run-time error with its procedure's own identifier
// and leaves the procedure; it undoes nothing, unless its name says so. That a transaction could not begin, which the
// embedded engine says with the first statement in it, is the error of the procedure that began it: the traps of those
// that it calls let it pass.
//
// A procedure whose form went while it waited for a person ends where its event came in: the frames of the same loop
// inside it let FormularioIdo pass, since they would go on with what is no longer there.
namespace Trampa
{

class Marco
{
public:
    Marco() : anterior(actual), nivel(QThread::currentThread()->loopLevel()) { actual = this; }
    ~Marco() { actual = anterior; }
    Marco(const Marco &) = delete;
    Marco &operator=(const Marco &) = delete;
    // Whether the event came in here.
    bool Exterior() const { return !anterior || anterior->nivel < nivel; }

private:
    static inline const Marco *actual = nullptr;
    const Marco *const anterior;
    const int nivel;
};

// Events whose procedures have traps of their own.
template <class Pasos>
void enEvento(Pasos &&pasos)
{
    const Marco marco;
    try {
        pasos();
    } catch (const qvx::FormularioIdo &) {
        if (!marco.Exterior())
            throw;
    }
}

// Main screen and part dialog: the title is the procedure's name.
template <class Pasos>
void en(FormularioConPadre &formulario, const QString &procedimiento, int identificador, Pasos &&pasos)
{
    enEvento([&] {
        try {
            pasos();
        } catch (const qvx::ErrorEjecucion &error) {
            formulario.Mensaje(error.Descripcion(), qvx::mensaje::Critico, procedimiento, identificador);
        }
    });
}

// The same for a procedure with a transaction, which is taken back before the report: the message waits in an event
// loop.
template <class Pasos>
void enTransaccion(FormularioConPadre &formulario, const QString &procedimiento, int identificador, Pasos &&pasos)
{
    en(formulario, procedimiento, identificador, [&] {
        try {
            pasos();
        } catch (const qvx::ErrorEjecucion &) {
            Publico::Sistema->Conexion().RollbackTrans();
            throw;
        }
    });
}

// Service editor: the title is "ERROR", and the text begins with the procedure's name.
inline void ReportarEnEditor(FormularioConPadre &formulario, const QString &procedimiento, int identificador,
                             const QString &descripcion)
{
    formulario.Mensaje(procedimiento + " - \r\n" + descripcion, qvx::mensaje::Critico, "ERROR", identificador);
}

template <class Pasos>
void enEditor(FormularioConPadre &formulario, const QString &procedimiento, int identificador, Pasos &&pasos)
{
    enEvento([&] {
        try {
            pasos();
        } catch (const qvx::ErrorEjecucion &error) {
            ReportarEnEditor(formulario, procedimiento, identificador, error.Descripcion());
        }
    });
}

// Steps of a save in the editor that have an identifier of their own: the transaction is taken back before the report.
template <class Pasos>
bool deshaciendo(FormularioConPadre &formulario, const QString &procedimiento, int identificador, Pasos &&pasos)
{
    try {
        pasos();
        return true;
    } catch (const qvx::ErrorDeComienzo &) {
        throw;
    } catch (const qvx::ErrorEjecucion &error) {
        Publico::Sistema->Conexion().RollbackTrans();
        ReportarEnEditor(formulario, procedimiento, identificador, error.Descripcion());
        return false;
    }
}

// Events that have no trap of their own: the host reports the error, so that it never crosses the toolkit.
template <class Pasos>
void delHost(FormularioConPadre &formulario, Pasos &&pasos)
{
    enEvento([&] {
        try {
            pasos();
        } catch (const qvx::ErrorEjecucion &error) {
            const qvx::Vigia vigia(formulario);
            Publico::Sistema->Mensaje(error.Descripcion(), qvx::mensaje::Critico, "Quorvex", formulario.hWnd(), "QVX",
                                      "ERR-ID:1000005");
            vigia.Revisar();
        }
    });
}

// Functions whose caller reports: false, and the description in the text given.
template <class Pasos>
bool guardando(QString &textoError, Pasos &&pasos)
{
    const bool yaEmpezada = qvx::Sesion::Abierta() && qvx::Sesion::Actual().Conexion().EnTransaccion();
    try {
        return pasos();
    } catch (const qvx::ErrorEjecucion &error) {
        if (yaEmpezada && dynamic_cast<const qvx::ErrorDeComienzo *>(&error))
            throw;
        textoError = error.Descripcion();
        return false;
    }
}

} // namespace Trampa
