#pragma once

#include <QList>
#include <QPair>
#include <QString>

// The host's catalogues: what a catalogue's code means in tables and columns. Retired ("BA") and cancelled ("CA")
// entries are not offered.
namespace qvx
{

class Conexion;

struct Catalogo {
    QString codigo; // "TIPO_EQUIPO", "PRODUCTO_MANO_OBRA", ...
    QString titulo; // for the search dialog
    QString tabla;
    QString columnaClave;
    QString columnaDescripcion;
    QString condicion; // of its own rows, "" for all
};

// Raises ElementoNoEncontrado for a code that no catalogue has.
const Catalogo &CatalogoPorCodigo(const QString &codigo);

// The description of an entry on offer, "" for an unknown or retired key. Raises data errors.
QString DescripcionDeCatalogo(Conexion &conexion, const QString &codigo, const QString &clave);

// Keys and descriptions of the entries on offer whose key or description holds the text (any letter case), by key;
// at most maximo, 0 for all. filtro: a further condition in SQL, "" for none. Raises data errors.
QList<QPair<QString, QString>> BuscarEntradas(Conexion &conexion, const QString &codigo, const QString &texto,
                                              const QString &filtro, int maximo);

} // namespace qvx
