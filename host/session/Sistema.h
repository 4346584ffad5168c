#pragma once

#include "system/Exporta.h"

#include <QString>
#include <qwindowdefs.h>

namespace QVX_EXPORTA qvx
{

class Conexion;

// The host's session services, as a component sees them.
class Sistema
{
public:
    // The open connection of the session, the same each time. Raises ObjetoNoEstablecido when nobody has signed in.
    qvx::Conexion &Conexion() const;

    // Shows a message and gives the number of the button chosen (1 OK, 2 Cancel, 6 Yes, 7 No). estilo: buttons, icon
    // and default button as the sum of their numbers; ventana: handle of the form that owns it.
    int Mensaje(const QString &texto, int estilo, const QString &titulo, WId ventana, const QString &modulo,
                const QString &identificador) const;

    // Puts details below the next message, to be read and copied on demand.
    void Detallar(const QString &detalles) const;

    QString UsuarioActual() const;

    // The mask of a catalogue's keys; predeterminada where the host has none. opcional is not used, and tipo is always
    // "T", text.
    QString FormatoClave(const QString &codigo, const QString &opcional, const QString &tipo,
                         const QString &predeterminada) const;
};

} // namespace qvx
