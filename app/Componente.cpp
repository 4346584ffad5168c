#include "app/Componente.h"

#include "component/IPantalla.h"
#include "data/ErrorEjecucion.h"
#include "system/Carpetas.h"
#include "system/Marca.h"
#include "system/Registro.h"

#include <QLibrary>
#include <QTextStream>
#include <QVariant>
#include <QWidget>

namespace
{

[[noreturn]] void Rechazar(const QString &que)
{
    throw qvx::ErrorEjecucion(qvx::errores::ObjetoNoEstablecido, "No se pudo cargar la pantalla KT580: " + que);
}

QFunctionPointer Entrada(QLibrary &biblioteca, const char *nombre)
{
    const QFunctionPointer entrada = biblioteca.resolve(nombre);
    if (!entrada)
        Rechazar(biblioteca.errorString());
    return entrada;
}

// Told on the standard error: the screen comes up all the same.
void Avisar(const QString &que)
{
    QTextStream(stderr) << que << Qt::endl;
}

// An installed program takes the one that it was installed with, whatever is registered. In a build's folder it is the
// registered one, unless it is of another build; the one beside the program is as good as the program itself, and is
// registered.
QString Biblioteca()
{
    const QString propia = qvx::CarpetaDeComponentes() + "/libKT580.so";
    if (qvx::Instalado())
        return propia;
    try {
        const auto registrada = qvx::registro::Buscar(KT580::ClavePantalla);
        if (registrada && registrada->marca == qvx::Marca())
            return registrada->biblioteca;
    } catch (const qvx::ErrorEjecucion &error) {
        Avisar(error.Descripcion());
    }
    QLibrary vecina(propia);
    const auto registrar = reinterpret_cast<com::FnSinArgumentos>(Entrada(vecina, "DllRegisterServer"));
    if (registrar() != com::S_OK)
        Avisar("La pantalla KT580 no se pudo registrar en " + qvx::registro::Archivo() + ".");
    return vecina.fileName();
}

} // namespace

// The library stays loaded for the life of the process: the toolkit keeps types that were registered from it.
QWidget *CrearPantalla()
{
    QLibrary biblioteca(Biblioteca());
    const auto objetoDeClase = reinterpret_cast<com::FnDllGetClassObject>(Entrada(biblioteca, "DllGetClassObject"));

    void *objeto = nullptr;
    if (objetoDeClase(KT580::CLSID_Pantalla, com::IID_IClassFactory, &objeto) != com::S_OK)
        Rechazar("no tiene la clase Pantalla");
    auto *fabrica = static_cast<com::IClassFactory *>(objeto);
    const com::HRESULT creada = fabrica->CreateInstance(nullptr, KT580::IID_IPantalla, &objeto);
    fabrica->Release();
    if (creada != com::S_OK)
        Rechazar("no se pudo crear la clase Pantalla");

    auto *clase = static_cast<KT580::IPantalla *>(objeto);
    QVariant pantalla;
    const com::HRESULT obtenida = clase->GetPantalla(&pantalla);
    clase->Release();
    auto *ventana = qobject_cast<QWidget *>(pantalla.value<QObject *>());
    if (obtenida != com::S_OK || !ventana)
        Rechazar("la clase Pantalla no dio su pantalla");
    return ventana;
}
