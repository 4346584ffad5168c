#include "Jornada.h"
#include "support/Planificador.h"
#include "support/Procesos.h"

#include <QRegularExpression>
#include <algorithm>
#include <random>

namespace
{

// What another planner's work may bring about. Everything else is a fault.
const QRegularExpression Previsto(
    R"(ERR-ID:(7500018\|Se generó el archivo)"
    R"(|75000(10|14|42|96)\|(.* cambió este registro el |(El registro|La parte superior|La parte del servicio) ya no existe))"
    R"(|7500080\|ERROR$)" // why is in its details
    R"(|75000(03|06|29|30)\|No se encontró la ruta de la parte$)"
    R"(|7500044\|La parte seleccionada tiene un plan de mantenimiento, imposible eliminar$))");

} // namespace

// Many planners on one server at the same time. What each was told to be saved is looked for in the database at the
// end.
class PrPlanificadores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("QVX_PRUEBA_MOTOR", "postgres"); }
    void init();
    void cleanup() { escenario.reset(); }
    void carga();
    void guardados();

private:
    struct Exportado {
        qint64 inicio;
        QString tipo;
        QStringList numeros;
    };
    struct Cambio {
        qint64 cuando;
        QString tipo, folio, parte, precio;
        QString Numero() const { return precio.section('.', 0, 0); } // no other service has it
    };

    QString Base() const { return escenario->Base().Argumentos().constLast().section(QLatin1Char('/'), -1); }
    std::unique_ptr<QProcess> Hijo(const QStringList &argumentos);
    QString Listo(int cuantos, int i) const { return escenario->Ruta(QString("listo%1-%2").arg(cuantos).arg(i)); }
    void Soltar(const QString &seguir, int cuantos) const;
    void Leer(const QString &diario);
    void RevisarTablas() const;
    void RevisarServicios() const;
    void RevisarExportaciones() const;

    std::unique_ptr<Escenario> escenario;
    QStringList inesperados;
    QList<Exportado> exportados;
    QList<Cambio> cambios; // of all services, in the order of each planner
    QHash<QString, int> partes;
    QList<qint64> esperas;
    int procesos = 0;
};

void PrPlanificadores::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    escenario->Motor(
        "INSERT INTO Tipo_Equipo SELECT CAST(t AS text), 'DE CARGA', 'AC' FROM (SELECT 1000 AS t UNION ALL "
        "SELECT 100 * s + n FROM generate_series(11, 13) s, generate_series(0, 7) n) todos");
    escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) SELECT "
                     "Te_Cve_Tipo_Equipo, '000' || n, '0000', 'PARTE ' || n FROM Tipo_Equipo, generate_series(1, 3) n "
                     "WHERE Te_Descripcion = 'DE CARGA' AND Te_Cve_Tipo_Equipo < '1200'");
}

std::unique_ptr<QProcess> PrPlanificadores::Hijo(const QStringList &argumentos)
{
    auto hijo = std::make_unique<QProcess>();
    auto entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("QVX_TRAZA", escenario->Ruta(QString("traza%1").arg(++procesos)));
    hijo->setProcessEnvironment(entorno);
    hijo->setProcessChannelMode(QProcess::MergedChannels);
    hijo->start(QCoreApplication::applicationFilePath(), argumentos);
    return hijo;
}

// Lets the processes go on as soon as all are ready.
void PrPlanificadores::Soltar(const QString &seguir, int cuantos) const
{
    for (int i = 0; i < cuantos; ++i)
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(Listo(cuantos, i)), 120000);
    for (int i = 0; i < cuantos; ++i)
        QVERIFY(QFile::remove(Listo(cuantos, i)));
    QVERIFY(QFile(seguir).open(QIODevice::WriteOnly));
}

