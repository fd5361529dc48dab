// A DirectInput with one wheel, which a test moves, plugs in and out.
#pragma once

#include <cstring>

#include "unidevice/win32/DirectInput.h"

namespace orv::tests {

/// What all of DirectInput's objects have. The test holds them, so they count nothing.
template <typename Interface>
class FakeObject : public Interface {
 public:
  HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG WINAPI AddRef() override { return 1; }
  ULONG WINAPI Release() override { return ++released; }

  ULONG released = 0;
};

class FakeEffect : public FakeObject<IDirectInputEffect> {
 public:
  HRESULT WINAPI Initialize(HINSTANCE, DWORD, REFGUID) override { return E_NOTIMPL; }
  HRESULT WINAPI GetEffectGuid(LPGUID) override { return E_NOTIMPL; }
  HRESULT WINAPI GetParameters(LPDIEFFECT, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI SetParameters(LPCDIEFFECT told, DWORD) override { return take(*told); }
  HRESULT WINAPI Start(DWORD, DWORD) override { return playing = true, DI_OK; }
  HRESULT WINAPI Stop() override { return playing = false, DI_OK; }
  HRESULT WINAPI GetEffectStatus(LPDWORD status) override {
    *status = playing ? DIEGES_PLAYING : 0;
    return DI_OK;
  }
  HRESULT WINAPI Download() override { return E_NOTIMPL; }
  HRESULT WINAPI Unload() override { return E_NOTIMPL; }
  HRESULT WINAPI Escape(LPDIEFFESCAPE) override { return E_NOTIMPL; }

  HRESULT take(const DIEFFECT& told) {
    axes = told.cAxes;
    duration = told.dwDuration;
    direction = told.rglDirection[0];
    level = static_cast<const DICONSTANTFORCE*>(told.lpvTypeSpecificParams)->lMagnitude;
    return DI_OK;
  }

  bool playing = false;
  DWORD axes = 0, duration = 0;
  LONG direction = 0, level = 0;
};

/// Two axes, of which the first pushes, a slider, two buttons and a hat.
class FakeWheel : public FakeObject<IDirectInputDevice8W> {
 public:
  HRESULT WINAPI GetCapabilities(LPDIDEVCAPS caps) override {
    caps->dwFlags = DIDC_FORCEFEEDBACK;
    return DI_OK;
  }
  HRESULT WINAPI EnumObjects(LPDIENUMDEVICEOBJECTSCALLBACKW each, LPVOID to, DWORD) override {
    DIDEVICEOBJECTINSTANCEW object{};
    object.dwType = 7;
    each(&object, to);
    return DI_OK;
  }
  HRESULT WINAPI GetProperty(REFGUID, LPDIPROPHEADER) override { return E_NOTIMPL; }
  HRESULT WINAPI SetProperty(REFGUID what, LPCDIPROPHEADER to) override {
    if (&what == &DIPROP_RANGE) end = reinterpret_cast<LPCDIPROPRANGE>(to)->lMax;
    return DI_OK;
  }
  HRESULT WINAPI Acquire() override { return acquired = !locked, locked ? E_ACCESSDENIED : DI_OK; }
  HRESULT WINAPI Unacquire() override { return acquired = false, DI_OK; }
  HRESULT WINAPI GetDeviceState(DWORD size, LPVOID to) override {
    if (!acquired || size != sizeof state) return DIERR_NOTACQUIRED;
    std::memcpy(to, &state, size);
    return DI_OK;
  }
  HRESULT WINAPI GetDeviceData(DWORD, LPDIDEVICEOBJECTDATA, LPDWORD, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI SetDataFormat(LPCDIDATAFORMAT format) override {
    return format->dwDataSize == sizeof state ? DI_OK : E_INVALIDARG;
  }
  HRESULT WINAPI SetEventNotification(HANDLE) override { return E_NOTIMPL; }
  HRESULT WINAPI SetCooperativeLevel(HWND to, DWORD flags) override {
    window = to;
    alone = (flags & DISCL_EXCLUSIVE) != 0;
    return acquired ? DIERR_ACQUIRED : DI_OK;
  }
  HRESULT WINAPI GetObjectInfo(LPDIDEVICEOBJECTINSTANCEW object, DWORD offset, DWORD) override {
    std::wcscpy(object->tszName, L"Part");
    const bool has = offset == DIJOFS_X || offset == DIJOFS_RZ || offset == DIJOFS_SLIDER(0) ||
                     offset == DIJOFS_BUTTON(0) || offset == DIJOFS_BUTTON(5) ||
                     offset == DIJOFS_POV(0);
    return has ? DI_OK : DIERR_OBJECTNOTFOUND;
  }
  HRESULT WINAPI GetDeviceInfo(LPDIDEVICEINSTANCEW) override { return E_NOTIMPL; }
  HRESULT WINAPI RunControlPanel(HWND, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Initialize(HINSTANCE, DWORD, REFGUID) override { return E_NOTIMPL; }
  HRESULT WINAPI CreateEffect(REFGUID, LPCDIEFFECT told, LPDIRECTINPUTEFFECT* made,
                              LPUNKNOWN) override {
    if (!alone || !acquired) return DIERR_NOTEXCLUSIVEACQUIRED;
    *made = &effect;
    return effect.take(*told);
  }
  HRESULT WINAPI EnumEffects(LPDIENUMEFFECTSCALLBACKW, LPVOID, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI GetEffectInfo(LPDIEFFECTINFOW, REFGUID) override { return E_NOTIMPL; }
  HRESULT WINAPI GetForceFeedbackState(LPDWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI SendForceFeedbackCommand(DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI EnumCreatedEffectObjects(LPDIENUMCREATEDEFFECTOBJECTSCALLBACK, LPVOID,
                                          DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI Escape(LPDIEFFESCAPE) override { return E_NOTIMPL; }
  HRESULT WINAPI Poll() override { return acquired ? DI_NOEFFECT : DIERR_NOTACQUIRED; }
  HRESULT WINAPI SendDeviceData(DWORD, LPCDIDEVICEOBJECTDATA, LPDWORD, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI EnumEffectsInFile(LPCWSTR, LPDIENUMEFFECTSINFILECALLBACK, LPVOID, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI WriteEffectToFile(LPCWSTR, DWORD, LPDIFILEEFFECT, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI BuildActionMap(LPDIACTIONFORMATW, LPCWSTR, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI SetActionMap(LPDIACTIONFORMATW, LPCWSTR, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI GetImageInfo(LPDIDEVICEIMAGEINFOHEADERW) override { return E_NOTIMPL; }

  FakeEffect effect;
  DIJOYSTATE2 state{};
  LONG end = 0;  ///< of the axes' range
  HWND window = nullptr;
  bool acquired = false, alone = false;
  bool locked = false;  ///< another program has it
};

class FakeInput : public FakeObject<IDirectInput8W> {
 public:
  HRESULT WINAPI CreateDevice(REFGUID, LPDIRECTINPUTDEVICE8W* made, LPUNKNOWN) override {
    *made = &wheel;
    return DI_OK;
  }
  HRESULT WINAPI EnumDevices(DWORD, LPDIENUMDEVICESCALLBACKW each, LPVOID to, DWORD) override {
    DIDEVICEINSTANCEW found{};
    found.guidInstance = GUID_Joystick;
    std::wcscpy(found.tszProductName, L"R\u00e4d");
    if (there) each(&found, to);
    return DI_OK;
  }
  HRESULT WINAPI GetDeviceStatus(REFGUID) override { return there ? DI_OK : DI_NOTATTACHED; }
  HRESULT WINAPI RunControlPanel(HWND, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Initialize(HINSTANCE, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI FindDevice(REFGUID, LPCWSTR, LPGUID) override { return E_NOTIMPL; }
  HRESULT WINAPI EnumDevicesBySemantics(LPCWSTR, LPDIACTIONFORMATW, LPDIENUMDEVICESBYSEMANTICSCBW,
                                        LPVOID, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI ConfigureDevices(LPDICONFIGUREDEVICESCALLBACK, LPDICONFIGUREDEVICESPARAMSW, DWORD,
                                  LPVOID) override {
    return E_NOTIMPL;
  }

  FakeWheel wheel;
  bool there = true;
};

}  // namespace orv::tests
