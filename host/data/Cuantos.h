#pragma once

#include "data/Texto.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// "1 renglón", "1,234 renglones".
inline QString Cuantos(qsizetype cuantos, const QString &uno, const QString &varios)
{
    return NumeroConFormato(static_cast<double>(cuantos), "#,##0") + " " + (cuantos == 1 ? uno : varios);
}

} // namespace qvx
