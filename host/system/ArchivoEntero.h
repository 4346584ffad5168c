#pragma once

#include "system/Exporta.h"

#include <QFile>
#include <QString>
#include <optional>
#include <sys/types.h>

namespace QVX_EXPORTA qvx
{

// A file of the person's, written whole or not at all: what was there before stays until the new one is complete. It is
// as open to others as the person has it, or as the one that it replaces was.
class ArchivoEntero
{
public:
    // Raises a data error when it cannot be written there, and for a place that holds no file: a link, a pipe or a
    // device is neither followed nor replaced.
    explicit ArchivoEntero(const QString &archivo);
    ~ArchivoEntero();
    ArchivoEntero(const ArchivoEntero &) = delete;
    ArchivoEntero &operator=(const ArchivoEntero &) = delete;

    // A write that fails is remembered, and told when the file is finished.
    QFile &Salida() { return nuevo; }
    // Puts the file in its place. Raises a data error; then nothing has changed.
    void Terminar();

private:
    std::optional<mode_t> PermisosDelOcupante() const;
    QString Motivo();
    [[noreturn]] void Rechazar(const QString &motivo) const;

    QString archivo;
    QString provisional; // beside it, until it is whole
    QFile nuevo;
    bool terminado = false;
};

} // namespace qvx
