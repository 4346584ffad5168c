#include "controls/txtQVX.h"
#include "support/Intermediario.h"
#include "support/Mandos.h"
#include "support/Procesos.h"

#include <QElapsedTimer>
#include <QTextStream>

using Falla = Intermediario::Falla;

namespace
{

const QString NadaGuardado = "Se perdió la conexión con el servidor: no se guardó nada. (";
const QString NoSeSabe = "Se perdió la conexión con el servidor y no se sabe si el cambio quedó guardado. Revíselo "
                         "antes de repetirlo. (";
const QString Perdida = "Se perdió la conexión con el servidor. (";
const QString SinConexion = "No hay conexión con la base de datos: ";
const QString Ocupado = "mlopez está cambiando el plan del tipo de equipo 0900 y no terminó en 10 segundos. Inténtelo "
                        "de nuevo más tarde.";
const QString Cruzado = "Otra persona cambia los mismos planes al mismo tiempo. Inténtelo de nuevo.";
void Reiniciar()
{
    if (QProcess::execute(qEnvironmentVariable("QVX_PRUEBA_SERVIDOR") + "/reiniciar", {}) != 0)
        qFatal("El servidor no se reinició");
}

} // namespace

// What the screen tells, keeps and can do after the server or the way to it failed in the middle of a command.
class PrFallas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cambios_data();
    void cambios();
    void lecturas_data();
    void lecturas();
    void espera_data();
    void espera();
    void cruzadas();

private:
    void Preparar();
    QStringList Plan() const;
    QStringList Mensajes();
    void SinRestos() const;
    QStringList Imperturbado(const Mando &mando);
    void Provocar(const QString &falla, const QByteArray &cambio);
    QString Base() const { return escenario->Base().Argumentos().constLast().section(QLatin1Char('/'), -1); }

    std::unique_ptr<Intermediario> red;
    std::unique_ptr<Escenario> escenario;
    QHash<QString, QStringList> imperturbados;
};

void PrFallas::initTestCase()
{
    qputenv("QVX_PRUEBA_MOTOR", "postgres");
    red = std::make_unique<Intermediario>();
    qputenv("QVX_PRUEBA_INTERMEDIARIO", QByteArray::number(red->Puerto()));
}

void PrFallas::Preparar()
{
    escenario.reset();
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    escenario->Pantalla("0900");
}

void PrFallas::init()
{
    Preparar();
}

void PrFallas::cleanup()
{
    red->Armar(Falla::Ninguna, {});
    red->Cerrar();
    red->Abrir();
    escenario.reset();
}

// The plans and the logs, without the rows' versions and numbers, which every run makes new.
QStringList PrFallas::Plan() const
{
    const QString firma =
        "Oper_Alta, Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Es_Cve_Estado";
    return escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, " + firma
                            + " FROM Tipo_Equipo_Parte ORDER BY 1, 2")
           + escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, "
                              "Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, "
                              "Pm_Requiere_Paro, Pm_Tiempo_Paro, "
                              + firma + " FROM Plan_Mantenimiento ORDER BY 1, 3")
           + escenario->Filas("SELECT * FROM Plan_Mantenimiento_Detalle ORDER BY 1, 2, 3, 4")
           + escenario->Filas("SELECT Bi_Clave, Bi_Accion FROM Bitacora ORDER BY 1, 2")
           + escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio ORDER BY 1, 2");
}

// Without the questions, and without what says that an export was made.
QStringList PrFallas::Mensajes()
{
    QStringList dichos = escenario->Personas().Tomar();
    dichos.removeIf([](const QString &dicho) { return (dicho.section('|', 0, 0).toInt() & 0xF) != 0; });
    return dichos;
}

// Nothing of the planner's is left on the server but an idle connection.
void PrFallas::SinRestos() const
{
    QTRY_COMPARE(escenario->Filas("SELECT state, query FROM pg_stat_activity WHERE usename = 'mlopez' AND state <> "
                                  "'idle' UNION ALL SELECT mode, locktype FROM pg_locks JOIN pg_stat_activity USING "
                                  "(pid) WHERE usename = 'mlopez'"),
                 QStringList());
}

// What the plan is when nothing disturbs the command.
QStringList PrFallas::Imperturbado(const Mando &mando)
{
    const QString nombre = QString::fromUtf8(mando.nombre);
    if (!imperturbados.contains(nombre)) {
        const QStringList antes = Plan();
        Planificador planificador(*escenario);
        mando.correr(planificador, *escenario);
        if (!Mensajes().isEmpty() || Plan() == antes)
            qFatal("El mando %s no hace nada", mando.nombre);
        imperturbados.insert(nombre, Plan());
        Preparar();
    }
    return imperturbados.value(nombre);
}

