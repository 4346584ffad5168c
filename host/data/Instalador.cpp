#include "data/Instalador.h"

#include "data/BaseAbierta.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "plan/Formas.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QTemporaryFile>

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
// outside any literal.
void EjecutarGuion(BaseAbierta &base, const QString &nombre)
{
    QString sentencia;
    const QStringList renglones = BaseAbierta::Guion(nombre).split(QLatin1Char('\n'));
    for (const QString &renglon : renglones) {
        if (renglon.startsWith("--"))
            continue;
        sentencia += renglon + QLatin1Char('\n');
        if (!renglon.endsWith(QLatin1Char(';')) || sentencia.count(QLatin1Char('\'')) % 2 != 0)
            continue;
        base.Ejecutar(sentencia);
        sentencia.clear();
    }
}

void Llenar(const QString &ruta, const QString &archivo, bool conEjemplos)
{
    BaseAbierta base = Abrir(ruta, archivo);
    base.Ejecutar("BEGIN");
    EjecutarGuion(base, "sqlite/esquema.sql");
    EjecutarGuion(base, "catalogos.sql");
    if (conEjemplos)
        EjecutarGuion(base, "ejemplos.sql");
    base.Ejecutar(QString("PRAGMA application_id = %1").arg(Firma));
    base.Ejecutar(QString("PRAGMA user_version = %1").arg(VersionEsquema));
    base.Ejecutar("COMMIT");
}

// Made beside its place and renamed when it is whole.
void Crear(const QString &archivo, bool conEjemplos)
{
    const QString carpeta = QFileInfo(archivo).absolutePath();
    QTemporaryFile nuevo(archivo + ".XXXXXX");
    if (!QDir().mkpath(carpeta) || !nuevo.open())
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
    const int version = base.Valor("PRAGMA user_version").toInt();
    if (version > VersionEsquema)
        Rechazar(archivo, "es de una versión más reciente de Quorvex: actualice el programa");
    if (version < VersionEsquema)
        Rechazar(archivo, "es de una versión de Quorvex que este programa ya no lee");
    RevisarQueSeEscribe(base);
    // In KiB. With the engine's own 2 MiB a plan of some 10,000 parts is read from the file again and again.
    base.Ejecutar("PRAGMA cache_size = -65536");
    return std::make_unique<Conexion>(base.Entregar(), DialectoSqlite(), std::make_unique<Formas>());
}

} // namespace qvx
