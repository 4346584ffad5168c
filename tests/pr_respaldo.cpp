#include "app/Acceso.h"
#include "app/Escritorio.h"
#include "app/InteraccionDelEscritorio.h"
#include "app/VentanaPrincipal.h"
#include "app/respaldo/CopiaDelDia.h"
#include "app/respaldo/DialogoCopias.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"
#include "data/ErrorEjecucion.h"
#include "plan/Restauracion.h"
#include "support/Archivos.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

// Copies of a database's file: made by themselves, by hand, and restored from; one plan or the whole.
class PrRespaldo : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void delDia();
    void sinCopia();
    void podadas();
    void rechazadas_data();
    void rechazadas();
    void todo();
    void linea();
    void dialogo();
    void ventana();

private:
    QString Base() const { return escenario->Base().Archivo(); }
    QDir Carpeta() const { return QFileInfo(Base()).absolutePath() + "/respaldos"; }
    qvx::LugarDeCopias Lugar() const { return respaldo::LugarDe(Base()); }
    QString Copiar(const QString &nombre = "copia.db") const;
    static QString Precio(const QString &archivo);

    std::unique_ptr<QTemporaryDir> ajustes;
};

void PrRespaldo::init()
{
    ajustes = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ajustes->path());
    PruebaPantalla::init();
}

QString PrRespaldo::Copiar(const QString &nombre) const
{
    const QString destino = escenario->Ruta(nombre);
    qvx::Respaldar(Base(), destino);
    return destino;
}

// Of the service 000001, in any file.
QString PrRespaldo::Precio(const QString &archivo)
{
    return BaseDePrueba(archivo)
        .Otro()
        ->Filas("SELECT Pm_Precio FROM Plan_Mantenimiento WHERE Pm_ID = '000001' AND Te_Cve_Tipo_Equipo = '0900'")
        .join("");
}

// Before the first change of a day, of the state before it: inside the screen's transaction, outside of any, while
// another program writes. What is only read, or changed later that day, makes none.
void PrRespaldo::delDia()
{
    QStringList avisos;
    respaldo::CopiarCadaDia(qvx::Sesion::Actual(), Base(), [&](const QString &motivo) { avisos.append(motivo); });
    ElegirTipo("0900");
    QVERIFY(!Carpeta().exists());
    CambiarServicio("N0002", "000001", "1111");
    QStringList copias = Carpeta().entryList(QDir::Files);
    QVERIFY2(QRegularExpression("^prueba_2026-03-14_[0-9a-f]{8}\\.db$").match(copias.join(' ')).hasMatch(),
             qPrintable(copias.join(' ')));
    QCOMPARE(Precio(Carpeta().filePath(copias.at(0))), "1000");
    QCOMPARE(QFile::permissions(Carpeta().filePath(copias.at(0))) & 0x0077, QFile::Permissions());
    CambiarServicio("N0002", "000001", "2222");
    QCOMPARE(Carpeta().entryList(QDir::Files), copias);

    escenario->ahora = escenario->ahora.addDays(1);
    const auto otro = escenario->Base().Otro();
    otro->Correr("BEGIN IMMEDIATE");
    otro->Correr("UPDATE Plan_Mantenimiento SET Pm_Precio = 3");
    Rotular("N0005", "MOTOR NUEVO"); // which cannot be saved, but the copy is made
    Mensajes();
    otro->Correr("ROLLBACK");
    copias = Carpeta().entryList(QDir::Files, QDir::Time);
    QCOMPARE(copias.size(), 2);
    QCOMPARE(Precio(Carpeta().filePath(copias.at(0))), "2222");
    QCOMPARE(avisos.join('\n'), "");
}

