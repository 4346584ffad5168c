#include "support/Escenario.h"

#include "app/Componente.h"

#include <QFile>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QVBoxLayout>
#include <csignal>

Escenario::Escenario(bool conEjemplos) : base(conEjemplos), personas(new PersonasDePrueba)
{
    Entrar();
}

Escenario::Escenario(const QString &baseAjena) : base(baseAjena), personas(new PersonasDePrueba)
{
    Entrar();
}

void Escenario::Entrar()
{
    qputenv("QVX_TRAZA", QFile::encodeName(carpeta.filePath("traza")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(carpeta.path())); // the component of this build, no other
    sesion = std::make_unique<qvx::Sesion>(base.Abrir(), "mlopez", std::unique_ptr<qvx::Interaccion>(personas),
                                           [this] { return ahora; });
}

Escenario::~Escenario()
{
    CerrarPantalla();
    qunsetenv("QVX_TRAZA");
    personas->Revisar();
}

QVariant Escenario::Correr(const QString &sql) const
{
    QSqlQuery consulta = base.Testigo().Correr(sql);
    return consulta.next() ? consulta.value(0) : QVariant();
}

QStringList Escenario::Filas(const QString &sql) const
{
    return base.Testigo().Filas(sql);
}

// In the order of the rows' own keys, which no engine changes behind a test's back.
QStringList Escenario::Tablas() const
{
    const OtroPrograma &testigo = base.Testigo();
    QStringList todo;
    for (const QString &tabla : testigo.Filas(motor::Segun(
             "SELECT lower(name) FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%' ORDER BY 1",
             "SELECT tablename FROM pg_tables WHERE schemaname NOT IN ('pg_catalog', 'information_schema') AND "
             "tablename <> 'desenlace' UNION ALL "
             "SELECT 'pg_largeobject_metadata' ORDER BY 1"))) {
        QStringList filas{tabla};
        filas += testigo.Filas(QString("SELECT '%1', t.* FROM %1 t").arg(tabla));
        filas.sort();
        todo += filas;
    }
    return todo;
}

QStringList Escenario::Plan() const
{
    const QString firma =
        ", Oper_Alta, Fecha_Alta, Oper_Baja, Fecha_Baja, Oper_Ult_Modif, Fecha_Ult_Modif, Es_Cve_Estado";
    const OtroPrograma &testigo = base.Testigo();
    return testigo.Filas("SELECT 'parte', Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion" + firma
                         + " FROM Tipo_Equipo_Parte ORDER BY 2, 3")
           + testigo.Filas("SELECT 'servicio', Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, "
                           "Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, "
                           "Pm_Requiere_Paro, Pm_Tiempo_Paro"
                           + firma + " FROM Plan_Mantenimiento ORDER BY 2, 4")
           + testigo.Filas("SELECT 'línea', Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, "
                           "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto FROM "
                           "Plan_Mantenimiento_Detalle ORDER BY 2, 4, 5");
}

QWidget &Escenario::Pantalla(const QString &parametros)
{
    padre.setProperty("iParametros", parametros);
    padre.setProperty("Transaccion", "KT580");
    pantalla = CrearPantalla();
    pantalla->setProperty("Padre", QVariant::fromValue(&padre));
    ventana = std::make_unique<QWidget>();
    auto *disposicion = new QVBoxLayout(ventana.get());
    disposicion->setContentsMargins(0, 0, 0, 0);
    disposicion->addWidget(pantalla);
    ventana->resize(1280, 760);
    ventana->show();
    if (!QTest::qWaitForWindowActive(ventana.get()))
        qFatal("La ventana no se activó");
    return *pantalla;
}

void Escenario::CerrarPantalla()
{
    if (pantalla)
        pantalla->close();
    ventana.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QStringList Escenario::Traza(bool entera)
{
    QFile archivo(carpeta.filePath("traza"));
    if (!archivo.open(QIODevice::ReadOnly) || !archivo.seek(leido))
        qFatal("Sin traza");
    const QString texto = QString::fromUtf8(archivo.readAll());
    leido = archivo.pos();
    QStringList renglones = texto.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    static const QRegularExpression propias("Formato_Clave|FROM Consulta|AS Ultimo|AS Hay");
    if (!entera)
        renglones.removeIf([](const QString &renglon) { return renglon.contains(propias); });
    return renglones;
}

DiscoLleno::DiscoLleno(rlim_t tope) : senal(signal(SIGXFSZ, SIG_IGN))
{
    getrlimit(RLIMIT_FSIZE, &anterior);
    const rlimit chico{tope, anterior.rlim_max};
    setrlimit(RLIMIT_FSIZE, &chico);
}

DiscoLleno::~DiscoLleno()
{
    setrlimit(RLIMIT_FSIZE, &anterior);
    signal(SIGXFSZ, senal);
}
