#include "support/Escenario.h"

#include "component/IPantalla.h"

#include <QFile>
#include <QLibrary>
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
    sesion = std::make_unique<qvx::Sesion>(base.Abrir(), "mlopez", std::unique_ptr<qvx::Interaccion>(personas),
                                           [this] { return ahora; });
}

Escenario::~Escenario()
{
    CerrarPantalla();
    qunsetenv("QVX_TRAZA");
    personas->Revisar();
}

QVariant Escenario::Motor(const QString &sql) const
{
    const auto otro = base.Otro();
    QSqlQuery consulta = otro->Correr(sql);
    return consulta.next() ? consulta.value(0) : QVariant();
}

QStringList Escenario::Filas(const QString &sql) const
{
    return base.Otro()->Filas(sql);
}

// In the order of the rows' own keys, which no engine changes behind a test's back.
QStringList Escenario::Tablas() const
{
    const auto otro = base.Otro();
    QStringList todo;
    for (const char *tabla : {"Tipo_Equipo_Parte", "Plan_Mantenimiento", "Plan_Mantenimiento_Detalle", "Tipo_Equipo",
                              "Producto", "Tipo_Gasto", "Bitacora", "Registro_Cambio"}) {
        QStringList filas = otro->Filas(QString("SELECT '%1', t.* FROM %1 t").arg(tabla));
        filas.sort();
        todo += filas;
    }
    return todo;
}

QString Escenario::PlanDe(const QString &sql) const
{
    const auto otro = base.Otro();
    if (::Motor::EnServidor())
        otro->Correr("SET enable_seqscan = off");
    return otro->Filas((::Motor::EnServidor() ? "EXPLAIN (COSTS OFF) " : "EXPLAIN QUERY PLAN ") + sql).join('\n');
}

bool Escenario::SoloPorIndice(const QString &plan) const
{
    if (::Motor::EnServidor())
        return plan.contains("Index") && !plan.contains("Seq Scan") && !plan.contains("Sort");
    return plan.contains("INDEX") && !plan.contains("SCAN") && !plan.contains("TEMP B-TREE");
}

QWidget &Escenario::Pantalla(const QString &parametros)
{
    QLibrary biblioteca(BIBLIOTECA_KT580);
    const auto entrada = reinterpret_cast<com::FnDllGetClassObject>(biblioteca.resolve("DllGetClassObject"));
    if (!entrada)
        qFatal("%s", qPrintable(biblioteca.errorString()));
    void *objeto = nullptr;
    if (entrada(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto) != com::S_OK)
        qFatal("Sin fábrica de clases");
    auto *fabrica = static_cast<com::IClassFactory *>(objeto);
    if (fabrica->CreateInstance(nullptr, KT580::IID_IPantalla, &objeto) != com::S_OK)
        qFatal("Sin Pantalla");
    fabrica->Release();
    auto *clase = static_cast<KT580::IPantalla *>(objeto);
    QVariant dada;
    if (clase->GetPantalla(&dada) != com::S_OK)
        qFatal("Sin pantalla");
    clase->Release();

    padre.setProperty("iParametros", parametros);
    padre.setProperty("Transaccion", "KT580");
    pantalla = qobject_cast<QWidget *>(dada.value<QObject *>());
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

DiscoLleno::DiscoLleno() : senal(signal(SIGXFSZ, SIG_IGN))
{
    getrlimit(RLIMIT_FSIZE, &anterior);
    const rlimit chico{1000, anterior.rlim_max};
    setrlimit(RLIMIT_FSIZE, &chico);
}

DiscoLleno::~DiscoLleno()
{
    setrlimit(RLIMIT_FSIZE, &anterior);
    signal(SIGXFSZ, senal);
}

QTimer *EnElDialogo(const std::function<void(QWidget &)> &pasos)
{
    auto *espera = new QTimer(qApp);
    QObject::connect(espera, &QTimer::timeout, espera, [espera, pasos] {
        QWidget *dialogo = QApplication::activeModalWidget();
        if (!dialogo || !dialogo->isActiveWindow())
            return;
        espera->stop();
        espera->deleteLater();
        pasos(*dialogo);
        if (dialogo == QApplication::activeModalWidget()) // a failed test must not hang
            dialogo->close();
    });
    espera->start(1);
    return espera;
}
