#include "adaptor/common/Geometry.h"

#include <utility>

namespace orv::rws::adaptor {

std::shared_ptr<const util::CMesh> MakeSharedMesh(util::CMesh mesh) {
  struct Holder {
    util::CMesh mesh;
  };
  // CMesh is not made to be deleted by itself.
  auto holder = std::make_shared<Holder>(Holder{std::move(mesh)});
  return {holder, &holder->mesh};
}

}  // namespace orv::rws::adaptor
