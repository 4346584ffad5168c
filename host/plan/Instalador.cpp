#include "plan/Instalador.h"

#include "data/BaseAbierta.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "plan/Formas.h"
#include "plan/Guion.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSqlError>
#include <QTemporaryFile>
#include <sys/file.h>
#include <unistd.h>

namespace qvx
{

namespace
{

constexpr int Firma = 0x51565831; // "QVX1", in the file's header

// Codes of the embedded engine.
const QString Ocupada = "5";
const QString SoloLectura = "8";
const QString DiscoLleno = "13";
const QString NoEsBase = "26";

[[noreturn]] void Rechazar(const QString &archivo, const QString &motivo, const QSqlError &error = {})
{
    const QString motor = error.isValid() ? " (" + error.databaseText() + ")" : QString();
    throw ErrorEjecucion(errores::Datos, "La base de datos «" + archivo + "» " + motivo + motor + ".", {},
                         error.nativeErrorCode());
}

[[noreturn]] void Rechazar(const QString &archivo, const QSqlError &error)
{
    const QString codigo = error.nativeErrorCode();
    if (codigo == Ocupada)
        Rechazar(archivo, "está ocupada por otro programa", error);
    if (codigo == SoloLectura)
        Rechazar(archivo, "es de solo lectura: no se podrían guardar cambios", error);
    if (codigo == DiscoLleno)
        Rechazar(archivo, "está en un disco lleno: no se podrían guardar cambios", error);
    if (codigo == NoEsBase)
        Rechazar(archivo, "no es de Quorvex", error);
    Rechazar(archivo, "no se puede abrir", error);
}

BaseAbierta Abrir(const QString &ruta, const QString &archivo)
{
    const auto preparar = [&](QSqlDatabase &base) {
        base.setDatabaseName(ruta);
        base.setConnectOptions("QSQLITE_BUSY_TIMEOUT=5000");
    };
    return BaseAbierta("QSQLITE", preparar, [archivo](const QSqlError &error) { Rechazar(archivo, error); });
}

// Runs a script of the schema: comments have lines of their own, and statements end in ";" at the end of a line,
// outside any literal, and triggers in "END;".
void EjecutarGuion(BaseAbierta &base, const QString &nombre)
{
    QString sentencia;
    const QStringList renglones = Guion(nombre, Motor::Incrustado).split(QLatin1Char('\n'));
    for (const QString &renglon : renglones) {
        if (renglon.startsWith("--"))
            continue;
        sentencia += renglon + QLatin1Char('\n');
        if (!renglon.endsWith(QLatin1Char(';')) || sentencia.count(QLatin1Char('\'')) % 2 != 0
            || (sentencia.contains("CREATE TRIGGER") && !renglon.endsWith("END;")))
            continue;
        base.Ejecutar(sentencia);
        sentencia.clear();
    }
}

void DarPasos(BaseAbierta &base, int desde)
{
    for (const QString &guion : GuionesDesde(desde, Motor::Incrustado))
        EjecutarGuion(base, guion);
    base.Ejecutar(QString("PRAGMA user_version = %1").arg(VersionEsquema));
}

void Llenar(const QString &ruta, const QString &archivo, bool conEjemplos)
{
    BaseAbierta base = Abrir(ruta, archivo);
    base.Ejecutar("BEGIN");
    DarPasos(base, 0);
    EjecutarGuion(base, "catalogos.sql");
    if (conEjemplos)
        EjecutarGuion(base, "ejemplos.sql");
    base.Ejecutar(QString("PRAGMA application_id = %1").arg(Firma));
    base.Ejecutar("COMMIT");
}

const QString MarcaProvisional = ".qvx-";
constexpr qint64 SegundosParaApartar = 60; // from the making of a provisional file to its lock, with all time to spare

// A file of the owner's alone, beside the database until it is whole. The lock says that somebody is at it.
bool Apartar(QTemporaryFile &provisional)
{
    return provisional.open() && flock(provisional.handle(), LOCK_EX) == 0;
}

// What programs that were killed have left of it: the user's own, and nobody is at it.
void BorrarRestos(const QString &archivo)
{
    const QFileInfo base(archivo);
    const QDir carpeta = base.absoluteDir();
    for (const QFileInfo &resto :
         carpeta.entryInfoList({"*" + MarcaProvisional + "??????"}, QDir::Files | QDir::Hidden)) {
        if (!resto.fileName().startsWith(base.fileName() + MarcaProvisional) || resto.isSymLink()
            || resto.ownerId() != geteuid()
            || resto.lastModified().secsTo(QDateTime::currentDateTime()) < SegundosParaApartar)
            continue;
        QFile abierto(resto.filePath());
        if (!abierto.open(QIODevice::ReadOnly) || flock(abierto.handle(), LOCK_EX | LOCK_NB) != 0)
            continue;
        QFile::remove(resto.filePath() + "-journal");
        abierto.remove();
    }
}

// Made beside its place and renamed when it is whole.
void Crear(const QString &archivo, bool conEjemplos)
{
    const QString carpeta = QFileInfo(archivo).absolutePath();
    BorrarRestos(archivo);
    QTemporaryFile nuevo(archivo + MarcaProvisional + "XXXXXX");
    if (!QDir().mkpath(carpeta) || !Apartar(nuevo))
        Rechazar(archivo, "no se puede crear: " + (nuevo.errorString().isEmpty() ? carpeta : nuevo.errorString()));
    nuevo.close();
    Llenar(nuevo.fileName(), archivo, conEjemplos);
    if (!QFile::rename(nuevo.fileName(), archivo))
        Rechazar(archivo, "no se puede crear en su lugar");
    nuevo.setAutoRemove(false);
}

void RevisarCabecera(const QString &archivo)
{
    QFile entrada(archivo);
    if (!QFileInfo(archivo).isFile()) // a pipe would be waited for
        Rechazar(archivo, "no se puede leer: no es un archivo");
    if (!entrada.open(QIODevice::ReadOnly))
        Rechazar(archivo, "no se puede leer: " + entrada.errorString());
    if (!entrada.read(16).startsWith("SQLite format 3"))
        Rechazar(archivo, "no es de Quorvex");
    if (!QFileInfo(archivo).isWritable())
        Rechazar(archivo, "es de solo lectura: no se podrían guardar cambios");
}

int VersionDe(BaseAbierta &base)
{
    return base.Valor("PRAGMA user_version").toInt();
}

// A copy of the file as it was, by the engine's own means, so that it is whole whatever journal there is. It gets its
// name when it is on the disk, and never another's. Its path.
QString Copiar(BaseAbierta &base, const QString &archivo, int version)
{
    const auto rechazar = [&](const QString &motivo) {
        Rechazar(archivo, "no se puede copiar antes de actualizarla: " + motivo);
    };
    BorrarRestos(archivo);
    QTemporaryFile copia(archivo + MarcaProvisional + "XXXXXX");
    if (!Apartar(copia))
        rechazar(copia.errorString());
    // What the engine leaves beside it on a full disk.
    const auto resto = qScopeGuard([diario = copia.fileName() + "-journal"] { QFile::remove(diario); });
    base.Ejecutar("VACUUM INTO '" + copia.fileName().replace(QLatin1Char('\''), "''") + "'");
    if (fsync(copia.handle()) != 0)
        rechazar(QString::fromLocal8Bit(strerror(errno)));
    const QString nombre =
        archivo + QString(".v%1-").arg(version) + QDateTime::currentDateTime().toString("yyyy-MM-dd_HHmm");
    QString libre = nombre;
    for (int n = 2; QFileInfo::exists(libre); ++n)
        libre = nombre + QString("_%1").arg(n);
    if (!copia.rename(libre))
        rechazar(copia.errorString());
    copia.setAutoRemove(false);
    return libre;
}

// Raises an error where the file is not as the steps must leave it.
void RevisarActualizada(BaseAbierta &base, const QString &archivo)
{
    const QString dano = base.Valor("PRAGMA integrity_check");
    if (dano != "ok" || !base.Valor("PRAGMA foreign_key_check").isEmpty() || VersionDe(base) != VersionEsquema)
        Rechazar(archivo, "no se puede actualizar: está dañada (" + dano + ")");
}

// Brings a file of an older version to this one. The lock is taken before the copy and kept to the end: what is
// upgraded is what was copied. Whoever waited for it may find the work done.
void Actualizar(const QString &archivo)
{
    BaseAbierta base = Abrir(archivo, archivo);
    base.Ejecutar("BEGIN IMMEDIATE");
    const int version = VersionDe(base);
    if (version == VersionEsquema)
        return;
    base.Ejecutar("PRAGMA locking_mode = EXCLUSIVE"); // the copy is not made inside a transaction
    base.Ejecutar("COMMIT");
    const QString copia = Copiar(base, archivo, version);
    try {
        base.Ejecutar("BEGIN IMMEDIATE");
        DarPasos(base, version);
        RevisarActualizada(base, archivo);
        base.Ejecutar("COMMIT");
    } catch (const ErrorEjecucion &) {
        QFile::remove(copia);
        throw;
    }
}

// Writes and takes back: the engine must first save the page that changes, which a full disk or a write-protected
// folder does not let it.
void RevisarQueSeEscribe(BaseAbierta &base)
{
    base.Ejecutar("BEGIN IMMEDIATE");
    base.Ejecutar("UPDATE Formato_Clave SET Fc_Mascara = Fc_Mascara || ' '");
    base.Ejecutar("ROLLBACK");
}

} // namespace

std::unique_ptr<Conexion> AbrirBaseDeDatos(const QString &archivo, bool conEjemplos)
{
    if (QFileInfo::exists(archivo))
        RevisarCabecera(archivo);
    else
        Crear(archivo, conEjemplos);

    BaseAbierta base = Abrir(archivo, archivo);
    if (base.Valor("PRAGMA application_id").toInt() != Firma)
        Rechazar(archivo, "no es de Quorvex");
    const int version = VersionDe(base);
    if (version > VersionEsquema)
        Rechazar(archivo, "es de una versión más reciente de Quorvex: actualice el programa");
    if (version < VersionMasVieja)
        Rechazar(archivo, "es de una versión de Quorvex que este programa ya no lee");
    if (version < VersionEsquema)
        Actualizar(archivo);
    RevisarQueSeEscribe(base);
    // In KiB. With the engine's own 2 MiB a plan of some 10,000 parts is read from the file again and again.
    base.Ejecutar("PRAGMA cache_size = -65536");
    // A statement whose triggers write keeps the pages that it changes aside until it ends: in a file that costs more
    // than all the rest.
    base.Ejecutar("PRAGMA temp_store = MEMORY");
    return std::make_unique<Conexion>(base.Entregar(), DialectoSqlite(), std::make_unique<Formas>(Motor::Incrustado));
}

} // namespace qvx
