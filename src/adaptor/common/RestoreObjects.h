// The kinds of steps that a host undoes.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "adaptor/common/HostNode.h"
#include "adaptor/common/UndoUnit.h"

namespace orv::rws {
class CUndo;
}

namespace orv::rws::adaptor {

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

/// A step that is its own inverse. Serves name, tag, place, visibility, selection, mesh, colour,
/// lens and the time slider.
class CExchangeRestoreObj final : public UndoUnit {
 public:
  CExchangeRestoreObj(const char* type, Exchange exchange)
      : m_type(type), m_exchange(std::move(exchange)) {}
  void undo(bool) override { m_exchange(); }
  void redo() override { m_exchange(); }
  const char* typeName() const override { return m_type; }

 private:
  const char* m_type;
  Exchange m_exchange;
};

/// Poses and keys of any number of nodes, saved before they change and exchanged from then on.
class CPoseRestoreObj final : public UndoUnit {
 public:
  explicit CPoseRestoreObj(int serial) : m_serial(serial) {}
  /// Saves the node's pose and keys as they stand, unless this step has them.
  void Keep(HostNode& node);
  void undo(bool) override;
  void redo() override { undo(true); }
  const char* typeName() const override { return "CPoseRestoreObj"; }

 private:
  int m_serial;  ///< unique in the adaptor
  std::vector<Exchange> m_saved;
};

/// Takes a node, with all that is below it, out of the scene and out of the adaptor's known nodes,
/// and puts it back where it was. While the node is out it belongs to this object, whose end is
/// that of the host's objects: the adaptor's nodes must learn of it.
class NodePresence {
 public:
  explicit NodePresence(HostNode& node) : m_node(node) {}
  virtual ~NodePresence() = default;
  NodePresence(const NodePresence&) = delete;
  NodePresence& operator=(const NodePresence&) = delete;
  void TakeOut();
  void PutBack();

 protected:
  /// Asked of a node that stands in the scene.
  virtual void Detach() = 0;
  /// Does nothing for a node that was not detached by this object.
  virtual void Attach() = 0;

  HostNode& m_node;
};

/// A node was made.
class CCreateNodeRestoreObj final : public UndoUnit {
 public:
  explicit CCreateNodeRestoreObj(std::unique_ptr<NodePresence> presence)
      : m_presence(std::move(presence)) {}
  void undo(bool) override { m_presence->TakeOut(); }
  void redo() override { m_presence->PutBack(); }
  const char* typeName() const override { return "CCreateNodeRestoreObj"; }

 private:
  std::unique_ptr<NodePresence> m_presence;
};

/// A node is deleted: `redo` does it, the first time too.
class CNodeDeleteRestore final : public UndoUnit {
 public:
  CNodeDeleteRestore(HostNode& node, std::unique_ptr<NodePresence> presence)
      : m_node(node), m_presence(std::move(presence)) {}
  void undo(bool) override;
  void redo() override;
  const char* typeName() const override { return "CNodeDeleteRestore"; }

 private:
  HostNode& m_node;
  std::unique_ptr<NodePresence> m_presence;
};

}  // namespace orv::rws::adaptor
