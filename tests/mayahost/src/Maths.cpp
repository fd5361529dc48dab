// Vectors, matrices and rotations. Points are rows: the first factor acts first.
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MTransformationMatrix.h>

#include <algorithm>
#include <cmath>

OPENMAYA_MAJOR_NAMESPACE_OPEN

const MVector MVector::zero(0, 0, 0), MVector::one(1, 1, 1), MVector::xAxis(1, 0, 0), MVector::yAxis(0, 1, 0), MVector::zAxis(0, 0, 1),
    MVector::xNegAxis(-1, 0, 0), MVector::yNegAxis(0, -1, 0), MVector::zNegAxis(0, 0, -1);
const MPoint MPoint::origin;
const MMatrix MMatrix::identity;
const MQuaternion MQuaternion::identity;
const MEulerRotation MEulerRotation::identity;
const MTransformationMatrix MTransformationMatrix::identity;

MVector::MVector(const MPoint& p) : x(p.x), y(p.y), z(p.z) {}
MVector::MVector(const MFloatVector& v) : x(v.x), y(v.y), z(v.z) {}
MFloatVector::MFloatVector(const MVector& v) : x(float(v.x)), y(float(v.y)), z(float(v.z)) {}
MPoint::MPoint(const MFloatPoint& p) : x(p.x), y(p.y), z(p.z), w(p.w) {}
MFloatPoint::MFloatPoint(const MPoint& p) { setCast(p); }
void MFloatPoint::setCast(const MPoint& p) { x = float(p.x), y = float(p.y), z = float(p.z), w = float(p.w); }
MVector MVector::operator*(const MMatrix& m) const {
  const auto col = [&](int c) { return x * m(0, c) + y * m(1, c) + z * m(2, c); };
  return {col(0), col(1), col(2)};
}
MVector MVector::rotateBy(const MQuaternion& q) const { return *this * q.asMatrix(); }
MVector MVector::rotateBy(const MEulerRotation& e) const { return *this * e.asMatrix(); }
MPoint MPoint::operator*(const MMatrix& m) const {
  const auto col = [&](int c) { return x * m(0, c) + y * m(1, c) + z * m(2, c) + w * m(3, c); };
  return {col(0), col(1), col(2), col(3)};
}
MStatus MPoint::cartesianize() { return x /= w, y /= w, z /= w, w = 1, MStatus::kSuccess; }

namespace {
template <class F>
MMatrix Each(F f) {
  MMatrix m;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m(r, c) = f(r, c);
  return m;
}
double Minor(const MMatrix& m, int row, int col) {
  double v[9];
  int n = 0;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (r != row && c != col) v[n++] = m(r, c);
  return v[0] * (v[4] * v[8] - v[5] * v[7]) - v[1] * (v[3] * v[8] - v[5] * v[6]) + v[2] * (v[3] * v[7] - v[4] * v[6]);
}
MMatrix Axis(int axis, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  const int a = (axis + 1) % 3, b = (axis + 2) % 3;
  MMatrix m;
  m(a, a) = c, m(a, b) = s, m(b, a) = -s, m(b, b) = c;
  return m;
}
const int kAxes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};
MMatrix Moved(const MVector& v) {
  MMatrix m;
  m(3, 0) = v.x, m(3, 1) = v.y, m(3, 2) = v.z;
  return m;
}
}  // namespace

