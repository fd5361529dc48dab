// Packets against the scene that they show.
#include "app/studio/view/SceneFrames.h"

#include <gtest/gtest.h>

#include <cmath>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/packet/ViewCamera.h"
#include "support/TempFolder.h"

namespace orv::tests {

namespace {

using namespace app::view;
using namespace rws::adaptor::headless;
using util::CMesh;
using util::Matrix;

CMesh Triangle(double size) {
  CMesh mesh;
  mesh.vertices = {{0, 0, 0}, {size, 0, 0}, {0, size, 0}};
  mesh.faces = {0, 1, 2};
  return mesh;
}

/// Every instance stands where its node does.
void ExpectPoses(SceneFrames& frames, const FramePacket& packet, double time) {
  for (const Instance& instance : packet.instances) {
    const Matrix<double> world = frames.FindNode(instance.id)->WorldMatrix(time);
    for (int row = 0; row < 3; ++row) {
      for (int column = 0; column < 3; ++column)
        EXPECT_NEAR(instance.pose[4 * row + column], world[4 * column + row], 1e-6);
      EXPECT_NEAR(instance.pose[4 * row + 3] + packet.origin[row], world[12 + row], 1e-4);
    }
  }
}

}  // namespace

TEST(SceneFrames, FollowPosesMeshesAndTree) {
  Scene scene;
  HeadlessAdaptor host(scene);
  SceneFrames frames(host);
  SceneNode& parent = scene.AddNode("Parent");
  parent.ReplaceKeys(ChannelPath::kTranslation, 0.0, 1.0, {0.0, 1.0},
                     {1e4, 0.0, 0.0, 1e4, 8.0, -3.0}, 0.04);
  for (int i = 0; i < 4; ++i) scene.AddNode("Equal", &parent).SetMesh(Triangle(1.0));
  scene.AddNode("Other", &parent).SetMesh(Triangle(2.0));
  FramePacket packet;
  packet.origin = {1e4, 0.0, 5.0};
  const auto write = [&](double time) {
    host.SetCurrentTime(time);
    frames.Read();
    frames.Write(0, packet);
    ExpectPoses(frames, packet, time);
  };
  for (const double time : {0.0, 0.3, 1.0}) write(time);
  EXPECT_EQ(packet.instances.size(), 5u);
  EXPECT_EQ(packet.batches.size(), 2u) << "equal meshes are one draw";
  EXPECT_NEAR(frames.GetBox(BoxOf::kAll).high.y, 10.0, 1e-9);
  std::uint64_t structure = packet.structure;
  const void* instances = packet.instances.data();
  write(0.5);
  EXPECT_EQ(packet.structure, structure);
  EXPECT_EQ(packet.instances.data(), instances);

  // What changes without a word of it.
  scene.Find("Other")->SetMesh(Triangle(1.0));
  write(0.5);
  EXPECT_EQ(packet.batches.size(), 1u);
  rws::adaptor::Trs mirrored;
  mirrored.scale = {-1.0, 1.0, 1.0};
  scene.Find("Other")->SetPose(mirrored);
  write(0.5);
  ASSERT_EQ(packet.batches.size(), 2u);
  EXPECT_NE(packet.batches[0].mirrored, packet.batches[1].mirrored);
  parent.SetVisible(false);
  write(0.5);
  EXPECT_EQ(packet.instances.size(), 0u) << "what hangs on a hidden node is hidden";
  parent.SetVisible(true);
  frames.Select({&parent});
  write(0.5);
  EXPECT_EQ(packet.batches[0].selected, packet.batches[0].count);
  scene.Detach(*scene.Find("Other"));
  write(0.5);
  EXPECT_EQ(packet.instances.size(), 4u);
}

TEST(SceneFrames, ReadWhatAFileTellsOfSurfaces) {
  TempFolder folder;
  // Two primitives: one masked and textured on both sides, one blended with colours of its corners.
  // The data: positions, texture coordinates, colours and a red PNG of one pixel.
  const std::string path = folder.Write("surfaces.gltf", R"({
    "asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0, 1, 2]}],
    "nodes": [{"mesh": 0, "name": "A"}, {"mesh": 0, "name": "B", "translation": [0, 0, 5]},
              {"name": "Empty mesh", "extras": {"rigwright": {"emptyMesh": true}}}],
    "meshes": [{"primitives": [
      {"attributes": {"POSITION": 0, "TEXCOORD_0": 1}, "material": 0},
      {"attributes": {"POSITION": 0, "COLOR_0": 2}, "material": 1},
      {"attributes": {"POSITION": 0}, "material": 2}]}],
    "materials": [
      {"alphaMode": "MASK", "alphaCutoff": 0.25, "doubleSided": true, "pbrMetallicRoughness":
        {"baseColorFactor": [0.5, 0.25, 1, 1], "baseColorTexture": {"index": 0}}},
      {"alphaMode": "BLEND", "extensions": {"KHR_materials_unlit": {}}},
      {"pbrMetallicRoughness": {"baseColorTexture": {"index": 1}}}],
    "textures": [{"source": 0, "sampler": 0}, {"source": 1}],
    "samplers": [{"wrapS": 33071, "wrapT": 33648, "magFilter": 9728}],
    "images": [{"uri": "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z8AAAAMBAQDJ/pLvAAAAAElFTkSuQmCC"},
               {"uri": "gone.png"}],
    "accessors": [
      {"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0], "max": [1, 1, 0]},
      {"bufferView": 1, "componentType": 5126, "count": 3, "type": "VEC2"},
      {"bufferView": 2, "componentType": 5121, "normalized": true, "count": 3, "type": "VEC4"}],
    "bufferViews": [{"buffer": 0, "byteLength": 36}, {"buffer": 0, "byteOffset": 0, "byteLength": 24},
                    {"buffer": 0, "byteOffset": 12, "byteLength": 12}],
    "buffers": [{"byteLength": 36, "uri": "data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})");
  HeadlessDocument document;
  std::string error;
  ASSERT_TRUE(document.Open(path, error)) << error;
  SceneFrames frames(document.GetAdaptor());
  FramePacket packet;
  frames.Read();
  frames.Write(0, packet);
  const std::vector<std::string> odd = frames.TakeOdd();
  ASSERT_EQ(odd.size(), 1u) << "told once, and the rest is shown";
  EXPECT_NE(odd[0].find("gone.png"), std::string::npos) << odd[0];
  ASSERT_EQ(packet.batches.size(), 1u);
  EXPECT_EQ(packet.batches[0].count, 2u);
  const Material& masked = packet.materials[packet.batches[0].material];
  EXPECT_TRUE(masked.doubleSided && masked.alpha == AlphaMode::kMask && masked.cutoff == 0.25f);
  EXPECT_EQ(masked.colour, (std::array<float, 4>{0.5f, 0.25f, 1.0f, 1.0f}));
  ASSERT_TRUE(masked.texture);
  EXPECT_EQ(masked.texture->pixels, (std::vector<std::uint8_t>{255, 0, 0, 255}));
  EXPECT_TRUE(masked.texture->wrapU == Texture::Wrap::kClamp && !masked.texture->smooth);
  EXPECT_EQ(packet.batches[0].mesh->texCoords.size(), 3u);
  ASSERT_EQ(packet.blended.size(), 2u);
  EXPECT_EQ(packet.blended[0].mesh->colours[0], (MeshData::Bytes4{0, 0, 128, 63}));
  EXPECT_TRUE(packet.materials[packet.blended[0].material].unlit);
  // Farthest first, wherever the eye is.
  for (const double z : {10.0, -10.0}) {
    packet.origin = {0.0, 0.0, z};
    frames.Read();
    frames.Write(0, packet);
    const auto distance = [&](const Batch& batch) {
      return std::abs(packet.instances[batch.first].pose[11]);
    };
    EXPECT_GT(distance(packet.blended[0]), distance(packet.blended[1]));
  }
}

}  // namespace orv::tests
