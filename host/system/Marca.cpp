#include "system/Marca.h"

#include "qvx_marca.h"

namespace qvx
{

QString Marca()
{
    return QVX_MARCA;
}

} // namespace qvx