void PrPlanificadores::Leer(const QString &diario)
{
    QFile archivo(diario);
    QVERIFY(archivo.open(QIODevice::ReadOnly));
    const QStringList renglones = QString::fromUtf8(archivo.readAll()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(renglones.value(renglones.size() - 1), "fin");
    for (const QString &renglon : renglones) {
        const QStringList campos = renglon.split('\t');
        const QString &clase = campos.constFirst();
        if (clase == "mando") {
            esperas.append(campos.at(2).toLongLong());
            AnotarResultado(campos);
        } else if (clase == "mensaje") {
            if (!campos.at(1).contains(Previsto))
                inesperados.append(campos.at(1));
            else if (!campos.at(1).contains("7500018"))
                AnotarResultado(campos);
        } else if (clase == "servicio") {
            cambios.append({campos.at(1).toLongLong(), campos.at(2), campos.at(3), campos.at(4), campos.at(5)});
        } else if (clase.startsWith("parte")) {
            partes[campos.at(1) + "|" + campos.at(2)] += clase == "parte" ? 1 : -1;
        } else if (clase == "exportación") {
            exportados.append({campos.at(1).toLongLong(), campos.at(2), campos.at(3).split(',', Qt::SkipEmptyParts)});
        } else if (clase == "importación" && campos.at(1) != "igual") {
            inesperados.append(renglon);
        }
    }
}

void PrPlanificadores::RevisarTablas() const
{
    for (const QString &sql :
         {QString("SELECT 'parte', Te_Cve_Tipo_Equipo, Tep_Numero FROM Tipo_Equipo_Parte GROUP BY 1, 2, 3 HAVING "
                  "count(*) > 1"),
          QString("SELECT 'servicio', Te_Cve_Tipo_Equipo, Pm_Numero FROM Plan_Mantenimiento GROUP BY 1, 2, 3 HAVING "
                  "count(*) > 1"),
          // Those of an import are numbered within their service.
          QString("SELECT 'renglón', Te_Cve_Tipo_Equipo, Pmd_Numero FROM Plan_Mantenimiento_Detalle WHERE "
                  "Te_Cve_Tipo_Equipo BETWEEN '1000' AND '1299' GROUP BY 1, 2, 3 HAVING count(*) > 1"),
          QString("SELECT 'renglón sin servicio', d.* FROM Plan_Mantenimiento_Detalle d WHERE NOT EXISTS (SELECT FROM "
                  "Plan_Mantenimiento s WHERE s.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo AND s.Tep_ID = d.Tep_ID AND "
                  "s.Pm_ID = d.Pm_ID)"),
          QString("SELECT 'servicio sin parte', s.* FROM Plan_Mantenimiento s WHERE Tep_ID <> 'RAIZ' AND NOT EXISTS "
                  "(SELECT FROM Tipo_Equipo_Parte p WHERE p.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo AND p.Tep_ID = "
                  "s.Tep_ID)")})
        QCOMPARE(escenario->Filas(sql).join('\n'), "");
}

// What each planner was told last of a service is so, with its three lines; and nobody has more than was told.
void PrPlanificadores::RevisarServicios() const
{
    QHash<QString, QString> dichos;
    for (const Cambio &cambio : cambios) {
        if (cambio.parte.isEmpty())
            dichos.remove(cambio.Numero());
        else
            dichos.insert(cambio.Numero(), QStringList{cambio.tipo, cambio.folio, cambio.parte,
                                                       QString::number(cambio.precio.toDouble()), "3"}
                                               .join('|'));
    }
    QStringList dicho = dichos.values();
    dicho.sort();
    QStringList hay;
    for (const QString &fila : escenario->Filas(
             "SELECT s.Te_Cve_Tipo_Equipo, s.Pm_ID, s.Tep_ID, s.Pm_Precio, (SELECT count(DISTINCT Pmd_Tipo) FROM "
             "Plan_Mantenimiento_Detalle d WHERE d.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo AND d.Tep_ID = s.Tep_ID "
             "AND d.Pm_ID = s.Pm_ID) FROM Plan_Mantenimiento s WHERE s.Te_Cve_Tipo_Equipo BETWEEN '1000' AND '1199'")) {
        QStringList campos = QString(fila).remove(' ').split('|');
        campos[3] = QString::number(campos.at(3).toDouble());
        hay.append(campos.join('|'));
    }
    hay.sort();
    QCOMPARE(hay, dicho);
    const QStringList guardadas = escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID FROM Tipo_Equipo_Parte");
    for (auto i = partes.begin(); i != partes.end(); ++i)
        QVERIFY2(guardadas.count(i.key()) == i.value(), qPrintable(i.key()));
}

// Of a moment: no service twice or without its lines, and none that was there all the while is missing.
void PrPlanificadores::RevisarExportaciones() const
{
    // A part out of the tree's reach is in no export.
    const QStringList alcanzadas = escenario->Filas(
        "WITH RECURSIVE a (tipo, parte) AS (SELECT Te_Cve_Tipo_Equipo, Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = "
        "'0000' UNION SELECT p.Te_Cve_Tipo_Equipo, p.Tep_ID FROM a JOIN Tipo_Equipo_Parte p ON p.Te_Cve_Tipo_Equipo = "
        "a.tipo AND p.Tep_Padre = a.parte) SELECT tipo, parte FROM a");
    for (const Exportado &exportado : exportados) {
        QStringList unicos = exportado.numeros;
        unicos.removeDuplicates();
        QCOMPARE(unicos.size(), exportado.numeros.size());
        QCOMPARE(exportado.numeros.filter(QRegularExpression("\\D")), QStringList());
        QSet<QString> presentes; // from before it began until after it ended
        for (const Cambio &cambio : cambios) {
            if (cambio.tipo != exportado.tipo)
                continue;
            if (cambio.parte.isEmpty() || !alcanzadas.contains(cambio.tipo + "|" + cambio.parte))
                presentes.remove(cambio.Numero());
            else if (cambio.cuando < exportado.inicio)
                presentes.insert(cambio.Numero());
        }
        for (const QString &numero : std::as_const(presentes))
            QVERIFY2(exportado.numeros.contains(numero), qPrintable("Falta " + numero + " de " + exportado.tipo));
    }
}

void PrPlanificadores::carga()
{
    const uint semilla = qEnvironmentVariableIsSet("QVX_PRUEBA_SEMILLA")
                             ? qEnvironmentVariableIntValue("QVX_PRUEBA_SEMILLA")
                             : std::random_device()();
    qInfo("QVX_PRUEBA_SEMILLA=%u", semilla);
    const QString seguir = escenario->Ruta("seguir");
    std::vector<std::unique_ptr<QProcess>> hijos;
    hijos.reserve(Planificadores);
    for (int i = 0; i < Planificadores; ++i)
        hijos.push_back(Hijo({"--planificador", Base(), QString::number(i), QString::number(semilla),
                              escenario->Ruta(QString("diario%1").arg(i)), Listo(Planificadores, i), seguir}));
    Soltar(seguir, Planificadores);
    for (const auto &hijo : hijos) {
        QVERIFY2(Termino(*hijo, 1000 * Segundos() + 60000), "Un planificador no terminó");
        const QByteArray dicho = hijo->readAll();
        QVERIFY2(hijo->exitStatus() == QProcess::NormalExit && hijo->exitCode() == 0, dicho.constData());
    }
    for (int i = 0; i < Planificadores; ++i)
        Leer(escenario->Ruta(QString("diario%1").arg(i)));
    QCOMPARE(inesperados.join('\n'), "");
    RevisarTablas();
    RevisarServicios();
    RevisarExportaciones();
    QVERIFY(esperas.size() > Planificadores);
    AnotarResultado({"carga", QString::number(Segundos()), QString::number(Planificadores),
                     QString::number(*std::max_element(esperas.begin(), esperas.end())),
                     QString::number(exportados.size())});
}

namespace
{

// Changes a service on the screen, and then repeats that save's statements as fast as the server takes them.
int RepetirGuardado(const QString &base, const QString &numero, const QString &listo, const QString &seguir)
{
    Escenario escenario(base);
    escenario.Pantalla(Tipo(Serie::Propia, numero.toInt()));
    Planificador planificador(escenario);
    const QString folio = planificador.NuevoServicio("N0001", "70");
    if (!planificador.CambiarServicio("N0001", folio, "71"))
        return 1;
    QFile traza(qEnvironmentVariable("QVX_TRAZA"));
    if (!traza.open(QIODevice::ReadOnly))
        return 1;
    const QStringList renglones = QString::fromUtf8(traza.readAll()).split('\n');
    const auto inicio = renglones.lastIndexOf("-\tBEGIN");
    const QStringList guardado = renglones.mid(inicio + 1, renglones.lastIndexOf("-\tCOMMIT") - inicio - 1);
    auto &conexion = qvx::Sesion::Actual().Conexion();
    Encontrarse(listo, seguir);
    int veces = 0;
    QElapsedTimer reloj;
    for (reloj.start(); reloj.elapsed() < 500LL * Segundos(); ++veces) {
        conexion.BeginTrans();
        for (const QString &renglon : guardado)
            conexion.Execute(renglon.section('\t', 1));
        conexion.CommitTrans();
    }
    QTextStream(stdout) << "guardados " << veces << ' ' << guardado.size() + 2 << Qt::endl;
    return 0;
}

} // namespace

// How many saves the server takes: the statements of a service's save, from one planner, and from all of them without a
// pause, each on an equipment type of their own. Every one is registered.
void PrPlanificadores::guardados()
{
    for (const int cuantos : {1, Planificadores}) {
        const QString registrados = "SELECT count(*) FROM Registro_Cambio";
        const int antes = escenario->Motor(registrados).toInt();
        const QString seguir = escenario->Ruta(QString("seguir%1").arg(cuantos));
        std::vector<std::unique_ptr<QProcess>> hijos;
        hijos.reserve(static_cast<std::size_t>(cuantos));
        for (int i = 0; i < cuantos; ++i)
            hijos.push_back(Hijo({"--guardar", Base(), QString::number(i), Listo(cuantos, i), seguir}));
        Soltar(seguir, cuantos);
        int total = 0;
        int sentencias = 0;
        for (const auto &hijo : hijos) {
            QVERIFY(Termino(*hijo, 1000 * Segundos() + 60000));
            const auto dicho = QRegularExpression("guardados (\\d+) (\\d+)").match(QString::fromUtf8(hijo->readAll()));
            QVERIFY(dicho.hasMatch());
            total += dicho.captured(1).toInt();
            sentencias = dicho.captured(2).toInt();
        }
        QVERIFY(total > 0);
        QCOMPARE(escenario->Motor(registrados).toInt() - antes, total + 2 * cuantos);
        AnotarResultado({"guardados", QString::number(cuantos), QString::number(2 * total / Segundos()),
                         QString::number(sentencias)});
    }
}

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    if (argumentos.value(1) == "--guardar")
        return RepetirGuardado(argumentos.value(2), argumentos.value(3), argumentos.value(4), argumentos.value(5));
    if (argumentos.value(1) == "--planificador") {
        TrabajarComoPlanificador(argumentos.mid(2));
        return 0;
    }
    PrPlanificadores prueba;
    return QTest::qExec(&prueba, argc, argv);
}
#include "pr_planificadores.moc"
