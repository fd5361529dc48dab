// A wheel: its contact with the ground, and its node.
#pragma once

#include "plugins/common/RigSceneNode.h"
#include "plugins/release/4wheelerextended/CCarCam.h"
#include "plugins/release/4wheelerextended/CGravityDirectionNode.h"
#include "plugins/release/4wheelerextended/RayFan.h"

namespace orv::rws::addon {

/// The contact runs once a frame, after the body has moved: rays from above the wheel find the
/// height at which it rests, more rays round the wheel lift it over edges. World space, metres; the
/// wheel moves along its suspension line, the up axis of its relocator, and a drop counts from the
/// wheel's place at rest, downwards.
class CWheelNode : public RigMeshNode {
 public:
  using Vector = util::Vector3<double>;
  using Quat = util::Quat<double>;

  /// All but `index` belong to the rig.
  CWheelNode(CCamera& rig, CCarCam& car, const CarSettings& settings, CGravityDirectionNode& ground,
             RayFan& fan, const RigSceneNode& chassis, const RigSceneNode& relocator, int index);

  /// Notes where the wheel stands before the car moves.
  void BeginFrame();
  /// The contact step of the frame at `time`.
  void Update(double time);
  using RigMeshNode::Update;
  /// Writes the node for the frame of `length` seconds from `before` to `time`, and further keys
  /// within the frame where the wheel spins so far that an interpolation would turn it backwards.
  void Finish(double before, double time, double length);
  /// Places the node where its relocator is (no take).
  void StandAtRest(double time);
  /// Where the wheel's bottom stands when its car has turned by `turn` from where its nodes are at
  /// `time`, and how far below its place at rest that is (m, positive = down). No state is changed
  /// but that of the contact.
  Vector FindStand(double time, const Quat& turn, double& drop);
  /// Stands the wheel there, as the last FindStand left it, and places the node.
  void Stand(double time, double drop);

  /// Fast or not, a single ray at the ground: the first surface that is hit.
  bool CastRay(const Vector& origin, const Vector& direction, double maxDistance, double& distance,
               Vector& normal) const;

  const Vector& GetNormal() const { return m_normal; }
  const Vector& GetHitPoint() const { return m_hitPoint; }
  /// Rotation of the relocator in this frame.
  const Quat& GetRelocatorRotation() const { return m_line.rotation; }

 private:
  /// Where the wheel may be in this frame.
  struct Line {
    Vector rest;  ///< centre at rest
    Vector x, y, z;
    Vector relocator;  ///< its origin
    Quat rotation;
    double radius = 0.0;
    double reach = 0.0;  ///< longest drop of a wheel on the ground
    Vector At(double drop) const { return rest - y * drop; }
  };

  void FindLine(double time, const Quat& turn = {});
  Vector GroundAt(double drop) const;
  double StandOnPlane();
  bool CastCentreRay(int surface, double start, double lastDrop, double lastY, GroundHit& hit,
                     double& drop) const;
  double FindDrop(double lastDrop, double lastY);
  double CastExtraRays(double drop);
  double CastRaysRound(double drop);
  bool CastExtraRay(int surface, double drop, const Vector& side, const RayFan::Angle& angle,
                    double& lift);
  void MoveTo(double drop);
  double RespondToEdges(double drop, double lastDrop) const;
  double HeightOver(const Vector& point, const Vector& up) const;
  double FindClosingSpeed() const;
  double Release(double drop);
  double GetDt() const;
  util::Matrix<double> Pose(const Quat& rotation, const Vector& centre) const;
  CarWheelState& State() const { return m_car.state.wheels[m_index]; }

  CCarCam& m_car;
  const CarSettings& m_settings;
  CGravityDirectionNode& m_ground;
  RayFan& m_fan;
  const RigSceneNode& m_relocator;
  const int m_index;

  Line m_line;
  double m_groundDrop = 0.0;  ///< of the wheel if it stood on the ground below (m)
  Vector m_normal{0.0, 1.0, 0.0};
  Vector m_hitPoint;
  Vector m_lastCentre;
  double m_lastYaw = 0.0;  ///< rad
};

}  // namespace orv::rws::addon
