// Vectors, matrices and rotations. Points are rows: the first factor acts first.
#include <maya/MBoundingBox.h>
#include <maya/MColor.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MTransformationMatrix.h>

#include <algorithm>
#include <cmath>

OPENMAYA_MAJOR_NAMESPACE_OPEN

const MVector MVector::zero(0, 0, 0), MVector::one(1, 1, 1), MVector::xAxis(1, 0, 0), MVector::yAxis(0, 1, 0), MVector::zAxis(0, 0, 1),
    MVector::xNegAxis(-1, 0, 0), MVector::yNegAxis(0, -1, 0), MVector::zNegAxis(0, 0, -1);
const MFloatVector MFloatVector::zero(0, 0, 0), MFloatVector::one(1, 1, 1), MFloatVector::xAxis(1, 0, 0), MFloatVector::yAxis(0, 1, 0),
    MFloatVector::zAxis(0, 0, 1), MFloatVector::xNegAxis(-1, 0, 0), MFloatVector::yNegAxis(0, -1, 0), MFloatVector::zNegAxis(0, 0, -1);
const MPoint MPoint::origin;
const MFloatPoint MFloatPoint::origin;
const MColor MColor::kOpaqueBlack;
const MMatrix MMatrix::identity;
const MQuaternion MQuaternion::identity;
const MEulerRotation MEulerRotation::identity;
const MTransformationMatrix MTransformationMatrix::identity;

MVector::MVector(const MPoint& p) : x(p.x), y(p.y), z(p.z) {}
MVector::MVector(const MFloatVector& v) : x(v.x), y(v.y), z(v.z) {}
MFloatVector::MFloatVector(const MVector& v) : x(float(v.x)), y(float(v.y)), z(float(v.z)) {}
MFloatVector::MFloatVector(const MFloatPoint& p) : x(p.x), y(p.y), z(p.z) {}
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
MVector operator*(const MMatrix& m, const MVector& v) { return v * m.transpose(); }
MPoint operator*(const MMatrix& m, const MPoint& p) { return p * m.transpose(); }
MFloatVector MFloatVector::operator*(const MFloatMatrix& m) const {
  const auto col = [&](unsigned c) { return x * m(0, c) + y * m(1, c) + z * m(2, c); };
  return {col(0), col(1), col(2)};
}
MFloatPoint MFloatPoint::operator*(const MFloatMatrix& m) const {
  const auto col = [&](unsigned c) { return x * m(0, c) + y * m(1, c) + z * m(2, c) + w * m(3, c); };
  return {col(0), col(1), col(2), col(3)};
}
MVector MVector::rotateBy(double xx, double yy, double zz, double ww) const { return rotateBy(MQuaternion(xx, yy, zz, ww)); }
MVector MVector::rotateBy(Axis axis, double angle) const {
  return axis == kWaxis ? *this : rotateBy(MQuaternion(angle, axis == kXaxis ? xAxis : axis == kYaxis ? yAxis : zAxis));
}
MQuaternion MVector::rotateTo(const MVector& o) const { return MQuaternion(*this, o); }
MVector MVector::transformAsNormal(const MMatrix& m) const { return *this * m.inverse().transpose(); }

