// A glTF file from parts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "adaptor/common/Trs.h"
#include "adaptor/headless/Channel.h"
#include "app/session/models/GlbParts.h"

namespace orv::app {

/// Puts a `.glb` together in memory. All that is added gets an index, by which others refer to it;
/// -1 stands for none. Space and units are glTF's: Y up, metres, seconds.
class GltfBuilder {
 public:
  struct Material {
    std::string name;
    std::array<double, 4> colour{0.8, 0.8, 0.8, 1.0};  ///< red, green, blue, opacity: 0 to 1
    std::array<double, 3> glow{};                      ///< emitted light
    double metallic = 0.0;
    double roughness = 0.9;
    bool doubleSided = false;
    int texture = -1;  ///< of the colour, which is multiplied by it
  };
  /// Triangles, or lines, of one material: three numbers a point, two a texture coordinate.
  struct Primitive {
    std::vector<float> points;
    std::vector<float> normals;    ///< as many, or none
    std::vector<float> texCoords;  ///< or none
    std::vector<std::uint32_t> corners;
    int material = -1;
    bool lines = false;
  };
  struct Camera {
    double fieldOfView = 0.8;  ///< vertical (radians)
    double aspectRatio = 0.0;  ///< 0: left open
    double nearClip = 0.1;     ///< m
    double farClip = 0.0;      ///< m; 0: infinite
  };
  struct Node {
    std::string name;
    rws::adaptor::Trs pose;
    int parent = -1;  ///< a node that was added before
    int mesh = -1;
    int camera = -1;
  };

  GltfBuilder();

  /// A texture that shows a PNG or a JPEG.
  int AddTexture(const std::string& bytes);
  int AddMaterial(const Material& material);
  int AddMesh(const std::string& name, const std::vector<Primitive>& primitives);
  int AddCamera(const Camera& camera);
  int AddNode(const Node& node);
  /// Keys that lead straight from one to the next. `times` rise (s).
  void AddKeys(int node, rws::adaptor::headless::ChannelPath path, const std::vector<double>& times,
               const std::vector<float>& values);

  /// The file's bytes. Call once, as the last.
  std::string Finish();

 private:
  std::size_t AddView(const void* data, std::size_t size, int target);
  std::size_t AddFloats(const std::vector<float>& values, const char* type, std::size_t components,
                        int target, bool bounds);
  int Append(const char* list, nlohmann::ordered_json element);

  GlbParts m_parts;
};

/// "image/png", "image/jpeg", or empty for bytes that are neither.
std::string MimeOfImage(const std::string& bytes);

}  // namespace orv::app
