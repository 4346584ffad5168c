#pragma once

#include <cstdint>
#include <cstring>

// The binary interface of an in-process component server, as far as the four entry points need it: identities, result
// codes, the two base interfaces. Layout and values are those of COM on a platform of 32-bit longs.
namespace com
{

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};

inline bool operator==(const GUID &uno, const GUID &otro)
{
    return std::memcmp(&uno, &otro, sizeof(GUID)) == 0;
}

using HRESULT = std::int32_t;
using ULONG = std::uint32_t;
using BOOL = std::int32_t;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
constexpr HRESULT RPC_E_WRONG_THREAD = static_cast<HRESULT>(0x8001010E);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111);
constexpr HRESULT SELFREG_E_CLASS = static_cast<HRESULT>(0x80040201);

constexpr GUID IID_IUnknown{0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID IID_IClassFactory{0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// Objects end themselves when their last reference is released, never through a pointer to an interface.
class IUnknown
{
public:
    virtual HRESULT QueryInterface(const GUID &iid, void **objeto) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

class IClassFactory : public IUnknown
{
public:
    virtual HRESULT CreateInstance(IUnknown *exterior, const GUID &iid, void **objeto) = 0;
    virtual HRESULT LockServer(BOOL bloquear) = 0;

protected:
    ~IClassFactory() = default;
};

// Signatures of the entry points, for whoever loads a library by name.
using FnDllGetClassObject = HRESULT (*)(const GUID &clase, const GUID &iid, void **objeto);
using FnSinArgumentos = HRESULT (*)();

} // namespace com
