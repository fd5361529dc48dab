// A model in the making: its materials, its parts, its file.
#pragma once

#include <string>
#include <vector>

#include "Shape.h"

namespace orv::app {

/// Parts that stand unturned in the world, each a node with its own shape.
class Kit {
 public:
  using Vector = Shape::Vector;

  struct Part {
    std::string name;
    int parent;
    Vector place;  ///< in the world (m)
    Shape shape;   ///< about that place
  };

  int AddMaterial(const std::string& name, double red, double green, double blue, double metallic,
                  double roughness);
  /// A material that shines by itself.
  int AddLight(const std::string& name, double red, double green, double blue);
  int AddPart(const std::string& name, const Vector& place, const Shape& shape, int parent = -1);

  /// The file's bytes (.glb). Call once.
  std::string Finish();
  /// A picture of all parts (PNG), seen from the front and the left and above.
  std::string MakePicture() const;

 private:
  GltfBuilder m_builder;
  std::vector<GltfBuilder::Material> m_materials;
  std::vector<Part> m_parts;
};

}  // namespace orv::app
