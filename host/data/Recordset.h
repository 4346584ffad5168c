#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <memory>
#include <vector>

namespace qvx
{

// The rows of a query, read whole: any number of record sets may be open at once.
class Recordset
{
public:
    bool Eof() const { return !filas || actual >= filas->size(); }
    void MoveNext();
    void Close();

    // The value of a field of the current row as text, "" for null. Field names match in any letter case. Raises
    // SinRegistroActual at the end and ElementoNoEncontrado for an unknown field.
    QString operator[](const QString &campo) const { return Texto(Columna(campo)); }
    // Likewise by position, from 0, and as a number (null: 0; raises TiposNoCoinciden for a text that is none).
    QString Texto(int columna) const;
    double Numero(const QString &campo) const;
    int Columnas() const { return campos ? campos->cuantos : 0; }
    bool Tiene(const QString &campo) const { return campos && campos->lugares.contains(campo.toLower()); }

private:
    friend class Conexion;
    struct Campos {
        QHash<QString, int> lugares; // by name in lower case
        int cuantos = 0;
    };
    int Columna(const QString &campo) const;
    const QVariant &Valor(int columna) const;

    std::shared_ptr<const Campos> campos;
    std::shared_ptr<const std::vector<QVariantList>> filas;
    std::size_t actual = 0;
};

} // namespace qvx
