#pragma once

#include <QString>
#include <libxml/xmlstring.h>

namespace qvx
{

// The library's texts are UTF-8.
inline QString Texto(const xmlChar *octetos)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(octetos));
}

} // namespace qvx