namespace {
template <class M, class F>
M Each(F f) {
  M m;
  for (unsigned r = 0; r < 4; ++r)
    for (unsigned c = 0; c < 4; ++c) m(r, c) = f(r, c);
  return m;
}
template <class M>
auto Minor(const M& m, unsigned row, unsigned col) {
  decltype(m(0, 0)) v[9];
  int n = 0;
  for (unsigned r = 0; r < 4; ++r)
    for (unsigned c = 0; c < 4; ++c)
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

std::ostream& operator<<(std::ostream& os, const MMatrix& m) {
  for (unsigned i = 0; i < 16; ++i) os << (i ? i % 4 ? ", " : "],\n [" : "[[") << m(i / 4, i % 4);
  return os << "]]";
}
std::ostream& operator<<(std::ostream& os, const MFloatMatrix& m) { return os << MMatrix(m.matrix); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace mayahost {
using V = unsigned;
template <class M, class T>
M& MatrixOf<M, T>::setToIdentity() {
  for (int i = 0; i < 16; ++i) matrix[i / 4][i % 4] = i % 5 == 0;
  return static_cast<M&>(*this);
}
template <class M, class T>
M MatrixOf<M, T>::transpose() const {
  return Each<M>([&](V r, V c) { return matrix[c][r]; });
}
template <class M, class T>
M MatrixOf<M, T>::operator+(const M& o) const {
  return Each<M>([&](V r, V c) { return matrix[r][c] + o(r, c); });
}
template <class M, class T>
M MatrixOf<M, T>::operator-(const M& o) const {
  return Each<M>([&](V r, V c) { return matrix[r][c] - o(r, c); });
}
template <class M, class T>
M MatrixOf<M, T>::operator*(T s) const {
  return Each<M>([&](V r, V c) { return matrix[r][c] * s; });
}
template <class M, class T>
M MatrixOf<M, T>::operator*(const M& o) const {
  return Each<M>([&](V r, V c) { return matrix[r][0] * o(0, c) + matrix[r][1] * o(1, c) + matrix[r][2] * o(2, c) + matrix[r][3] * o(3, c); });
}
template <class M, class T>
bool MatrixOf<M, T>::operator==(const M& o) const {
  return std::equal(&matrix[0][0], &matrix[0][0] + 16, &o.matrix[0][0]);
}
template <class M, class T>
bool MatrixOf<M, T>::isEquivalent(const M& o, T tolerance) const {
  return std::equal(&matrix[0][0], &matrix[0][0] + 16, &o.matrix[0][0], [&](T a, T b) { return std::fabs(a - b) <= tolerance; });
}
template <class M, class T>
M MatrixOf<M, T>::adjoint() const {
  return Each<M>([&](V r, V c) { return Minor(*this, c, r) * ((r + c) % 2 ? -1 : 1); });
}
template <class M, class T>
T MatrixOf<M, T>::det4x4() const {
  T sum = 0;
  for (V c = 0; c < 4; ++c) sum += matrix[0][c] * Minor(*this, 0, c) * (c % 2 ? -1 : 1);
  return sum;
}
template <class M, class T>
T MatrixOf<M, T>::det3x3() const {
  return Minor(*this, 3, 3);
}
template <class M, class T>
M MatrixOf<M, T>::inverse() const {
  const T det = det4x4();
  return det == 0 ? static_cast<const M&>(*this) : adjoint() * (1 / det);
}
template <class M, class T>
M MatrixOf<M, T>::homogenize() const {
  return M(MTransformationMatrix(MMatrix(matrix)).asRotateMatrix().matrix);
}
template class MatrixOf<MMatrix, double>;
template class MatrixOf<MFloatMatrix, float>;
}  // namespace mayahost

OPENMAYA_MAJOR_NAMESPACE_OPEN
void MBoundingBox::expand(const MPoint& p) {
  if (fEmpty) fMin = fMax = p;
  fEmpty = false;
  for (unsigned i = 0; i < 3; ++i) fMin[i] = std::min(fMin[i], p[i]), fMax[i] = std::max(fMax[i], p[i]);
}
void MBoundingBox::expand(const MBoundingBox& box) {
  if (!box.fEmpty) expand(box.fMin), expand(box.fMax);
}
void MBoundingBox::transformUsing(const MMatrix& m) {
  MBoundingBox moved;
  for (int i = 0; i < 8 && !fEmpty; ++i) moved.expand(MPoint(i & 1 ? fMax.x : fMin.x, i & 2 ? fMax.y : fMin.y, i & 4 ? fMax.z : fMin.z) * m);
  *this = moved;
}
bool MBoundingBox::contains(const MPoint& p) const { return intersects(MBoundingBox(p, p)); }
bool MBoundingBox::intersects(const MBoundingBox& o, double tolerance) const {
  for (unsigned i = 0; i < 3; ++i)
    if (fMin[i] > o.fMax[i] + tolerance || o.fMin[i] > fMax[i] + tolerance) return false;
  return !fEmpty && !o.fEmpty;
}
MStatus MColor::set(MColorType type, float c1, float c2, float c3, float aa) {
  if (type == kCMYK) return MStatus::kInvalidParameter;
  r = c1, g = c2, b = c3, a = aa;
  if (type == kCMY) r = 1 - c1, g = 1 - c2, b = 1 - c3;
  // Each channel is a trapezium over the hue's six parts.
  const auto part = [&](float shift) {
    const float k = std::fmod(shift + c1 / 60.0F, 6.0F);
    return c3 - c3 * c2 * std::clamp(std::min(k, 4 - k), 0.0F, 1.0F);
  };
  if (type == kHSV) r = part(5), g = part(3), b = part(1);
  return MStatus::kSuccess;
}
MStatus MColor::get(MColorType type, float& c1, float& c2, float& c3) const {
  const float most = std::max({r, g, b}), span = most - std::min({r, g, b});
  if (type == kRGB) c1 = r, c2 = g, c3 = b;
  if (type == kCMY) c1 = 1 - r, c2 = 1 - g, c3 = 1 - b;
  if (type == kHSV) {
    const float hue = span == 0 ? 0 : most == r ? (g - b) / span : most == g ? 2 + (b - r) / span : 4 + (r - g) / span;
    c1 = 60 * (hue < 0 ? hue + 6 : hue), c2 = most == 0 ? 0 : span / most, c3 = most;
  }
  return type == kCMYK ? MStatus::kInvalidParameter : MStatus::kSuccess;
}

MQuaternion::MQuaternion(const MVector& a, const MVector& b, double factor) {
  const MVector u = a.normal(), v = b.normal();
  MVector axis = u ^ v;
  if (axis.length() < 1e-12) axis = std::fabs(u.x) < 0.9 ? u ^ MVector::xAxis : u ^ MVector::yAxis;
  setToAxisAngle(axis, factor * u.angle(v));
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
MQuaternion MQuaternion::log() const {
  const double v = std::sqrt(x * x + y * y + z * z), a = std::atan2(v, w), s = v > 1e-12 ? a / v : 1;
  return {x * s, y * s, z * s, 0};
}
MQuaternion MQuaternion::exp() const {
  const double a = std::sqrt(x * x + y * y + z * z), s = a > 1e-12 ? std::sin(a) / a : 1;
  return {x * s, y * s, z * s, std::cos(a)};
}
bool MQuaternion::isEquivalent(const MQuaternion& o, double e) const {
  return std::fabs(x - o.x) <= e && std::fabs(y - o.y) <= e && std::fabs(z - o.z) <= e && std::fabs(w - o.w) <= e;
}
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t) {
  const double dot = p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w, a = std::acos(std::min(1.0, std::fabs(dot))), s = std::sin(a);
  const double u = s < 1e-9 ? 1 - t : std::sin((1 - t) * a) / s, v = (s < 1e-9 ? t : std::sin(t * a) / s) * (dot < 0 ? -1 : 1);
  return {p.x * u + q.x * v, p.y * u + q.y * v, p.z * u + q.z * v, p.w * u + q.w * v};
}
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t, short spin) {
  const double angle = std::acos(std::max(-1.0, std::min(1.0, p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w))), s = std::sin(angle);
  if (s < 1e-9) return p;
  const double phase = angle + spin * M_PI;
  return p * (std::sin(angle - t * phase) / s) + q * (std::sin(t * phase) / s);
}
MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b, const MQuaternion& q, double t) { return squad(p, a, b, q, t, 0); }
MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b, const MQuaternion& q, double t, short spin) {
  return slerp(slerp(p, q, t, spin), slerp(a, b, t, 0), 2 * t * (1 - t), 0);
}
MQuaternion squadPt(const MQuaternion& q0, const MQuaternion& q1, const MQuaternion& q2) {
  const MQuaternion back = q1.conjugate();
  return q1 * (((back * q0).log() + (back * q2).log()) * -0.25).exp();
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
std::ostream& operator<<(std::ostream& os, const MEulerRotation& e) {
  static const char* const kNames[] = {"kXYZ", "kYZX", "kZXY", "kXZY", "kYXZ", "kZYX"};
  return os << "[" << e.x << ", " << e.y << ", " << e.z << ", " << kNames[e.order] << "]";
}
MEulerRotation MEulerRotation::operator+(const MEulerRotation& o) const { return {asVector() + o.reorder(order).asVector(), order}; }
MEulerRotation MEulerRotation::operator-(const MEulerRotation& o) const { return {asVector() - o.reorder(order).asVector(), order}; }
MEulerRotation MEulerRotation::operator*(const MEulerRotation& o) const { return decompose(asMatrix() * o.asMatrix(), order); }
MEulerRotation MEulerRotation::operator*(const MQuaternion& q) const { return decompose(asMatrix() * q.asMatrix(), order); }
MEulerRotation MEulerRotation::incrementalRotateBy(const MVector& axis, double angle) {
  return *this = (*this * MQuaternion(angle, axis)).closestSolution(*this);
}
MEulerRotation MEulerRotation::bound() const { return closestCut(MEulerRotation()); }
MEulerRotation MEulerRotation::closestCut(const MEulerRotation& dst) const {
  MEulerRotation e = *this;
  for (unsigned i = 0; i < 3; ++i) e[i] += 2 * M_PI * std::round((dst[i] - e[i]) / (2 * M_PI));
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
    for (unsigned i = 0; i < 3; ++i) e[i] += 2 * M_PI * std::round((dst[i] - e[i]) / (2 * M_PI)), off += std::fabs(dst[i] - e[i]);
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
MMatrix MTransformationMatrix::asMatrix(double interp) const {
  MTransformationMatrix part(*this);
  part.fScale = MVector::one + (fScale - MVector::one) * interp;
  for (MVector* v : {&part.fShear, &part.fScalePivotT, &part.fRotatePivotT, &part.fTranslate}) *v *= interp;
  part.fAxis = slerp(MQuaternion(), fAxis, interp);
  return part.rotateTo(slerp(MQuaternion(), fRotate.asQuaternion(), interp)).asMatrix();
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
MStatus MTransformationMatrix::getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space) const {
  const MQuaternion q = rotation();
  return x = q.x, y = q.y, z = q.z, w = q.w, MStatus::kSuccess;
}
MStatus MTransformationMatrix::setRotationQuaternion(double x, double y, double z, double w, MSpace::Space) {
  return rotateTo(MQuaternion(x, y, z, w)), MStatus::kSuccess;
}
MStatus MTransformationMatrix::addRotation(const double r[3], RotationOrder order, MSpace::Space space) {
  if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
  return rotateBy(MEulerRotation(r, static_cast<MEulerRotation::RotationOrder>(order - 1)), space), MStatus::kSuccess;
}
MStatus MTransformationMatrix::addRotationQuaternion(double x, double y, double z, double w, MSpace::Space space) {
  return rotateBy(MQuaternion(x, y, z, w), space), MStatus::kSuccess;
}
MTransformationMatrix& MTransformationMatrix::rotateBy(const MQuaternion& q, MSpace::Space space) {
  return rotateTo(space == MSpace::kPreTransform ? q * rotation() : rotation() * q);
}
MStatus MTransformationMatrix::addScale(const double s[3], MSpace::Space) {
  return fScale = MVector(fScale.x * s[0], fScale.y * s[1], fScale.z * s[2]), MStatus::kSuccess;
}
MStatus MTransformationMatrix::addShear(const double s[3], MSpace::Space) { return fShear += MVector(s), MStatus::kSuccess; }
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
