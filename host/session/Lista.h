#pragma once

#include <QStringList>

namespace qvx
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
