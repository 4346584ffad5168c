#pragma once

#include "plan/Rutas.h"
#include "system/Exporta.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace QVX_EXPORTA qvx
{

class Conexion;

// What a search finds, with what a person knows it by.
struct Hallazgo {
    enum class Clase { Parte, Servicio, Producto };
    Clase clase = Clase::Parte;
    QString tipoEquipo;
    QString nombreTipo;
    QString parte;
    QString ruta;  // the part's, from the top; "" where there is no such part
    QString folio; // of a service, also that of a product's line
    QString texto; // of a part or a service type its description, of a product its key and description
    QString estado;
};

// The words that are searched for: without accents and letter case, in any order, each one anywhere in the text.
class PalabrasBuscadas
{
public:
    explicit PalabrasBuscadas(const QString &texto);

    const QStringList &Todas() const { return palabras; }
    bool Vacias() const { return palabras.isEmpty(); }
    bool Estan(const QString &texto) const;

private:
    QStringList palabras;
};

// Finds in one plan, or in all of them. Retired and orphaned rows are found too, with their state.
class Busqueda
{
public:
    // tipoEquipo: "" for all. maximo: so many of each class are looked for.
    Busqueda(Conexion &conexion, const PalabrasBuscadas &palabras, const QString &tipoEquipo, int maximo);

    // Each by equipment type and key; nothing where there are no words. All raise data errors.
    QList<Hallazgo> Partes();    // by key and description
    QList<Hallazgo> Servicios(); // by folio and service type
    QList<Hallazgo> Productos(); // the services that need one, by its key and description

private:
    QString YDelTipo(const QString &tabla) const;

    Conexion &conexion;
    PalabrasBuscadas palabras;
    QString tipoEquipo;
    int maximo;
    Rutas rutas;
};

} // namespace qvx
