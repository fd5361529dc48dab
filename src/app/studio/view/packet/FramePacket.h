// Everything that one picture shows.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "app/studio/view/packet/Lines.h"
#include "app/studio/view/packet/MeshData.h"
#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::app::view {

/// Pixels of four bytes, rows from the top; red, green and blue as a screen shows them (not
/// linear). Immutable once it is shared.
struct Texture {
  enum class Wrap { kRepeat, kMirror, kClamp };

  int width = 0, height = 0;
  std::vector<std::uint8_t> pixels;
  Wrap wrapU = Wrap::kRepeat, wrapV = Wrap::kRepeat;
  bool smooth = true;
  std::uint64_t id = MeshData::NextId();
};

enum class AlphaMode { kOpaque, kMask, kBlend };

struct Material {
  std::array<float, 4> colour{1.0f, 1.0f, 1.0f, 1.0f};  ///< linear, with alpha
  std::shared_ptr<const Texture> texture;               ///< null for none
  AlphaMode alpha = AlphaMode::kOpaque;
  float cutoff = 0.5f;  ///< of kMask: what has less alpha is not there
  bool doubleSided = false;
  bool unlit = false;  ///< shows its colour whatever the light

  friend bool operator==(const Material& a, const Material& b) {
    return a.colour == b.colour && a.texture == b.texture && a.alpha == b.alpha &&
           a.cutoff == b.cutoff && a.doubleSided == b.doubleSided && a.unlit == b.unlit;
  }
};

/// One mesh at one place, as it is uploaded.
struct Instance {
  /// First three rows of the matrix that takes a column of the mesh's space to the packet's: the
  /// world's axes, with FramePacket::origin as origin.
  float pose[12];
  std::uint8_t colour[4];  ///< linear; times the material's
  std::uint32_t id;        ///< what a pick gives; above 0
};
static_assert(sizeof(Instance) == 56);

/// Equal meshes of one material, one draw.
struct Batch {
  std::shared_ptr<const MeshData> mesh;
  std::uint32_t material = 0;
  std::uint32_t first = 0, count = 0;  ///< of the instances
  std::uint32_t selected = 0;          ///< so many of them, which come first, are outlined
  bool mirrored = false;               ///< the poses turn the winding round
  bool ofRig = false;                  ///< of a rig, or hung on one
};

enum class Shading {
  kPlain,
  kWireOverPlain,
  kXRay  ///< what is of rigs shines through the rest
};

struct PacketCamera {
  std::array<float, 16> view{};        ///< from the packet's space, column by column
  std::array<float, 16> projection{};  ///< of OpenGL's clip space, column by column
};

/// The plane of the world's X and Z.
struct GridLook {
  bool visible = true;
  double step = 1.0;             ///< m from line to line
  double focus[2] = {0.0, 0.0};  ///< x and z of the world that it lies around
  float fade = 1.0f;             ///< strength of the lines between each ten, [0, 1]
};

/// A part of the picture, from the bottom left corner, 0 to 1 of width and height.
struct Gate {
  bool visible = false;
  float left = 0.0f, bottom = 0.0f, width = 1.0f, height = 1.0f;
};

/// What stands behind all else.
struct BackdropLook {
  std::shared_ptr<const Texture> picture;  ///< null for nothing
  float opacity = 1.0f;
};

using LinearColour = std::array<float, 3>;

/// Knows no toolkit and no scene. Whoever makes it changes it between pictures only.
struct FramePacket {
  util::Vector3<double> origin;  ///< of the packet's space in the world (m)
  std::vector<Instance> instances;
  std::vector<Material> materials;
  std::vector<Batch> batches;            ///< opaque and masked
  std::vector<Batch> ghosts;             ///< seen through, over all else, and not picked
  std::vector<Instance> ghostInstances;  ///< of `ghosts`, whose `first` counts from here
  std::vector<Batch> blended;            ///< one instance each, farthest first
  std::uint64_t structure = 0;           ///< another number when other meshes or textures are used
  std::vector<const LineSet*> lines;     ///< their owners keep them until the next picture
  PacketCamera camera;
  util::Vector3<double> light{0.35, 0.85, 0.4};  ///< towards it, in the world
  Shading shading = Shading::kPlain;
  GridLook grid;
  Gate gate;
  BackdropLook backdrop;
  // As a screen shows them.
  LinearColour background{0.22f, 0.23f, 0.25f};
  LinearColour gridColour{0.45f, 0.46f, 0.48f};
  LinearColour outline{1.0f, 0.62f, 0.1f};
  bool isFramed = false;  ///< a line round it, in the colour of outlines
};

}  // namespace orv::app::view
