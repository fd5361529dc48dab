#include "adaptor/common/HostSnapshot.h"

#include <cstring>

#include "adaptor/common/HostAdaptor.h"
#include "adaptor/common/HostNode.h"

namespace orv::rws::adaptor {

using util::Matrix;

namespace {

void Write(HostNode& node, double time, const double m[16], bool key) {
  Matrix<double> world;
  std::memcpy(world.data(), m, sizeof(world.m));
  if (!node.SetWorldPose(time, world, key)) node.GetAdaptor().NoteRefusedPose(node, time);
}

}  // namespace

void HostSnapshot::SetMatrix(const double m[16]) {
  Write(*m_node, m_time, m, false);
}

void HostSnapshot::SetKey(const double m[16]) {
  Write(*m_node, m_time, m, true);
}

void HostSnapshot::GetMatrix(double m[16]) {
  const Matrix<double> world = m_node->GetWorldPose(m_time);
  std::memcpy(m, world.data(), sizeof(world.m));
}

void HostSnapshot::GetLocalMatrix(double m[16]) {
  const Matrix<double> local = m_node->GetLocalPose(m_time);
  std::memcpy(m, local.data(), sizeof(local.m));
}

}  // namespace orv::rws::adaptor
