#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QPair>
#include <QString>
#include <memory>

class QSqlDriver;

namespace QVX_EXPORTA qvx
{

// A shared server and a database of it: the options of a connection as libpq names them, and how long an answer is
// waited for (Espera, in seconds). An address may name several places: it is whichever of them takes changes.
class Servidor
{
public:
    using Opciones = QList<QPair<QString, QString>>; // name and value
    static constexpr QLatin1String Espera{"espera"};

    // From postgresql://USER@HOST:PORT/DB?sslmode=... Raises an ErrorEjecucion in Spanish for a text that is no such
    // address, and for one with a password, which everybody on the machine could read. Without a user it is the one
    // that libpq would take.
    explicit Servidor(const QString &direccion);

    // How messages call it: "«DB» de HOST".
    QString Nombre() const;
    QString Base() const { return Opcion("dbname"); }
    // "HOST:PORT", as far as the address says it; several, one behind the other.
    QString Equipo() const;
    QString Usuario() const { return Opcion("user"); }
    void setUsuario(const QString &usuario);
    // Kept in memory only, for a connection that has to be opened anew.
    void setContrasena(const QString &contrasena);

    // What came of an attempt to sign in.
    enum class Acceso { Abierto, PideContrasena, Rechazado };
    struct Prueba {
        Acceso acceso = Acceso::Rechazado;
        QString motivo; // the server's or the library's own words, "" when it is open or only wants a password
    };
    // Signs in. A password that is not set is looked for in PGPASSWORD and in the password file. The connection is kept
    // for the next Controlador of this one and its copies.
    Prueba Probar() const;

    // A driver of the toolkit that opens it, with settings of its session.
    std::unique_ptr<QSqlDriver> Controlador(const Opciones &ajustes = {}) const;
    // The same, where nothing can be changed: on a copy that follows the server, if the address has one.
    Servidor DeSoloLectura() const;
    // The same, where an answer is waited for so long.
    Servidor ConEspera(int segundos) const;

private:
    void Completar();
    QString Opcion(const QString &nombre) const;
    void Poner(const QString &nombre, const QString &valor);
    void PonerSiFalta(const QString &nombre, const QString &valor);
    QStringList Lugares() const;

    Opciones opciones;
    std::shared_ptr<std::unique_ptr<QSqlDriver>> probado;
};

} // namespace qvx
