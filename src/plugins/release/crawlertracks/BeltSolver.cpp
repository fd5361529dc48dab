#include "plugins/release/crawlertracks/BeltSolver.h"

#include <algorithm>
#include <cmath>

namespace orv::rws::addon {

using Vector3 = Eigen::Vector3d;
using Matrix3 = Eigen::Matrix3d;

namespace {

/// How firmly a guide leads: share of the speed across it that it takes out, and part of the way
/// back to its middle that a step of the world covers. Enough that a belt stays on its wheels on a
/// side slope.
constexpr double kGuideShare = 0.1;
constexpr double kGuideReduction = 0.1;
constexpr double kMaxLimitForce = 1000000.0;
constexpr double kJointBounce = 0.01;
/// A share nearer to 1 than this is rigid enough and leaves the matrix well conditioned.
constexpr double kMostShare = 1.0 - 1e-5;

Vector3 ToEigen(const btVector3& v) {
  return {v.x(), v.y(), v.z()};
}
btVector3 ToBullet(const Vector3& v) {
  return {v.x(), v.y(), v.z()};
}
Matrix3 ToEigen(const btMatrix3x3& m) {
  Matrix3 out;
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k) out(i, k) = m[i][k];
  return out;
}
Matrix3 Cross(const Vector3& v) {
  Matrix3 m;
  m << 0, -v.z(), v.y(), v.z(), 0, -v.x(), -v.y(), v.x(), 0;
  return m;
}

/// The turn from `a` to `b`: its axis, as long as its sine up to a right angle and 1 beyond.
Vector3 Turn(const btMatrix3x3& a, const btMatrix3x3& b) {
  // Half the sum of the crosses of the axes is the axis times the sine.
  const btVector3 sum = a.getColumn(0).cross(b.getColumn(0)) +
                        a.getColumn(1).cross(b.getColumn(1)) + a.getColumn(2).cross(b.getColumn(2));
  const Vector3 sine = ToEigen(sum) * 0.5;
  const double cosine = (a.getColumn(0).dot(b.getColumn(0)) + a.getColumn(1).dot(b.getColumn(1)) +
                         a.getColumn(2).dot(b.getColumn(2)) - 1.0) /
                        2.0;
  const double length = sine.norm();
  return cosine < 0.0 && length > 0.0 ? Vector3(sine / length) : sine;
}

/// Puts the Cholesky factor into the lower half of a symmetric block, with the reciprocals of its
/// diagonal, by which the substitutions then multiply.
template <class Block>
void Decompose(Block& block) {
  for (int i = 0; i < 6; ++i) {
    for (int k = 0; k < i; ++k) {
      double sum = block(i, k);
      for (int m = 0; m < k; ++m) sum -= block(i, m) * block(k, m);
      block(i, k) = sum * block(k, k);
    }
    double sum = block(i, i);
    for (int m = 0; m < i; ++m) sum -= block(i, m) * block(i, m);
    block(i, i) = 1.0 / std::sqrt(sum);
  }
}

/// Applies the inverse of a factor to the columns of `right`.
template <class Block, class Columns>
void Forward(const Block& factor, Columns& right) {
  for (int i = 0; i < 6; ++i) {
    for (int k = 0; k < i; ++k) right.row(i) -= factor(i, k) * right.row(k);
    right.row(i) *= factor(i, i);
  }
}

/// The same with the factor's transpose.
template <class Block, class Columns>
void Backward(const Block& factor, Columns& right) {
  for (int i = 5; i >= 0; --i) {
    for (int k = i + 1; k < 6; ++k) right.row(i) -= factor(k, i) * right.row(k);
    right.row(i) *= factor(i, i);
  }
}

BeltJoint::Response ResponseOf(const JointAxis& axis, double h) {
  constexpr double kMostReduction = 0.8;
  const double share =
      std::clamp(axis.softness * axis.damping, 1e-6, std::min(axis.most, kMostShare));
  const double reduction = std::clamp(axis.reduction / axis.damping, 0.0, kMostReduction);
  return {std::min(InBeltStep(share, h), kMostShare),
          std::min(InBeltStep(reduction, h), kMostReduction)};
}

/// What the end of an arm, in a step of `h`, is slower than along its tangent.
Vector3 Bow(const btVector3& spin, const Vector3& arm, double h) {
  const Vector3 turn = ToEigen(spin) * h, aside = turn.cross(arm);
  const double square = turn.squaredNorm();
  // Of Rodrigues' formula, the sine's part and the cosine's.
  return (aside * (-square / 6 * (1 - square / 20)) +
          turn.cross(aside) * (0.5 - square / 24 * (1 - square / 30))) /
         h;
}

/// Resistance of an axis whose two bodies, standing alone, would give way by `mobility`: it takes
/// out the share of their speed.
double Resistance(double share, double mobility) {
  return share / (1.0 - share) / mobility;
}

}  // namespace

