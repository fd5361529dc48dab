// The stand-in's own: which elements of a mesh an iterator goes through.
#pragma once
#include <maya/MObject.h>

#include <algorithm>
#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MElements_ {
 public:
  MElements_() = default;
  /// Those of a component; all when it is null or complete.
  explicit MElements_(const MObject& component);
  int First() const { return all ? 0 : Next(-1); }
  int Next(int at) const {
    if (all) return at + 1;
    const auto next = std::upper_bound(of.begin(), of.end(), at);
    return next == of.end() ? kEnd : *next;
  }
  unsigned int Count(unsigned int ofAll) const { return all ? ofAll : static_cast<unsigned int>(of.size()); }

 private:
  static const int kEnd = 1 << 30;
  bool all = true;
  std::vector<int> of;  // rising
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
