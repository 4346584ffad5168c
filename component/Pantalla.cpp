#include "component/IPantalla.h"
#include "component/Publico.h"
#include "data/ErrorEjecucion.h"
#include "frmKT580/frmKT580.h"
#include "system/Registro.h"

#include <QFile>
#include <QLoggingCategory>
#include <QVariant>
#include <dlfcn.h>

using namespace com;

namespace
{

Q_LOGGING_CATEGORY(registroComponente, "quorvex.KT580")

int bloqueos = 0;

// Nothing of the component's errors may cross the binary border: they become a result code, and a line in the log.
template <class Pasos>
HRESULT Frontera(HRESULT fallo, Pasos &&pasos)
{
    try {
        return pasos();
    } catch (const std::exception &error) {
        qCWarning(registroComponente).noquote() << QString::fromUtf8(error.what());
        return fallo;
    }
}

// What the objects of the component have alike: one reference at birth, and one interface beside IUnknown.
template <class Interfaz, const GUID &Iid>
class Objeto : public Interfaz
{
public:
    HRESULT QueryInterface(const GUID &iid, void **objeto) override
    {
        if (!objeto)
            return E_POINTER;
        *objeto = nullptr;
        if (!(iid == IID_IUnknown) && !(iid == Iid))
            return E_NOINTERFACE;
        *objeto = static_cast<Interfaz *>(this);
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return ++referencias; }
    ULONG Release() override
    {
        const ULONG quedan = --referencias;
        if (quedan == 0)
            delete this;
        return quedan;
    }

protected:
    virtual ~Objeto() = default;

private:
    ULONG referencias = 1;
    Publico::Vivo vivo;
};

class Pantalla : public Objeto<KT580::IPantalla, KT580::IID_IPantalla>
{
public:
    HRESULT GetPantalla(QVariant *pantalla) override
    {
        if (!pantalla)
            return E_POINTER;
        return Frontera(E_FAIL, [&] {
            *pantalla = QVariant::fromValue(static_cast<QObject *>(&frmKT580::Instancia()));
            return S_OK;
        });
    }
};

class Fabrica : public Objeto<IClassFactory, IID_IClassFactory>
{
public:
    HRESULT CreateInstance(IUnknown *exterior, const GUID &iid, void **objeto) override
    {
        if (!objeto)
            return E_POINTER;
        *objeto = nullptr;
        if (exterior)
            return CLASS_E_NOAGGREGATION;
        return Frontera(E_FAIL, [&] {
            if (!Publico::Sistema)
                Publico::Main();
            auto *nueva = new Pantalla;
            const HRESULT resultado = nueva->QueryInterface(iid, objeto);
            nueva->Release();
            return resultado;
        });
    }
    HRESULT LockServer(BOOL bloquear) override
    {
        bloqueos += bloquear ? 1 : -1;
        return S_OK;
    }
};

// The library that this code stands in.
QString RutaPropia()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void *>(&RutaPropia), &info))
        throw qvx::ErrorEjecucion(qvx::errores::Datos, "No se conoce la ruta del componente");
    return QFile::decodeName(info.dli_fname);
}

} // namespace

// The four entry points: the component's only exported names.

extern "C" Q_DECL_EXPORT HRESULT DllGetClassObject(const GUID &clase, const GUID &iid, void **objeto)
{
    if (!objeto)
        return E_POINTER;
    *objeto = nullptr;
    if (!(clase == KT580::CLSID_Pantalla))
        return CLASS_E_CLASSNOTAVAILABLE;
    auto *fabrica = new Fabrica;
    const HRESULT resultado = fabrica->QueryInterface(iid, objeto);
    fabrica->Release();
    return resultado;
}

extern "C" Q_DECL_EXPORT HRESULT DllCanUnloadNow()
{
    return Publico::Vivo::Cuantos() == 0 && bloqueos == 0 ? S_OK : S_FALSE;
}

extern "C" Q_DECL_EXPORT HRESULT DllRegisterServer()
{
    return Frontera(SELFREG_E_CLASS, [] {
        qvx::registro::Escribir(KT580::ClavePantalla, {RutaPropia(), KT580::ProgramaPantalla, QVX_VERSION});
        return S_OK;
    });
}

extern "C" Q_DECL_EXPORT HRESULT DllUnregisterServer()
{
    return Frontera(SELFREG_E_CLASS, [] {
        qvx::registro::Borrar(KT580::ClavePantalla);
        return S_OK;
    });
}
