#include "plugins/common/OneChannelRig.h"

#include <algorithm>
#include <utility>

namespace orv::rws::addon {

namespace {

constexpr InputFilterKeys kKeys = {
    "inpStore",
    "inpPrevInpStore",
    "inpIntegratedStore",
    "inpFilterMemStore",
    "inpTrinaryStateStore",
    "inpPrevActivationStore",
    "inpIsTrinaryStateValueStore",
    "inpIsIntegratedValueStore",
    "changeLimitStore",
};

}  // namespace

OneChannelRig::OneChannelRig(const CreationRecord& record, const OneChannelKind& kind,
                             util::CMesh actuatorMesh)
    : LinkRig(record,
              {kind.chunkName,
               kind.actuatorName,
               {{kind.inputName, kind.maximum}},
               kKeys,
               kind.keepsActuatorScale},
              std::move(actuatorMesh)),
      m_axes(kind.axes),
      m_axis(kind.axis) {}

void OneChannelRig::DefineMore() {
  m_pInterface->BeginGroup("Movement", "What the input does");
  m_pInterface->AddComboBox("Axis", "The axis of the cage that the input acts on.", m_axes, &m_axis,
                            this);
  m_pInterface->EndGroup();
}

int OneChannelRig::Axis() const {
  return std::clamp(m_axis, 0, static_cast<int>(m_axes.size()) - 1);
}

}  // namespace orv::rws::addon
