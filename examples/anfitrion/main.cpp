// A host of the component: opens a database, made with example plans when it is not there, and shows the screen.
//     anfitrion FILE [EQUIPMENT-TYPE]
#include <component/IPantalla.h>
#include <controls/InteraccionQt.h>
#include <data/Conexion.h>
#include <data/ErrorEjecucion.h>
#include <plan/Instalador.h>
#include <session/Aplicacion.h>
#include <session/Sesion.h>
#include <system/Carpetas.h>

#include <QLibrary>
#include <QWidget>

// The screen, or nothing when the component does not give it; why is in the log.
static QWidget *Pantalla()
{
    QLibrary componente(qvx::CarpetaDeComponentes() + "/libKT580.so");
    const auto entrada = reinterpret_cast<com::FnDllGetClassObject>(componente.resolve("DllGetClassObject"));
    void *objeto = nullptr;
    if (!entrada || entrada(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto) != com::S_OK)
        return nullptr;
    auto *fabrica = static_cast<com::IClassFactory *>(objeto);
    const bool creada = fabrica->CreateInstance(nullptr, KT580::IID_IPantalla, &objeto) == com::S_OK;
    fabrica->Release();
    if (!creada)
        return nullptr;
    QVariant pantalla;
    auto *clase = static_cast<KT580::IPantalla *>(objeto);
    clase->GetPantalla(&pantalla);
    clase->Release();
    return qobject_cast<QWidget *>(pantalla.value<QObject *>());
}

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    try {
        qvx::Sesion sesion(qvx::AbrirBaseDeDatos(argumentos.value(1, "plan.db"), true), "anfitrion",
                           std::make_unique<qvx::InteraccionQt>());
        QWidget *ventana = Pantalla();
        if (!ventana)
            qFatal("The component gave no screen.");
        QObject padre; // any object with these two properties, alive as long as the screen
        padre.setProperty("Transaccion", "0001");
        padre.setProperty("iParametros", argumentos.value(2, "0001"));
        ventana->setProperty("Padre", QVariant::fromValue(&padre));
        ventana->show();
        return QApplication::exec();
    } catch (const qvx::ErrorEjecucion &error) {
        qFatal("%s", qPrintable(error.Descripcion()));
    }
}
