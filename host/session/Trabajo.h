#pragma once

#include "system/Exporta.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QPointer>
#include <memory>
#include <vector>

namespace QVX_EXPORTA qvx
{

class Aplicacion;

// A job: one event that a loop delivered to the application, with everything that it does. Events of a loop inside it
// (a question, a form, a menu) are jobs of their own; meanwhile it is put away, and its time begins anew: a person who
// thinks is no work. When a job has run for a while, its statements show the hourglass, tell how many they are, and let
// the windows be drawn. Whatever could start another command waits for the job's end.
class Trabajo
{
public:
    explicit Trabajo(Aplicacion &aplicacion);
    ~Trabajo();
    Trabajo(const Trabajo &) = delete;
    Trabajo &operator=(const Trabajo &) = delete;

    // The event that is about to be delivered begins a job: it is no part of the running one.
    static bool Empieza();
    static void AntesDeSentencia();
    // Lets the windows be drawn now.
    static void Dibujar();
    static bool Dibujando();
    // Of an event that arrives while the windows are drawn: true when it is not to be delivered.
    static bool Retener(QObject *receptor, QEvent *evento);

private:
    struct Retenido {
        QPointer<QObject> receptor;
        std::unique_ptr<QEvent> evento;
    };

    void Contar();
    void Ceder();
    void Soltar(bool destrucciones);

    Aplicacion &aplicacion;
    Trabajo *const anterior;
    const int nivel;
    QElapsedTimer reloj;
    qint64 siguiente = 0; // when the windows are drawn again
    int sentencias = 0;
    bool visible = false;
    bool dibujando = false;
    std::vector<Retenido> retenidos;
};

} // namespace qvx