double InBeltStep(double part, double h) {
  return 1.0 - std::pow(1.0 - part, h / kNominalBeltStep);
}

void BeltJoint::TuneRotation(int index, const JointAxis& axis, double h) {
  btRotationalLimitMotor& motor = *getRotationalLimitMotor(index);
  motor.m_loLimit = motor.m_hiLimit = 0.0;
  motor.m_maxLimitForce = kMaxLimitForce;
  motor.m_damping = axis.damping;
  motor.m_limitSoftness = axis.softness;
  motor.m_stopERP = axis.reduction;
  motor.m_bounce = kJointBounce;
  m_rotation[index] = ResponseOf(axis, h);
}

void BeltJoint::TuneTranslation(const JointAxis& axis, double h) {
  btTranslationalLimitMotor& motor = *getTranslationalLimitMotor();
  motor.m_lowerLimit = motor.m_upperLimit = btVector3(0, 0, 0);
  motor.m_limitSoftness = axis.softness;
  motor.m_damping = axis.damping;
  m_translation = ResponseOf(axis, h);
}

// --- the matrix ---

/// Adds JᵀWJ and JᵀWc of a joint. Rows of J: the speed of b's point from a's, then the spin of b
/// from a's. Without `a` that body's speed is known.
void BeltSolver::AddJoint(const BeltJoint& joint, Row* a, Row& b, Block* between, double h) {
  const btRigidBody &bodyA = joint.getRigidBodyA(), &bodyB = joint.getRigidBodyB();
  const btTransform frameA = bodyA.getWorldTransform() * joint.getFrameOffsetA();
  const btTransform frameB = bodyB.getWorldTransform() * joint.getFrameOffsetB();
  const Vector3 armA = ToEigen(frameA.getOrigin() - bodyA.getWorldTransform().getOrigin());
  const Vector3 armB = ToEigen(frameB.getOrigin() - bodyB.getWorldTransform().getOrigin());
  const Vector3 gap = ToEigen(frameB.getOrigin() - frameA.getOrigin());
  const Vector3 error = Turn(frameA.getBasis(), frameB.getBasis());

  const btMatrix3x3 inverse = bodyA.getInvInertiaTensorWorld() + bodyB.getInvInertiaTensorWorld();
  const BeltJoint::Response& pull = joint.GetTranslation();
  const double resistance = Resistance(pull.share, bodyA.getInvMass() + bodyB.getInvMass());
  Matrix3 turnResistance = Matrix3::Zero();
  Vector3 wantedTurn = Vector3::Zero();
  for (int i = 0; i < 3; ++i) {
    const btVector3 axis = frameA.getBasis().getColumn(i);
    const BeltJoint::Response& response = joint.GetRotation(i);
    const double weight = Resistance(response.share, axis.dot(inverse * axis));
    const Vector3 along = ToEigen(axis);
    turnResistance += weight * along * along.transpose();
    wantedTurn -= along * (weight * response.reduction / h * error.dot(along));
  }
  const Vector3 bow =
      Bow(bodyB.getAngularVelocity(), armB, h) - Bow(bodyA.getAngularVelocity(), armA, h);
  const Vector3 wantedPull = (gap * (pull.reduction / h) + bow) * -resistance;

  // Of the points' arms, [l]ᵀ[r] is (l·r) 1 - r lᵀ.
  const auto block = [&](const Vector3& left, const Vector3& right) {
    Block out;
    out.topLeftCorner<3, 3>() = Matrix3::Identity() * resistance;
    out.topRightCorner<3, 3>() = Cross(right * -resistance);
    out.bottomLeftCorner<3, 3>() = Cross(left * resistance);
    out.bottomRightCorner<3, 3>() = turnResistance - right * (left * resistance).transpose();
    out.diagonal().tail<3>().array() += resistance * left.dot(right);
    return out;
  };
  b.diagonal += block(armB, armB);
  b.wanted.head<3>() += wantedPull;
  b.wanted.tail<3>() += wantedTurn + armB.cross(wantedPull);
  if (a) {
    b.armBefore = armA;
    b.arm = armB;
    b.wantedPull = wantedPull;
    b.resistance = resistance;
    a->diagonal += block(armA, armA);
    a->wanted.head<3>() -= wantedPull;
    a->wanted.tail<3>() -= wantedTurn + armA.cross(wantedPull);
    *between -= block(armA, armB);
    return;
  }
  Six known;
  known << ToEigen(bodyA.getInterpolationLinearVelocity()),
      ToEigen(bodyA.getInterpolationAngularVelocity());
  b.wanted += block(armB, armA) * known;
}

