// Function sets of curves, and of surfaces made of bilinear patches.
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>

#include <algorithm>
#include <cmath>

#include "Fn.h"

using namespace mayahost;

namespace {
ShapePtr Net(const MObject& object) {
  if (const auto data = As<Data>(object)) return data->shape;
  const NodePtr node = NodeOf(object);
  return node ? ShapeOf(*node) : nullptr;
}
ShapePtr AskedNet(const MObject& object, MStatus* status) { return Ok(status, Net(object) != nullptr), Net(object); }
MObject NewNet(const char* type, const ShapePtr& shape, const MObject& owner, MObject& own, MStatus* status) {
  const bool can = shape && (owner.isNull() || owner.hasFn(MFn::kTransform) || owner.hasFn(MFn::kData));
  Ok(status, can);
  if (!can) return {};
  if (const auto data = As<Data>(owner)) return data->shape = shape, own = owner;
  const NodePtr made = CreateDag(FindType(type), owner.isNull() ? "" : Short(NodeOf(owner)->name) + "Shape", owner);
  const NodePtr node = made->info->IsA("shape") ? made : made->children[0];
  node->shape = shape;
  return own = Obj(node), Obj(made);
}
/// By de Boor's rule on knots as the host has them, without the outermost two.
MPoint At(const Shape& s, double u) {
  const int p = s.degree, n = static_cast<int>(s.cvs.size());
  const auto knot = [&](int i) { return s.knots[std::size_t(std::clamp(i - 1, 0, int(s.knots.size()) - 1))]; };
  int k = p;
  while (k < n - 1 && u >= knot(k + 1)) ++k;
  std::vector<MPoint> d;
  for (int j = 0; j <= p; ++j) d.push_back(s.cvs[std::size_t(j + k - p)]);
  for (int r = 1; r <= p; ++r)
    for (int j = p; j >= r; --j) {
      const double low = knot(j + k - p), high = knot(j + 1 + k - r), a = high > low ? (u - low) / (high - low) : 0;
      d[std::size_t(j)] = MPoint(MVector(d[std::size_t(j - 1)]) * (1 - a) + MVector(d[std::size_t(j)]) * a);
    }
  return d[std::size_t(p)];
}
double Low(const Shape& s) { return s.knots[std::size_t(s.degree) - 1]; }
double High(const Shape& s) { return s.knots[s.knots.size() - std::size_t(s.degree)]; }
/// Length of a part, by the mean of speeds at fixed places in each span.
double LengthTo(const Shape& s, double to) {
  static const double kPlace[] = {0.04691007703066802, 0.23076534494715845, 0.5, 0.7692346550528415, 0.9530899229693319};
  static const double kWeight[] = {0.11846344252809454, 0.23931433524968324, 0.28444444444444444, 0.23931433524968324, 0.11846344252809454};
  double sum = 0;
  for (std::size_t i = std::size_t(s.degree) - 1; i + std::size_t(s.degree) < s.knots.size(); ++i) {
    const double a = s.knots[i], b = std::min(to, s.knots[i + 1]);
    for (int part = 0; part < 16 && b > a; ++part)
      for (int g = 0; g < 5; ++g) {
        const double w = (b - a) / 16, u = a + w * (part + kPlace[g]), h = 1e-5 * w;
        sum += (At(s, u + h) - At(s, u - h)).length() / (2 * h) * w * kWeight[g];
      }
  }
  return sum;
}
}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN
FN_DAG(MFnNurbsCurve, MFn::kNurbsCurve)
FN_DAG(MFnNurbsSurface, MFn::kNurbsSurface)

