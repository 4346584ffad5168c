#pragma once

#include "servidor/Enlace.h"

#include <QSqlDriver>
#include <QSqlError>

namespace qvx
{

// The toolkit's way to a server, over a connection of our own. What it prepares stays prepared, and nothing is asked
// that nobody wants to know.
class ControladorPq : public QSqlDriver
{
public:
    // Settings of the session by name; with the options they are what it is opened with from then on.
    void Disponer(const Servidor::Opciones &opciones, const Servidor::Opciones &ajustes_);
    // Signs in. The connection stays open, and is the one that the toolkit gets with its first open().
    bool Entrar();

    // The address is known already, so what the toolkit says of it is left aside.
    bool open(const QString &base, const QString &usuario, const QString &contrasena, const QString &equipo, int puerto,
              const QString &otras) override;
    void close() override;
    bool isOpen() const override { return enlace.EstaAbierto(); }
    bool hasFeature(DriverFeature rasgo) const override;
    QSqlResult *createResult() const override;

    Enlace &SuEnlace() const { return enlace; }

private:
    void PonerAjustes();

    Servidor::Opciones ajustes;
    mutable Enlace enlace{{}};
};

// An error for the toolkit of what the connection said last.
QSqlError ErrorDe(const Enlace &enlace, QSqlError::ErrorType tipo);

} // namespace qvx
