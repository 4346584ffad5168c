#pragma once

#include "data/Recordset.h"

#include <QHash>
#include <QString>

namespace qvx
{

// The versions of the parts and services that this program has read last: what its changes of them are based on.
class Versiones
{
public:
    // Notes the versions that rows carry; other rows than those of whole parts and services carry none.
    void Anotar(Recordset filas);
    // The version of a row of the table, "" when it was never read. clave: the part's or the service's.
    QString Leida(const QString &tabla, const QString &tipoEquipo, const QString &clave) const;

private:
    QHash<QString, QHash<QString, QString>> leidas; // by the rows' keys, by table and equipment type
};

} // namespace qvx
