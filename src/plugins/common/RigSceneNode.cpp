#include "plugins/common/RigSceneNode.h"

#include <utility>

#include "core/interface/CCamera.h"
#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "plugins/common/SnapshotGuard.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;

RigSceneNode::RigSceneNode(CCamera& rig, std::string name, const RigSceneNode* parent)
    : m_name(std::move(name)), m_rig(rig), m_parent(parent) {}

CInterface& RigSceneNode::Core() const {
  return *m_rig.m_pInterface;
}

bool RigSceneNode::Bind(CNode* node) {
  m_node = node;
  if (node) node->Extension(kForgetTransformKeys, nullptr, nullptr);
  if (node && m_written) node->Extension(kWrittenByRig, nullptr, nullptr);
  return node != nullptr;
}

int RigSceneNode::Create() {
  if (Find()) return 0;
  if (!Bind(MakeNode(Core(), m_parent ? m_parent->GetNode() : nullptr))) return 1;
  const double now = Core().GetTime();
  Place(now, m_parent ? m_parent->ReadMatrix(now) : Matrix());
  return 0;
}

bool RigSceneNode::Find() {
  return Bind(Core().FindNode(m_name));
}

void RigSceneNode::Delete() {
  if (m_node) Core().DeleteNode(m_node, false);
  m_node = nullptr;
}

bool RigSceneNode::Is(CNode& node) const {
  if (!m_node) return false;
  // Not every adaptor hands out one object per node.
  if (node.HasExtension(kIsSameNode)) return node.Extension(kIsSameNode, m_node, nullptr) > 0;
  return &node == m_node;
}

bool RigSceneNode::IsUnder(const RigSceneNode& above) const {
  if (!m_node || !m_node->IsValid()) return false;
  for (CNode* parent = m_node->GetParent(); parent;) {
    const bool found = above.Is(*parent);
    CNode* const next = found ? nullptr : parent->GetParent();
    Core().ReleaseNode(static_cast<CExtendable*>(parent));
    if (found) return true;
    parent = next;
  }
  return false;
}

Matrix RigSceneNode::ReadMatrix(double time) const {
  Matrix matrix;
  const SnapshotGuard snapshot(Core(), m_node, time);
  if (snapshot) snapshot->GetMatrix(matrix.data());
  return matrix;
}

Matrix RigSceneNode::ReadLocalMatrix(double time) const {
  Matrix matrix;
  const SnapshotGuard snapshot(Core(), m_node, time);
  if (snapshot) snapshot->GetLocalMatrix(matrix.data());
  return matrix;
}

void RigSceneNode::WriteKey(double time, const Matrix& matrix) const {
  const SnapshotGuard snapshot(Core(), m_node, time);
  if (snapshot) snapshot->SetKey(matrix.data());
}

void RigSceneNode::Place(double time, const Matrix& matrix) const {
  const SnapshotGuard snapshot(Core(), m_node, time);
  if (snapshot) snapshot->SetMatrix(matrix.data());
}

void RigSceneNode::SetHidden(bool hidden) const {
  if (!m_node || !m_node->IsValid()) return;
  if (hidden)
    m_node->Hide();
  else
    m_node->Show();
}

CNode* RigCameraNode::MakeNode(CInterface& core, CNode* parent) {
  return core.CreateCameraNode(m_name, parent, lens.fieldOfView, lens.nearClip);
}

RigMeshNode::RigMeshNode(CCamera& rig, std::string name, const RigSceneNode* parent,
                         util::CMesh mesh)
    : RigSceneNode(rig, std::move(name), parent), m_mesh(std::move(mesh)) {}

CNode* RigMeshNode::MakeNode(CInterface& core, CNode* parent) {
  return core.CreateMeshNode(m_name, parent, &m_mesh, 0);
}

}  // namespace orv::rws::addon
