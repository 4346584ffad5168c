#include "component/IPantalla.h"
#include "data/ErrorEjecucion.h"
#include "session/Registro.h"
#include "support/Escenario.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QProcess>

// The component's entry points, as a host meets them.
class PrComponente : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(biblioteca.load(), qPrintable(biblioteca.errorString())); }
    void fabrica();
    void pantalla();
    void registro();
    void arranque();

private:
    template <class Fn>
    Fn Entrada(const char *nombre)
    {
        return reinterpret_cast<Fn>(biblioteca.resolve(nombre));
    }
    com::HRESULT SePuedeDescargar() { return Entrada<com::FnSinArgumentos>("DllCanUnloadNow")(); }
    com::HRESULT ObjetoDeClase(const com::GUID &clase, const com::GUID &iid, void **objeto)
    {
        return Entrada<com::FnDllGetClassObject>("DllGetClassObject")(clase, iid, objeto);
    }

    QLibrary biblioteca{BIBLIOTECA_KT580};
};

void PrComponente::fabrica()
{
    void *objeto = this;
    QCOMPARE(ObjetoDeClase(com::IID_IUnknown, com::IID_IClassFactory, &objeto), com::CLASS_E_CLASSNOTAVAILABLE);
    QVERIFY(!objeto);
    QCOMPARE(ObjetoDeClase(KT580::CLSID_Pantalla, KT580::IID_IPantalla, &objeto), com::E_NOINTERFACE);
    QCOMPARE(ObjetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, nullptr), com::E_POINTER);
    QCOMPARE(SePuedeDescargar(), com::S_OK);

    QCOMPARE(ObjetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto), com::S_OK);
    auto *fabrica = static_cast<com::IClassFactory *>(objeto);
    QCOMPARE(fabrica->CreateInstance(fabrica, KT580::IID_IPantalla, &objeto), com::CLASS_E_NOAGGREGATION);
    QCOMPARE(fabrica->CreateInstance(nullptr, com::IID_IClassFactory, &objeto), com::E_NOINTERFACE);
    QVERIFY(!objeto);
    QCOMPARE(fabrica->LockServer(1), com::S_OK);
    QCOMPARE(fabrica->Release(), 0u);
    QCOMPARE(SePuedeDescargar(), com::S_FALSE); // the lock still holds it
    QCOMPARE(ObjetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto), com::S_OK);
    fabrica = static_cast<com::IClassFactory *>(objeto);
    fabrica->LockServer(0);
    fabrica->Release();
    QCOMPARE(SePuedeDescargar(), com::S_OK);
}

// One screen, not shown, alive without its Pantalla; closed, the next call makes another.
void PrComponente::pantalla()
{
    void *objeto = nullptr;
    QCOMPARE(ObjetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto), com::S_OK);
    auto *fabrica = static_cast<com::IClassFactory *>(objeto);
    QCOMPARE(fabrica->CreateInstance(nullptr, KT580::IID_IPantalla, &objeto), com::S_OK);
    fabrica->Release();
    auto *clase = static_cast<KT580::IPantalla *>(objeto);
    QVariant una;
    QVariant otra;
    QCOMPARE(clase->GetPantalla(&una), com::E_FAIL); // nobody has signed in
    QVERIFY(!una.isValid());
    Escenario escenario;
    QCOMPARE(clase->GetPantalla(nullptr), com::E_POINTER);
    QCOMPARE(clase->GetPantalla(&una), com::S_OK);
    QCOMPARE(clase->GetPantalla(&otra), com::S_OK);
    QPointer<QWidget> ventana = qobject_cast<QWidget *>(una.value<QObject *>());
    QVERIFY(ventana && !ventana->isVisible());
    QCOMPARE(otra.value<QObject *>(), ventana.data());

    QObject padre;
    padre.setProperty("Transaccion", "0815");
    ventana->setProperty("Padre", QVariant::fromValue(&padre));
    QCOMPARE(ventana->property("Padre").value<QObject *>(), &padre);
    QCOMPARE(ventana->property("Transaccion").toString(), "Quorvex 0815");

    ventana->close();
    QCOMPARE(clase->GetPantalla(&otra), com::S_OK);
    QVERIFY(otra.value<QObject *>() != ventana.data());
    QCOMPARE(clase->Release(), 0u);
    QCOMPARE(SePuedeDescargar(), com::S_FALSE);
    qobject_cast<QWidget *>(otra.value<QObject *>())->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(SePuedeDescargar(), com::S_OK);
}

void PrComponente::registro()
{
    QTemporaryDir carpeta;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(carpeta.path()));
    const auto registrar = Entrada<com::FnSinArgumentos>("DllRegisterServer");
    const auto borrar = Entrada<com::FnSinArgumentos>("DllUnregisterServer");
    QCOMPARE(borrar(), com::S_OK);
    QVERIFY(!qvx::registro::Buscar(KT580::ClavePantalla));
    QCOMPARE(registrar(), com::S_OK);
    const auto clase = qvx::registro::Buscar(KT580::ClavePantalla);
    QVERIFY(clase.has_value());
    QCOMPARE(QFileInfo(clase->biblioteca).canonicalFilePath(), QFileInfo(BIBLIOTECA_KT580).canonicalFilePath());
    QCOMPARE(clase->programa, "KT580.Pantalla");
    const QString archivo = qvx::registro::Archivo();
    QVERIFY(!QFile::permissions(archivo).testAnyFlags(QFile::ReadGroup | QFile::ReadOther));

    // What another user could have written is not loaded.
    QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner | QFile::WriteOther);
    QVERIFY_EXCEPTION_THROWN(qvx::registro::Buscar(KT580::ClavePantalla), qvx::ErrorEjecucion);
    QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(borrar(), com::S_OK);
    QVERIFY(!qvx::registro::Buscar(KT580::ClavePantalla));

    QVERIFY(QFile::remove(archivo) && QDir().mkpath(archivo)); // cannot be written
    QCOMPARE(registrar(), com::SELFREG_E_CLASS);
}

// A first start: the program makes its database, registers the component beside it, and shows the plan.
void PrComponente::arranque()
{
    QTemporaryDir casa;
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("XDG_CONFIG_HOME", casa.filePath("config"));
    entorno.insert("XDG_DATA_HOME", casa.filePath("datos"));
    entorno.insert("QVX_TRAZA", casa.filePath("traza"));
    QProcess quorvex;
    quorvex.setProcessEnvironment(entorno);
    quorvex.start(PROGRAMA_QUORVEX, {"--tipo-equipo", "0001", "--operador", "mlopez"});
    const auto contiene = [&](const QString &archivo, const QByteArray &texto) {
        QFile entrada(casa.filePath(archivo));
        return entrada.open(QIODevice::ReadOnly) && entrada.readAll().contains(texto);
    };
    QTRY_VERIFY_WITH_TIMEOUT(contiene("traza", "WHERE Tep_Padre = '0002' and Te_Cve_Tipo_Equipo = '0001'"), 30000);
    QVERIFY(contiene("config/quorvex/componentes.ini", "libKT580.so"));
    const auto permisos = QFile::permissions(casa.filePath("datos/quorvex/quorvex.db"));
    QVERIFY(permisos.testFlag(QFile::ReadOwner) && !permisos.testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
    quorvex.terminate();
    QVERIFY(quorvex.waitForFinished());
}

PRUEBA_MAIN(PrComponente)
#include "pr_componente.moc"
