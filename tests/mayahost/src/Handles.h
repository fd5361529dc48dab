// How long values live that computations refer to.
#pragma once
#include <memory>
#include <vector>

namespace mayahost {
struct HandleState;
/// While it lives, references out of handles hold, also of handles that are gone; then what was written is stored.
class HandlesKept {
 public:
  HandlesKept();
  ~HandlesKept();
  HandlesKept(const HandlesKept&) = delete;
  std::vector<std::shared_ptr<HandleState>> states;

 private:
  HandlesKept* m_before;
};
}  // namespace mayahost
