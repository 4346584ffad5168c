#include "support/Escenario.h"

#include "component/IPantalla.h"
#include "data/Instalador.h"

#include <QFile>
#include <QLibrary>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTimer>
#include <QUuid>
#include <QVBoxLayout>
#include <csignal>

namespace
{

// Another program's connection to the same file.
class OtroPrograma : public QObject
{
public:
    explicit OtroPrograma(const QString &archivo)
        : base(QSqlDatabase::addDatabase("QSQLITE", QUuid::createUuid().toString()))
    {
        base.setDatabaseName(archivo);
        if (!base.open())
            qFatal("No abre la base de prueba");
    }
    ~OtroPrograma() override
    {
        const QString nombre = base.connectionName();
        base.close();
        base = QSqlDatabase();
        QSqlDatabase::removeDatabase(nombre);
    }
    QSqlQuery Correr(const QString &sql) const
    {
        QSqlQuery consulta(base);
        if (!consulta.exec(sql))
            qFatal("%s: %s", qPrintable(sql), qPrintable(consulta.lastError().text()));
        return consulta;
    }

private:
    QSqlDatabase base;
};

} // namespace

Escenario::Escenario(bool conEjemplos) : archivo(carpeta.filePath("prueba.db")), personas(new PersonasDePrueba)
{
    qputenv("QVX_TRAZA", QFile::encodeName(carpeta.filePath("traza")));
    Entrar(conEjemplos);
}

Escenario::Escenario(const QString &baseAjena) : archivo(baseAjena), personas(new PersonasDePrueba)
{
    Entrar(false);
}

void Escenario::Entrar(bool conEjemplos)
{
    sesion = std::make_unique<qvx::Sesion>(qvx::AbrirBaseDeDatos(archivo, conEjemplos), "mlopez",
                                           std::unique_ptr<qvx::Interaccion>(personas), [this] { return ahora; });
}

Escenario::~Escenario()
{
    CerrarPantalla();
    qunsetenv("QVX_TRAZA");
    personas->Revisar();
}

QVariant Escenario::Motor(const QString &sql) const
{
    OtroPrograma otro(Archivo());
    QSqlQuery consulta = otro.Correr(sql);
    return consulta.next() ? consulta.value(0) : QVariant();
}

QStringList Escenario::Filas(const QString &sql) const
{
    OtroPrograma otro(Archivo());
    QSqlQuery consulta = otro.Correr(sql);
    QStringList filas;
    while (consulta.next()) {
        QStringList valores;
        for (int i = 0; i < consulta.record().count(); ++i)
            valores.append(consulta.value(i).toString());
        filas.append(valores.join(QLatin1Char('|')));
    }
    return filas;
}

QStringList Escenario::Tablas() const
{
    QStringList todo;
    for (const char *tabla : {"Tipo_Equipo_Parte", "Plan_Mantenimiento", "Plan_Mantenimiento_Detalle", "Tipo_Equipo",
                              "Producto", "Tipo_Gasto", "Bitacora", "Registro_Cambio"})
        todo += Filas(QString("SELECT '%1', * FROM %1 ORDER BY rowid").arg(tabla));
    return todo;
}

std::unique_ptr<QObject> Escenario::Ocupar() const
{
    auto otro = std::make_unique<OtroPrograma>(Archivo());
    otro->Correr("BEGIN EXCLUSIVE");
    return otro;
}

std::unique_ptr<QObject> Escenario::Leyendo() const
{
    auto otro = std::make_unique<OtroPrograma>(Archivo());
    otro->Correr("BEGIN");
    otro->Correr("SELECT count(*) FROM Producto").next();
    return otro;
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

QStringList Escenario::Traza()
{
    QFile archivo(carpeta.filePath("traza"));
    if (!archivo.open(QIODevice::ReadOnly) || !archivo.seek(leido))
        qFatal("Sin traza");
    const QString texto = QString::fromUtf8(archivo.readAll());
    leido = archivo.pos();
    QStringList renglones = texto.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    renglones.removeIf([](const QString &renglon) {
        return renglon.contains("Formato_Clave") || renglon.contains("FROM Consulta") || renglon.contains("AS Ultimo");
    });
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

void EnElDialogo(const std::function<void(QWidget &)> &pasos)
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
}