MObject MFnNurbsCurve::create(const MPointArray& cvs, const MDoubleArray& knots, unsigned int degree, Form form, bool, bool, MObject owner, MStatus* status) {
  const auto s = std::make_shared<Shape>();
  s->cvs.assign(cvs.begin(), cvs.end()), s->knots.assign(knots.begin(), knots.end()), s->degree = int(degree), s->form = form;
  const bool good = degree >= 1 && cvs.length() > degree && knots.length() == cvs.length() + degree - 1 && std::is_sorted(knots.begin(), knots.end());
  return NewNet("nurbsCurve", good ? s : nullptr, owner, fObject, status);
}
MObject MFnNurbsCurve::copy(const MObject& source, MObject owner, MStatus* status) { return NewNet("nurbsCurve", Net(source), owner, fObject, status); }
MFnNurbsCurve::Form MFnNurbsCurve::form(MStatus* status) const { return AskedNet(fObject, status) ? static_cast<Form>(Net(fObject)->form) : kInvalid; }
int MFnNurbsCurve::degree(MStatus* status) const { return AskedNet(fObject, status) ? Net(fObject)->degree : 0; }
int MFnNurbsCurve::numCVs(MStatus* status) const { return AskedNet(fObject, status) ? int(Net(fObject)->cvs.size()) : 0; }
int MFnNurbsCurve::numSpans(MStatus* status) const { return numCVs(status) - degree(); }
MStatus MFnNurbsCurve::getCVs(MPointArray& cvs, MSpace::Space space) const {
  MMatrix m;
  if (!Net(fObject) || !ToSpace(fPath, space, m)) return MS::kFailure;
  cvs.clear();
  for (const MPoint& p : Net(fObject)->cvs) cvs.append(p * m);
  return MS::kSuccess;
}
MStatus MFnNurbsCurve::getKnots(MDoubleArray& knots) const {
  const ShapePtr s = Net(fObject);
  return s ? (knots = MDoubleArray(s->knots.data(), unsigned(s->knots.size())), MS::kSuccess) : MS::kFailure;
}
MStatus MFnNurbsCurve::getKnotDomain(double& start, double& end) const {
  const ShapePtr s = Net(fObject);
  return s ? (start = Low(*s), end = High(*s), MS::kSuccess) : MS::kFailure;
}
MStatus MFnNurbsCurve::getPointAtParam(double param, MPoint& point, MSpace::Space space) const {
  MMatrix m;
  if (!isParamOnCurve(param) || !ToSpace(fPath, space, m)) return MS::kInvalidParameter;
  return point = At(*Net(fObject), param) * m, MS::kSuccess;
}
MVector MFnNurbsCurve::tangent(double param, MSpace::Space space, MStatus* status) const {
  MMatrix m;
  const bool can = isParamOnCurve(param) && ToSpace(fPath, space, m);
  Ok(status, can);
  if (!can) return {};
  const double h = 1e-6 * (High(*Net(fObject)) - Low(*Net(fObject)));
  const double a = std::max(param - h, Low(*Net(fObject))), b = std::min(param + h, High(*Net(fObject)));
  return ((At(*Net(fObject), b) - At(*Net(fObject), a)) * m).normal();
}
bool MFnNurbsCurve::isParamOnCurve(double param, MStatus* status) const {
  return AskedNet(fObject, status) && param >= Low(*Net(fObject)) - 1e-9 && param <= High(*Net(fObject)) + 1e-9;
}
double MFnNurbsCurve::length(double) const { return length(nullptr); }
double MFnNurbsCurve::length(MStatus* status, double) const { return AskedNet(fObject, status) ? LengthTo(*Net(fObject), High(*Net(fObject))) : 0; }
double MFnNurbsCurve::findParamFromLength(double length, MStatus* status) const {
  const ShapePtr s = AskedNet(fObject, status);
  if (!s) return 0;
  double low = Low(*s), high = High(*s);
  for (int i = 0; i < 50; ++i) (LengthTo(*s, (low + high) / 2) < length ? low : high) = (low + high) / 2;
  return (low + high) / 2;
}
double MFnNurbsCurve::findLengthFromParam(double param, MStatus* status) const { return AskedNet(fObject, status) ? LengthTo(*Net(fObject), param) : 0; }

MObject MFnNurbsSurface::create(const MPointArray& cvs, const MDoubleArray& u, const MDoubleArray& v, unsigned int du, unsigned int dv, Form, Form, bool,
                                MObject owner, MStatus* status) {
  const auto s = std::make_shared<Shape>();
  s->cvs.assign(cvs.begin(), cvs.end()), s->knots.assign(u.begin(), u.end()), s->vKnots.assign(v.begin(), v.end());
  const bool good = du == 1 && dv == 1 && u.length() > 1 && v.length() > 1 && cvs.length() == u.length() * v.length();
  return NewNet("nurbsSurface", good ? s : nullptr, owner, fObject, status);
}
MObject MFnNurbsSurface::copy(const MObject& source, MObject owner, MStatus* status) {
  return NewNet("nurbsSurface", Net(source), owner, fObject, status);
}
MStatus MFnNurbsSurface::getKnotDomain(double& su, double& eu, double& sv, double& ev) const {
  const ShapePtr s = Net(fObject);
  return s ? (su = s->knots.front(), eu = s->knots.back(), sv = s->vKnots.front(), ev = s->vKnots.back(), MS::kSuccess) : MS::kFailure;
}
namespace {
std::size_t SpanOf(const std::vector<double>& knots, double u) {
  std::size_t i = 0;
  while (i + 2 < knots.size() && u >= knots[i + 1]) ++i;
  return i;
}
MPoint Bilinear(const Shape& s, double u, double v) {
  const std::size_t i = SpanOf(s.knots, u), j = SpanOf(s.vKnots, v), n = s.vKnots.size();
  const double a = (u - s.knots[i]) / (s.knots[i + 1] - s.knots[i]), b = (v - s.vKnots[j]) / (s.vKnots[j + 1] - s.vKnots[j]);
  const auto cv = [&](std::size_t x, std::size_t y) { return MVector(s.cvs[x * n + y]); };
  return (cv(i, j) * (1 - b) + cv(i, j + 1) * b) * (1 - a) + (cv(i + 1, j) * (1 - b) + cv(i + 1, j + 1) * b) * a;
}
}  // namespace
MStatus MFnNurbsSurface::getPointAtParam(double u, double v, MPoint& point, MSpace::Space space) const {
  MMatrix m;
  if (!Net(fObject) || !ToSpace(fPath, space, m)) return MS::kFailure;
  return point = Bilinear(*Net(fObject), u, v) * m, MS::kSuccess;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE
