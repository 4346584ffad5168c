#include "app/reportes/LibroXlsx.h"

#include "app/reportes/EscritorXlsx.h"
#include "data/BibliotecaAparte.h"

namespace
{

const EscritorXlsx &Escritor()
{
    static const EscritorXlsx *const escritor =
        qvx::EntradaAparte<FnEscritorXlsx>("libquorvex_xlsx.so", EntradaEscritorXlsx,
                                           "Para escribir libros falta una biblioteca: instale el paquete "
                                           "libxlsxwriter4, o el programa completo.")();
    return *escritor;
}

} // namespace

void EscribirXlsx(const QString &ruta, const Hoja &hoja)
{
    Escritor().Escribir(ruta, hoja);
}

QString VersionDeXlsx()
{
    return Escritor().Version();
}
