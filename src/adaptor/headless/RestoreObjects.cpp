#include "adaptor/headless/RestoreObjects.h"

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "core/interface/CUndo.h"

namespace orv::rws::adaptor::headless {

CUndoWrapper::~CUndoWrapper() {
  m_step->Destroy();
}

void CUndoWrapper::undo(bool keep) {
  m_step->Undo(keep);
}

void CUndoWrapper::redo() {
  m_step->Redo();
}

void CPoseRestoreObj::Keep(HeadlessNode& node) {
  if (node.m_keptSerial == m_serial || !node.m_sceneNode) return;
  node.m_keptSerial = m_serial;
  m_saved.emplace_back(&node, node.m_sceneNode->animation());
}

void CPoseRestoreObj::undo(bool) {
  for (auto& [node, saved] : m_saved) {
    if (!node->m_sceneNode) continue;
    NodeAnimation now = node->m_sceneNode->animation();
    node->m_sceneNode->setAnimation(saved);
    saved = std::move(now);
  }
}

CParentRestoreObj::CParentRestoreObj(HeadlessNode& node) : m_node(node) {
  Save();
}

void CParentRestoreObj::Save() {
  m_parent = m_node.GetParentNode();
  m_index = m_node.m_sceneNode->indexInParent();
  m_animation = m_node.m_sceneNode->animation();
  m_home = m_node.m_sceneNode->home();
}

void CParentRestoreObj::undo(bool) {
  if (!m_node.IsValid()) return;
  SceneNode* const place = m_parent ? m_parent->m_sceneNode : nullptr;
  if (m_parent && !m_parent->IsValid()) return;
  const std::size_t index = m_index;
  const NodeAnimation animation = m_animation;
  const std::optional<std::string> home = m_home;
  Save();
  SceneNode& node = *m_node.m_sceneNode;
  if (!node.scene()->move(node, place, index)) return;
  node.setAnimation(animation);
  node.setHome(home);
}

NodePresence::~NodePresence() {
  if (m_detached) m_node.m_adaptor.Forget(*m_detached);
}

void NodePresence::TakeOut() {
  m_node.m_adaptor.Delist(m_node);
  // A node that went with its parent is only known no longer.
  if (!m_node.IsValid()) return;
  SceneNode& node = *m_node.m_sceneNode;
  m_parent = m_node.GetParentNode();
  m_index = node.indexInParent();
  m_detached = node.scene()->detach(node);
}

void NodePresence::PutBack() {
  if (m_detached) {
    SceneNode* const place = m_parent && m_parent->IsValid() ? m_parent->m_sceneNode : nullptr;
    m_node.m_adaptor.GetScene().attach(std::move(m_detached), place, m_index);
  }
  if (m_node.m_sceneNode) m_node.m_adaptor.Enlist(m_node);
}

void CNodeDeleteRestore::undo(bool) {
  m_presence.PutBack();
  m_node.m_adaptor.MarkRebuild(m_node.GetOwner(), false);
}

void CNodeDeleteRestore::redo() {
  m_node.m_adaptor.MarkRebuild(m_node.GetOwner(), true);
  m_presence.TakeOut();
}

}  // namespace orv::rws::adaptor::headless