// cambio: the statement at which it happens, where that is not the commit.
void PrFallas::Provocar(const QString &falla, const QByteArray &cambio)
{
    const QByteArray confirmacion = cambio == "UPDATE Tipo_Equipo_Parte SET" ? cambio : "COMMIT";
    if (falla == "reinicio en medio")
        red->Armar(Falla::Detener, cambio, Reiniciar);
    else if (falla == "corte en medio")
        red->Armar(Falla::CortarAntes, cambio);
    else if (falla == "antes de confirmar")
        red->Armar(Falla::CortarAntes, confirmacion);
    else if (falla == "reinicio al confirmar")
        red->Armar(Falla::Detener, confirmacion, Reiniciar);
    else if (falla == "al confirmar")
        red->Armar(Falla::CortarDurante, confirmacion);
    else if (falla == "después de confirmar")
        red->Armar(Falla::CortarDespues, confirmacion);
    else if (falla == "al leer después")
        red->Armar(Falla::CortarSiguiente, confirmacion);
    else if (falla == "reinicio en reposo") {
        Reiniciar();
        QTRY_COMPARE(red->Conexiones(), 0);
    } else
        red->Cerrar();
    if (falla == "corte en reposo")
        red->Abrir();
}

void PrFallas::cambios_data()
{
    QTest::addColumn<QString>("mando");
    QTest::addColumn<QString>("falla");
    for (const Mando &mando : Mandos())
        for (const char *falla :
             {"reinicio en medio", "corte en medio", "antes de confirmar", "reinicio al confirmar", "al confirmar",
              "después de confirmar", "al leer después", "corte en reposo", "reinicio en reposo", "ausente"})
            QTest::addRow("%s: %s", mando.nombre, falla) << QString::fromUtf8(mando.nombre) << QString::fromUtf8(falla);
}

// What is told is true, what was told to be saved is there and nothing else is, and the command, or another one where
// it was carried out, then works.
void PrFallas::cambios()
{
    QFETCH(QString, mando);
    QFETCH(QString, falla);
    const Mando &este = MandoDe(mando);
    const QStringList despues = Imperturbado(este);
    const QStringList antes = Plan();
    const bool enMedio = falla.endsWith("en medio");
    const bool reposo = falla.endsWith("en reposo");
    const bool sinTransaccion = este.ultimo.isEmpty();
    const bool incierto = falla.endsWith("confirmar") && !falla.startsWith("después");
    const bool hecho =
        falla == "al confirmar" || falla == "después de confirmar" || falla == "al leer después" || reposo;
    const QString donde = falla == "ausente"           ? este.alEmpezar
                          : enMedio                    ? este.alCambiar
                          : incierto                   ? este.alConfirmar
                          : falla == "al leer después" ? este.alLeer
                                                       : QString();
    const QString dicho = falla == "ausente"                        ? SinConexion
                          : incierto || (enMedio && sinTransaccion) ? NoSeSabe
                          : enMedio                                 ? NadaGuardado
                                                                    : Perdida;

    QStringList mensajes;
    int intentos = 0;
    const auto probar = [&] {
        if (intentos == 0)
            Provocar(falla, sinTransaccion ? QByteArray("UPDATE Tipo_Equipo_Parte SET") : este.ultimo);
        else if (falla == "ausente")
            red->Abrir();
    };
    const auto otraVez = [&] {
        mensajes += Mensajes();
        SinRestos();
        return ++intentos == 1 && !hecho && Plan() == antes;
    };
    Planificador planificador(*escenario, {probar, otraVez});
    este.correr(planificador, *escenario);
    mensajes += Mensajes();

    QVERIFY2(red->Ocurrio(), "La falla no ocurrió");
    QVERIFY2(mensajes.isEmpty() == donde.isEmpty(), qPrintable(mensajes.join(QLatin1Char(0x0a))));
    if (!donde.isEmpty()) {
        QVERIFY2(mensajes.constFirst().contains("|" + donde + "|") && mensajes.constFirst().contains(dicho),
                 qPrintable(mensajes.join('\n')));
        for (const QString &otro : mensajes.mid(1)) // of what is read afterwards, and for want of it
            QVERIFY2(falla == "al leer después" && !otro.contains(NadaGuardado) && !otro.contains(NoSeSabe),
                     qPrintable(otro));
    }
    QCOMPARE(intentos, hecho ? 1 : 2);
    QCOMPARE(Plan(), despues);

    Planificador siguiente(*escenario);
    siguiente.ElegirTipo("0900");
    siguiente.Rotular("N0001", "OTRO CUERPO");
    QCOMPARE(Mensajes(), QStringList());
    QVERIFY(Plan().join('\n').contains("OTRO CUERPO"));
    SinRestos();
    AnotarResultado({"falla", mando, falla,
                     donde.isEmpty() ? QString("sin mensaje") : dicho.chopped(2).section("(", 0, 0),
                     hecho ? "guardado" : "no guardado"});
}

