/// What the nodes of the four-wheeler look like: plain low-poly meshes, made by their constructors.
#pragma once

#include "util/CMesh.h"

namespace orv::rws::addon {

// All are in the space of the node that wears them: X right, Y up, Z backward, in units of the
// node's scale. Each consists of closed solids, counter-clockwise seen from outside, which may
// reach into each other; there are no texture coordinates. Making one needs no host.

/// An open-windowed car around a wheelbase of 1, its origin above the middle between the wheels:
/// front wheels at z -0.5, back ones at 0.5, at x -0.29 and 0.29, of radius 0.1235, standing on
/// y -0.2. The wheels are no part of it, only the arches that they turn in.
class CMesh_CarBody : public util::CMesh {
 public:
  CMesh_CarBody();
};

/// A wheel about the X axis, of radius 1 and width 1. One of its spokes is broad and there is a
/// valve, so that its spin shows.
class CMesh_CarWheel : public util::CMesh {
 public:
  CMesh_CarWheel();
};

/// A thin ring round a wheel of radius 1, about the X axis.
class CMesh_WheelRelocator : public util::CMesh {
 public:
  CMesh_WheelRelocator();
};

/// Three crossing bars of length 0.3.
class CMesh_WheelCenter : public util::CMesh {
 public:
  CMesh_WheelCenter();
};

/// A strut of length 1 along Y, its middle at the origin.
class CMesh_WheelSuspension : public util::CMesh {
 public:
  CMesh_WheelSuspension();
};

/// A flat frame of 0.7 by 1.2 on the ground plane.
class CMesh_ChassisRelocator : public util::CMesh {
 public:
  CMesh_ChassisRelocator();
};

/// A disc with a bar along X, the line that the car's turns are centred on.
class CMesh_TurnBase : public util::CMesh {
 public:
  CMesh_TurnBase();
};

/// An arrow of length 0.3 from the origin down Y.
class CMesh_GravityDirection : public util::CMesh {
 public:
  CMesh_GravityDirection();
};

/// An arrow of length 0.3 from the origin up Y.
class CMesh_ExternalForce : public util::CMesh {
 public:
  CMesh_ExternalForce();
};

/// A flat frame of 0.6 by 1 on the ground plane, with a nose that points forward.
class CMesh_CarBodyBase : public util::CMesh {
 public:
  CMesh_CarBodyBase();
};

/// A flat ring of radius 0.2 with a cross, on the ground plane.
class CMesh_Target : public util::CMesh {
 public:
  CMesh_Target();
};

/// A wheel of radius 0.07 with three spokes, turning about Z.
class CMesh_SteeringWheel : public util::CMesh {
 public:
  CMesh_SteeringWheel();
};

}  // namespace orv::rws::addon
