#include "support/Intermediario.h"
#include "support/Mandos.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <algorithm>

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

struct Clase {
    QString nombre;
    Falla falla;
    bool enElCambio;       // else at the commit
    QString Mando::*donde; // it is told
    QString dicho;
    bool hecho;
};

const QList<Clase> Clases{
    {"reinicio en medio", Falla::Detener, true, &Mando::alCambiar, NadaGuardado, false},
    {"corte en medio", Falla::CortarAntes, true, &Mando::alCambiar, NadaGuardado, false},
    {"antes de confirmar", Falla::CortarAntes, false, &Mando::alConfirmar, NoSeSabe, false},
    {"al confirmar", Falla::CortarDurante, false, &Mando::alConfirmar, NoSeSabe, true},
    {"al leer después", Falla::CortarSiguiente, false, &Mando::alLeer, Perdida, true},
    {"reinicio en reposo", Falla::Ninguna, false, nullptr, "sin mensaje  ", true},
    {"ausente", Falla::Ninguna, false, &Mando::alEmpezar, SinConexion, false},
};

void Reiniciar()
{
    if (QProcess::execute(qEnvironmentVariable("QVX_PRUEBA_SERVIDOR") + "/reiniciar", {}) != 0)
        qFatal("El servidor no se reinició");
}

} // namespace

// What the screen tells, keeps and can do after the server or the way to it failed in the middle of a command.
class PrFallas : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cambios_data();
    void cambios();
    void espera();
    void cruzadas();
    void cleanup();

private:
    QStringList Plan() const;
    void SinRestos() const;
    QStringList Imperturbado(const Mando &mando);
    void Provocar(const Clase &clase, const QByteArray &cambio);
    QString Base() const { return escenario->Base().Argumentos().constLast().section(QLatin1Char('/'), -1); }

    std::unique_ptr<Intermediario> red;
    QHash<QString, QStringList> imperturbados;
};

void PrFallas::initTestCase()
{
    qputenv("QVX_PRUEBA_MOTOR", "postgres");
    red = std::make_unique<Intermediario>();
    qputenv("QVX_PRUEBA_INTERMEDIARIO", QByteArray::number(red->Puerto()));
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
    QStringList filas;
    for (const char *consulta :
         {"to_jsonb(t) - '{version,version_anterior,oper_anterior,fecha_anterior,tep_numero}'::text[] FROM "
          "Tipo_Equipo_Parte",
          "to_jsonb(t) - '{version,version_anterior,oper_anterior,fecha_anterior,pm_numero}'::text[] FROM "
          "Plan_Mantenimiento",
          "to_jsonb(t) FROM Plan_Mantenimiento_Detalle", "Bi_Clave || Bi_Accion FROM Bitacora",
          "Rc_Tabla || Rc_Clave FROM Registro_Cambio"})
        filas += escenario->Filas(
            QString("SELECT CAST(%1 t ORDER BY 1").arg(QString(consulta).replace(" FROM ", " AS text) FROM ")));
    return filas;
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
    QStringList &plan = imperturbados[mando.nombre];
    if (plan.isEmpty()) {
        Planificador planificador(*escenario);
        mando.correr(planificador, *escenario);
        if (const QStringList dichos = Dichos(); !dichos.isEmpty())
            qFatal("%s: %s", mando.nombre, qPrintable(dichos.join('\n')));
        plan = Plan();
        escenario.reset();
        init();
    }
    return plan;
}

void PrFallas::Provocar(const Clase &clase, const QByteArray &cambio)
{
    if (clase.falla != Falla::Ninguna)
        return red->Armar(clase.falla, cambio, Reiniciar);
    if (clase.nombre == "ausente")
        return red->Cerrar();
    Reiniciar();
    QTRY_COMPARE(red->Conexiones(), 0);
}

void PrFallas::cambios_data()
{
    const Tabla<QString, int> fila("mando", "clase");
    for (const Mando &mando : Mandos())
        for (int i = 0; i < Clases.size(); ++i)
            fila(mando.nombre + (": " + Clases.at(i).nombre), mando.nombre, i);
}

