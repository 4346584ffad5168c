#pragma once

#include "system/Exporta.h"

#include <QAnyStringView>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <vector>

namespace qvx
{
class Adelanto;
class Numeracion;
} // namespace qvx

namespace QVX_EXPORTA qvx
{

// The rows of a query, read whole: any number of record sets may be open at once.
class Recordset
{
public:
    bool Eof() const { return !valores || actual >= valores->size(); }
    void MoveNext();

    // The value of a field of the current row as text, "" for null. Field names match in any letter case. Raises
    // SinRegistroActual at the end and ElementoNoEncontrado for an unknown field.
    QString operator[](QAnyStringView campo) const { return Texto(Columna(campo)); }
    // Likewise by position, from 0, and as a number (null: 0; raises TiposNoCoinciden for a text that is none).
    QString Texto(int columna) const;
    double Numero(QAnyStringView campo) const { return Numero(Columna(campo)); }
    double Numero(int columna) const;
    // Likewise as the engine gave it; an absent one is null.
    const QVariant &Valor(int columna) const;
    // How many rows a change met.
    int Afectadas() const { return afectadas; }
    int Columnas() const { return campos ? static_cast<int>(campos->size()) : 0; }
    // Where a field stands, -1 when there is none.
    int Lugar(QAnyStringView campo) const;

private:
    friend class Conexion;
    friend class Adelanto;
    friend class Numeracion;
    int Columna(QAnyStringView campo) const;

    std::shared_ptr<const QStringList> campos;
    std::shared_ptr<const std::vector<QVariant>> valores; // row after row
    int afectadas = 0;
    std::size_t actual = 0; // where the current row begins
};

} // namespace qvx
