#pragma once

#include "component/com.h"

class QVariant;

// The component's one class, as a host sees it.
namespace KT580
{

constexpr com::GUID CLSID_Pantalla{0x5B0E6C31, 0x4F0A, 0x4C39, {0x9D, 0x52, 0x1A, 0x8C, 0x57, 0x80, 0x75, 0x01}};
constexpr com::GUID IID_IPantalla{0x5B0E6C32, 0x4F0A, 0x4C39, {0x9D, 0x52, 0x1A, 0x8C, 0x57, 0x80, 0x75, 0x01}};
constexpr const char *ClavePantalla = "{5B0E6C31-4F0A-4C39-9D52-1A8C57807501}"; // of CLSID_Pantalla in the registry
constexpr const char *ProgramaPantalla = "KT580.Pantalla";

class IPantalla : public com::IUnknown
{
public:
    // The single main screen (a QWidget in the variant), made by the first call and not shown. E_FAIL when it cannot
    // be made: the host has nobody signed in, or its database fails. E_UNEXPECTED without an application of windows,
    // RPC_E_WRONG_THREAD from another thread than its own.
    virtual com::HRESULT GetPantalla(QVariant *pantalla) = 0;

protected:
    ~IPantalla() = default;
};

} // namespace KT580
