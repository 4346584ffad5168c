#pragma once

#include "data/Recordset.h"
#include "plan/Cambios.h"
#include "system/Exporta.h"

#include <QHash>
#include <QVariantList>

namespace QVX_EXPORTA qvx
{

// A service, with what a person knows it by.
struct ServicioDelPlan {
    ServicioLeido leido;
    QString nombreTipo;   // of the equipment type
    QString ruta;         // its part's, from the top
    QString tipoServicio; // its description
    double precio = 0;
};

// The services that a planner can change on the screen: active ones, under active parts that the tree reaches, of
// equipment types on offer.
class ServiciosDelPlan
{
public:
    // tipos: keys of equipment types, none for all. What is read counts for no screen as read. Raises data errors.
    ServiciosDelPlan(Conexion &conexion, const QStringList &tipos);

    const QList<ServicioDelPlan> &Todos() const { return servicios; }
    // Where the service of a line stands among all, -1 for one that is not to be changed. The row begins with its keys:
    // equipment type, part and folio.
    int LugarDe(const Recordset &fila) const;

private:
    QList<ServicioDelPlan> servicios;
    QHash<QString, int> lugares;
};

// As the end of a condition: that the equipment type is one of these, nothing for none; its values are theirs.
QString YDeTipos(const QString &columna, const QStringList &tipos);
QVariantList ValoresDeTipos(const QStringList &tipos);

} // namespace qvx
