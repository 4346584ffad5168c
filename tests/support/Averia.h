#pragma once

#include "support/Escenario.h"

#include <thread>

// A fault by its name in a test's table, until it is repaired or goes:
//   "ocupada"       another program holds the plans
//   "confirmación"  whatever is written in a detail cannot be committed
//   "disco"         the disk is full (the embedded engine's)
//   "INSERT ON Producto", with " WHEN condition on NEW and OLD" behind it: the event fails with the text "falla"
// Of a server of the test's own, which the last change before a commit, an event like those, tells when to fail:
//   "reinicio en medio", "corte en medio"  it is restarted, or the connection cut, in the middle of that change
//   "antes de confirmar", "al confirmar"   the connection is cut before the commit is carried out, and after
//   "reinicio en reposo", "ausente"        it was restarted between commands; it lets nobody in
class Averia
{
public:
    Averia(const Escenario &escenario, const QString &nombre, const QString &ultimo = {});
    ~Averia();
    Averia(const Averia &) = delete;
    Averia &operator=(const Averia &) = delete;
    void Reparar();

private:
    void Caer(const QString &nombre, const QString &ultimo);

    const Escenario &escenario;
    std::unique_ptr<OtroPrograma> otro; // as long as the fault lasts
    std::unique_ptr<DiscoLleno> disco;
    std::thread vigia;
};
