#include "plan/Instalador.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "plan/ArchivoDeBase.h"
#include "plan/Formas.h"
#include "plan/Guion.h"

#include <QDateTime>
#include <QFileInfo>

namespace qvx
{

namespace
{

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

void Llenar(const QString &ruta, const QString &sujeto, bool conEjemplos)
{
    BaseAbierta base = archivo::Abrir(ruta, sujeto);
    base.Ejecutar("BEGIN");
    DarPasos(base, 0);
    EjecutarGuion(base, "catalogos.sql");
    if (conEjemplos)
        EjecutarGuion(base, "ejemplos.sql");
    base.Ejecutar(QString("PRAGMA application_id = %1").arg(archivo::Firma));
    base.Ejecutar("COMMIT");
}

// Made beside its place and renamed when it is whole.
void Crear(const QString &archivo, bool conEjemplos)
{
    const QString sujeto = archivo::BaseDeDatos(archivo);
    archivo::Provisional nuevo(archivo, sujeto);
    Llenar(nuevo.Ruta(), sujeto, conEjemplos);
    if (!nuevo.Publicar(archivo))
        archivo::Rechazar(sujeto, "no se puede crear en su lugar");
}

// A copy of the file as it was. It gets its name when it is on the disk, and never another's. Its path.
QString CopiarVieja(BaseAbierta &base, const QString &archivo, int version)
{
    const QString sujeto = archivo::BaseDeDatos(archivo) + " no se puede copiar antes de actualizarla: la copia";
    archivo::Provisional copia(archivo, sujeto);
    archivo::Copiar(base, copia, sujeto);
    const QString nombre =
        archivo + QString(".v%1-").arg(version) + QDateTime::currentDateTime().toString("yyyy-MM-dd_HHmm");
    QString libre = nombre;
    for (int n = 2; !copia.Publicar(libre); ++n)
        libre = nombre + QString("_%1").arg(n);
    return libre;
}

// Brings a file of an older version to this one. The lock is taken before the copy and kept to the end: what is
// upgraded is what was copied. Whoever waited for it may find the work done.
void Actualizar(const QString &archivo, const QString &sujeto, bool conCopia)
{
    BaseAbierta base = archivo::Abrir(archivo, sujeto);
    base.Ejecutar("BEGIN IMMEDIATE");
    const int version = archivo::VersionDe(base);
    if (version == VersionEsquema)
        return;
    base.Ejecutar("PRAGMA locking_mode = EXCLUSIVE"); // the copy is not made inside a transaction
    base.Ejecutar("COMMIT");
    const QString copia = conCopia ? CopiarVieja(base, archivo, version) : QString();
    try {
        base.Ejecutar("BEGIN IMMEDIATE");
        DarPasos(base, version);
        archivo::RevisarEntera(base, sujeto, VersionEsquema);
        base.Ejecutar("COMMIT");
    } catch (const ErrorEjecucion &) {
        if (conCopia)
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

// Brought to this version where it is older.
std::unique_ptr<Conexion> Entrar(const QString &ruta, const QString &sujeto, bool conCopia)
{
    BaseAbierta base = archivo::Abrir(ruta, sujeto);
    if (archivo::RevisarVersion(base, sujeto) < VersionEsquema)
        Actualizar(ruta, sujeto, conCopia);
    RevisarQueSeEscribe(base);
    // In KiB. With the engine's own 2 MiB a plan of some 10,000 parts is read from the file again and again.
    base.Ejecutar("PRAGMA cache_size = -65536");
    // A statement whose triggers write keeps the pages that it changes aside until it ends: in a file that costs more
    // than all the rest.
    base.Ejecutar("PRAGMA temp_store = MEMORY");
    return std::make_unique<Conexion>(base.Entregar(), DialectoSqlite(), std::make_unique<Formas>(Motor::Incrustado));
}

} // namespace

std::unique_ptr<Conexion> AbrirBaseDeDatos(const QString &archivo, bool conEjemplos)
{
    const QString sujeto = archivo::BaseDeDatos(archivo);
    if (!QFileInfo::exists(archivo))
        Crear(archivo, conEjemplos);
    archivo::BorrarRestos(archivo);
    archivo::RevisarCabecera(archivo, sujeto);
    if (!QFileInfo(archivo).isWritable())
        archivo::Rechazar(sujeto, "es de solo lectura: no se podrían guardar cambios");
    return Entrar(archivo, sujeto, true);
}

std::unique_ptr<Conexion> AbrirProvisional(const QString &archivo, const QString &sujeto)
{
    return Entrar(archivo, sujeto, false);
}

} // namespace qvx
