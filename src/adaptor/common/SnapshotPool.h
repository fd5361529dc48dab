// Snapshots without an allocation per call.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/interface/CExtendable.h"

namespace orv::rws::adaptor {

/// Objects that are handed out and taken back; new ones are made only while none is free.
template <class T>
class SnapshotPool {
 public:
  T& Take() {
    if (m_free.empty()) {
      m_all.push_back(std::make_unique<T>());
      m_all.back()->m_pool = this;
      m_free.reserve(m_all.size());
      return *m_all.back();
    }
    T& object = *m_free.back();
    m_free.pop_back();
    return object;
  }
  void GiveBack(T& object) { m_free.push_back(&object); }

 private:
  std::vector<std::unique_ptr<T>> m_all;
  std::vector<T*> m_free;
};

/// Base of a pooled snapshot `Self` that implements `Interface`. It goes back to its pool by the
/// adaptor's bookkeeping extension, which any CExtendable answers without a cast.
template <class Interface, class Self>
class PooledSnapshot : public Interface {
 public:
  std::intptr_t Extension(int code, void*, void*) override {
    if (code != kAdaptorBookkeeping) return 0;
    if (m_inUse) {
      m_inUse = false;
      m_pool->GiveBack(static_cast<Self&>(*this));
    }
    return 1;
  }
  void GetExtensions(std::vector<int>& out) override { out.push_back(kAdaptorBookkeeping); }

 protected:
  bool m_inUse = false;  ///< a second release changes nothing

 private:
  friend class SnapshotPool<Self>;
  SnapshotPool<Self>* m_pool = nullptr;
};

}  // namespace orv::rws::adaptor