void PrFallas::lecturas_data()
{
    QTest::addColumn<QString>("lectura");
    QTest::addColumn<QByteArray>("sentencia");
    QTest::addColumn<QString>("donde");
    QTest::addColumn<QString>("falla");
    const auto fila = [](const char *lectura, const char *sentencia, int donde) {
        for (const char *falla : {"corte en medio", "reinicio en medio", "respuesta perdida", "ausente"})
            QTest::addRow("%s: %s", lectura, falla)
                << QString::fromUtf8(lectura) << QByteArray(sentencia) << "KT580|ERR-ID:" + QString::number(donde)
                << QString::fromUtf8(falla);
    };
    fila("exportación", "FROM Plan_Mantenimiento_Detalle", 7500017);
    fila("árbol", "FROM Tipo_Equipo_Parte WHERE Tep_Padre", 7500002);
}

// A reading that fails says so, claims nothing about saving, leaves no file, and is done by asking again.
void PrFallas::lecturas()
{
    QFETCH(QString, lectura);
    QFETCH(QByteArray, sentencia);
    QFETCH(QString, donde);
    QFETCH(QString, falla);
    const QStringList antes = Plan();
    const QString archivo = escenario->Ruta("exportado.xml");
    QStringList mensajes;
    bool hubo = false;
    int intentos = 0;
    const auto probar = [&] {
        if (intentos > 0 && falla == "ausente")
            red->Abrir();
        else if (intentos > 0)
            return;
        else if (falla == "ausente")
            red->Cerrar();
        else
            red->Armar(falla == "corte en medio"      ? Falla::CortarAntes
                       : falla == "respuesta perdida" ? Falla::CortarDurante
                                                      : Falla::Detener,
                       sentencia, Reiniciar);
    };
    const auto otraVez = [&] {
        if (++intentos > 1)
            return false;
        mensajes = Mensajes();
        hubo = QFile::exists(archivo);
        SinRestos();
        return true;
    };
    Planificador planificador(*escenario, {probar, otraVez});
    if (lectura == "árbol")
        planificador.Releer();
    else
        planificador.Exportar(archivo);
    QVERIFY2(red->Ocurrio(), "La falla no ocurrió");
    QVERIFY(!mensajes.isEmpty());
    for (const QString &mensaje : mensajes)
        QVERIFY2(mensaje.contains("|" + donde + "|" + (falla == "ausente" ? SinConexion : Perdida)),
                 qPrintable(mensaje));
    QVERIFY(!hubo);
    QCOMPARE(QFile::exists(archivo), lectura != "árbol");
    QCOMPARE(Mensajes().filter("ERR-ID:7500018").size(), lectura == "árbol" ? 0 : 1);
    QCOMPARE(planificador.Nodos(false).size() + planificador.Nodos(true).size(), 5);
    QCOMPARE(Plan(), antes);
    SinRestos();
    AnotarResultado(
        {"falla", lectura, falla, (falla == "ausente" ? SinConexion : Perdida).chopped(2), "no cambia nada"});
}

void PrFallas::espera_data()
{
    QTest::addColumn<QString>("mando");
    QTest::addColumn<QString>("donde");
    QTest::newRow("parte nueva") << "parte nueva"
                                 << "ERR-ID:7500097|";
    QTest::newRow("servicio nuevo") << "servicio nuevo"
                                    << "ERR-ID:7500080|";
}