MMatrix::MMatrix(const double m[4][4]) { std::copy(&m[0][0], &m[0][0] + 16, &matrix[0][0]); }
MMatrix::MMatrix(const float m[4][4]) { std::copy(&m[0][0], &m[0][0] + 16, &matrix[0][0]); }
MStatus MMatrix::get(double m[4][4]) const { return std::copy(&matrix[0][0], &matrix[0][0] + 16, &m[0][0]), MStatus::kSuccess; }
MStatus MMatrix::get(float m[4][4]) const {
  return std::transform(&matrix[0][0], &matrix[0][0] + 16, &m[0][0], [](double v) { return float(v); }), MStatus::kSuccess;
}
MMatrix& MMatrix::setToIdentity() {
  for (int i = 0; i < 16; ++i) (&matrix[0][0])[i] = i % 5 == 0;
  return *this;
}
MMatrix MMatrix::transpose() const {
  return Each([&](int r, int c) { return matrix[c][r]; });
}
MMatrix MMatrix::operator+(const MMatrix& o) const {
  return Each([&](int r, int c) { return matrix[r][c] + o(r, c); });
}
MMatrix MMatrix::operator-(const MMatrix& o) const {
  return Each([&](int r, int c) { return matrix[r][c] - o(r, c); });
}
MMatrix MMatrix::operator*(double s) const {
  return Each([&](int r, int c) { return matrix[r][c] * s; });
}
MMatrix MMatrix::operator*(const MMatrix& o) const {
  return Each([&](int r, int c) { return matrix[r][0] * o(0, c) + matrix[r][1] * o(1, c) + matrix[r][2] * o(2, c) + matrix[r][3] * o(3, c); });
}
bool MMatrix::operator==(const MMatrix& o) const { return std::equal(&matrix[0][0], &matrix[0][0] + 16, &o.matrix[0][0]); }
bool MMatrix::isEquivalent(const MMatrix& o, double tolerance) const {
  return std::equal(&matrix[0][0], &matrix[0][0] + 16, &o.matrix[0][0], [&](double a, double b) { return std::fabs(a - b) <= tolerance; });
}
MMatrix MMatrix::adjoint() const {
  return Each([&](int r, int c) { return Minor(*this, c, r) * ((r + c) % 2 ? -1 : 1); });
}
double MMatrix::det4x4() const {
  double sum = 0;
  for (int c = 0; c < 4; ++c) sum += matrix[0][c] * Minor(*this, 0, c) * (c % 2 ? -1 : 1);
  return sum;
}
double MMatrix::det3x3() const { return Minor(*this, 3, 3); }
MMatrix MMatrix::inverse() const {
  const double det = det4x4();
  return det == 0 ? *this : adjoint() * (1 / det);
}
MMatrix MMatrix::homogenize() const { return MTransformationMatrix(*this).asRotateMatrix(); }
std::ostream& operator<<(std::ostream& os, const MMatrix& m) {
  for (int i = 0; i < 16; ++i) os << (i ? i % 4 ? ", " : "],\n [" : "[[") << m(i / 4, i % 4);
  return os << "]]";
}

MQuaternion::MQuaternion(const MVector& a, const MVector& b) {
  const MVector u = a.normal(), v = b.normal();
  MVector axis = u ^ v;
  if (axis.length() < 1e-12) axis = std::fabs(u.x) < 0.9 ? u ^ MVector::xAxis : u ^ MVector::yAxis;
  setToAxisAngle(axis, u.angle(v));
}
MQuaternion& MQuaternion::setToAxisAngle(const MVector& axis, double theta) {
  const MVector n = axis.normal() * std::sin(theta / 2);
  return *this = MQuaternion(n.x, n.y, n.z, std::cos(theta / 2));
}
bool MQuaternion::getAxisAngle(MVector& axis, double& theta) const {
  const MVector v(x, y, z);
  theta = 2 * std::atan2(v.length(), w);
  axis = v.length() > 0 ? v.normal() : MVector::zAxis;
  return v.length() > 0;
}
MQuaternion& MQuaternion::operator=(const MMatrix& m) {
  const double t[4] = {1 + m(0, 0) - m(1, 1) - m(2, 2), 1 - m(0, 0) + m(1, 1) - m(2, 2), 1 - m(0, 0) - m(1, 1) + m(2, 2), 1 + m(0, 0) + m(1, 1) + m(2, 2)};
  const int i = static_cast<int>(std::max_element(t, t + 4) - t);
  if (i == 3) return *this = MQuaternion(m(1, 2) - m(2, 1), m(2, 0) - m(0, 2), m(0, 1) - m(1, 0), t[3]).normal();
  const int j = (i + 1) % 3, k = (i + 2) % 3;
  MQuaternion q;
  q[i] = t[i], q[j] = m(i, j) + m(j, i), q[k] = m(i, k) + m(k, i), q.w = m(j, k) - m(k, j);
  return *this = q.normal();
}
MMatrix MQuaternion::asMatrix() const {
  MMatrix m;
  const double q[3] = {x, y, z};
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3, k = (i + 2) % 3;
    m(i, i) = 1 - 2 * (q[j] * q[j] + q[k] * q[k]);
    m(i, j) = 2 * (q[i] * q[j] + q[k] * w);
    m(i, k) = 2 * (q[i] * q[k] - q[j] * w);
  }
  return m;
}
MEulerRotation MQuaternion::asEulerRotation() const { return MEulerRotation::decompose(asMatrix(), MEulerRotation::kXYZ); }
MQuaternion MQuaternion::operator*(const MQuaternion& o) const {
  const MVector a(x, y, z), b(o.x, o.y, o.z), v = (b ^ a) + o.w * a + w * b;
  return {v.x, v.y, v.z, w * o.w - a * b};
}
MQuaternion MQuaternion::inverse() const { return conjugate() * (1 / (x * x + y * y + z * z + w * w)); }
MQuaternion MQuaternion::normal() const { return *this * (1 / std::sqrt(x * x + y * y + z * z + w * w)); }
bool MQuaternion::isEquivalent(const MQuaternion& o, double e) const {
  return std::fabs(x - o.x) <= e && std::fabs(y - o.y) <= e && std::fabs(z - o.z) <= e && std::fabs(w - o.w) <= e;
}
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t) {
  const double dot = p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w, a = std::acos(std::min(1.0, std::fabs(dot))), s = std::sin(a);
  const double u = s < 1e-9 ? 1 - t : std::sin((1 - t) * a) / s, v = (s < 1e-9 ? t : std::sin(t * a) / s) * (dot < 0 ? -1 : 1);
  return {p.x * u + q.x * v, p.y * u + q.y * v, p.z * u + q.z * v, p.w * u + q.w * v};
}

