#pragma once

#include "app/reportes/Hoja.h"

// What only the library of workbooks can do. It stands in a library beside the program, which is loaded with the first
// workbook: a cipher library comes along that would slow every start.
class EscritorXlsx
{
public:
    virtual ~EscritorXlsx() = default;
    virtual void Escribir(const QString &ruta, const Hoja &hoja) const = 0;
    virtual QString Version() const = 0;
};

// The only name that the library is asked for; the writer lives as long as the process.
using FnEscritorXlsx = const EscritorXlsx *(*)();
constexpr const char *EntradaEscritorXlsx = "qvx_escritor_xlsx";
