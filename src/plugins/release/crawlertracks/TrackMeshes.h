// What a crawler's nodes look like.
#pragma once

#include "util/CMesh.h"

namespace orv::rws::addon {

// All in the space of the node that wears them (m); closed solids, counter-clockwise from outside.

/// A flat frame in the ground plane, open in the middle.
util::CMesh CrawlerFrameMesh();
/// A wheel about X with a bar across each side, by which its turn shows.
util::CMesh CrawlerWheelMesh(double radius, double halfWidth);
/// The word FORWARD and an arrow along -Z, standing upright.
util::CMesh TrackDirectionMesh();
/// An arrow along -Z: where things fall to.
util::CMesh CrawlerGravityMesh();
/// A step as it comes: a plate with a cleat.
util::CMesh TemplateStepMesh();

}  // namespace orv::rws::addon
