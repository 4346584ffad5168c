#pragma once

#include "system/Exporta.h"

#include <QString>

namespace QVX_EXPORTA qvx
{

// The mark of the build that this library is of. A component is of the same build when it was compiled with the same
// mark (QVX_MARCA): the same headers, compiler and options.
QString Marca();

} // namespace qvx
