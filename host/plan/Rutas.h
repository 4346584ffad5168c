#pragma once

#include "plan/Claves.h"
#include "system/Exporta.h"

#include <QHash>
#include <QString>

namespace QVX_EXPORTA qvx
{

class Conexion;

// As deep as the tree and the database's path function go; there a ring of parts ends.
constexpr int MaximoNiveles = 500;

// The descriptions from the top part down to the part, the root's name for its key, "" for a part that is not there.
// buscar: gives what has the parent and the description of the part with a key, nullptr for none.
template <class Buscar>
QString ComponerRuta(const QString &parte, const Buscar &buscar)
{
    if (claves::EsRaiz(parte))
        return claves::TextoRaiz;
    QString ruta;
    auto *actual = buscar(parte);
    for (int nivel = 1; actual && nivel <= MaximoNiveles; ++nivel) {
        ruta = nivel == 1 ? actual->descripcion : actual->descripcion + " / " + ruta;
        actual = buscar(actual->padre);
    }
    return ruta;
}

// The paths of parts, from the top part down: "MÁSTIL / CADENA". The parts of a type are read once, all at a time.
class Rutas
{
public:
    explicit Rutas(Conexion &conexion_) : conexion(conexion_) {}

    // As the database's own path function gives it: the root's name for its key, "" for a part that is not there; a
    // ring of parts ends. Raises data errors.
    QString De(const QString &tipoEquipo, const QString &parte);

private:
    struct Parte {
        QString padre;
        QString descripcion;
    };
    const QHash<QString, Parte> &PartesDe(const QString &tipoEquipo);

    Conexion &conexion;
    QHash<QString, QHash<QString, Parte>> partes; // by part, by type
};

} // namespace qvx
