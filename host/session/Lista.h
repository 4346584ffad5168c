#pragma once

#include "system/Exporta.h"

#include <QStringList>

namespace QVX_EXPORTA qvx
{

// A list of rows that a query is shown in.
class Lista
{
public:
    virtual void Clear() = 0;
    virtual void AgregarFila(const QStringList &textos) = 0;

protected:
    ~Lista() = default;
};

} // namespace qvx