// Another planner, in a process of their own, was asked whether to delete a part, and thinks it over.
void PrFallas::espera()
{
    QFETCH(QString, mando);
    QFETCH(QString, donde);
    const QStringList antes = Plan();
    QProcess otro;
    auto entorno = QProcessEnvironment::systemEnvironment();
    entorno.remove("QVX_PRUEBA_INTERMEDIARIO");
    otro.setProcessEnvironment(entorno);
    const QString preguntado = escenario->Ruta("preguntado");
    const QString contestado = escenario->Ruta("contestado");
    otro.start(QCoreApplication::applicationFilePath(), {"--eliminar", Base(), preguntado, contestado});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(preguntado), 60000);

    QStringList mensajes;
    QString forma;
    QElapsedTimer reloj;
    qint64 esperado = 0;
    int intentos = 0;
    const auto probar = [&] {
        if (intentos == 0)
            reloj.start();
    };
    const auto otraVez = [&] {
        if (++intentos > 1)
            return false;
        esperado = reloj.elapsed();
        mensajes = Mensajes();
        forma = QApplication::activeModalWidget() ? "abierta" : "cerrada";
        QFile(contestado).open(QIODevice::WriteOnly);
        return Termino(otro);
    };
    Planificador planificador(*escenario, {probar, otraVez});
    const QString clave =
        mando == "parte nueva" ? planificador.NuevaParte("N0001", "BRIDA") : planificador.NuevoServicio("N0002", "70");
    QCOMPARE(mensajes.size(), 1);
    QVERIFY2(mensajes.constFirst().contains(donde) && mensajes.constFirst().endsWith(Ocupado),
             qPrintable(mensajes.constFirst()));
    QCOMPARE(forma, "abierta");
    QVERIFY(!clave.isEmpty());
    QCOMPARE(Mensajes(), QStringList());
    QCOMPARE(otro.exitCode(), 0);
    QVERIFY(Plan().size() > antes.size());
    SinRestos();
    AnotarResultado({"espera", mando, QString::number(esperado)});
}

// Two copies in opposite directions, each holding the plan that the other one reads: one is carried out, the other is
// told, and no plan is half of each.
void PrFallas::cruzadas()
{
    const auto plan = [&](const QString &tipo) {
        return escenario->Filas("SELECT Tep_ID, Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '"
                                + tipo + "' ORDER BY 1");
    };
    const QStringList propio = plan("0900");
    const QStringList ajeno = plan("0902");
    QProcess otro;
    auto entorno = QProcessEnvironment::systemEnvironment();
    entorno.remove("QVX_PRUEBA_INTERMEDIARIO");
    otro.setProcessEnvironment(entorno);
    const QString listo = escenario->Ruta("listo");
    const QString seguir = escenario->Ruta("seguir");
    otro.start(QCoreApplication::applicationFilePath(), {"--copiar", Base(), listo, seguir});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(listo), 60000);

    // This process holds 0902; the other one takes 0900 and waits for 0902.
    red->Armar(Falla::Detener, "DELETE FROM Tipo_Equipo_Parte", [&] {
        QFile(seguir).open(QIODevice::WriteOnly);
        const auto espera = escenario->Base().Otro();
        while (!espera->Correr("SELECT 1 FROM pg_locks WHERE NOT granted").next())
            QThread::msleep(10);
    });
    Planificador(*escenario).Copiar("0902");
    QVERIFY(Termino(otro));
    QVERIFY(red->Ocurrio());
    const QString suyos = QString::fromUtf8(otro.readAllStandardOutput()).trimmed();
    const QString mios = Mensajes().join('\n');
    const QString aviso = "16|Error al copiar|KT580|ERR-ID:7500034|" + Cruzado;
    QVERIFY2((mios == aviso && suyos.isEmpty()) || (mios.isEmpty() && suyos == aviso), qPrintable(mios + '\n' + suyos));
    QCOMPARE(plan("0900"), mios.isEmpty() ? propio : ajeno);
    QCOMPARE(plan("0902"), mios.isEmpty() ? propio : ajeno);
    SinRestos();
    AnotarResultado({"cruzadas", mios.isEmpty() ? "la primera" : "la segunda"});
}

namespace
{

// The other planner: makes the first file when ready, and goes on when there is the second.
int OtroPlanificador(const QString &mando, const QString &base, const QString &listo, const QString &seguir)
{
    Escenario escenario(base);
    escenario.Pantalla(mando == "--copiar" ? "0902" : "0900");
    Planificador planificador(escenario);
    const auto avisar = [&] { Encontrarse(listo, seguir); };
    if (mando == "--copiar") {
        avisar();
        planificador.Copiar("0900");
    } else {
        planificador.EliminarParte("N0005", avisar);
    }
    for (const QString &mensaje : escenario.Personas().Tomar())
        if ((mensaje.section('|', 0, 0).toInt() & 0xF) == 0)
            QTextStream(stdout) << mensaje << Qt::endl;
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    if (argc == 5 && qstrncmp(argv[1], "--", 2) == 0)
        return OtroPlanificador(argv[1], argv[2], QFile::decodeName(argv[3]), QFile::decodeName(argv[4]));
    PrFallas prueba;
    return QTest::qExec(&prueba, argc, argv);
}
#include "pr_fallas.moc"
