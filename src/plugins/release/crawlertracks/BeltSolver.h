// The solver of a belt's world, which meets all joints of the chain at once.
#pragma once

#include <btBulletDynamicsCommon.h>

#include <Eigen/Dense>
#include <vector>

namespace orv::rws::addon {

/// Length of the world's steps at 25 frames per second with the usual 10 sub-frames (s).
inline constexpr double kNominalBeltStep = 0.04 / 11;
/// A part that is taken out in a nominal step, for a step of `h` (s).
double InBeltStep(double part, double h);

/// One axis of a joint. Numbers hold for steps of the world of kNominalBeltStep; for others they
/// are turned so that the axis answers the same in the same time.
struct JointAxis {
  double softness = 1.0;
  double damping = 1.0;
  double reduction = 0.2;  ///< part of the error that a step of the world takes out
  double most = 1.0;       ///< that softness times damping may come to
};

/// A joint of the belt: all six axes locked, each as soft as it is told. Bullet's own solver reads
/// neither softness nor damping, so the joint gives it no rows and BeltSolver meets it.
class BeltJoint final : public btGeneric6DofConstraint {
 public:
  /// How an iteration of the solver meets what an axis is off by.
  struct Response {
    double share = 1.0;      ///< of the speed that is off, as if the two bodies stood alone
    double reduction = 0.2;  ///< part of the error that the wanted speed takes out in a step
  };

  /// Frames as in btGeneric6DofConstraint: where the joint is in either body.
  BeltJoint(btRigidBody& a, btRigidBody& b, const btTransform& inA, const btTransform& inB)
      : btGeneric6DofConstraint(a, b, inA, inB, true) {}

  /// `h` is the length of the world's steps (s).
  void TuneRotation(int index, const JointAxis& axis, double h);
  void TuneTranslation(const JointAxis& axis, double h);
  const Response& GetRotation(int index) const { return m_rotation[index]; }
  const Response& GetTranslation() const { return m_translation; }

  void buildJacobian() override {}
  void getInfo1(btConstraintInfo1* info) override { info->m_numConstraintRows = info->nub = 0; }
  void getInfo2(btConstraintInfo2*) override {}

 private:
  Response m_translation;
  Response m_rotation[3];
};

/// Sequential impulses for contacts, as Bullet does them, and between these a direct solution for
/// the chain: with the axes as implicit dampers, the bodies' speeds solve a block-tridiagonal
/// system whose last body is bordered, as the chain is closed. Impulses that run from joint to
/// joint take more iterations than the chain has steps, so that a long belt would stretch; solved
/// at once it holds at any length, at a cost that grows with its length alone.
///
/// After published methods: sequential impulses (Catto, "Iterative dynamics with temporal
/// coherence", 2005) and errors that the wanted speeds take out in parts (Baumgarte, "Stabilization
/// of constraints and integrals of motion in dynamical systems", 1972); the chain in one piece at
/// linear cost (Baraff, "Linear-time dynamics using Lagrange multipliers", 1996), here for the
/// speeds under implicit dampers (Baraff and Witkin, "Large steps in cloth simulation", 1998), by
/// block Cholesky with a border (Golub and Van Loan, "Matrix computations"); inertia under tension
/// after the geometric stiffness of Tournier and others, "Stable constrained dynamics", 2015.
class BeltSolver final : public btSequentialImpulseConstraintSolver {
 public:
  /// A body of the chain, in order. Joints belong to the caller.
  struct Link {
    btRigidBody* body = nullptr;
    const BeltJoint* joint = nullptr;  ///< to the body before it, of the first to the last
    /// To a body that is moved from outside, which is its A.
    const BeltJoint* attachment = nullptr;
    /// Leads the body in the plane across its own X axis.
    const btRigidBody* guide = nullptr;
  };
  std::vector<Link> links;

 protected:
  btScalar solveGroupCacheFriendlySetup(btCollisionObject** bodies, int bodyCount,
                                        btPersistentManifold** manifolds, int manifoldCount,
                                        btTypedConstraint** constraints, int constraintCount,
                                        const btContactSolverInfo& info,
                                        btIDebugDraw* drawer) override;
  btScalar solveSingleIteration(int iteration, btCollisionObject** bodies, int bodyCount,
                                btPersistentManifold** manifolds, int manifoldCount,
                                btTypedConstraint** constraints, int constraintCount,
                                const btContactSolverInfo& info, btIDebugDraw* drawer) override;

 private:
  using Block = Eigen::Matrix<double, 6, 6, Eigen::RowMajor>;
  using Six = Eigen::Matrix<double, 6, 1>;
  /// Of one body; linear before angular.
  struct Row {
    Block diagonal, next, last;  ///< of the matrix, the two blocks above the diagonal
    Eigen::Matrix3d inertia;
    Six wanted;  ///< right side that the joints make
    Six right;
    // Of the joint to the body before: from either body's middle to it, what pulls there, how
    // firmly, and the tension that it carried in the latest step (N).
    Eigen::Vector3d armBefore = Eigen::Vector3d::Zero();
    Eigen::Vector3d arm = Eigen::Vector3d::Zero();
    Eigen::Vector3d wantedPull = Eigen::Vector3d::Zero();
    double resistance = 0.0;
    double tension = 0.0;
  };

  bool IsOfChain(int bodyCount) const;
  void Assemble(double h);
  void Stiffen(std::size_t index, double h);
  void NoteTensions(double h);
  void AddJoint(const BeltJoint& joint, Row* a, Row& b, Block* between, double h);
  static void Guide(const Link& link, Row& row, double h);
  void Factor();
  void Solve();

  std::vector<Row> m_rows;
};

}  // namespace orv::rws::addon
