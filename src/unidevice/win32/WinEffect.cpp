#include "unidevice/win32/WinEffect.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::unidevice {

namespace {

LONG level(double magnitude) {
  return std::lround(magnitude * DI_FFNOMINALMAX);
}

DWORD microseconds(double time) {
  return static_cast<DWORD>(std::max(1.0, std::round(time * DI_SECONDS)));
}

/// Null for a kind that DirectInput has not.
const GUID* guidOf(FFKind kind) {
  switch (kind) {
    case FFKind::kConstant:
      return &GUID_ConstantForce;
    case FFKind::kSine:
      return &GUID_Sine;
    case FFKind::kSpring:
      return &GUID_Spring;
    case FFKind::kDamper:
      return &GUID_Damper;
    case FFKind::kFriction:
      return &GUID_Friction;
    case FFKind::kRumble:
      break;
  }
  return nullptr;
}

BOOL CALLBACK collectAxis(const DIDEVICEOBJECTINSTANCEW* object, void* axes) {
  auto& found = *static_cast<std::vector<DWORD>*>(axes);
  found.push_back(object->dwType);
  return found.size() < 2 ? DIENUM_CONTINUE : DIENUM_STOP;
}

class WinEffect : public ParameterEffect {
 public:
  WinEffect(std::shared_ptr<WinForce> force, FFKind kind, double direction)
      : ParameterEffect(kind, direction), m_force(std::move(force)) {
    EffectBlock block(kind, m_parameters, m_force->axes());
    IDirectInputEffect* effect = nullptr;
    if (SUCCEEDED(m_force->device()->CreateEffect(*guidOf(kind), &block.effect, &effect, nullptr)))
      m_effect.reset(effect);
  }

  /// False if the device refused it.
  bool created() const { return m_effect != nullptr; }

  bool start() override { return reachable() && SUCCEEDED(m_effect->Start(1, 0)); }
  bool stop() override { return reachable() && SUCCEEDED(m_effect->Stop()); }

  bool isPlaying() const override {
    DWORD status = 0;
    return reachable() && SUCCEEDED(m_effect->GetEffectStatus(&status)) &&
           (status & DIEGES_PLAYING) != 0;
  }

 private:
  bool reachable() const override { return valid && m_force->device(); }

  bool apply() override {
    EffectBlock block(kind(), m_parameters, m_force->axes());
    return SUCCEEDED(m_effect->SetParameters(
        &block.effect, DIEP_DIRECTION | DIEP_DURATION | DIEP_TYPESPECIFICPARAMS));
  }

  std::shared_ptr<WinForce> m_force;
  ComPointer<IDirectInputEffect> m_effect;
};

}  // namespace

WinForce::WinForce(ComPointer<IDirectInputDevice8W> device) : m_device(std::move(device)) {
  DIDEVCAPS caps{};
  caps.dwSize = sizeof caps;
  if (SUCCEEDED(m_device->GetCapabilities(&caps)) && (caps.dwFlags & DIDC_FORCEFEEDBACK))
    m_device->EnumObjects(collectAxis, &m_axes, DIDFT_AXIS | DIDFT_FFACTUATOR);
}

bool WinForce::acquire(HWND window) {
  m_window = window;
  m_device->Unacquire();
  const DWORD use = DISCL_BACKGROUND | (m_alone ? DISCL_EXCLUSIVE : DISCL_NONEXCLUSIVE);
  return SUCCEEDED(m_device->SetCooperativeLevel(window, use)) && SUCCEEDED(m_device->Acquire());
}

bool WinForce::takeOver() {
  if (m_alone) return true;
  m_device->Unacquire();
  // Else the device pulls to its centre beside what we have it do.
  DIPROPDWORD off{{sizeof(DIPROPDWORD), sizeof(DIPROPHEADER), 0, DIPH_DEVICE},
                  DIPROPAUTOCENTER_OFF};
  m_device->SetProperty(DIPROP_AUTOCENTER, &off.diph);
  m_alone = true;
  if (acquire(m_window)) return true;
  m_alone = false;
  acquire(m_window);
  return false;
}

void WinForce::close() {
  if (m_device) m_device->Unacquire();
  m_device.reset();
}

EffectBlock::EffectBlock(FFKind kind, const EffectParameters& parameters,
                         const std::vector<DWORD>& ids) {
  effect.dwSize = sizeof effect;
  effect.dwFlags = DIEFF_OBJECTIDS | DIEFF_CARTESIAN;
  effect.dwDuration = parameters.duration == 0.0 ? INFINITE : microseconds(parameters.duration);
  effect.dwGain = DI_FFNOMINALMAX;
  effect.dwTriggerButton = DIEB_NOTRIGGER;
  effect.cAxes = static_cast<DWORD>(ids.size());
  effect.rgdwAxes = axes;
  effect.rglDirection = direction;
  std::copy(ids.begin(), ids.end(), axes);
  // DirectInput names the side that a force comes from, with +x to the right and +y to the user; we
  // name where it pushes, with +y away from the user. With one axis the sign goes to the level.
  const double x = -std::cos(parameters.direction);
  const bool plane = ids.size() == 2;
  direction[0] = plane ? level(x) : 1;
  direction[1] = plane ? level(std::sin(parameters.direction)) : 0;
  const LONG push = level(plane ? parameters.magnitude : x * parameters.magnitude);
  if (kind == FFKind::kConstant) {
    constant.lMagnitude = push;
    effect.cbTypeSpecificParams = sizeof constant;
    effect.lpvTypeSpecificParams = &constant;
  } else if (kind == FFKind::kSine) {
    periodic.dwMagnitude = static_cast<DWORD>(std::abs(push));
    periodic.dwPeriod = microseconds(parameters.period);
    effect.cbTypeSpecificParams = sizeof periodic;
    effect.lpvTypeSpecificParams = &periodic;
  } else {
    const LONG slope = level(parameters.magnitude);
    for (DICONDITION& condition : conditions)
      condition = {0, slope, slope, DI_FFNOMINALMAX, DI_FFNOMINALMAX, 0};
    direction[0] = direction[1] = 0;
    effect.cbTypeSpecificParams = static_cast<DWORD>(sizeof(DICONDITION) * ids.size());
    effect.lpvTypeSpecificParams = conditions;
  }
}

std::unique_ptr<FFEffect> createWinEffect(const std::shared_ptr<WinForce>& force, FFKind kind,
                                          double direction) {
  if (!force->canPlay() || !guidOf(kind) || !force->takeOver()) return nullptr;
  auto created = std::make_unique<WinEffect>(force, kind, direction);
  if (!created->created()) return nullptr;
  return created;
}

}  // namespace orv::unidevice
