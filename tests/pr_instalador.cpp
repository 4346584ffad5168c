#include "data/ErrorEjecucion.h"
#include "plan/Deshacer.h"
#include "plan/Guion.h"
#include "plan/Instalador.h"
#include "plan/OperacionEnCurso.h"
#include "plan/Restauracion.h"
#include "support/Archivos.h"
#include "support/Averia.h"
#include "support/Prueba.h"
#include "support/Tabla.h"

#include <QDir>
#include <QProcess>
#include <cerrno>
#include <csignal>
#include <dlfcn.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

// The database file: made on first use, brought up from an older version, refused when it is not ours or damaged.
class PrInstalador : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void restos();
    void rechazada_data();
    void rechazada();
    void actualizada_data();
    void actualizada();
    void sinActualizar();
    void interrumpida();
    void restaurada();
    void deshecha();
    void aLaVez();
    void protegida();
};

namespace
{

const QString Actual = QString("%1|ok").arg(qvx::VersionEsquema);

// From the n-th change on the disk on, the process is killed or the disk is full.
int cambiosHastaLaFalla = -1;
bool discoLleno = false;

bool DiscoFalla()
{
    if (cambiosHastaLaFalla < 0 || --cambiosHastaLaFalla > 0)
        return false;
    if (!discoLleno)
        kill(getpid(), SIGKILL);
    cambiosHastaLaFalla = 1;
    errno = ENOSPC;
    return true;
}

QString ErrorAlAbrir(const QString &archivo)
{
    try {
        qvx::AbrirBaseDeDatos(archivo, false);
        return "abrió";
    } catch (const qvx::ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

// What the engine's own program answers about a file.
QString Sqlite(const QString &archivo, const QString &orden)
{
    QProcess programa;
    programa.start("sqlite3", {archivo, orden});
    if (!programa.waitForFinished() || programa.exitCode() != 0)
        qFatal("sqlite3: %s", programa.readAllStandardError().constData());
    return QString::fromUtf8(programa.readAllStandardOutput());
}

// A file as a version left it, with what planners may have put into it.
QString Vieja(const QTemporaryDir &carpeta, int version = 2)
{
    const QString archivo = carpeta.filePath("plan.db");
    Sqlite(archivo, QString(".read " CARPETA_DATOS "/version_%1.sqlite.sql").arg(version));
    return archivo;
}

// Every row of every table with its own number, but for what later versions bring along.
QString Filas(const QString &archivo)
{
    return Sqlite(archivo, ".dump --data-only --preserve-rowids")
        .remove(QRegularExpression("INSERT INTO Catalogo_Cambio[^\n]*\n"));
}

QString Version(const QString &archivo)
{
    return Sqlite(archivo, "SELECT user_version, integrity_check FROM pragma_user_version, pragma_integrity_check")
        .trimmed();
}

QStringList Copias(const QTemporaryDir &carpeta)
{
    return QDir(carpeta.path()).entryList({"plan.db.*"}, QDir::Files);
}

// In a process of its own, which ends with 0 when it opened the file.
pid_t AbrirAparte(const QString &archivo, int cambios)
{
    const pid_t proceso = fork();
    if (proceso == 0) {
        cambiosHastaLaFalla = cambios;
        _exit(ErrorAlAbrir(archivo) == "abrió" ? 0 : 1);
    }
    return proceso;
}

int Terminar(pid_t proceso)
{
    int estado = 0;
    waitpid(proceso, &estado, 0);
    return estado;
}

// Does it on the file as it is, in a process that is killed at every so many-th change on the disk, and on a disk that
// is full from there on, until it is done whole. revisar: afterwards, each time.
void EnCadaCambio(const QString &archivo, int paso, const std::function<void()> &hacer,
                  const std::function<void(bool entera)> &revisar)
{
    const QByteArray antes = Contenido(archivo);
    const auto intentar = [&](int cambios) {
        cambiosHastaLaFalla = cambios;
        try {
            hacer();
        } catch (const qvx::ErrorEjecucion &) {
            cambios = -1;
        }
        cambiosHastaLaFalla = -1;
        return cambios > 0;
    };
    for (const bool lleno : {false, true}) {
        bool entera = false;
        for (int n = 1; !entera && !QTest::currentTestFailed(); n += paso) {
            QVERIFY(n < 10000);
            Poner(archivo, antes);
            QFile::remove(archivo + "-journal");
            discoLleno = lleno;
            if (lleno) {
                entera = intentar(n);
            } else if (const pid_t proceso = fork(); proceso == 0) {
                _exit(intentar(n) ? 0 : 1);
            } else {
                entera = Terminar(proceso) == 0;
            }
            discoLleno = false;
            QCOMPARE(Version(archivo), Actual);
            revisar(entera);
        }
    }
}

} // namespace

// What the engine does to the disk goes through here: this program's functions come before the system's.

extern "C" Q_DECL_EXPORT ssize_t pwrite64(int archivo, const void *octetos, size_t cuantos, off64_t lugar)
{
    static const auto verdadera = reinterpret_cast<decltype(&pwrite64)>(dlsym(RTLD_NEXT, "pwrite64"));
    return DiscoFalla() ? -1 : verdadera(archivo, octetos, cuantos, lugar);
}

extern "C" Q_DECL_EXPORT int fdatasync(int archivo)
{
    static const auto verdadera = reinterpret_cast<decltype(&fdatasync)>(dlsym(RTLD_NEXT, "fdatasync"));
    return DiscoFalla() ? -1 : verdadera(archivo);
}

extern "C" Q_DECL_EXPORT int unlink(const char *archivo) noexcept
{
    static const auto verdadera = reinterpret_cast<decltype(&unlink)>(dlsym(RTLD_NEXT, "unlink"));
    if (!discoLleno) // there is always room to delete
        DiscoFalla();
    return verdadera(archivo);
}

// Made for its owner alone; opened again, it is as it was left. What a start that was killed has left goes with the
// next one, but for what somebody is at, and what is another's.
void PrInstalador::restos()
{
    const QTemporaryDir carpeta;
    const auto poner = [&](const QString &nombre, int segundos) {
        QFile archivo(carpeta.filePath(nombre));
        QVERIFY(archivo.open(QIODevice::WriteOnly)
                && archivo.setFileTime(QDateTime::currentDateTime().addSecs(-segundos), QFile::FileModificationTime));
    };
    for (const char *nombre :
         {"x.db.qvx-aaaaaa", "x.db.qvx-aaaaaa-journal", "x.db.qvx-bbbbbb", "x.db.backup", "y.db.qvx-dddddd"})
        poner(nombre, 3600);
    poner("x.db.qvx-cccccc", 0);
    QFile ocupado(carpeta.filePath("x.db.qvx-bbbbbb"));
    QVERIFY(ocupado.open(QIODevice::ReadOnly) && flock(ocupado.handle(), LOCK_EX) == 0);
    const QString archivo = carpeta.filePath("x.db");
    qvx::AbrirBaseDeDatos(archivo, false);
    QCOMPARE(QFile::permissions(archivo) & 0x0077, QFile::Permissions());
    const QByteArray antes = Contenido(archivo);
    qvx::AbrirBaseDeDatos(archivo, true); // no examples come into it
    QCOMPARE(Contenido(archivo), antes);
    QCOMPARE(QDir(carpeta.path()).entryList(QDir::Files).join(' '),
             "x.db x.db.backup x.db.qvx-bbbbbb x.db.qvx-cccccc y.db.qvx-dddddd");
    poner("x.db.qvx-cccccc", 3600); // too young then, and the database is there by now
    qvx::AbrirBaseDeDatos(archivo, false);
    QVERIFY(!QFileInfo::exists(carpeta.filePath("x.db.qvx-cccccc")));
}

void PrInstalador::rechazada_data()
{
    const Tabla<QString, QString> fila("orden", "motivo");
    fila("ajena", "PRAGMA application_id = 7", "no es de Quorvex");
    fila("más nueva", "PRAGMA user_version = 99", "versión más reciente");
    fila("más vieja", "PRAGMA user_version = 0", "ya no lee");
    fila("otro archivo", "", "no es de Quorvex.");
    fila("cortada", "", "(database disk image is malformed)");
    fila("ocupada", "", "está ocupada por otro programa (database is locked)");
    fila("disco", "", "disk I/O error");
}

void PrInstalador::rechazada()
{
    QFETCH(QString, orden);
    QFETCH(QString, motivo);
    const QString clase = QTest::currentDataTag();
    const Escenario escenario;
    if (!orden.isEmpty())
        escenario.Correr(orden);
    QFile archivo(escenario.Base().Archivo());
    if (clase == "cortada")
        QVERIFY(archivo.resize(archivo.size() / 2));
    if (clase == "otro archivo")
        QVERIFY(archivo.open(QIODevice::WriteOnly) && archivo.write(QByteArray(200, 'x')) == 200);
    archivo.close();
    const QByteArray antes = Contenido(archivo.fileName());
    std::unique_ptr<Averia> averia;
    if (clase == "ocupada" || clase == "disco")
        averia = std::make_unique<Averia>(escenario, clase);
    const QString error = ErrorAlAbrir(archivo.fileName());
    QVERIFY2(error.startsWith("La base de datos «") && error.contains(motivo), qPrintable(error));
    QCOMPARE(Contenido(archivo.fileName()), antes);
}

// No row changes, what is made is what a new file has, and the file as it was stands beside it.
void PrInstalador::actualizada_data()
{
    const Tabla<int> fila("version");
    for (const int version : {2, 4})
        fila(QString::number(version), version);
}

void PrInstalador::actualizada()
{
    QFETCH(const int, version);
    const QTemporaryDir carpeta;
    const QString archivo = Vieja(carpeta, version);
    const QString antes = Filas(archivo);
    QCOMPARE(ErrorAlAbrir(archivo), "abrió");
    QCOMPARE(Version(archivo), Actual);
    QCOMPARE(Filas(archivo), antes);
    const QString nueva = carpeta.filePath("nueva.db");
    qvx::AbrirBaseDeDatos(nueva, true);
    for (const char *consulta : {"SELECT type, name, tbl_name, sql FROM sqlite_schema ORDER BY type, name",
                                 "SELECT Co_Texto FROM Consulta WHERE Co_Nombre = 'PLAN_MANTENIMIENTO'"})
        QCOMPARE(Sqlite(archivo, consulta), Sqlite(nueva, consulta));

    const QStringList copias = Copias(carpeta);
    QVERIFY2(QRegularExpression("^plan\\.db\\.v\\d-\\d{4}-\\d\\d-\\d\\d_\\d{4}$").match(copias.join(' ')).hasMatch(),
             qPrintable(copias.join(' ')));
    const QString copia = carpeta.filePath(copias.constFirst());
    QCOMPARE(QFile::permissions(copia) & 0x0077, QFile::Permissions());
    QCOMPARE(Version(copia), QString("%1|ok").arg(version));
    QCOMPARE(Filas(copia), antes);
    // Put back and brought up again within the minute: the first copy stays.
    QVERIFY(QFile::remove(archivo) && QFile::copy(copia, archivo));
    QCOMPARE(ErrorAlAbrir(archivo), "abrió");
    QCOMPARE(Copias(carpeta).size(), 2);
}

// Held by another program, on a disk that fills up at any moment: told, and left as it was with nothing beside it.
void PrInstalador::sinActualizar()
{
    const QTemporaryDir carpeta;
    const QString nueva = carpeta.filePath("nueva.db");
    {
        const DiscoLleno disco;
        QVERIFY(ErrorAlAbrir(nueva).contains("nueva.db»"));
    }
    QCOMPARE(QDir(carpeta.path()).entryList(QDir::Files), QStringList());
    QCOMPARE(ErrorAlAbrir(nueva), "abrió");
    const QString archivo = Vieja(carpeta);
    const QString antes = Filas(archivo);
    {
        const auto otro = BaseDePrueba(archivo).Otro();
        otro->Correr("BEGIN IMMEDIATE");
        QVERIFY(ErrorAlAbrir(archivo).contains("está ocupada por otro programa"));
        QCOMPARE(Copias(carpeta), QStringList());
    }
    QStringList errores;
    for (int n = 1; Version(archivo) != Actual; ++n) {
        QCOMPARE(Version(archivo), "2|ok");
        QCOMPARE(Filas(archivo), antes);
        QCOMPARE(Copias(carpeta).join(' '), "");
        discoLleno = true;
        cambiosHastaLaFalla = n;
        errores.append(ErrorAlAbrir(archivo));
        cambiosHastaLaFalla = -1;
        discoLleno = false;
    }
    QVERIFY(errores.filter("La base de datos «" + archivo + "» ").size() >= errores.size() - 1); // but the last
    QVERIFY2(errores.size() > 20 && errores.filter("disco lleno").size() > 10, qPrintable(errores.join('\n')));
    QCOMPARE(Filas(archivo), antes);
}

// Killed at any change on the disk, the file is of one version or the other, and whole.
void PrInstalador::interrumpida()
{
    QMap<QString, int> versiones;
    for (int n = 1;; ++n) {
        QVERIFY(n < 1000);
        const QTemporaryDir carpeta;
        const QString archivo = Vieja(carpeta);
        const QString antes = Filas(archivo);
        if (Terminar(AbrirAparte(archivo, n)) == 0)
            break;
        const QString version = Version(archivo);
        QVERIFY2(version == "2|ok" || version == Actual, qPrintable(QString::number(n) + ": " + version));
        ++versiones[version];
        QCOMPARE(Filas(archivo), antes);
        QCOMPARE(ErrorAlAbrir(archivo), "abrió");
    }
    QVERIFY(versiones["2|ok"] > 20 && versiones[Actual] > 0);
}

// Killed at any change on the disk while it is restored from a copy, or on a disk that fills up, the file holds all
// that it held or all that the copy holds.
void PrInstalador::restaurada()
{
    const QTemporaryDir carpeta;
    const QString copia = carpeta.filePath("copia.db");
    const QString plan = carpeta.filePath("plan.db");
    const auto datos = [](const QString &archivo) {
        return Filas(archivo).remove(QRegularExpression("INSERT INTO Bitacora[^\n]*\n"));
    };
    qvx::AbrirBaseDeDatos(copia, true);
    const QString nueva = datos(copia);
    qvx::AbrirBaseDeDatos(plan, false);
    const QString antes = datos(plan);
    int comoAntes = 0;
    int hechas = 0;
    const auto restaurar = [&] {
        const qvx::Firmante firmante{"ana", [] { return QString("2026-03-14 09:26:53"); }};
        qvx::CopiaLista(copia, plan)
            .RestaurarTodo({plan, carpeta.filePath("c"), 1}, firmante, QDateTime(QDate(2026, 3, 14), QTime(9, 0)));
    };
    EnCadaCambio(plan, 53, restaurar, [&](bool entera) {
        const QString hay = datos(plan);
        QVERIFY(hay == nueva || (hay == antes && !entera));
        ++(hay == antes ? comoAntes : hechas);
    });
    QVERIFY(comoAntes > 10 && hechas >= 2);
}

// Likewise while an operation is taken back; and no operation stands for what did not happen.
void PrInstalador::deshecha()
{
    const QTemporaryDir carpeta;
    const QString plan = carpeta.filePath("plan.db");
    qvx::AbrirBaseDeDatos(plan, true);
    const auto hay = [&] {
        return Sqlite(plan, "SELECT count(*) FROM Plan_Mantenimiento_Detalle; SELECT count(*) FROM Plan_Mantenimiento; "
                            "SELECT count(*) FROM Operacion WHERE Op_Clase = 'Deshacer'; SELECT count(*) FROM "
                            "Operacion_Deshecha; SELECT count(*) FROM Historia_Linea");
    };
    Sqlite(plan, "DELETE FROM Plan_Mantenimiento_Detalle; DELETE FROM Plan_Mantenimiento");
    const QString antes = Filas(plan);
    const qint64 operacion = Sqlite(plan, "SELECT max(Op_ID) FROM Operacion").toLongLong();
    QSet<QString> despues;
    int comoAntes = 0;
    const auto deshacer = [&] {
        const auto conexion = qvx::AbrirBaseDeDatos(plan, false);
        qvx::FirmarOperaciones(*conexion, "ana");
        const qvx::Firmante firmante{"ana", [] { return QString("2026-03-14 09:26:53"); }};
        QVERIFY(qvx::Deshacer(*conexion, firmante, {operacion}, qvx::AlDeshacer::SoloEsas, false).SePuede());
    };
    EnCadaCambio(plan, 17, deshacer, [&](bool entera) {
        if (!entera && Filas(plan) == antes)
            ++comoAntes;
        else
            despues.insert(hay());
    });
    QVERIFY2(comoAntes > 10, qPrintable(QString::number(comoAntes)));
    QCOMPARE(despues.size(), 1); // whole, and with its operation
    QVERIFY2(despues.constBegin()->contains("\n1\n1\n"), qPrintable(*despues.constBegin()));
}

// Programs that start together: one brings the file up, the others find it so.
void PrInstalador::aLaVez()
{
    const QTemporaryDir carpeta;
    const QString archivo = Vieja(carpeta);
    QList<pid_t> procesos;
    for (int i = 0; i < 4; ++i)
        procesos.append(AbrirAparte(archivo, -1));
    for (const pid_t proceso : procesos)
        QCOMPARE(Terminar(proceso), 0);
    QCOMPARE(Version(archivo), Actual);
    QCOMPARE(Copias(carpeta).size(), 1);
}

// The root's key is nobody's, and what was logged stays.
void PrInstalador::protegida()
{
    const Escenario escenario(true);
    const auto otro = escenario.Base().Otro();
    otro->Correr("INSERT INTO Bitacora VALUES (1, 'a', 'b', 'c', 'd', 'e')");
    const QString parte = "INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) ";
    for (const QString &orden : {parte + "VALUES ('0001', '0000  ', '0000', 'RAIZ')",
                                 QString("UPDATE Tipo_Equipo_Parte SET Tep_ID = '0000' WHERE Tep_ID = '0001'"),
                                 QString("INSERT INTO Bitacora VALUES (7, 'a', 'b', 'c', 'd', 'e')"),
                                 QString("UPDATE Bitacora SET Bi_Oper = 'otro'"), QString("DELETE FROM Bitacora")})
        QVERIFY2(!otro->Puede(orden), qPrintable(orden));
}

PRUEBA(PrInstalador)
#include "pr_instalador.moc"
