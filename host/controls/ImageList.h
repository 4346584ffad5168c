#pragma once

#include "system/Exporta.h"

#include <QIcon>
#include <QList>

namespace QVX_EXPORTA comunesQVX
{

// Pictures numbered from 1.
class ImageList
{
public:
    void Agregar(const QIcon &icono) { iconos.append(icono); }
    // An empty picture for a number that the list has not.
    QIcon Imagen(int indice) const { return indice >= 1 && indice <= iconos.size() ? iconos.at(indice - 1) : QIcon(); }

private:
    QList<QIcon> iconos;
};

} // namespace comunesQVX
