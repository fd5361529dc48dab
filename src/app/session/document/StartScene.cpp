#include "app/session/document/StartScene.h"

#include "adaptor/headless/Scene.h"
#include "util/CMesh.h"

namespace orv::app {

namespace {

util::CMesh MakePlane(double size, int squares) {
  util::CMesh mesh;
  const double step = size / squares;
  for (int z = 0; z <= squares; ++z)
    for (int x = 0; x <= squares; ++x)
      mesh.vertices.emplace_back(x * step - size / 2.0, 0.0, z * step - size / 2.0);
  for (int z = 0; z < squares; ++z) {
    for (int x = 0; x < squares; ++x) {
      const int corner = z * (squares + 1) + x;
      const int below = corner + squares + 1;
      // Counter-clockwise seen from above.
      for (const int index : {corner, below, corner + 1, corner + 1, below, below + 1})
        mesh.faces.push_back(index);
    }
  }
  return mesh;
}

}  // namespace

void FillStartScene(rws::adaptor::headless::Scene& scene) {
  scene.SetFrameRate(25.0);
  scene.SetRange(0.0, 10.0);
  scene.AddNode("ground").SetMesh(MakePlane(1000.0, 50));
}

}  // namespace orv::app
