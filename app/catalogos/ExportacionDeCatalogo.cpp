#include "app/catalogos/ExportacionDeCatalogo.h"

#include "app/catalogos/ImportacionDeCatalogo.h"
#include "app/reportes/LibroXlsx.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

namespace
{

using ClaseDeColumna = qvx::ColumnaDeCatalogo::Clase;

} // namespace

Hoja EnHoja(const qvx::TablaDeCatalogo &tabla, const QList<qvx::RegistroDeCatalogo> &registros)
{
    Hoja hoja{tabla.titulo, {}, {}};
    for (const ColumnaDeImportacion &columna : ColumnasDeImportacion(tabla))
        hoja.columnas.append({columna.titulo});
    const int costo = tabla.Lugar(ClaseDeColumna::Numero) + 1; // 0, the key's, for none
    if (costo > 0)
        hoja.columnas[costo].clase = ColumnaDeHoja::Clase::Dinero;
    hoja.filas.reserve(registros.size());
    for (const qvx::RegistroDeCatalogo &registro : registros) {
        QVariantList valores;
        for (const QString &palabra : EnPalabras(tabla, registro))
            valores.append(palabra);
        if (costo > 0)
            valores[costo] = qvx::TextoANumero(valores.at(costo).toString()).value_or(0);
        hoja.filas.append(valores);
    }
    return hoja;
}

bool EsLibro(const QString &ruta)
{
    return ruta.endsWith(".xlsx", Qt::CaseInsensitive);
}

void ExportarHoja(const Hoja &hoja, const QString &ruta, const csv::Formato &formato)
{
    if (EsLibro(ruta))
        EscribirXlsx(ruta, hoja);
    else if (ruta.endsWith(".csv", Qt::CaseInsensitive))
        csv::Escribir(ruta, hoja, formato);
    else
        throw qvx::ErrorEjecucion(qvx::errores::Datos,
                                  "No se escribió " + ruta + ": el nombre del archivo termina en .csv o en .xlsx.");
}

void ExportarCatalogo(const qvx::TablaDeCatalogo &tabla, const QList<qvx::RegistroDeCatalogo> &registros,
                      const QString &ruta, const csv::Formato &formato)
{
    ExportarHoja(EnHoja(tabla, registros), ruta, formato);
}
