#include "util/CMesh.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "support/Solid.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"
#include "util/DataChunk.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::util {
namespace {

CMesh triangle() {
  CMesh mesh;
  mesh.vertices = {{0, 0, 0}, {0.1, -0.0, 1e300}, {0, 1, 0}};
  mesh.texCoords = {{0.5, 0.5, 0}};
  mesh.faces = {0, 1, 2};
  mesh.texFaces = {0, 0, 0};
  return mesh;
}

xml::Tag tagOf(const DataChunk& chunk) {
  const auto bytes = chunk.flatten();
  xml::Tag tag("CMesh");
  tag.setText(xml::encodeBase64(bytes.data(), bytes.size()));
  return tag;
}

TEST(CMesh, StoresItsArraysUnderTheirKeys) {
  xml::Element written;
  ASSERT_EQ(0, written.loadText(triangle().toTag().toText()));
  CMesh back;
  ASSERT_TRUE(back.fromTag(written));
  EXPECT_EQ(triangle(), back);
  EXPECT_TRUE(std::signbit(back.vertices[1].y));

  const auto bytes = xml::decodeBase64(written.text());
  const DataChunk chunk(bytes.data(), bytes.size());
  std::string keys;
  for (const DataChunk& child : chunk.children) {
    keys += child.name + ":" + std::to_string(child.payload.size()) + " ";
  }
  EXPECT_EQ(
      "numVertexes:4 numTexCoords:4 numFaces:4 numTFaces:4 "
      "vertex:72 texcoord:24 face:12 tface:12 ",
      keys);
  EXPECT_TRUE(back.fromTag(CMesh().toTag()));
  EXPECT_EQ(CMesh(), back) << "an empty mesh is a mesh";
}

TEST(CMesh, ReadsTheOlderFormWithATagPerItem) {
  xml::Element old;
  ASSERT_EQ(0, old.loadText("<CMesh><vertexdata><vertex>0 0 0</vertex><vertex>\n1,0,0\n</vertex>"
                            "<other/><vertex>0 1e0 -2.5</vertex></vertexdata>"
                            "<facedata><face>0 1 2</face><face>2 1 0</face></facedata></CMesh>"));
  CMesh mesh = triangle();
  ASSERT_TRUE(mesh.fromTag(old));
  EXPECT_EQ((std::vector<Vector3<double>>{{0, 0, 0}, {1, 0, 0}, {0, 1, -2.5}}), mesh.vertices);
  EXPECT_EQ((std::vector<std::int32_t>{0, 1, 2, 2, 1, 0}), mesh.faces);
  EXPECT_TRUE(mesh.texCoords.empty());

  // A chunk that lacks a key gives way to the older form beside it. One that lacks all of the
  // texture is a mesh of its own else.
  for (const bool lacksAll : {false, true}) {
    DataChunk partial = triangle().toChunk();
    partial.children.pop_back();
    for (const int place : {5, 3, 1})
      if (lacksAll) partial.children.erase(partial.children.begin() + place);
    CMesh alone = triangle();
    EXPECT_EQ(lacksAll, alone.fromTag(tagOf(partial)));
    EXPECT_EQ(lacksAll, alone.texCoords.empty());
    EXPECT_EQ(triangle().faces, alone.faces);
    old.setText(tagOf(partial).text());
    EXPECT_TRUE(mesh.fromTag(old));
    EXPECT_EQ(6u, mesh.faces.size());
  }

  for (const char* bad : {"0 1", "0 1 2 3", "0 1 3", "0 1 x", "0 1 -1", "0 1 1.5"}) {
    *old.findChild("facedata")->children[0] = xml::Tag("face");
    old.findChild("facedata")->children[0]->setText(bad);
    EXPECT_FALSE(mesh.fromTag(old)) << bad;
    EXPECT_EQ(6u, mesh.faces.size());
  }
}

TEST(CMesh, LeavesItselfAloneWhenTheTagIsDamaged) {
  const auto damaged = [](const char* key, auto value) {
    DataChunk chunk = triangle().toChunk();
    const auto* bytes = reinterpret_cast<const unsigned char*>(&value);
    for (DataChunk& child : chunk.children)
      if (child.name == key) child.payload.assign(bytes, bytes + sizeof value);
    return tagOf(chunk);
  };
  using Face = std::array<std::int32_t, 3>;
  xml::Tag otherName = triangle().toTag();
  otherName.setName("Mesh");
  xml::Tag badText = triangle().toTag();
  badText.setText(badText.text() + "*");
  DataChunk lacking = triangle().toChunk();
  lacking.children.erase(lacking.children.begin());
  for (const xml::Tag& tag :
       {damaged("numVertexes", std::int32_t(2)), damaged("numVertexes", std::int32_t(-1)),
        damaged("numFaces", std::int32_t(0x7fffffff)), damaged("numFaces", 3.0),
        damaged("face", Face{0, 1, 3}), damaged("face", Face{0, -1, 2}),
        damaged("texcoord", std::int32_t(0)), otherName, badText, tagOf(lacking)}) {
    CMesh mesh = CMesh_Box(1, 1, 1);
    EXPECT_FALSE(mesh.fromTag(tag)) << tag.toText();
    EXPECT_EQ(CMesh_Box(1, 1, 1), mesh);
  }
  CMesh mesh;
  EXPECT_TRUE(mesh.fromTag(damaged("numFaces", std::int32_t(1)))) << "one triangle, three indices";
  EXPECT_EQ(triangle(), mesh);
}

TEST(CMesh, BuildsClosedBoxesAndCylinders) {
  EXPECT_NEAR(24.0, tests::ClosedVolume(CMesh_Box(2, 3, 4, {5, 6, 7})), 1e-9);
  EXPECT_EQ(Vector3<double>(4, 4.5, 5), CMesh_Box(2, 3, 4, {5, 6, 7}).vertices[0]);
  for (int axis = 0; axis < 3; ++axis) {
    const CMesh_Cylinder cylinder(2, 5, 7, axis);
    EXPECT_NEAR(5 * 7 * 2.0 * std::sin(2 * M_PI / 7), tests::ClosedVolume(cylinder), 1e-9);
    EXPECT_EQ(2.5, cylinder.vertices.back()[axis]);
  }
}

}  // namespace
}  // namespace orv::util
