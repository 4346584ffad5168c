#pragma once

#include "system/Exporta.h"

#include <QString>
#include <optional>

namespace QVX_EXPORTA qvx
{

// The per-user registry of component classes: which library makes a class.
struct ClaseRegistrada {
    QString biblioteca; // absolute path, without links in it when it was found
    QString programa;   // "KT580.Pantalla"
    QString version;
    QString marca; // of the build that the library is of
};

namespace registro
{

QString Archivo();

// The class, if it is registered with a library that only the user and root can change or put another in the place of:
// loading it is running what they say. Raises a data error for a registry that is damaged or that someone else could
// have written.
std::optional<ClaseRegistrada> Buscar(const QString &clase);

// Both raise a data error when the registry cannot be written. The file is made with mode 0600; a damaged one is made
// anew.
void Escribir(const QString &clase, const ClaseRegistrada &registrada);
void Borrar(const QString &clase);

} // namespace registro

} // namespace qvx
