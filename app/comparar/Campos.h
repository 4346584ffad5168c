#pragma once

#include "app/comparar/Comparacion.h"
#include "app/comparar/Parejas.h"

namespace comparar
{

// The columns of a plan as its forms call them, and what their values are called.
class Campos
{
public:
    // partes: descriptions by key.
    Campos(const NombresDeCatalogos &nombres_, QHash<QString, QString> partes_)
        : nombres(nombres_), partes(std::move(partes_))
    {
    }

    // Those that say something else; of a row without its other half all that say something.
    QList<Campo> Distintos(qvx::DelPlan clase, const Pareja &pareja) const;
    QString NombreDeServicio(const qvx::FilaDelPlan &fila) const;
    QString NombreDeLinea(const qvx::FilaDelPlan &fila) const; // "Refacción SELLO"

private:
    enum class Que { Texto, Numero, Clave, Parte, TipoServicio, Prioridad, Unidad, Gasto, Estado };
    struct Definicion {
        const char *titulo;
        int lugar;
        Que que;
    };
    static const QList<Definicion> &De(qvx::DelPlan clase);
    QString Dicho(const Definicion &campo, const qvx::FilaDelPlan *fila) const;
    static QString ConNombre(const QString &clave, const QHash<QString, QString> &todos);

    const NombresDeCatalogos &nombres;
    QHash<QString, QString> partes;
};

} // namespace comparar
