// The kinds of steps that the headless host undoes.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "adaptor/common/UndoUnit.h"
#include "adaptor/headless/SceneNode.h"

namespace orv::rws {
class CUndo;
}

namespace orv::rws::adaptor::headless {

class HeadlessAdaptor;
class HeadlessNode;

/// A step of a rig or of the core, owned.
class CUndoWrapper final : public UndoUnit {
 public:
  explicit CUndoWrapper(CUndo* step) : m_step(step) {}
  ~CUndoWrapper() override;
  void undo(bool keep) override;
  void redo() override;
  const char* typeName() const override { return "CUndoWrapper"; }

 private:
  CUndo* m_step;
};

/// A step that is its own inverse: each call exchanges what was saved with what stands in the
/// scene. Serves name, tag, visibility, selection, mesh, colour, lens and the time slider.
class CExchangeRestoreObj final : public UndoUnit {
 public:
  CExchangeRestoreObj(const char* type, std::function<void()> exchange)
      : m_type(type), m_exchange(std::move(exchange)) {}
  void undo(bool) override { m_exchange(); }
  void redo() override { m_exchange(); }
  const char* typeName() const override { return m_type; }

 private:
  const char* m_type;
  std::function<void()> m_exchange;
};

/// Poses and keys of any number of nodes, saved before they change and exchanged from then on.
class CPoseRestoreObj final : public UndoUnit {
 public:
  explicit CPoseRestoreObj(int serial) : m_serial(serial) {}
  /// Saves the node's pose and keys as they stand, unless this step has them.
  void Keep(HeadlessNode& node);
  void undo(bool) override;
  void redo() override { undo(true); }
  const char* typeName() const override { return "CPoseRestoreObj"; }

 private:
  int m_serial;  ///< unique in the adaptor
  std::vector<std::pair<HeadlessNode*, NodeAnimation>> m_saved;
};

/// Place of a node in the tree, with its pose, keys and home; exchanged.
class CParentRestoreObj final : public UndoUnit {
 public:
  explicit CParentRestoreObj(HeadlessNode& node);
  void undo(bool) override;
  void redo() override { undo(true); }
  const char* typeName() const override { return "CParentRestoreObj"; }

 private:
  void Save();

  HeadlessNode& m_node;
  HeadlessNode* m_parent = nullptr;
  std::size_t m_index = 0;
  NodeAnimation m_animation;
  std::optional<std::string> m_home;
};

/// Takes a node, with all that is below it, out of the scene and out of the adaptor's known nodes,
/// and puts it back where it was. While the node is out it belongs to this object.
class NodePresence {
 public:
  explicit NodePresence(HeadlessNode& node) : m_node(node) {}
  ~NodePresence();
  NodePresence(const NodePresence&) = delete;
  NodePresence& operator=(const NodePresence&) = delete;
  void TakeOut();
  void PutBack();

 private:
  HeadlessNode& m_node;
  std::unique_ptr<SceneNode> m_detached;
  HeadlessNode* m_parent = nullptr;
  std::size_t m_index = 0;  ///< among its siblings
};

/// A node was made.
class CCreateNodeRestoreObj final : public UndoUnit {
 public:
  explicit CCreateNodeRestoreObj(HeadlessNode& node) : m_presence(node) {}
  void undo(bool) override { m_presence.TakeOut(); }
  void redo() override { m_presence.PutBack(); }
  const char* typeName() const override { return "CCreateNodeRestoreObj"; }

 private:
  NodePresence m_presence;
};

/// A node is deleted: `redo` does it, the first time too.
class CNodeDeleteRestore final : public UndoUnit {
 public:
  explicit CNodeDeleteRestore(HeadlessNode& node) : m_node(node), m_presence(node) {}
  void undo(bool) override;
  void redo() override;
  const char* typeName() const override { return "CNodeDeleteRestore"; }

 private:
  HeadlessNode& m_node;
  NodePresence m_presence;
};

}  // namespace orv::rws::adaptor::headless