// The change is saved all the same, what failed is told once, and tried again an hour later.
void PrRespaldo::sinCopia()
{
    QStringList avisos;
    respaldo::CopiarCadaDia(qvx::Sesion::Actual(), Base(), [&](const QString &texto) { avisos.append(texto); });
    ElegirTipo("0900");
    Poner(Carpeta().path(), "");
    for (const char *precio : {"1111", "2222"}) {
        CambiarServicio("N0002", "000001", precio);
        QCOMPARE(Precio(Base()), precio);
    }
    QCOMPARE(avisos.size(), 1);
    QVERIFY2(avisos.at(0).startsWith("No se hizo la copia de seguridad de hoy. La copia «")
                 && avisos.at(0).contains("ni su carpeta: " + qt_error_string(ENOTDIR)),
             qPrintable(avisos.at(0)));
    // The window tells it once nothing is being written.
    qvx::Sesion::Actual().Conexion().BeginTrans();
    respaldo::AvisarDespues(*pantalla, avisos.at(0));
    QTest::qWait(700);
    QCOMPARE(Mensajes(), QStringList());
    qvx::Sesion::Actual().Conexion().RollbackTrans();
    QStringList dichos;
    QTRY_VERIFY(!(dichos += Mensajes()).isEmpty());
    QCOMPARE(dichos.join(""), "48|Quorvex|QVX|ERR-ID:1000120|" + avisos.at(0));
    QFile::remove(Carpeta().path());
    escenario->ahora = escenario->ahora.addSecs(3601);
    CambiarServicio("N0002", "000001", "3333");
    QCOMPARE(Carpeta().entryList(QDir::Files).size(), 1);
    QCOMPARE(avisos.size(), 1);
}

// The oldest of the program's own of this database go, and nothing else.
void PrRespaldo::podadas()
{
    const BaseDePrueba otra(false);
    const auto copiar = [&](const QString &base, int dia) {
        qvx::LugarDeCopias lugar{base, Carpeta().path(), 3};
        QVERIFY(qvx::RespaldarDelDia(lugar, QDate(2026, 1, dia)));
        QVERIFY(!qvx::RespaldarDelDia(lugar, QDate(2026, 1, dia)));
        for (const QString &nombre : Carpeta().entryList({QString("*_2026-01-0%1_*").arg(dia)})) {
            QFile hecha(Carpeta().filePath(nombre));
            QVERIFY(hecha.open(QIODevice::ReadWrite)
                    && hecha.setFileTime(QDateTime(QDate(2026, 1, dia), QTime(8, 0)), QFile::FileModificationTime));
        }
    };
    for (int dia = 1; dia <= 3; ++dia)
        copiar(otra.Archivo(), dia);
    const QStringList ajenas = Carpeta().entryList(QDir::Files);
    qvx::Respaldar(Base(), Carpeta().filePath("prueba_2025-01-01.db"));
    Poner(Carpeta().filePath("notas.txt"), "");
    for (int dia = 1; dia <= 5; ++dia)
        copiar(Base(), dia);
    QStringList dias;
    for (const qvx::Copia &copia : qvx::Copias(Lugar()))
        dias.append(QFileInfo(copia.archivo).fileName().mid(7, 10) + (copia.automatica ? "*" : ""));
    QCOMPARE(dias.size(), 7); // its own three, the other database's three, and the person's
    QCOMPARE(dias.filter("*").join(' '), "2026-01-05* 2026-01-04* 2026-01-03*");
    for (const QString &ajena : ajenas + QStringList{"notas.txt", "prueba_2025-01-01.db"})
        QVERIFY2(Carpeta().exists(ajena), qPrintable(ajena));
}

void PrRespaldo::rechazadas_data()
{
    const Tabla<QString, QString> fila("orden", "motivo");
    fila("ajena", "PRAGMA application_id = 7", "no es de Quorvex");
    fila("más nueva", "PRAGMA user_version = 99", "versión más reciente");
    fila("más vieja", "PRAGMA user_version = 1", "ya no lee");
    fila("dañada", "", "está dañad");
    fila("otra cosa", "", "no es de Quorvex");
    fila("la misma", "", "es la base de datos que está abierta");
    fila("llena", "", "disk I/O error");
}