/// Adds the row that leads a body in the middle plane of its guide.
void BeltSolver::Guide(const Link& link, Row& row, double h) {
  const btTransform& at = link.guide->getWorldTransform();
  const btVector3 across = at.getBasis().getColumn(0);
  const btVector3 arm = link.body->getWorldTransform().getOrigin() - at.getOrigin();
  const btVector3 speed = link.guide->getInterpolationLinearVelocity() +
                          link.guide->getInterpolationAngularVelocity().cross(arm);
  const double resistance = Resistance(InBeltStep(kGuideShare, h), link.body->getInvMass());
  const Vector3 x = ToEigen(across);
  row.diagonal.topLeftCorner<3, 3>() += resistance * x * x.transpose();
  row.wanted.head<3>() +=
      x * (resistance * (across.dot(speed) - InBeltStep(kGuideReduction, h) * across.dot(arm) / h));
}

/// A joint under tension turns its step back into line, the faster the tighter the belt. Steps of
/// the world that are long beside that swing would blow it up; inertia that grows with the tension
/// keeps the swing below what they can follow.
void BeltSolver::Stiffen(std::size_t index, double h) {
  constexpr double kShare = 0.5;  // of the swing's stiffness; above a quarter it is stable
  Row& row = m_rows[index];
  const Row& next = m_rows[(index + 1) % m_rows.size()];
  const double stiffness = row.tension * row.arm.norm() + next.tension * next.armBefore.norm();
  const Vector3 along = ToEigen(links[index].body->getWorldTransform().getBasis().getColumn(2));
  row.inertia += (Matrix3::Identity() - along * along.transpose()) * (kShare * h * h * stiffness);
}

void BeltSolver::NoteTensions(double h) {
  for (std::size_t i = 0; i < links.size(); ++i) {
    if (!links[i].joint) continue;
    Row& row = m_rows[i];
    const Row& before = m_rows[(i + links.size() - 1) % links.size()];
    const Vector3 apart = row.right.head<3>() + row.right.tail<3>().cross(row.arm) -
                          before.right.head<3>() - before.right.tail<3>().cross(row.armBefore);
    row.tension = (row.wantedPull - apart * row.resistance).norm() / h;
  }
}

void BeltSolver::Assemble(double h) {
  const std::size_t count = links.size();
  if (m_rows.size() != count) m_rows.assign(count, Row());
  for (std::size_t i = 0; i < count; ++i) {
    Row& row = m_rows[i];
    const btRigidBody& body = *links[i].body;
    row.inertia = ToEigen(body.getInvInertiaTensorWorld()).inverse();
    Stiffen(i, h);
    row.diagonal.setZero();
    row.diagonal.topLeftCorner<3, 3>() = Matrix3::Identity() / body.getInvMass();
    row.diagonal.bottomRightCorner<3, 3>() = row.inertia;
    row.next.setZero();
    row.last.setZero();
    row.wanted.setZero();
  }
  for (std::size_t i = 0; i < count; ++i) {
    const Link& link = links[i];
    const std::size_t before = (i + count - 1) % count;
    Block between = Block::Zero();
    if (link.joint) AddJoint(*link.joint, &m_rows[before], m_rows[i], &between, h);
    if (link.attachment) AddJoint(*link.attachment, nullptr, m_rows[i], nullptr, h);
    if (link.guide) Guide(link, m_rows[i], h);
    if (i == 0)
      m_rows[0].last += between.transpose();  // the joint that closes the chain
    else if (i + 1 == count)
      m_rows[before].last += between;
    else
      m_rows[before].next += between;
  }
}

