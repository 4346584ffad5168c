#pragma once

#include "plan/Cambios.h"
#include "system/Exporta.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace QVX_EXPORTA qvx
{

// What becomes of operations that are taken back.
struct Deshecho {
    QList<qint64> operaciones; // those that were asked for, and what else had to be taken back with them
    qint64 numero = 0;         // of the operation that took them back, 0 while none did
    QStringList tipos;         // the equipment types whose plans change
    int partes = 0;            // how many rows change
    int servicios = 0;
    int lineas = 0;
    // Why it must not be: one text in Spanish for each part or service that is not as the operations left it, the first
    // 50 of them; who changed it and when.
    QStringList reparos;
    int masReparos = 0;
    bool bastaConPosteriores = false; // nothing would be in the way if later operations were taken back as well
    bool bastaConOtraClave = false;   // nothing but keys that were given again
    QStringList clavesNuevas;         // "Parte 0007: ahora 0012"

    bool SePuede() const { return reparos.isEmpty(); }
};

enum class AlDeshacer {
    SoloEsas,
    ConPosteriores, // also the later ones that changed the same rows, or what hangs from them
    ConOtraClave    // what comes back gets other keys where its own were given again
};

// Takes operations back: every row that they changed is again as it was before the first of them, byte for byte but for
// who changed it last and its version, which are new. All or nothing, in one transaction that holds the plans; it is
// an operation itself, which can be taken back as well (rehacer: it is named so). The rows must be as the operations
// left them, nothing may hang from what goes, and what comes back must find the part that it hung from: else nothing
// is changed, and the reasons are given. ensayo: nothing is changed in any case. Raises an ErrorEjecucion in Spanish
// for operations that are not there, that were taken back already, or of equipment types that are not on offer; and
// data errors.
Deshecho Deshacer(Conexion &conexion, const Firmante &firmante, const QList<qint64> &operaciones, AlDeshacer modo,
                  bool ensayo);
// Takes back what an operation took back.
Deshecho Rehacer(Conexion &conexion, const Firmante &firmante, qint64 operacion, bool ensayo);
// The whole plan as it was before an operation: takes back that one and all later ones, of this plan alone.
Deshecho DejarComoAntesDe(Conexion &conexion, const Firmante &firmante, const QString &tipoEquipo, qint64 operacion,
                          bool ensayo);

} // namespace qvx
