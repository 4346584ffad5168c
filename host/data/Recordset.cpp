#include "data/Recordset.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

namespace qvx
{

void Recordset::MoveNext()
{
    if (Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "No hay un registro actual");
    ++actual;
}

void Recordset::Close()
{
    filas.reset();
}

const QVariant &Recordset::Valor(int columna) const
{
    if (Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "No hay un registro actual");
    return filas->at(actual).at(columna);
}

int Recordset::Columna(const QString &campo) const
{
    const int columna = campos ? campos->lugares.value(campo.toLower(), -1) : -1;
    if (columna < 0)
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "La consulta no tiene el campo " + campo);
    return columna;
}

QString Recordset::Texto(int columna) const
{
    const QVariant &valor = Valor(columna);
    return valor.typeId() == QMetaType::Double ? NumeroATexto(valor.toDouble()) : valor.toString();
}

double Recordset::Numero(const QString &campo) const
{
    const QVariant &valor = Valor(Columna(campo));
    bool es = valor.isNull();
    const double numero = valor.isNull() ? 0 : valor.toDouble(&es);
    if (!es)
        throw ErrorEjecucion(errores::TiposNoCoinciden, "El campo " + campo + " no es un número");
    return numero;
}

} // namespace qvx
