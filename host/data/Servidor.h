#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QPair>
#include <QString>

class QSqlDatabase;

namespace QVX_EXPORTA qvx
{

// A shared server and a database of it: the options of a connection as libpq names them.
class Servidor
{
public:
    using Opciones = QList<QPair<QString, QString>>; // name and value

    // From postgresql://USER@HOST:PORT/DB?sslmode=... Raises an ErrorEjecucion in Spanish for a text that is no such
    // address, and for one with a password, which everybody on the machine could read. Without a user it is the one
    // that libpq would take.
    explicit Servidor(const QString &direccion);

    // How messages call it: "«DB» de HOST".
    QString Nombre() const;
    QString Base() const { return Opcion("dbname"); }
    // "HOST:PORT", as far as the address says it.
    QString Equipo() const;
    QString Usuario() const { return Opcion("user"); }
    void setUsuario(const QString &usuario) { Poner("user", usuario); }
    // Kept in memory only, for a connection that has to be opened anew.
    void setContrasena(const QString &contrasena) { Poner("password", contrasena); }

    // What came of an attempt to sign in.
    enum class Acceso { Abierto, PideContrasena, Rechazado };
    struct Prueba {
        Acceso acceso = Acceso::Rechazado;
        QString motivo; // the server's or the library's own words, "" when it is open or only wants a password
    };
    // Signs in once and leaves. A password that is not set is looked for in PGPASSWORD and in the password file.
    Prueba Probar() const;

    // Gives them to a connection that is not open yet; deSesion: settings of its session ("-c NAME=VALUE"), "" for
    // none.
    void Preparar(QSqlDatabase &base, const QString &deSesion = {}) const;

private:
    void Completar();
    QString Opcion(const QString &nombre) const;
    void Poner(const QString &nombre, const QString &valor);

    Opciones opciones;
};

} // namespace qvx