MMatrix MEulerRotation::asMatrix() const {
  const int* a = kAxes[order];
  return Axis(a[0], (*this)[a[0]]) * Axis(a[1], (*this)[a[1]]) * Axis(a[2], (*this)[a[2]]);
}
MQuaternion MEulerRotation::asQuaternion() const {
  const int* a = kAxes[order];
  const MVector axes[3] = {MVector::xAxis, MVector::yAxis, MVector::zAxis};
  const auto turn = [&](int i) { return MQuaternion((*this)[a[i]], axes[a[i]]); };
  return turn(0) * turn(1) * turn(2);
}
MEulerRotation& MEulerRotation::operator=(const MQuaternion& q) { return *this = decompose(q.asMatrix(), order); }
MEulerRotation MEulerRotation::decompose(const MMatrix& m, RotationOrder o) {
  const int i = kAxes[o][0], j = kAxes[o][1], k = kAxes[o][2];
  const double sign = (i + 1) % 3 == j ? 1 : -1, cos = std::hypot(m(i, i), m(i, j));
  MEulerRotation e(0, 0, 0, o);
  e[j] = std::atan2(-sign * m(i, k), cos);
  e[i] = cos > 1e-12 ? std::atan2(sign * m(j, k), m(k, k)) : std::atan2(-sign * m(k, j), m(j, j));
  e[k] = cos > 1e-12 ? std::atan2(sign * m(i, j), m(i, i)) : 0;
  return e;
}
MEulerRotation MEulerRotation::inverse() const { return decompose(asMatrix().transpose(), order); }
MEulerRotation MEulerRotation::reorder(RotationOrder o) const { return o == order ? *this : decompose(asMatrix(), o); }
MEulerRotation MEulerRotation::alternateSolution() const {
  MEulerRotation e = *this;
  const int* a = kAxes[order];
  e[a[0]] += M_PI, e[a[1]] = M_PI - e[a[1]], e[a[2]] += M_PI;
  return e;
}
MEulerRotation MEulerRotation::closestSolution(const MEulerRotation& dst) const {
  const auto near = [&](MEulerRotation e, double& off) {
    off = 0;
    for (int i = 0; i < 3; ++i) e[i] += 2 * M_PI * std::round((dst[i] - e[i]) / (2 * M_PI)), off += std::fabs(dst[i] - e[i]);
    return e;
  };
  double a, b;
  const MEulerRotation one = near(*this, a), two = near(alternateSolution(), b);
  return a <= b ? one : two;
}
bool MEulerRotation::isEquivalent(const MEulerRotation& o, double tolerance) const {
  return order == o.order && (asVector() - o.asVector()).length() <= tolerance;
}

