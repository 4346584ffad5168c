#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

// The host's catalogues: what a catalogue's code means in tables and columns. Retired ("BA") and cancelled ("CA")
// entries are not offered.
namespace QVX_EXPORTA qvx
{

class Conexion;

struct Catalogo {
    QString codigo; // "TIPO_EQUIPO", "PRODUCTO_MANO_OBRA", ...
    QString titulo; // for the search dialog
    QString tabla;
    QString columnaClave;
    QString columnaDescripcion;
    QString clase; // of products, whose entries have a unit and a cost; "" for all others

    bool DeProductos() const { return !clase.isEmpty(); }
    QStringList Titulos() const; // of what an entry has, in its order
};

struct EntradaCatalogo {
    QString clave;
    QString descripcion;
    QString unidad;
    double costo = 0;
};

// Raises ElementoNoEncontrado for a code that no catalogue has.
const Catalogo &CatalogoPorCodigo(const QString &codigo);

// The code of the catalogue of a table, of products of a class. Raises ElementoNoEncontrado when there is none.
const QString &CodigoDeCatalogo(const QString &tabla, const QString &clase);

// The description of an entry on offer, "" for an unknown or retired key. Raises data errors.
QString DescripcionDeCatalogo(Conexion &conexion, const QString &codigo, const QString &clave);

// The entries on offer, by key. filtro: a further condition in SQL, "" for none. Raises data errors.
QList<EntradaCatalogo> LeerEntradas(Conexion &conexion, const QString &codigo, const QString &filtro);

// The text without letter case and without accents, as it is searched: "GRÚA" and "grua" are one.
QString Plegado(const QString &texto);

} // namespace qvx
