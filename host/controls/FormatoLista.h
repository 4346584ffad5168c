#pragma once

#include "system/Exporta.h"

namespace QVX_EXPORTA comunesQVX
{
class ListView;
}

namespace QVX_EXPORTA qvx
{

// Gives a filled list its final look: columns as wide as their titles and texts, the last one up to the edge.
class FormatoLista
{
public:
    void Aplicar(comunesQVX::ListView &lista) const;
};

} // namespace qvx
