#include "plugins/common/FollowRig.h"

#include <string_view>

#include "core/interface/RigMarks.h"
#include "plugins/common/History.h"
#include "plugins/common/NodeScale.h"

namespace orv::rws::addon {

FollowCamNode::FollowCamNode(CCamera& rig) : RigCameraNode(rig, "FollowCam", nullptr) {
  SetWritten();
}

void FollowCamNode::TakeScale(double time) {
  m_scale = ScaleOf(ReadMatrix(time));
}

void FollowCamNode::WritePose(double time, const util::QTransform<double>& pose) const {
  util::Matrix<double> matrix = pose.toMatrix();
  matrix.setRowLengths(m_scale);
  WriteKey(time, matrix);
}

FollowRig::FollowRig(const CreationRecord& record, FollowCamNode& followCam)
    : Rig(record), m_attachedCam(*this), m_followCamNode(followCam) {}

void FollowRig::Step(double time) {
  m_attachedCam.Step(time);
  m_followCamNode.Step(time);
}

int FollowRig::Create() {
  return m_attachedCam.Create() != 0 || m_followCamNode.Create() != 0 ? 1 : 0;
}

int FollowRig::Restore() {
  // Without its AttachedCam the rig goes on, towards the origin; without its FollowCam it is none.
  m_attachedCam.Find();
  if (!m_followCamNode.Find()) return 1;
  if (LoadBlob() == SaveState::kDamaged) return 1;
  m_hideModes.Restore();
  return 0;
}

void FollowRig::OnCallback(std::string name) {
  // Undo and redo never re-initialise, and come under other names.
  if (std::string_view(name) == kReInitialize) {
    PushVariableUndo(*m_pInterface, m_memory.bFirstTime);
    m_memory.bFirstTime = true;
  } else {
    m_hideModes.OnCallback(*m_pInterface, *this, name);
  }
}

std::intptr_t FollowRig::Extension(int code, void* a, void* b) {
  if (code != kTellMarks || !a) return CCamera::Extension(code, a, b);
  auto& marks = *static_cast<RigMarks*>(a);
  if (m_attachedCam.IsBound())
    marks.targets.push_back({m_followCamNode.ReadMatrix(marks.time).translation(),
                             m_attachedCam.ReadMatrix(marks.time).translation()});
  return 1;
}

}  // namespace orv::rws::addon
