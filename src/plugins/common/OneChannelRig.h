// What the one-channel links have in common.
#pragma once

#include <string>
#include <vector>

#include "plugins/common/LinkRig.h"

namespace orv::rws::addon {

/// A link of one input that acts along or about an axis of the cage, which the user chooses.
class OneChannelRig : public LinkRig {
 protected:
  struct OneChannelKind {
    const char* chunkName;
    const char* actuatorName;
    const char* inputName;
    double maximum;                 ///< output at full input
    bool keepsActuatorScale;        ///< as in LinkRig
    std::vector<std::string> axes;  ///< choices of the combo box "Axis"
    int axis;                       ///< default choice
  };

  OneChannelRig(const CreationRecord& record, const OneChannelKind& kind, util::CMesh actuatorMesh);

  void DefineMore() override;
  /// Index of the user's choice, within the axes.
  int Axis() const;

 private:
  const std::vector<std::string> m_axes;
  int m_axis;
};

}  // namespace orv::rws::addon
