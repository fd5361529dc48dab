// Base of objects that form a tree and own their children.
#pragma once

#include <algorithm>
#include <vector>

namespace orv::util {

/// `T` derives from `Composite_Dynamic<T>`. A composite owns its children and destroys them, last
/// first, through `destroyNode`. The hooks are empty by default; while a node is in its destructor
/// its own overrides of them no longer run, those of its parent do.
template <class T>
class Composite_Dynamic {
 public:
  Composite_Dynamic() = default;
  Composite_Dynamic(const Composite_Dynamic&) = delete;
  Composite_Dynamic& operator=(const Composite_Dynamic&) = delete;

  /// Destroys the owning object: a concrete class forwards to its `destroy`.
  virtual void destroyNode() = 0;
  virtual void reservedHook1() {}
  virtual void reservedHook2() {}
  /// Called on the child before it leaves its parent.
  virtual void childRemoving() {}
  /// Called on the child after it has left.
  virtual void childRemoved() {}
  /// Called on the parent; `index` is the child's position.
  virtual void onChildAdded(T* /*child*/, int /*index*/) {}
  /// Called on the parent; `index` is the position that the child held.
  virtual void onChildRemoved(T* /*child*/, int /*index*/) {}
  virtual ~Composite_Dynamic();

  const std::vector<T*>& children() const { return m_children; }  ///< in tree order
  T* parent() const { return m_parent; }                          ///< null at the root
  int childCount() const { return static_cast<int>(m_children.size()); }
  /// Null when `i` is out of range.
  T* child(int i) const { return i >= 0 && i < childCount() ? m_children[i] : nullptr; }
  /// Position of `node` among the children, or -1.
  int childIndex(const Composite_Dynamic* node) const {
    for (int i = 0; i < childCount(); ++i)
      if (static_cast<const Composite_Dynamic*>(m_children[i]) == node) return i;
    return -1;
  }

  /// Takes ownership of `child`, which leaves the parent that it had. Null is ignored.
  void addChild(T* child) { insertChild(child, childCount()); }
  /// The same at a position, which is brought into range.
  void insertChild(T* child, int index) {
    if (!child) return;
    Composite_Dynamic* node = child;
    if (node->m_parent) static_cast<Composite_Dynamic*>(node->m_parent)->removeChild(child);
    index = std::clamp(index, 0, childCount());
    m_children.insert(m_children.begin() + index, child);
    node->m_parent = static_cast<T*>(this);
    onChildAdded(child, index);
  }
  /// Takes `child` out of the tree; the caller owns it from then on. False when it is no child.
  bool removeChild(T* child) {
    const int index = childIndex(child);
    if (index < 0) return false;
    removeAt(index);
    return true;
  }

 protected:
  std::vector<T*> m_children;
  T* m_parent = nullptr;

 private:
  void removeAt(int index) {
    T* child = m_children[index];
    Composite_Dynamic* node = child;
    node->childRemoving();
    index = childIndex(node);  // the hook may have changed the list
    if (index < 0) return;
    m_children.erase(m_children.begin() + index);
    node->m_parent = nullptr;
    node->childRemoved();
    onChildRemoved(child, index);
  }
};

template <class T>
Composite_Dynamic<T>::~Composite_Dynamic() {
  if (m_parent) {
    Composite_Dynamic* parent = m_parent;
    const int index = parent->childIndex(this);
    if (index >= 0) parent->removeAt(index);
  }
  while (!m_children.empty()) {
    const int count = childCount();
    Composite_Dynamic* last = m_children.back();
    last->destroyNode();
    // A child that outlives this (its owner is someone else) must not keep a dead parent.
    if (childCount() == count) removeAt(count - 1);
  }
}

}  // namespace orv::util
