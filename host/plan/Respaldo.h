#pragma once

#include "system/Exporta.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

namespace QVX_EXPORTA qvx
{

// Where the copies of an embedded database are, and how many of the program's own are kept there.
struct LugarDeCopias {
    QString base; // the file
    QString carpeta;
    int cuantas = 10;
};

// Every copy is made by the engine, read again and checked, is its owner's alone, and gets its name when it is whole:
// never that of another file. All of these raise an ErrorEjecucion in Spanish; then nothing has changed.

// The person's own copy, in a file that is not there yet. The program never touches it again.
void Respaldar(const QString &base, const QString &destino);

// The program's own, one a day: false when it is there already. Afterwards the oldest of the program's own copies of
// this database go, down to as many as are kept.
bool RespaldarDelDia(const LugarDeCopias &lugar, const QDate &hoy);
// Likewise before something that replaces the database, of a connection that keeps others out; its path. salvo: a copy
// that stays, since it is being restored from.
class BaseAbierta;
QString RespaldarAntes(BaseAbierta &base, const LugarDeCopias &lugar, const QDateTime &ahora, const QString &salvo);

struct Copia {
    QString archivo;
    QDateTime fecha; // when it was written
    qint64 octetos = 0;
    int version = 0;
    bool automatica = false; // one of the program's own of this database
};

// What there is to be restored from: databases of this system in the folder, and those that were copied beside this
// one before an upgrade; the newest first. Only their headers are read.
QList<Copia> Copias(const LugarDeCopias &lugar);

} // namespace qvx
