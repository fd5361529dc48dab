// Shapes of the scene as rigs read them.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>

#include <memory>

#include "adaptor/common/Geometry.h"

namespace orv::rws::adaptor::maya {

/// The shape of this kind directly below a transform that is no stage of a construction; an invalid
/// path without one. With `hidden` such stages count too.
MDagPath FindShape(const MDagPath& transform, MFn::Type type, bool hidden = false);

/// What the function sets of a shape's kind take: what its construction gives in the present
/// context, or the shape itself where it has none.
MObject GeometryOf(const MObject& shape);
/// The mesh in triangles of the host's own making. `known` itself where it is the same, to the
/// precision of the host's points.
std::shared_ptr<const util::CMesh> ReadMesh(const MObject& geometry,
                                            const std::shared_ptr<const util::CMesh>& known);
/// A surface in triangles between points of even steps.
std::shared_ptr<const util::CMesh> ReadSurface(const MObject& geometry,
                                               const std::shared_ptr<const util::CMesh>& known);
/// Makes a mesh shape below `transform`, or fills the one at `shape`: false where the host refuses.
MObject MakeMesh(const util::CMesh& mesh, const MObject& transform);
bool FillMesh(const util::CMesh& mesh, const MDagPath& shape);

/// A line through the curve's points, as many to a span as its bend asks for. `known` itself where
/// it is the same.
std::shared_ptr<const Curve> ReadCurve(const MObject& geometry,
                                       const std::shared_ptr<const Curve>& known);

}  // namespace orv::rws::adaptor::maya
