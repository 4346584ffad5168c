#include "component/IPantalla.h"
#include "data/ErrorEjecucion.h"
#include "support/Escenario.h"
#include "system/Registro.h"

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
    void pantalla();
    void registro();
    void arranque();

private:
    com::HRESULT Entrar(const char *nombre)
    {
        return reinterpret_cast<com::FnSinArgumentos>(biblioteca.resolve(nombre))();
    }

    QLibrary biblioteca{BIBLIOTECA_KT580};
};

// One screen, not shown, alive without its Pantalla; closed, the next call makes another. While any of it is there, the
// library cannot be unloaded.
void PrComponente::pantalla()
{
    const auto objetoDeClase = reinterpret_cast<com::FnDllGetClassObject>(biblioteca.resolve("DllGetClassObject"));
    void *objeto = nullptr;
    QCOMPARE(objetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto), com::S_OK);
    auto *fabrica = static_cast<com::IClassFactory *>(objeto);
    QCOMPARE(fabrica->CreateInstance(nullptr, KT580::IID_IPantalla, &objeto), com::S_OK);
    QCOMPARE(fabrica->Release(), 0u);

    auto *clase = static_cast<KT580::IPantalla *>(objeto);
    QVariant una;
    QVariant otra;
    QCOMPARE(clase->GetPantalla(&una), com::E_FAIL); // nobody has signed in
    QVERIFY(!una.isValid());
    Escenario escenario;
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
    QVERIFY_EXCEPTION_THROWN(qvx::registro::Buscar(KT580::ClavePantalla), qvx::ErrorEjecucion);
    QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(Entrar("DllUnregisterServer"), com::S_OK);
    QVERIFY(!qvx::registro::Buscar(KT580::ClavePantalla));
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
