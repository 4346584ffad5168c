#pragma once

#include "system/Exporta.h"

#include <QDateTime>
#include <QString>
#include <memory>

namespace QVX_EXPORTA qvx
{

class Conexion;
class Servidor;

// Opens the database of a server for the screen. Raises an ErrorEjecucion in Spanish for the person: no server, no
// access, no schema, a schema of another version, no rights on it.
std::unique_ptr<Conexion> AbrirServidor(const Servidor &servidor);

// What was done to a schema.
struct CambioDeEsquema {
    int antes = 0; // the version that was there, 0 for none
    // Whoever may sign in can still hold everybody up, or fill the disk, by means that only a superuser takes away.
    bool faltaSuperusuario = false;
};

// Creates the schema with its catalogues, and with example plans if asked, and the roles of planners and readers, all
// of it or nothing. When this version of it was there already nothing changes. Raises an ErrorEjecucion, also for who
// does not own the database or may not create roles.
CambioDeEsquema CrearEsquema(const Servidor &servidor, bool conEjemplos);

// Brings the schema to this program's version and gives the two roles the rights that they have in it, all of it or
// nothing. Waits for those who are saving, who in turn wait. Raises an ErrorEjecucion for no schema, a newer one, who
// does not own it, and for somebody who does not end within the time that a lock is waited for.
CambioDeEsquema ActualizarEsquema(const Servidor &servidor);

// The user of the database, who signs the changes. Raises data errors.
QString OperadorDelServidor(Conexion &conexion);
// The server's clock, to the second: planners' own may differ. Raises data errors. The statement asks for nothing else.
inline const QString PreguntaDeHora = "SELECT CAST(clock_timestamp() AS timestamp(0)) AS Hora";
QDateTime HoraDelServidor(Conexion &conexion);

} // namespace qvx