// Nothing of what is open changes, nor the copy, and nothing is left beside them.
void PrRespaldo::rechazadas()
{
    QFETCH(QString, orden);
    QFETCH(QString, motivo);
    const QString clase = QTest::currentDataTag();
    QString copia = Copiar();
    if (!orden.isEmpty())
        BaseDePrueba(copia).Otro()->Correr(orden);
    if (clase == "dañada") { // where only a check of all of it finds it: a row is no longer what its index says
        QByteArray octetos = Contenido(copia);
        octetos.replace(octetos.indexOf("9000000009"), 10, "9000000008");
        Poner(copia, octetos);
    }
    if (clase == "otra cosa")
        Poner(copia, QByteArray(5000, 'x'));
    if (clase == "la misma")
        QVERIFY(QFile::link(Base(), copia = escenario->Ruta("enlace.db")));
    const QByteArray antes = Contenido(Base());
    const QByteArray copiaAntes = Contenido(copia);
    QString error;
    try {
        const DiscoLleno disco(clase == "llena" ? 100'000 : RLIM_INFINITY);
        qvx::CopiaLista(copia, Base()).RestaurarTodo(Lugar(), qvx::Sesion::Actual().Firmante(), escenario->ahora);
    } catch (const qvx::ErrorEjecucion &otro) {
        error = otro.Descripcion();
    }
    QVERIFY2(error.startsWith("La copia «") && error.contains(motivo), qPrintable(error));
    QVERIFY(Contenido(Base()) == antes && Contenido(copia) == copiaAntes);
    QCOMPARE(QFileInfo(Base()).dir().entryList(QDir::Files | QDir::Hidden), QStringList{"prueba.db"});
}

// What was there is in a copy of its own, also seen by a program that has the file open; one that is busy with it is
// waited for, and then nothing is done.
void PrRespaldo::todo()
{
    const QString copia = Copiar();
    const QStringList buenas = escenario->Tablas();
    ElegirTipo("0900");
    CambiarServicio("N0002", "000001", "1111");
    escenario->Correr("DELETE FROM Producto WHERE Pr_Cve_Producto = '9000000004'");
    const QStringList cambiadas = escenario->Tablas();
    const auto otro = escenario->Base().Otro();
    otro->Filas("SELECT count(*) FROM Producto");
    const auto restaurar = [&] {
        return qvx::CopiaLista(copia, Base())
            .RestaurarTodo(Lugar(), qvx::Sesion::Actual().Firmante(), escenario->ahora);
    };
    otro->Correr("BEGIN IMMEDIATE");
    QVERIFY_THROWS_EXCEPTION(qvx::ErrorEjecucion, restaurar());
    otro->Correr("ROLLBACK");
    QCOMPARE(escenario->Tablas(), cambiadas);
    const QString anterior = restaurar();
    QCOMPARE(Precio(Base()), "1000");
    QCOMPARE(otro->Filas("SELECT count(*) FROM Producto WHERE Pr_Cve_Producto = '9000000004'"), QStringList{"1"});
    QStringList ahora = escenario->Tablas();
    QCOMPARE(ahora.removeAll("bitacora|1|Base de datos|copia.db|Restauración|mlopez|2026-03-14 09:26:53"), 1);
    QCOMPARE(ahora, buenas);
    QCOMPARE(Precio(anterior), "1111");
    QCOMPARE(escenario->Filas("PRAGMA integrity_check"), QStringList{"ok"});
    CambiarServicio("N0002", "000001", "4444"); // the screen works on, on what there is now
    QCOMPARE(Precio(Base()), "4444");
}

void PrRespaldo::linea()
{
    const QString copia = escenario->Ruta("c.db");
    const QStringList base = escenario->Base().Argumentos();
    QStringList antes = escenario->Tablas();
    for (const auto &[orden, dicho, cambia] : QList<std::tuple<QString, QString, bool>>{
             {"--respaldar {}", "^0Se hizo la copia", false},
             {"--respaldar {}", "^1.*no se reemplaza", false},
             {"--restaurar {} 900", "^0.* ya es como en la copia", false},
             {"--restaurar {} 901 --si", "^1La copia no tiene un plan", false},
             {"UPDATE Plan_Mantenimiento SET Pm_Precio = 5 WHERE Pm_ID = '000001'", "", true},
             {"--restaurar {} 900", "^0.*cambiaría en 1 servicio\\.\n.*--si", false},
             {"--restaurar {} 900 --si", "^0Se restauró el plan .*: 1 servicio\\.", true},
             {"DELETE FROM Unidad", "", true},
             {"--restaurar {}", "^0La copia es del [^$]*0900 BOMBA DE PRUEBA: 6 partes, 3 servicios[^$]*--si", false},
             {"--restaurar {} --si", "^0Se restauró toda la base de datos", true},
             {"--restaurar {} --exportar 1", "^2--restaurar va sin otra orden: --exportar sobra", false},
             {"--respaldar {} --si", "^2--", false}}) {
        const QString respuesta = orden.startsWith("--")
                                      ? Quorvex(QString(orden).replace("{}", copia).split(' ') + base)
                                      : escenario->Correr(orden).toString();
        QVERIFY2(QRegularExpression(dicho).match(respuesta).hasMatch(), qPrintable(respuesta));
        QCOMPARE(escenario->Tablas() != antes, cambia);
        antes = escenario->Tablas();
    }
    QCOMPARE(Carpeta().entryList(QDir::Files).size(), 2); // the day's, and the one before the restoring
    const QString enServidor = Quorvex({"--servidor", "postgresql://ana@127.0.0.1/x", "--respaldar", copia});
    QVERIFY2(enServidor.startsWith("2") && enServidor.contains("pg_dump"), qPrintable(enServidor));
}

// A part with all below it, deleted by mistake, comes back; the dialog says so of what cannot be read.
void PrRespaldo::dialogo()
{
    qvx::Respaldar(Base(), Carpeta().filePath("antes.db"));
    const QStringList plan = escenario->Filas("SELECT Tep_ID, Tep_Descripcion FROM Tipo_Equipo_Parte ORDER BY 1, 2");
    escenario->Correr("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID IN ('0001', '0002') AND Te_Cve_Tipo_Equipo = '0900'");
    Poner(Carpeta().filePath("rota.db"), Contenido(Carpeta().filePath("antes.db")).left(20000));
    DialogoCopias forma(Base(), nullptr);
    auto &copias = En<qvx::VistaTabla>(forma, "lvCopias");
    auto &planes = En<qvx::VistaTabla>(forma, "lvPlanes");
    auto &cmdPlan = En<QPushButton>(forma, "cmdPlan");
    QCOMPARE(copias.model()->rowCount(), 2);
    QVERIFY(!En<QLabel>(forma, "lblAviso").text().isEmpty() && !cmdPlan.isEnabled()); // the newest is the broken one
    copias.setCurrentIndex(copias.model()->index(1, 0));
    QCOMPARE(planes.model()->index(0, 0).data().toString(), "0900");
    planes.setCurrentIndex(planes.model()->index(0, 0));
    QString dicho;
    EnElDialogo(
        [&](QWidget &previa) {
            dicho = En<QLabel>(previa, "lblExplicacion").text() + En<QLabel>(previa, "lblResumen").text();
            En<QPushButton>(previa, "cmdAceptar").click();
        },
        &forma);
    cmdPlan.click();
    QVERIFY2(dicho.contains("Cambian 2 partes;") && dicho.contains("Partes: 2 nuevas."), qPrintable(dicho));
    QVERIFY(forma.HuboCambios());
    QCOMPARE(escenario->Filas("SELECT Tep_ID, Tep_Descripcion FROM Tipo_Equipo_Parte ORDER BY 1, 2"), plan);
    cmdPlan.click();
    QVERIFY(Mensajes().join(' ').contains("ya es como en la copia"));
}

// The whole, from the window: it is opened anew on what is there then.
void PrRespaldo::ventana()
{
    PruebaPantalla::cleanup();
    const BaseDePrueba una(true);
    const QString copia = ajustes->filePath("copia.db");
    qvx::Respaldar(una.Archivo(), copia);
    una.Otro()->Correr("UPDATE Tipo_Equipo SET Te_Descripcion = 'OTRA'");
    const Argumentos argumentos = Argumentos::Leer(QStringList{"quorvex"} + una.Argumentos());
    {
        Escritorio escritorio;
        escritorio.Empezar(argumentos, AbrirBase(argumentos), std::make_unique<InteraccionDelEscritorio>());
        const QPointer<VentanaPrincipal> anterior = escritorio.Ventana();
        QString dicho;
        EnElDialogo([&](QWidget &mensaje) { dicho = dynamic_cast<QMessageBox &>(mensaje).text(); });
        escritorio.Restaurar(Poner(ajustes->filePath("mala.db"), "no es una base"));
        QVERIFY2(dicho.startsWith("No se restauró nada. La copia «") && anterior, qPrintable(dicho));
        EnElDialogo([&](QWidget &mensaje) { dicho = dynamic_cast<QMessageBox &>(mensaje).text(); });
        escritorio.Restaurar(copia);
        QVERIFY2(dicho.startsWith("Se restauró toda la base de datos.") && !anterior, qPrintable(dicho));
        QVERIFY(una.Otro()->Filas("SELECT 1 FROM Tipo_Equipo WHERE Te_Descripcion = 'OTRA'").isEmpty());
    }
    PruebaPantalla::init();
}

PRUEBA(PrRespaldo)
#include "pr_respaldo.moc"
