// SPDX-License-Identifier: GPL-3.0-or-later
// dxgi.dll for the tests under Wine 8, whose own tells nobody when the display is refreshed, so that JUCE's windows never
// paint: one adapter with one output, the first monitor, refreshed 60 times a second. It is never installed.
#include <dxgi.h>

#include <atomic>
#include <new>

// The system's interfaces are so.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace
{
/** What all three objects share. */
template <typename Interface>
class Object : public Interface
{
public:
    virtual ~Object() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override
    {
        if (wanted != __uuidof(IUnknown) && wanted != __uuidof(IDXGIObject) && wanted != __uuidof(Interface))
        {
            *result = nullptr;
            return E_NOINTERFACE;
        }

        *result = this;
        this->AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++users; }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const auto left = --users;

        if (left == 0)
            delete this;

        return left;
    }

    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID, UINT, const void*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID, const IUnknown*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID, UINT*, void*) override { return DXGI_ERROR_NOT_FOUND; }

    HRESULT STDMETHODCALLTYPE GetParent(REFIID, void**) override { return E_NOINTERFACE; }

private:
    std::atomic<ULONG> users{1};
};

template <typename Type, typename Interface>
HRESULT giveNew(Interface** result)
{
    *result = new (std::nothrow) Type;
    return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}

class Output final : public Object<IDXGIOutput>
{
public:
    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_OUTPUT_DESC* desc) override
    {
        *desc = {};
        desc->Monitor = MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY);
        desc->AttachedToDesktop = TRUE;
        MONITORINFO info{};
        info.cbSize = sizeof(info);

        if (GetMonitorInfoW(desc->Monitor, &info) == 0)
            return E_FAIL;

        desc->DesktopCoordinates = info.rcMonitor;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE WaitForVBlank() override
    {
        constexpr DWORD frameMillis = 16;
        Sleep(frameMillis);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetDisplayModeList(DXGI_FORMAT, UINT, UINT*, DXGI_MODE_DESC*) override
    {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE FindClosestMatchingMode(const DXGI_MODE_DESC*, DXGI_MODE_DESC*,
                                                      IUnknown*) override
    {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE TakeOwnership(IUnknown*, WINBOOL) override { return E_NOTIMPL; }

    void STDMETHODCALLTYPE ReleaseOwnership() override {}

    HRESULT STDMETHODCALLTYPE GetGammaControlCapabilities(DXGI_GAMMA_CONTROL_CAPABILITIES*) override
    {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE SetGammaControl(const DXGI_GAMMA_CONTROL*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetGammaControl(DXGI_GAMMA_CONTROL*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE SetDisplaySurface(IDXGISurface*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetDisplaySurfaceData(IDXGISurface*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetFrameStatistics(DXGI_FRAME_STATISTICS*) override { return E_NOTIMPL; }
};

class Adapter final : public Object<IDXGIAdapter>
{
public:
    HRESULT STDMETHODCALLTYPE EnumOutputs(UINT index, IDXGIOutput** output) override
    {
        return index == 0 ? giveNew<Output>(output) : DXGI_ERROR_NOT_FOUND;
    }

    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_ADAPTER_DESC*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE CheckInterfaceSupport(REFGUID, LARGE_INTEGER*) override
    {
        return DXGI_ERROR_UNSUPPORTED;
    }
};

class Factory final : public Object<IDXGIFactory>
{
public:
    HRESULT STDMETHODCALLTYPE EnumAdapters(UINT index, IDXGIAdapter** adapter) override
    {
        return index == 0 ? giveNew<Adapter>(adapter) : DXGI_ERROR_NOT_FOUND;
    }

    HRESULT STDMETHODCALLTYPE MakeWindowAssociation(HWND, UINT) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindowAssociation(HWND*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE CreateSwapChain(IUnknown*, DXGI_SWAP_CHAIN_DESC*, IDXGISwapChain**) override
    {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE CreateSoftwareAdapter(HMODULE, IDXGIAdapter**) override { return E_NOTIMPL; }
};
} // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI CreateDXGIFactory(REFIID wanted, void** factory)
{
    IDXGIFactory* made = nullptr;
    const auto result = giveNew<Factory>(&made);

    if (FAILED(result))
        return result;

    const auto answer = made->QueryInterface(wanted, factory);
    made->Release();
    return answer;
}
