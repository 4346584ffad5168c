#pragma once

#include "system/Exporta.h"

#include <QFile>
#include <QString>

namespace QVX_EXPORTA qvx
{

// The file that every statement is appended to, as it was composed: for its owner alone.
class Traza
{
public:
    // Raises a data error when the file cannot be written, and for a place that holds no file: a link, a pipe or a
    // device.
    explicit Traza(const QString &archivo);

    // Adds one line: mark, tab, text. A write that fails is told once, on the standard error, and no other is tried:
    // the work goes on without its trace.
    void Anotar(const QString &marca, const QString &texto);

private:
    QFile archivo;
    bool cortado = false; // the last line may have no end
    bool avisado = false;
};

} // namespace qvx