/// Block Cholesky: the matrix is L Lᵀ, and of L's rows the blocks under the diagonal are kept
/// transposed. Blocks are small enough that plain loops beat the library's general routines.
void BeltSolver::Factor() {
  const std::size_t last = m_rows.size() - 1;
  for (std::size_t i = 0; i < last; ++i) {
    Row& row = m_rows[i];
    Decompose(row.diagonal);
    Forward(row.diagonal, row.last);
    m_rows[last].diagonal.noalias() -= row.last.transpose() * row.last;
    if (i + 1 == last) continue;
    Forward(row.diagonal, row.next);
    m_rows[i + 1].diagonal.noalias() -= row.next.transpose() * row.next;
    m_rows[i + 1].last.noalias() -= row.next.transpose() * row.last;
  }
  Decompose(m_rows[last].diagonal);
}

void BeltSolver::Solve() {
  const std::size_t last = m_rows.size() - 1;
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const btSolverBody& body = m_tmpSolverBodyPool[links[i].body->getCompanionId()];
    const Vector3 speed =
        ToEigen(body.m_linearVelocity + body.m_externalForceImpulse + body.m_deltaLinearVelocity);
    const Vector3 spin = ToEigen(body.m_angularVelocity + body.m_externalTorqueImpulse +
                                 body.m_deltaAngularVelocity);
    m_rows[i].right = m_rows[i].wanted;
    m_rows[i].right.head<3>() += speed / links[i].body->getInvMass();
    m_rows[i].right.tail<3>() += m_rows[i].inertia * spin;
  }
  for (std::size_t i = 0; i <= last; ++i) {
    Row& row = m_rows[i];
    Forward(row.diagonal, row.right);
    if (i < last) m_rows[last].right.noalias() -= row.last.transpose() * row.right;
    if (i + 1 < last) m_rows[i + 1].right.noalias() -= row.next.transpose() * row.right;
  }
  for (std::size_t i = last + 1; i-- > 0;) {
    Row& row = m_rows[i];
    if (i < last) row.right.noalias() -= row.last * m_rows[last].right;
    if (i + 1 < last) row.right.noalias() -= row.next * m_rows[i + 1].right;
    Backward(row.diagonal, row.right);
    btSolverBody& body = m_tmpSolverBodyPool[links[i].body->getCompanionId()];
    body.m_deltaLinearVelocity =
        ToBullet(row.right.head<3>()) - body.m_linearVelocity - body.m_externalForceImpulse;
    body.m_deltaAngularVelocity =
        ToBullet(row.right.tail<3>()) - body.m_angularVelocity - body.m_externalTorqueImpulse;
  }
}

// --- the solver's phases ---

/// Bullet may call for a group without bodies, too.
bool BeltSolver::IsOfChain(int bodyCount) const {
  return bodyCount > 0 && !links.empty() && links.front().body->getCompanionId() >= 0;
}

btScalar BeltSolver::solveGroupCacheFriendlySetup(
    btCollisionObject** bodies, int bodyCount, btPersistentManifold** manifolds, int manifoldCount,
    btTypedConstraint** constraints, int constraintCount, const btContactSolverInfo& info,
    btIDebugDraw* drawer) {
  const btScalar result = btSequentialImpulseConstraintSolver::solveGroupCacheFriendlySetup(
      bodies, bodyCount, manifolds, manifoldCount, constraints, constraintCount, info, drawer);
  if (IsOfChain(bodyCount)) {
    Assemble(info.m_timeStep);
    Factor();
  }
  return result;
}

btScalar BeltSolver::solveSingleIteration(int iteration, btCollisionObject** bodies, int bodyCount,
                                          btPersistentManifold** manifolds, int manifoldCount,
                                          btTypedConstraint** constraints, int constraintCount,
                                          const btContactSolverInfo& info, btIDebugDraw* drawer) {
  const btScalar result = btSequentialImpulseConstraintSolver::solveSingleIteration(
      iteration, bodies, bodyCount, manifolds, manifoldCount, constraints, constraintCount, info,
      drawer);
  if (!IsOfChain(bodyCount)) return result;
  // The chain has the last word: a contact that gives way a little is gone in the next step, a
  // joint that does shows. Every other iteration holds it as well as each does.
  const int left = info.m_numIterations - 1 - iteration;
  if (left >= 0 && left % 2 == 0) Solve();
  if (left == 0) NoteTensions(info.m_timeStep);
  // Bullet would leave as soon as its own rows are met.
  return std::max(result, 1.0);
}

}  // namespace orv::rws::addon
