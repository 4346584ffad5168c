#include "plan/ArchivoDeBase.h"

#include "data/ErrorEjecucion.h"
#include "plan/Guion.h"
#include "system/Carpetas.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <cerrno>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace qvx::archivo
{

namespace
{

const QString MarcaProvisional = ".qvx-";
constexpr qint64 SegundosParaApartar = 60; // from the making of a provisional file to its lock, with all time to spare

[[noreturn]] void RechazarPorMotor(const QString &sujeto, const QSqlError &error)
{
    switch (error.nativeErrorCode().toInt() & 0xFF) { // the longer codes specify
    case 5:
        Rechazar(sujeto, "está ocupada por otro programa", error);
    case 8:
        Rechazar(sujeto, "es de solo lectura: no se podrían guardar cambios", error);
    case 10:
        Rechazar(sujeto, "no se puede leer o escribir en su disco", error);
    case 11:
        Rechazar(sujeto, "está dañada", error);
    case 13:
        Rechazar(sujeto, "está en un disco lleno: no se podrían guardar cambios", error);
    case 26:
        Rechazar(sujeto, "no es de Quorvex", error);
    default:
        Rechazar(sujeto, "no se puede abrir", error);
    }
}

BaseAbierta Conectar(const QString &ruta, const QString &opciones, const BaseAbierta::Rechazo &rechazar)
{
    const auto preparar = [&](QSqlDatabase &base) {
        base.setDatabaseName(ruta);
        base.setConnectOptions("QSQLITE_BUSY_TIMEOUT=5000" + opciones);
    };
    return BaseAbierta("QSQLITE", preparar, rechazar);
}

// It may be the database that cannot be read, or the copy that cannot be written.
[[noreturn]] void RechazarCopia(const QString &sujeto, const QSqlError &error)
{
    switch (error.nativeErrorCode().toInt() & 0xFF) {
    case 5:
        Rechazar(sujeto, "no se pudo hacer: otro programa tiene ocupada la base de datos", error);
    case 11:
        Rechazar(sujeto, "no se pudo hacer: está dañado lo que se copia", error);
    case 13:
        Rechazar(sujeto, "no se pudo escribir: disco lleno", error);
    case 26:
        Rechazar(sujeto, "no es de Quorvex", error);
    default:
        Rechazar(sujeto, "no se pudo hacer", error);
    }
}

} // namespace

void BorrarRestos(const QString &lugar)
{
    const QFileInfo base(lugar);
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

QString BaseDeDatos(const QString &archivo)
{
    return "La base de datos «" + archivo + "»";
}

QString LaCopia(const QString &archivo)
{
    return "La copia «" + archivo + "»";
}

void Rechazar(const QString &sujeto, const QString &motivo, const QSqlError &error)
{
    const QString motor = error.isValid() ? " (" + error.databaseText() + ")" : QString();
    throw ErrorEjecucion(errores::Datos, sujeto + " " + motivo + motor + ".", {}, error.nativeErrorCode());
}

BaseAbierta Abrir(const QString &ruta, const QString &sujeto, bool soloLectura)
{
    return Conectar(ruta, soloLectura ? ";QSQLITE_OPEN_READONLY" : "",
                    [sujeto](const QSqlError &error) { RechazarPorMotor(sujeto, error); });
}

bool EsElMismo(const QString &uno, const QString &otro)
{
    std::error_code sinArchivo;
    return std::filesystem::equivalent(QFile::encodeName(uno).constData(), QFile::encodeName(otro).constData(),
                                       sinArchivo);
}

void RevisarCabecera(const QString &archivo, const QString &sujeto)
{
    QFile entrada(archivo);
    if (!QFileInfo(archivo).isFile()) // a pipe would be waited for
        Rechazar(sujeto, "no se puede leer: no es un archivo");
    if (!entrada.open(QIODevice::ReadOnly))
        Rechazar(sujeto, "no se puede leer: " + entrada.errorString());
    if (!entrada.read(16).startsWith("SQLite format 3"))
        Rechazar(sujeto, "no es de Quorvex");
}

int VersionDe(BaseAbierta &base)
{
    return base.Valor("PRAGMA user_version").toInt();
}

int RevisarVersion(BaseAbierta &base, const QString &sujeto)
{
    if (base.Valor("PRAGMA application_id").toInt() != Firma)
        Rechazar(sujeto, "no es de Quorvex");
    const int version = VersionDe(base);
    if (version > VersionEsquema)
        Rechazar(sujeto, "es de una versión más reciente de Quorvex: actualice el programa");
    if (version < VersionMasVieja)
        Rechazar(sujeto, "es de una versión de Quorvex que este programa ya no lee");
    return version;
}

void RevisarEntera(BaseAbierta &base, const QString &sujeto, int version)
{
    const QString dano = base.Valor("PRAGMA integrity_check");
    if (dano != "ok" || !base.Valor("PRAGMA foreign_key_check").isEmpty() || VersionDe(base) != version)
        Rechazar(sujeto, "está dañada (" + dano + ")");
}

Provisional::Provisional(const QString &lugar, QString sujeto_)
    : archivo(lugar + MarcaProvisional + "XXXXXX"), sujeto(std::move(sujeto_))
{
    const QString carpeta = QFileInfo(lugar).absolutePath();
    BorrarRestos(lugar);
    if (const QString fallo = HacerCarpeta(carpeta); !fallo.isEmpty())
        Rechazar(sujeto, "no se puede crear, ni su carpeta: " + fallo);
    if (!archivo.open())
        Rechazar(sujeto, "no se puede crear: " + archivo.errorString());
    if (flock(archivo.handle(), LOCK_EX) != 0)
        Rechazar(sujeto, "no se puede crear: " + qt_error_string(errno));
    diario = archivo.fileName() + "-journal";
    archivo.close(); // which keeps the file, and its lock
}

Provisional::~Provisional()
{
    QFile::remove(diario);
}

bool Provisional::Publicar(const QString &nombre)
{
    if (!archivo.open() || fsync(archivo.handle()) != 0)
        Rechazar(sujeto, "no se puede crear: " + qt_error_string(errno));
    if (QFileInfo::exists(nombre))
        return false;
    if (!archivo.rename(nombre)) {
        if (QFileInfo::exists(nombre))
            return false;
        Rechazar(sujeto, "no se puede crear en su lugar: " + archivo.errorString());
    }
    archivo.setAutoRemove(false);
    return true;
}

// Not by VACUUM INTO: the engine does not do it to a database that it only reads.
void Copiar(const BaseAbierta &base, const Provisional &copia, const QString &sujeto)
{
    BaseAbierta nueva = Conectar(copia.Ruta(), {}, [sujeto](const QSqlError &error) { RechazarCopia(sujeto, error); });
    nueva.Ejecutar("PRAGMA synchronous = OFF"); // all of it at once, when it gets its name
    nueva.ReemplazarPor(base);
    nueva.Ejecutar("PRAGMA journal_mode = DELETE"); // whatever the other one has
    RevisarEntera(nueva, sujeto, RevisarVersion(nueva, sujeto));
}

} // namespace qvx::archivo
