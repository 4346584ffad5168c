#pragma once

#include <QString>
#include <optional>

namespace qvx
{

// The per-user registry of component classes: which library makes a class.
struct ClaseRegistrada {
    QString biblioteca; // absolute path
    QString programa;   // "KT580.Pantalla"
    QString version;
};

namespace registro
{

QString Archivo();

// The class, if it is registered. Raises a data error for a registry that someone else could have written: loading
// what it names would be running what they say.
std::optional<ClaseRegistrada> Buscar(const QString &clase);

// Both raise a data error when the registry cannot be written. The file is made with mode 0600.
void Escribir(const QString &clase, const ClaseRegistrada &registrada);
void Borrar(const QString &clase);

} // namespace registro

} // namespace qvx
