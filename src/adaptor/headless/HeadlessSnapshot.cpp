#include "adaptor/headless/HeadlessSnapshot.h"

#include <cstring>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"

namespace orv::rws::adaptor::headless {

using util::Matrix;

namespace {

void Write(HeadlessNode& node, double time, const double m[16], bool key) {
  Matrix<double> world;
  std::memcpy(world.data(), m, sizeof(world.m));
  if (!node.SetWorldPose(time, world, key)) node.GetAdaptor().NoteRefusedPose(node, time);
}

}  // namespace

void HeadlessSnapshot::SetMatrix(const double m[16]) {
  Write(*m_node, m_time, m, false);
}

void HeadlessSnapshot::SetKey(const double m[16]) {
  Write(*m_node, m_time, m, true);
}

void HeadlessSnapshot::GetMatrix(double m[16]) {
  const Matrix<double> world = m_node->GetWorldPose(m_time);
  std::memcpy(m, world.data(), sizeof(world.m));
}

void HeadlessSnapshot::GetLocalMatrix(double m[16]) {
  const Matrix<double> local = m_node->GetLocalPose(m_time);
  std::memcpy(m, local.data(), sizeof(local.m));
}

}  // namespace orv::rws::adaptor::headless
