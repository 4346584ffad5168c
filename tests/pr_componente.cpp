#include "component/IPantalla.h"
#include "data/ErrorEjecucion.h"
#include "support/Archivos.h"
#include "support/Escenario.h"
#include "support/Procesos.h"
#include "system/Registro.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <sys/stat.h>
#include <thread>

// The component's entry points, as a host meets them.
class PrComponente : public QObject
{
    Q_OBJECT

public:
    explicit PrComponente(com::HRESULT sinAplicacion_) : sinAplicacion(sinAplicacion_) {}

private Q_SLOTS:
    void initTestCase() { QVERIFY2(biblioteca.load(), qPrintable(biblioteca.errorString())); }
    void pantalla();
    void registro();
    void sinRegistro();

private:
    com::HRESULT Entrar(const char *nombre)
    {
        return reinterpret_cast<com::FnSinArgumentos>(biblioteca.resolve(nombre))();
    }

    QLibrary biblioteca{BIBLIOTECA_KT580};
    com::HRESULT sinAplicacion;
};

namespace
{

com::IClassFactory *Fabrica()
{
    const auto objetoDeClase =
        reinterpret_cast<com::FnDllGetClassObject>(QLibrary(BIBLIOTECA_KT580).resolve("DllGetClassObject"));
    void *objeto = nullptr;
    if (!objetoDeClase || objetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto) != com::S_OK)
        qFatal("Sin fábrica de clases");
    return static_cast<com::IClassFactory *>(objeto);
}

KT580::IPantalla *Clase()
{
    com::IClassFactory *fabrica = Fabrica();
    void *objeto = nullptr;
    if (fabrica->CreateInstance(nullptr, KT580::IID_IPantalla, &objeto) != com::S_OK || fabrica->Release() != 0)
        qFatal("Sin Pantalla");
    return static_cast<KT580::IPantalla *>(objeto);
}

com::HRESULT Pedir(KT580::IPantalla &clase)
{
    QVariant pantalla;
    return clase.GetPantalla(&pantalla);
}

} // namespace

// One screen, not shown, alive without its Pantalla; closed, the next call makes another. While any of it is there, the
// library cannot be unloaded.
void PrComponente::pantalla()
{
    QCOMPARE(sinAplicacion, com::E_UNEXPECTED);
    com::IClassFactory *fabrica = Fabrica();
    QCOMPARE(fabrica->LockServer(0), com::E_UNEXPECTED);
    QCOMPARE(fabrica->LockServer(1), com::S_OK);
    QCOMPARE(fabrica->LockServer(0), com::S_OK);
    fabrica->Release();

    KT580::IPantalla *clase = Clase();
    QVariant una;
    QVariant otra;
    QCOMPARE(clase->GetPantalla(&una), com::E_FAIL); // nobody has signed in
    QVERIFY(!una.isValid());
    Escenario escenario;
    com::HRESULT deOtroHilo = com::S_OK;
    std::thread([&] { deOtroHilo = Pedir(*clase); }).join();
    QCOMPARE(deOtroHilo, com::RPC_E_WRONG_THREAD);
    QCOMPARE(clase->GetPantalla(&una), com::S_OK);
    QCOMPARE(clase->GetPantalla(&otra), com::S_OK);
    QPointer<QWidget> ventana = qobject_cast<QWidget *>(una.value<QObject *>());
    QVERIFY(ventana && !ventana->isVisible());
    QCOMPARE(otra.value<QObject *>(), ventana.data());

    QObject padre;
    padre.setProperty("Transaccion", "0815");
    ventana->setProperty("Padre", QVariant::fromValue(&padre));
    QCOMPARE(ventana->property("Transaccion").toString(), "Quorvex 0815");

    ventana->close();
    QCOMPARE(clase->GetPantalla(&otra), com::S_OK);
    QVERIFY(otra.value<QObject *>() != ventana.data());
    QCOMPARE(clase->Release(), 0u);
    QCOMPARE(Entrar("DllCanUnloadNow"), com::S_FALSE);
    qobject_cast<QWidget *>(otra.value<QObject *>())->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(Entrar("DllCanUnloadNow"), com::S_OK);
}

