#pragma once

#include "data/BaseAbierta.h"

#include <QString>
#include <QTemporaryFile>

// A database of the embedded engine as a file: how it is told from others, opened, checked and copied. A subject is
// what an error is said of, the beginning of its sentence: "La base de datos «plan.db»".
namespace qvx::archivo
{

inline constexpr int Firma = 0x51565831; // "QVX1", in the file's header

QString BaseDeDatos(const QString &archivo);
QString LaCopia(const QString &archivo);

// Raises "SUBJECT REASON.", with the engine's own words where it said something.
[[noreturn]] void Rechazar(const QString &sujeto, const QString &motivo, const QSqlError &error = {});

// Every error of the connection is one of the subject's.
BaseAbierta Abrir(const QString &ruta, const QString &sujeto, bool soloLectura = false);

// Whether two paths lead to one file.
bool EsElMismo(const QString &uno, const QString &otro);

// Raises an error for what is no file that the engine could read. The file must not be open in this process: closing
// it would end the engine's locks.
void RevisarCabecera(const QString &archivo, const QString &sujeto);
// The version of a database of this system that this program reads, or brings up to its own; an error for any other.
int RevisarVersion(BaseAbierta &base, const QString &sujeto);
// Raises an error unless every page, index and reference is in order, and the version is this one.
void RevisarEntera(BaseAbierta &base, const QString &sujeto, int version);
int VersionDe(BaseAbierta &base);

// What programs that were killed have left beside a file that they were making: the user's own, when nobody is at it.
void BorrarRestos(const QString &lugar);

// A file of the owner's alone, beside its place until it is whole. The lock says that somebody is at it; what a program
// that was killed has left of one goes when the next one is made there.
class Provisional
{
public:
    // lugar: where the file is to be, whose folder is made if it is not there. Raises an error of the subject.
    Provisional(const QString &lugar, QString sujeto);
    ~Provisional();
    Provisional(const Provisional &) = delete;
    Provisional &operator=(const Provisional &) = delete;

    QString Ruta() const { return archivo.fileName(); }
    // Once all of it is on the disk it gets its name: false when somebody else has that one. Raises an error.
    bool Publicar(const QString &nombre);

private:
    QTemporaryFile archivo;
    QString diario; // what the engine leaves beside it on a full disk
    QString sujeto;
};

// Writes all that a database holds, as it is now, into the empty file: by the engine, so that it is whole whatever
// journal there is. Others may read meanwhile; who writes waits with its commit. The copy is read again and checked.
// Raises errors of the subject.
void Copiar(const BaseAbierta &base, const Provisional &copia, const QString &sujeto);

} // namespace qvx::archivo
