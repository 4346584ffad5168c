#pragma once

#include "system/Exporta.h"

#include <QPointer>

namespace QVX_EXPORTA qvx
{

// A window with two owners: who made it, by this object, and the parent that it stands over. The first who goes takes
// it along.
template <class Ventana>
class DeAmbos
{
public:
    explicit DeAmbos(Ventana *nueva) : ventana(nueva) {}
    ~DeAmbos() { delete ventana.data(); }
    DeAmbos(const DeAmbos &) = delete;
    DeAmbos &operator=(const DeAmbos &) = delete;

    // Whether it is still there.
    explicit operator bool() const { return ventana; }
    Ventana *operator->() const { return ventana.data(); }
    Ventana &operator*() const { return *ventana; }

private:
    QPointer<Ventana> ventana;
};

} // namespace qvx
