#pragma once

#include "plan/Claves.h"
#include "session/Sistema.h"
#include "session/Utilerias.h"

#include <QString>
#include <atomic>
#include <memory>

// The state that every form of the component shares, from the first object of the component to its unloading.
namespace Publico
{

extern std::unique_ptr<qvx::Sistema> Sistema;
extern std::unique_ptr<qvx::Utilerias> Utilerias;

// The statement being built. One for all procedures: they run on one thread, and none builds a statement between
// another's building and running its own.
extern QString strSQL;

// The start-up procedure; does nothing when it has run.
void Main();

// The root of every tree of parts: the key that its first parts have as their parent's, and its text. It is no row.
inline const QString &ClaveRaiz = qvx::claves::Raiz;
inline const QString &TextoRaiz = qvx::claves::TextoRaiz;

// The mask of a catalogue's keys; predeterminada where the host has none. Raises data errors.
QString Mascara(const QString &codigo, const QString &predeterminada = "0000");

// The text of an error identifier, "ERR-ID:7500001".
QString Identificador(int numero);

// Who is alive and holds the component loaded: objects and forms, each by a member of this type.
class Vivo
{
public:
    Vivo() { ++cuantos; }
    ~Vivo() { --cuantos; }
    Vivo(const Vivo &) = delete;
    Vivo &operator=(const Vivo &) = delete;
    static int Cuantos() { return cuantos; }

private:
    static std::atomic<int> cuantos;
};

} // namespace Publico
