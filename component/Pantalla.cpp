#include "component/IPantalla.h"
#include "component/Publico.h"
#include "data/ErrorEjecucion.h"
#include "frmKT580/frmKT580.h"
#include "qvx_marca.h"
#include "system/Marca.h"
#include "system/Registro.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QThread>
#include <QVariant>
#include <atomic>
#include <dlfcn.h>

using namespace com;

namespace
{

Q_LOGGING_CATEGORY(registroComponente, "quorvex.KT580")

std::atomic<int> bloqueos = 0;

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
    std::atomic<ULONG> referencias = 1;
    Publico::Vivo vivo;
};

class Pantalla : public Objeto<KT580::IPantalla, KT580::IID_IPantalla>
{
public:
    HRESULT GetPantalla(QVariant *pantalla) override
    {
        if (!pantalla)
            return E_POINTER;
        if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
            return E_UNEXPECTED;
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            return RPC_E_WRONG_THREAD;
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
        if (qvx::Marca() != QVX_MARCA) {
            qCWarning(registroComponente) << "El componente y la biblioteca de su host son de construcciones distintas";
            return E_FAIL;
        }
        return Frontera(E_FAIL, [&] {
            Publico::Main();
            auto *nueva = new Pantalla;
            const HRESULT resultado = nueva->QueryInterface(iid, objeto);
            nueva->Release();
            return resultado;
        });
    }
    HRESULT LockServer(BOOL bloquear) override
    {
        if (bloquear) {
            ++bloqueos;
            return S_OK;
        }
        int quedan = bloqueos;
        while (quedan > 0 && !bloqueos.compare_exchange_weak(quedan, quedan - 1)) {
        }
        return quedan > 0 ? S_OK : E_UNEXPECTED; // more releases than locks
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
    return Frontera(E_FAIL, [&] {
        auto *fabrica = new Fabrica;
        const HRESULT resultado = fabrica->QueryInterface(iid, objeto);
        fabrica->Release();
        return resultado;
    });
}

extern "C" Q_DECL_EXPORT HRESULT DllCanUnloadNow()
{
    return Publico::Vivo::Cuantos() == 0 && bloqueos == 0 ? S_OK : S_FALSE;
}

extern "C" Q_DECL_EXPORT HRESULT DllRegisterServer()
{
    return Frontera(SELFREG_E_CLASS, [] {
        qvx::registro::Escribir(KT580::ClavePantalla, {RutaPropia(), KT580::ProgramaPantalla, QVX_VERSION, QVX_MARCA});
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
