#include "app/reportes/Impreso.h"

namespace impreso
{

int Documento::AgregarTabla(const QList<Columna> &columnas)
{
    tablas.append({columnas});
    return static_cast<int>(tablas.size()) - 1;
}

void Documento::Agregar(Bloque::Clase clase, const QStringList &textos)
{
    Bloque bloque;
    bloque.clase = clase;
    bloque.textos = textos;
    bloque.conLoQueSigue = clase == Bloque::Clase::Titulo || clase == Bloque::Clase::Seccion;
    bloques.append(bloque);
}

Bloque &Documento::Fila(const QStringList &celdas)
{
    Agregar(Bloque::Clase::Fila, celdas);
    bloques.last().tabla = static_cast<int>(tablas.size()) - 1;
    return bloques.last();
}

Bloque &Documento::Tramo(const QString &texto)
{
    Agregar(Bloque::Clase::Tramo, {texto});
    bloques.last().tabla = static_cast<int>(tablas.size()) - 1;
    return bloques.last();
}

void Documento::Salto()
{
    if (!bloques.isEmpty())
        Agregar(Bloque::Clase::Salto, {});
}

} // namespace impreso
