#include "data/Recordset.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

namespace qvx
{

void Recordset::MoveNext()
{
    if (Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "No hay un registro actual");
    actual += campos->size();
}

const QVariant &Recordset::Valor(int columna) const
{
    if (Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "No hay un registro actual");
    return valores->at(actual + static_cast<std::size_t>(columna));
}

// Of two fields with one name the last counts. The sizes tell most names apart: no field's has accented letters.
int Recordset::Lugar(QAnyStringView campo) const
{
    int lugar = Columnas() - 1;
    while (lugar >= 0
           && (campos->at(lugar).size() != campo.size()
               || QAnyStringView::compare(campos->at(lugar), campo, Qt::CaseInsensitive) != 0))
        --lugar;
    return lugar;
}

int Recordset::Columna(QAnyStringView campo) const
{
    const int columna = Lugar(campo);
    if (columna < 0)
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "La consulta no tiene el campo " + campo.toString());
    return columna;
}

QString Recordset::Texto(int columna) const
{
    const QVariant &valor = Valor(columna);
    return valor.typeId() == QMetaType::Double ? NumeroATexto(valor.toDouble()) : valor.toString();
}

double Recordset::Numero(int columna) const
{
    const QVariant &valor = Valor(columna);
    bool es = valor.isNull();
    const double numero = valor.isNull() ? 0 : valor.toDouble(&es);
    if (!es)
        throw ErrorEjecucion(errores::TiposNoCoinciden, "El campo " + campos->at(columna) + " no es un número");
    return numero;
}

} // namespace qvx
