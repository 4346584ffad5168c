#pragma once

#include <QString>
#include <memory>

namespace qvx
{

// The screens write the dialect of the host's server. A dialect turns a statement's shape (no literals in it) into
// what its engine understands.
class Dialecto
{
public:
    virtual ~Dialecto() = default;
    virtual QString Reescribir(const QString &forma) const = 0;
    virtual QString InicioDeTransaccion() const = 0;
};

// The embedded engine.
std::unique_ptr<Dialecto> DialectoSqlite();

} // namespace qvx
