#pragma once

#include <QHash>
#include <QString>

namespace qvx
{

class Conexion;

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