// What is told is true, what was told to be saved is there and nothing else is, and the command, or another one where
// it was carried out, then works.
void PrFallas::cambios()
{
    QFETCH(QString, mando);
    QFETCH(int, clase);
    const Clase &esta = Clases.at(clase);
    const Mando &este = MandoDe(mando);
    const QStringList despues = Imperturbado(este);
    const QStringList antes = Plan();
    QVERIFY(antes != despues);
    const bool ausente = esta.nombre == "ausente";
    // A change without a transaction is its own commit.
    const bool sinTransaccion = este.ultimo.isEmpty();
    const QByteArray cambio = sinTransaccion    ? "UPDATE Tipo_Equipo_Parte SET"
                              : esta.enElCambio ? este.ultimo
                                                : "COMMIT";
    const QString donde = esta.donde ? este.*esta.donde : QString();
    const QString dicho = sinTransaccion && esta.enElCambio ? NoSeSabe : esta.dicho;

    QStringList mensajes;
    int intentos = 0;
    const auto probar = [&] {
        if (intentos == 0)
            Provocar(esta, cambio);
        else if (ausente)
            red->Abrir();
    };
    const auto otraVez = [&] {
        mensajes += Dichos();
        SinRestos();
        return ++intentos == 1 && !esta.hecho && Plan() == antes;
    };
    Planificador planificador(*escenario, {probar, otraVez});
    este.correr(planificador, *escenario);
    mensajes += Dichos();

    QVERIFY2(red->Ocurrio(), "La falla no ocurrió");
    const QString primero = mensajes.value(0);
    QVERIFY2(donde.isEmpty() ? mensajes.isEmpty() : primero.contains("|" + donde + "|") && primero.contains(dicho),
             qPrintable(mensajes.join('\n')));
    for (const QString &otro : mensajes.mid(1)) // of what is read afterwards, and for want of it
        QVERIFY2(esta.dicho == Perdida && !otro.contains(NadaGuardado) && !otro.contains(NoSeSabe), qPrintable(otro));
    QCOMPARE(intentos, esta.hecho ? 1 : 2);
    QCOMPARE(Plan(), despues);

    Planificador siguiente(*escenario);
    siguiente.ElegirTipo("0900");
    siguiente.Rotular("N0001", "OTRO CUERPO");
    QCOMPARE(Dichos(), QStringList());
    QVERIFY(Plan().join('\n').contains("OTRO CUERPO"));
    SinRestos();
    AnotarResultado(
        {"falla", mando, esta.nombre, dicho.chopped(2).section(" (", 0, 0), esta.hecho ? "guardado" : "no guardado"});
}

// Another planner, in a process of their own, was asked whether to delete a part, and thinks it over.
void PrFallas::espera()
{
    QProcess otro;
    const QString preguntado = escenario->Ruta("preguntado");
    const QString contestado = escenario->Ruta("contestado");
    otro.start(QCoreApplication::applicationFilePath(), {"--eliminar", Base(), preguntado, contestado});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(preguntado), 60000);

    QStringList mensajes;
    bool abierta = false;
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
        mensajes = Dichos();
        abierta = QApplication::activeModalWidget();
        QFile(contestado).open(QIODevice::WriteOnly);
        return Termino(otro);
    };
    Planificador planificador(*escenario, {probar, otraVez});
    const QString clave = planificador.NuevaParte("N0001", "BRIDA");
    QCOMPARE(mensajes, QStringList("16|cmdAceptar()|KT580|ERR-ID:7500097|" + Ocupado));
    QVERIFY(abierta && !clave.isEmpty() && otro.exitCode() == 0);
    QCOMPARE(Dichos(), QStringList());
    SinRestos();
    AnotarResultado({"espera", "parte nueva", QString::number(esperado)});
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
    const QString mios = Dichos().join('\n');
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
    qunsetenv("QVX_PRUEBA_INTERMEDIARIO");
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
