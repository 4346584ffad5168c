#pragma once

#include "system/Exporta.h"

#include <QString>
#include <map>

namespace QVX_EXPORTA qvx
{

class Conexion;
class Recordset;

struct Parte {
    enum class Alcance { SinVer, EnCamino, Llega, NoLlega, SinPadre, EnAnillo };
    QString clave;
    QString padre;
    QString descripcion;
    bool activa = false;
    Alcance alcance = Alcance::SinVer;
    QString anillo; // the same for all parts of one ring
    QString sello;  // its version, "" where it was not read as "Sello"

    bool Suelta() const { return alcance == Alcance::SinPadre || alcance == Alcance::EnAnillo; }
    // A service can be put under it, and its services can be changed.
    bool Sirve() const { return activa && alcance == Alcance::Llega; }
};

// The parts of one equipment type in the order of their keys, and which of them the tree reaches.
class Arbol
{
public:
    // From a row with the part's key, parent, description and state.
    void Agregar(const Recordset &fila);
    // After the last part.
    void Recorrer();

    const std::map<QString, Parte> &Partes() const { return partes; }
    const Parte *Buscar(const QString &clave) const;
    // The path of a part, as Rutas gives it.
    QString Ruta(const QString &clave) const;

private:
    using Alcance = Parte::Alcance;

    void RecorrerDesde(const QString &desde);
    void CerrarAnillo(QStringList &camino, const QString &clave);

    std::map<QString, Parte> partes;
};

// The parts of a type with their versions, which count for no screen as read. Raises data errors.
Arbol ArbolDelPlan(Conexion &conexion, const QString &tipoEquipo);

} // namespace qvx