MTransformationMatrix& MTransformationMatrix::operator=(const MMatrix& m) {
  MVector row[3];
  for (int i = 0; i < 3; ++i) row[i] = MVector(m(i, 0), m(i, 1), m(i, 2));
  const RotationOrder order = rotationOrder();
  *this = MTransformationMatrix();
  fScale.x = row[0].length();
  row[0].normalize();
  fShear.x = row[0] * row[1];
  row[1] -= row[0] * fShear.x;
  fScale.y = row[1].length();
  row[1].normalize();
  if (fScale.y != 0) fShear.x /= fScale.y;
  fShear.y = row[0] * row[2];
  row[2] -= row[0] * fShear.y;
  fShear.z = row[1] * row[2];
  row[2] -= row[1] * fShear.z;
  fScale.z = row[2].length();
  row[2].normalize();
  if (fScale.z != 0) fShear.y /= fScale.z, fShear.z /= fScale.z;
  if ((row[0] ^ row[1]) * row[2] < 0) {
    fScale *= -1;
    for (MVector& r : row) r *= -1;
  }
  MMatrix turn;
  for (int i = 0; i < 3; ++i)
    for (int c = 0; c < 3; ++c) turn(i, c) = row[i][c];
  fRotate = MEulerRotation::decompose(turn, static_cast<MEulerRotation::RotationOrder>(order - 1));
  fTranslate = MVector(m(3, 0), m(3, 1), m(3, 2));
  return *this;
}
MMatrix MTransformationMatrix::asScaleMatrix() const {
  MMatrix s, h;
  for (int i = 0; i < 3; ++i) s(i, i) = fScale[i];
  h(1, 0) = fShear.x, h(2, 0) = fShear.y, h(2, 1) = fShear.z;
  return s * h;
}
MMatrix MTransformationMatrix::asRotateMatrix() const { return fAxis.asMatrix() * fRotate.asMatrix(); }
MMatrix MTransformationMatrix::asMatrix() const {
  const MVector sp(fScalePivot), rp(fRotatePivot);
  MMatrix m = Moved(-sp) * asScaleMatrix() * Moved(sp + fScalePivotT - rp) * asRotateMatrix();
  for (int c = 0; c < 3; ++c) m(3, c) += rp[c] + fRotatePivotT[c], m(3, c) += fTranslate[c];
  return m;
}
MVector MTransformationMatrix::getTranslation(MSpace::Space space, MStatus* status) const {
  if (status) *status = MStatus::kSuccess;
  const MMatrix m = asMatrix();
  return space == MSpace::kTransform ? fTranslate : MVector(m(3, 0), m(3, 1), m(3, 2));
}
MStatus MTransformationMatrix::setTranslation(const MVector& v, MSpace::Space space) { return fTranslate += v - getTranslation(space), MStatus::kSuccess; }
MStatus MTransformationMatrix::getRotation(double rotation[3], RotationOrder& order, MSpace::Space) const {
  return order = rotationOrder(), fRotate.asVector().get(rotation);
}
MStatus MTransformationMatrix::setRotation(const double rotation[3], RotationOrder order, MSpace::Space) {
  if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
  return fRotate.setValue(rotation[0], rotation[1], rotation[2], static_cast<MEulerRotation::RotationOrder>(order - 1));
}
MQuaternion MTransformationMatrix::rotation() const { return fRotate.asQuaternion(); }
MTransformationMatrix& MTransformationMatrix::rotateTo(const MQuaternion& q) { return fRotate = q, *this; }
MStatus MTransformationMatrix::reorderRotation(RotationOrder order) {
  return fRotate.reorderIt(static_cast<MEulerRotation::RotationOrder>(order - 1)), MStatus::kSuccess;
}
MStatus MTransformationMatrix::getScale(double scale[3], MSpace::Space) const { return fScale.get(scale); }
MStatus MTransformationMatrix::setScale(const double scale[3], MSpace::Space) { return fScale = MVector(scale[0], scale[1], scale[2]), MStatus::kSuccess; }
MStatus MTransformationMatrix::getShear(double shear[3], MSpace::Space) const { return fShear.get(shear); }
MStatus MTransformationMatrix::setShear(const double shear[3], MSpace::Space) { return fShear = MVector(shear[0], shear[1], shear[2]), MStatus::kSuccess; }
MPoint MTransformationMatrix::scalePivot(MSpace::Space, MStatus* status) const { return status ? void(*status = MS::kSuccess) : void(), fScalePivot; }
MPoint MTransformationMatrix::rotatePivot(MSpace::Space, MStatus* status) const { return status ? void(*status = MS::kSuccess) : void(), fRotatePivot; }
MStatus MTransformationMatrix::setScalePivot(const MPoint& p, MSpace::Space, bool balance) {
  const MMatrix before = asMatrix();
  fScalePivot = p;
  const MVector off = getTranslation(MSpace::kPostTransform) - MVector(before(3, 0), before(3, 1), before(3, 2));
  if (balance) fScalePivotT -= off * asRotateMatrix().transpose();
  return MStatus::kSuccess;
}
MStatus MTransformationMatrix::setRotatePivot(const MPoint& p, MSpace::Space, bool balance) {
  const MMatrix before = asMatrix();
  fRotatePivot = p;
  if (balance) fRotatePivotT -= getTranslation(MSpace::kPostTransform) - MVector(before(3, 0), before(3, 1), before(3, 2));
  return MStatus::kSuccess;
}
MVector MTransformationMatrix::scalePivotTranslation(MSpace::Space, MStatus* s) const { return s ? void(*s = MS::kSuccess) : void(), fScalePivotT; }
MVector MTransformationMatrix::rotatePivotTranslation(MSpace::Space, MStatus* s) const { return s ? void(*s = MS::kSuccess) : void(), fRotatePivotT; }
MStatus MTransformationMatrix::setScalePivotTranslation(const MVector& v, MSpace::Space) { return fScalePivotT = v, MStatus::kSuccess; }
MStatus MTransformationMatrix::setRotatePivotTranslation(const MVector& v, MSpace::Space) { return fRotatePivotT = v, MStatus::kSuccess; }
bool MTransformationMatrix::isEquivalent(const MTransformationMatrix& o, double tolerance) const { return asMatrix().isEquivalent(o.asMatrix(), tolerance); }

OPENMAYA_MAJOR_NAMESPACE_CLOSE
