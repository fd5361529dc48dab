// The programs that run on the graphics processor.
#pragma once

#include <string>

namespace orv::app::view {

/// What a mesh's program does; bits.
enum ShaderBits : unsigned {
  kShadeNormals = 1,  ///< light at each pixel, by interpolated normals; else each triangle is flat
  kShadeTexture = 2,
  kShadeMask = 4,  ///< leaves out what is more transparent than the cutoff
  kShadeColours = 8,
  kShadeUnlit = 16,
  kShadeId = 32,     ///< writes the instance's id instead of a colour
  kShadePlain = 64,  ///< writes one colour for all
  kShadeDense = 128  ///< light at the vertices: for triangles of a few pixels, each of which costs
                     ///< a renderer without a graphics processor as much as sixteen
};

struct ShaderSource {
  std::string vertex, fragment;
};

ShaderSource MeshShader(unsigned bits);
/// Lines of the plane X and Z, with no vertex data: two vertices a line.
ShaderSource GridShader();
/// A rectangle of one colour, with no vertex data: six vertices.
ShaderSource RectangleShader();
/// What lies just outside what the mask covers; a triangle over all, with no vertex data.
ShaderSource OutlineShader();

}  // namespace orv::app::view