void PrComponente::registro()
{
    QTemporaryDir carpeta;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(carpeta.path()));
    QCOMPARE(Entrar("DllRegisterServer"), com::S_OK);
    const auto clase = qvx::registro::Buscar(KT580::ClavePantalla);
    QVERIFY(clase.has_value());
    QCOMPARE(QFileInfo(clase->biblioteca).canonicalFilePath(), QFileInfo(BIBLIOTECA_KT580).canonicalFilePath());

    // What another user could have written is not loaded.
    const QString archivo = qvx::registro::Archivo();
    QVERIFY(!QFile::permissions(archivo).testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
    QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner | QFile::WriteOther);
    QVERIFY_THROWS_EXCEPTION(qvx::ErrorEjecucion, qvx::registro::Buscar(KT580::ClavePantalla));
    QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(Entrar("DllUnregisterServer"), com::S_OK);
    QVERIFY(!qvx::registro::Buscar(KT580::ClavePantalla));

    // Nor is a library that others can change, or put another in the place of.
    const QString ruta = carpeta.filePath("ajena/libKT580.so");
    QVERIFY(QDir(carpeta.path()).mkdir("ajena") && QFile::copy(BIBLIOTECA_KT580, ruta));
    qvx::registro::Escribir("clase", {ruta, "", "", ""});
    const auto creida = [&](mode_t deLaCarpeta, mode_t deLaBiblioteca) {
        chmod(QFile::encodeName(carpeta.filePath("ajena")).constData(), deLaCarpeta);
        chmod(QFile::encodeName(ruta).constData(), deLaBiblioteca);
        return qvx::registro::Buscar("clase").has_value();
    };
    QVERIFY(creida(0755, 0644) && creida(01777, 0644));
    QVERIFY(!creida(0775, 0644) && !creida(0757, 0644) && !creida(0755, 0664) && !creida(0755, 0646));
}

// The program registers the component beside it instead of one that is of another build. A registry that cannot be
// read, or not written, is told of, and does not stop who has no need of it.
void PrComponente::sinRegistro()
{
    QTemporaryDir casa;
    qputenv("XDG_DATA_HOME", QFile::encodeName(casa.path()));
    const auto en = [&](const QString &configuracion) {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(casa.filePath(configuracion)));
        return qvx::registro::Archivo();
    };
    const auto exportar = [&] {
        return Quorvex({"--exportar", "0001", casa.filePath("plan.xml"), "--operador", "mlopez"});
    };
    const QString ajeno = en("ajeno");
    qvx::registro::Escribir(KT580::ClavePantalla, {PROGRAMA_QUORVEX, "", "", "otra"});
    QVERIFY(exportar().startsWith("0"));
    QVERIFY(Contenido(ajeno).contains("libKT580.so") && QFile::exists(casa.filePath("quorvex/quorvex.db")));

    en("archivo");
    Poner(casa.filePath("archivo"), "");
    QVERIFY(exportar().startsWith("0") && exportar().contains("no se pudo registrar"));
    const QString danado = en("config");
    QVERIFY(QDir().mkpath(QFileInfo(danado).path()));
    Poner(danado, "[sin fin\nnada\n");
    QVERIFY(exportar().contains("está dañado"));
    QVERIFY(!exportar().contains("está dañado"));
}

static int SinYConAplicacion(int argc, char **argv)
{
    KT580::IPantalla *clase = Clase();
    const com::HRESULT sinAplicacion = Pedir(*clase);
    clase->Release();
    qvx::Aplicacion aplicacion(argc, argv);
    PrComponente prueba(sinAplicacion);
    return QTest::qExec(&prueba, argc, argv);
}

static const bool anotadaPrComponente = pruebas::Anotar(__FILE__, SinYConAplicacion);
#include "pr_componente.moc"
