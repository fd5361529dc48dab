// The colour of a helper's mesh.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>

#include <string>

#include "adaptor/common/Geometry.h"
#include "adaptor/common/HostNode.h"

namespace orv::rws::adaptor::maya {

/// Puts the mesh into the set of the host's first shader, which all scenes have.
void ShadePlainly(const MDagPath& shape);
/// The lambert of a mesh; null where another kind of shader, or none, colours it.
MObject LambertOf(const MDagPath& shape);
/// Whether it is not the one that all scenes have.
bool IsOwnShader(const MObject& lambert);
/// Gives the mesh a lambert of its own, called like `name`. What comes back takes it away and gives
/// it again, in turn; null where the host refuses.
Exchange MakeOwnShader(const MDagPath& shape, const std::string& name);
Colour ReadLambert(const MObject& lambert);
void PutLambert(const MObject& lambert, const Colour& colour);

}  // namespace orv::rws::adaptor::maya
