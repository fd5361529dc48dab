// Function sets of curves, and of surfaces made of bilinear patches.
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>

#include <algorithm>
#include <cmath>

#include "Fn.h"

using namespace mayahost;

namespace {
ShapePtr Net(const MObject& object) { return GeometryOf(object); }
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
/// The nearest place on a curve: the best of samples, and from there by halving steps.
double NearestParam(const Shape& s, const MPoint& to, const MMatrix& m, double low, double high) {
  const auto off = [&](double u) { return (At(s, u) * m).distanceTo(to); };
  const int count = 20 * static_cast<int>(s.cvs.size());
  double best = low, step = (high - low) / count;
  for (int i = 1; i <= count; ++i)
    if (const double u = low + (high - low) * i / count; off(u) < off(best)) best = u;
  for (; step > 1e-13 * (high - low); step /= 2)
    for (const double u : {std::max(low, best - step), std::min(high, best + step)})
      if (off(u) < off(best)) best = u;
  return best;
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
MStatus MFnNurbsCurve::getCV(unsigned int i, MPoint& point, MSpace::Space space) const {
  MPointArray all;
  const MStatus s = getCVs(all, space);
  return s != MS::kSuccess ? s : i < all.length() ? (point = all[i], MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MFnNurbsCurve::setCVs(const MPointArray& cvs, MSpace::Space space) {
  MMatrix m;
  const ShapePtr old = Net(fObject);
  if (!old || cvs.length() != old->cvs.size() || !ToSpace(fPath, space, m)) return MS::kFailure;
  const auto made = std::make_shared<Shape>(*old);
  for (unsigned i = 0; i < cvs.length(); ++i) made->cvs[i] = cvs[i] * m.inverse();
  if (const auto data = As<Data>(fObject)) return data->shape = made, MS::kSuccess;
  const NodePtr node = NodeOf(fObject);
  Do([=] { node->shape = made; }, [=] { node->shape = old; });
  return Dirty(NumberOf(node, "local")), MS::kSuccess;
}
MStatus MFnNurbsCurve::setCV(unsigned int i, const MPoint& point, MSpace::Space space) {
  MPointArray all;
  const MStatus s = getCVs(all, space);
  return s != MS::kSuccess ? s : all.set(point, i) == MS::kSuccess ? setCVs(all, space) : MStatus(MS::kInvalidParameter);
}
MStatus MFnNurbsCurve::updateCurve() { return St(Net(fObject) != nullptr); }
int MFnNurbsCurve::numKnots(MStatus* status) const { return AskedNet(fObject, status) ? int(Net(fObject)->knots.size()) : 0; }
double MFnNurbsCurve::knot(unsigned int i, MStatus* status) const {
  const ShapePtr s = Net(fObject);
  const bool has = s && i < s->knots.size();
  return Ok(status, has), has ? s->knots[i] : 0;
}
MPoint MFnNurbsCurve::closestPoint(const MPoint& to, double* param, double, MSpace::Space space, MStatus* status) const {
  MMatrix m;
  const ShapePtr s = Net(fObject);
  const bool can = s && ToSpace(fPath, space, m);
  Ok(status, can);
  if (!can) return {};
  const double u = NearestParam(*s, to, m, Low(*s), High(*s));
  if (param) *param = u;
  return At(*s, u) * m;
}
MStatus MFnNurbsCurve::getParamAtPoint(const MPoint& at, double& param, double tolerance, MSpace::Space space) const {
  MStatus status;
  double u = 0;
  const MPoint near = closestPoint(at, &u, tolerance, space, &status);
  return status != MS::kSuccess ? status : near.distanceTo(at) <= tolerance ? (param = u, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MFnNurbsCurve::getParamAtPoint(const MPoint& at, double& param, MSpace::Space space) const { return getParamAtPoint(at, param, 1e-3, space); }
bool MFnNurbsCurve::isPointOnCurve(const MPoint& at, double tolerance, MSpace::Space space, MStatus* status) const {
  MStatus s;
  const bool on = distanceToPoint(at, space, &s) <= tolerance;
  return status ? void(*status = s) : void(), s == MS::kSuccess && on;
}
double MFnNurbsCurve::distanceToPoint(const MPoint& to, MSpace::Space space, MStatus* status) const {
  MStatus s;
  const MPoint near = closestPoint(to, NULL, 1e-10, space, &s);
  return status ? void(*status = s) : void(), s == MS::kSuccess ? near.distanceTo(to) : 0;
}
MStatus MFnNurbsCurve::getDerivativesAtParm(double param, MPoint& position, MVector& derivative, MSpace::Space space, MVector* second) const {
  MMatrix m;
  if (!isParamOnCurve(param) || !ToSpace(fPath, space, m)) return MS::kInvalidParameter;
  const Shape& s = *Net(fObject);
  const double h = 1e-4 * (High(s) - Low(s)), at = std::clamp(param, Low(s) + h, High(s) - h);
  const MPoint before = At(s, at - h) * m, here = At(s, at) * m, after = At(s, at + h) * m;
  position = At(s, param) * m, derivative = (after - before) * (0.5 / h);
  const MVector bend = ((after - here) - (here - before)) * (1 / (h * h));
  derivative += bend * (param - at);
  return second ? void(*second = bend) : void(), MS::kSuccess;
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

MObject MFnNurbsSurface::create(const MPointArray& cvs, const MDoubleArray& u, const MDoubleArray& v, unsigned int du, unsigned int dv, Form fu, Form fv, bool,
                                MObject owner, MStatus* status) {
  const auto s = std::make_shared<Shape>();
  s->cvs.assign(cvs.begin(), cvs.end()), s->knots.assign(u.begin(), u.end()), s->vKnots.assign(v.begin(), v.end());
  s->degree = int(du), s->vDegree = int(dv), s->form = fu, s->vForm = fv;
  const bool good = du > 0 && dv > 0 && u.length() >= 2 * du && v.length() >= 2 * dv && cvs.length() == (u.length() + 1 - du) * (v.length() + 1 - dv) &&
                    std::is_sorted(u.begin(), u.end()) && std::is_sorted(v.begin(), v.end());
  return NewNet("nurbsSurface", good ? s : nullptr, owner, fObject, status);
}
MObject MFnNurbsSurface::copy(const MObject& source, MObject owner, MStatus* status) { return NewNet("nurbsSurface", Net(source), owner, fObject, status); }
namespace {
std::size_t CountU(const Shape& s) { return s.knots.size() + 1 - std::size_t(s.degree); }
std::size_t CountV(const Shape& s) { return s.vKnots.size() + 1 - std::size_t(s.vDegree); }
/// A curve across, through where each of the curves along is.
MPoint Over(const Shape& s, double u, double v) {
  Shape along, across;
  along.knots = s.vKnots, along.degree = s.vDegree, across.knots = s.knots, across.degree = s.degree;
  for (std::size_t i = 0; i < CountU(s); ++i) {
    along.cvs.assign(s.cvs.begin() + std::ptrdiff_t(i * CountV(s)), s.cvs.begin() + std::ptrdiff_t((i + 1) * CountV(s)));
    across.cvs.push_back(At(along, v));
  }
  return At(across, u);
}
}  // namespace
int MFnNurbsSurface::numCVsInU(MStatus* status) const { return AskedNet(fObject, status) ? int(CountU(*Net(fObject))) : 0; }
int MFnNurbsSurface::numCVsInV(MStatus* status) const { return AskedNet(fObject, status) ? int(CountV(*Net(fObject))) : 0; }
int MFnNurbsSurface::degreeU(MStatus* status) const { return AskedNet(fObject, status) ? Net(fObject)->degree : 0; }
int MFnNurbsSurface::degreeV(MStatus* status) const { return AskedNet(fObject, status) ? Net(fObject)->vDegree : 0; }
MFnNurbsSurface::Form MFnNurbsSurface::formInU(MStatus* s) const { return AskedNet(fObject, s) ? static_cast<Form>(Net(fObject)->form) : kInvalid; }
MFnNurbsSurface::Form MFnNurbsSurface::formInV(MStatus* s) const { return AskedNet(fObject, s) ? static_cast<Form>(Net(fObject)->vForm) : kInvalid; }
MStatus MFnNurbsSurface::getKnotsInU(MDoubleArray& knots) const {
  const ShapePtr s = Net(fObject);
  return s ? (knots = MDoubleArray(s->knots.data(), unsigned(s->knots.size())), MS::kSuccess) : MS::kFailure;
}
MStatus MFnNurbsSurface::getKnotsInV(MDoubleArray& knots) const {
  const ShapePtr s = Net(fObject);
  return s ? (knots = MDoubleArray(s->vKnots.data(), unsigned(s->vKnots.size())), MS::kSuccess) : MS::kFailure;
}
MStatus MFnNurbsSurface::getCVs(MPointArray& cvs, MSpace::Space space) const {
  MMatrix m;
  if (!Net(fObject) || !ToSpace(fPath, space, m)) return MS::kFailure;
  cvs.clear();
  for (const MPoint& p : Net(fObject)->cvs) cvs.append(p * m);
  return MS::kSuccess;
}
MStatus MFnNurbsSurface::getCV(unsigned int u, unsigned int v, MPoint& point, MSpace::Space space) const {
  MPointArray all;
  const MStatus s = getCVs(all, space);
  if (s != MS::kSuccess || int(u) >= numCVsInU() || int(v) >= numCVsInV()) return MS::kInvalidParameter;
  return point = all[u * unsigned(numCVsInV()) + v], s;
}
MStatus MFnNurbsSurface::getKnotDomain(double& su, double& eu, double& sv, double& ev) const {
  const ShapePtr s = Net(fObject);
  if (!s) return MS::kFailure;
  const std::size_t du = std::size_t(s->degree), dv = std::size_t(s->vDegree);
  return su = s->knots[du - 1], eu = s->knots[s->knots.size() - du], sv = s->vKnots[dv - 1], ev = s->vKnots[s->vKnots.size() - dv], MS::kSuccess;
}
MStatus MFnNurbsSurface::getPointAtParam(double u, double v, MPoint& point, MSpace::Space space) const {
  MMatrix m;
  double su, eu, sv, ev;
  if (getKnotDomain(su, eu, sv, ev) != MS::kSuccess || !ToSpace(fPath, space, m)) return MS::kFailure;
  if (u < su - 1e-9 || u > eu + 1e-9 || v < sv - 1e-9 || v > ev + 1e-9) return MS::kInvalidParameter;
  return point = Over(*Net(fObject), u, v) * m, MS::kSuccess;
}
MStatus MFnNurbsSurface::getTangents(double u, double v, MVector& inU, MVector& inV, MSpace::Space space) const {
  double su, eu, sv, ev;
  MPoint here;
  const MStatus s = getPointAtParam(u, v, here, space);
  if (s != MS::kSuccess || getKnotDomain(su, eu, sv, ev) != MS::kSuccess) return s;
  const double hu = 1e-6 * (eu - su), hv = 1e-6 * (ev - sv);
  MPoint a, b;
  getPointAtParam(std::max(su, u - hu), v, a, space), getPointAtParam(std::min(eu, u + hu), v, b, space);
  inU = (b - a).normal();
  getPointAtParam(u, std::max(sv, v - hv), a, space), getPointAtParam(u, std::min(ev, v + hv), b, space);
  return inV = (b - a).normal(), s;
}
MVector MFnNurbsSurface::normal(double u, double v, MSpace::Space space, MStatus* status) const {
  MVector inU, inV;
  const MStatus s = getTangents(u, v, inU, inV, space);
  return status ? void(*status = s) : void(), (inU ^ inV).normal();
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE
