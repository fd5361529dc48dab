// Function sets of transforms and cameras.
#include <maya/MFnCamera.h>
#include <maya/MFnIkJoint.h>
#include <maya/MFnTransform.h>

#include <cmath>

#include "Fn.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN
FN_DAG(MFnTransform, MFn::kTransform)
FN_DAG(MFnCamera, MFn::kCamera)

namespace {
MVector Read3(const NodePtr& node, const char* name) {
  const PlugRef plug = NumberOf(node, name);
  return {Get(ChildOf(plug, 0)).number, Get(ChildOf(plug, 1)).number, Get(ChildOf(plug, 2)).number};
}
bool Write3(const NodePtr& node, const char* name, const MVector& v) {
  const PlugRef plug = NumberOf(node, name);
  bool all = true;
  for (unsigned i = 0; i < 3; ++i)
    if (Get(ChildOf(plug, i)).number != v[i]) all &= Put(ChildOf(plug, i), {v[i], nullptr});
  return all;
}
MEulerRotation::RotationOrder OrderOf(const NodePtr& node) { return static_cast<MEulerRotation::RotationOrder>(std::lround(GetNumber(*node, "rotateOrder"))); }
MMatrix Above(const MDagPath& path) { return path.exclusiveMatrix(); }
}  // namespace

MObject MFnTransform::create(MObject parent, MStatus* status) { return MFnDagNode::create("transform", parent, status); }
MTransformationMatrix MFnTransform::transformation(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  if (!node) return {};
  MTransformationMatrix t;
  const MVector s = Read3(node, "scale"), h = Read3(node, "shear");
  const double scale[3] = {s.x, s.y, s.z}, shear[3] = {h.x, h.y, h.z};
  t.setScale(scale, MSpace::kTransform);
  t.setShear(shear, MSpace::kTransform);
  t.setScalePivot(Read3(node, "scalePivot"), MSpace::kTransform, false);
  t.setScalePivotTranslation(Read3(node, "scalePivotTranslate"), MSpace::kTransform);
  t.setRotatePivot(Read3(node, "rotatePivot"), MSpace::kTransform, false);
  t.setRotatePivotTranslation(Read3(node, "rotatePivotTranslate"), MSpace::kTransform);
  t.setRotationOrientation(MEulerRotation(Read3(node, "rotateAxis")).asQuaternion());
  t.rotateTo(MEulerRotation(Read3(node, "rotate"), OrderOf(node)));
  t.setTranslation(t.getTranslation(MSpace::kPostTransform) + Read3(node, "translate"), MSpace::kPostTransform);
  return t;
}
MStatus MFnTransform::set(const MTransformationMatrix& t) {
  const NodePtr node = NodeOf(fObject);
  if (!node) return MS::kFailure;
  double scale[3], shear[3];
  t.getScale(scale, MSpace::kTransform), t.getShear(shear, MSpace::kTransform);
  bool all = Write3(node, "scale", {scale[0], scale[1], scale[2]}) & Write3(node, "shear", {shear[0], shear[1], shear[2]});
  all &= Write3(node, "scalePivot", t.scalePivot(MSpace::kTransform)) & Write3(node, "scalePivotTranslate", t.scalePivotTranslation(MSpace::kTransform));
  all &= Write3(node, "rotatePivot", t.rotatePivot(MSpace::kTransform)) & Write3(node, "rotatePivotTranslate", t.rotatePivotTranslation(MSpace::kTransform));
  all &= Write3(node, "rotateAxis", t.rotationOrientation().asEulerRotation().asVector());
  all &= Write3(node, "rotate", t.eulerRotation().reorder(OrderOf(node)).asVector());
  return St(all & Write3(node, "translate", t.getTranslation(MSpace::kTransform)));
}
MVector MFnTransform::getTranslation(MSpace::Space space, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  if (!node) return {};
  if (space != MSpace::kWorld) return Read3(node, "translate");
  Ok(status, !fPath.nodes.empty());
  const MMatrix m = fPath.inclusiveMatrix();
  return {m(3, 0), m(3, 1), m(3, 2)};
}
MStatus MFnTransform::setTranslation(const MVector& v, MSpace::Space space) {
  const NodePtr node = NodeOf(fObject);
  if (!node || (space == MSpace::kWorld && fPath.nodes.empty())) return MS::kFailure;
  if (space != MSpace::kWorld) return St(Write3(node, "translate", v));
  const MMatrix local = LocalMatrix(*node);
  const MPoint to = MPoint(v) * Above(fPath).inverse();
  return St(Write3(node, "translate", Read3(node, "translate") + MVector(to.x - local(3, 0), to.y - local(3, 1), to.z - local(3, 2))));
}
MStatus MFnTransform::getRotation(MEulerRotation& rotation) const {
  const NodePtr node = NodeOf(fObject);
  return node ? (rotation = MEulerRotation(Read3(node, "rotate"), OrderOf(node)), MS::kSuccess) : MS::kFailure;
}
MStatus MFnTransform::getRotation(double rotation[3], MTransformationMatrix::RotationOrder& order) const {
  MEulerRotation e;
  const MStatus s = getRotation(e);
  return order = static_cast<MTransformationMatrix::RotationOrder>(e.order + 1), e.asVector().get(rotation), s;
}
MStatus MFnTransform::getRotation(MQuaternion& q, MSpace::Space space) const {
  MEulerRotation e;
  const MStatus s = getRotation(e);
  if (s == MS::kSuccess && space == MSpace::kWorld)
    q = MTransformationMatrix(fPath.inclusiveMatrix()).rotation();
  else if (s == MS::kSuccess)
    q = e.asQuaternion();
  return s;
}
MStatus MFnTransform::setRotation(const MEulerRotation& e) {
  const NodePtr node = NodeOf(fObject);
  return St(node && Write3(node, "rotate", e.reorder(OrderOf(node)).asVector()));
}
MStatus MFnTransform::setRotation(const double r[3], MTransformationMatrix::RotationOrder order) {
  return setRotation(MEulerRotation(r[0], r[1], r[2], static_cast<MEulerRotation::RotationOrder>(order - 1)));
}
MStatus MFnTransform::setRotation(const MQuaternion& q, MSpace::Space space) {
  const NodePtr node = NodeOf(fObject);
  if (!node) return MS::kFailure;
  const MMatrix above = space == MSpace::kWorld ? MTransformationMatrix(Above(fPath)).asRotateMatrix() : MMatrix();
  return setRotation(MEulerRotation::decompose(q.asMatrix() * above.inverse(), OrderOf(node)));
}
MStatus MFnTransform::rotateBy(const MQuaternion& by, MSpace::Space space) {
  MQuaternion q;
  const MStatus s = getRotation(q, space);
  // Ahead of what is there in its own space, behind it in those above.
  return s == MS::kSuccess ? setRotation(space == MSpace::kPreTransform ? by * q : q * by, space) : s;
}
MStatus MFnTransform::rotateBy(const MEulerRotation& by, MSpace::Space space) { return rotateBy(by.asQuaternion(), space); }
MStatus MFnTransform::rotateBy(const double r[3], MTransformationMatrix::RotationOrder order, MSpace::Space space) {
  return rotateBy(MEulerRotation(r[0], r[1], r[2], static_cast<MEulerRotation::RotationOrder>(order - 1)), space);
}
MStatus MFnTransform::getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space space) const {
  MQuaternion q;
  const MStatus s = getRotation(q, space);
  return x = q.x, y = q.y, z = q.z, w = q.w, s;
}
MStatus MFnTransform::setRotationQuaternion(double x, double y, double z, double w, MSpace::Space space) { return setRotation(MQuaternion(x, y, z, w), space); }
MStatus MFnTransform::rotateByQuaternion(double x, double y, double z, double w, MSpace::Space space) { return rotateBy(MQuaternion(x, y, z, w), space); }
MQuaternion MFnTransform::rotateOrientation(MSpace::Space, MStatus* status) const { return transformation(status).rotationOrientation(); }
MStatus MFnTransform::setRotateOrientation(const MQuaternion& q, MSpace::Space, bool balance) {
  MStatus status;
  MTransformationMatrix t = transformation(&status);
  if (status != MS::kSuccess) return status;
  if (balance) t.rotateTo(q.inverse() * t.rotationOrientation() * t.rotation());
  return set(t.setRotationOrientation(q));
}
namespace {
MStatus Get3(const MObject& object, const char* name, double v[3]) {
  const NodePtr node = NodeOf(object);
  return node ? Read3(node, name).get(v) : MStatus(MS::kFailure);
}
MStatus Set3(const MObject& object, const char* name, const MVector& v) {
  const NodePtr node = NodeOf(object);
  return St(node && Write3(node, name, v));
}
}  // namespace
MStatus MFnTransform::getScale(double scale[3]) const { return Get3(fObject, "scale", scale); }
MStatus MFnTransform::setScale(const double s[3]) { return Set3(fObject, "scale", {s[0], s[1], s[2]}); }
MStatus MFnTransform::scaleBy(const double s[3]) {
  double now[3];
  const MStatus status = getScale(now);
  return status == MS::kSuccess ? Set3(fObject, "scale", {now[0] * s[0], now[1] * s[1], now[2] * s[2]}) : status;
}
MStatus MFnTransform::getShear(double shear[3]) const { return Get3(fObject, "shear", shear); }
MStatus MFnTransform::setShear(const double s[3]) { return Set3(fObject, "shear", {s[0], s[1], s[2]}); }
namespace {
/// A point of the transform's own space in the one that is asked for, and back.
MStatus PivotSpace(const MDagPath& path, MSpace::Space space, MMatrix& m) { return ToSpace(path, space, m) ? MS::kSuccess : MS::kInvalidParameter; }
}  // namespace
#define PIVOT(getter, setter, name)                                                                 \
  MPoint MFnTransform::getter(MSpace::Space space, MStatus* status) const {                         \
    const NodePtr node = Need(fObject, status);                                                     \
    MMatrix m;                                                                                      \
    const MStatus s = PivotSpace(fPath, space, m);                                                  \
    if (status && node) *status = s;                                                                \
    return node ? MPoint(Read3(node, name)) * m : MPoint();                                         \
  }                                                                                                 \
  MStatus MFnTransform::setter(const MPoint& point, MSpace::Space space, bool balance) {            \
    MStatus status;                                                                                 \
    MMatrix m;                                                                                      \
    MTransformationMatrix t = transformation(&status);                                              \
    if (status != MS::kSuccess || PivotSpace(fPath, space, m) != MS::kSuccess) return MS::kFailure; \
    return t.setter(point * m.inverse(), MSpace::kTransform, balance), set(t);                      \
  }                                                                                                 \
  MVector MFnTransform::getter##Translation(MSpace::Space, MStatus* status) const {                 \
    const NodePtr node = Need(fObject, status);                                                     \
    return node ? Read3(node, name "Translate") : MVector();                                        \
  }                                                                                                 \
  MStatus MFnTransform::setter##Translation(const MVector& v, MSpace::Space) { return Set3(fObject, name "Translate", v); }
PIVOT(scalePivot, setScalePivot, "scalePivot")
PIVOT(rotatePivot, setRotatePivot, "rotatePivot")
MTransformationMatrix::RotationOrder MFnTransform::rotationOrder(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? static_cast<MTransformationMatrix::RotationOrder>(OrderOf(node) + 1) : MTransformationMatrix::kInvalid;
}
MStatus MFnTransform::setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder) {
  const NodePtr node = NodeOf(fObject);
  if (!node) return MS::kFailure;
  const MEulerRotation e(Read3(node, "rotate"), OrderOf(node));
  if (!PutNumber(*node, "rotateOrder", order - 1)) return MS::kFailure;
  return reorder ? St(Write3(node, "rotate", e.reorder(OrderOf(node)).asVector())) : MStatus(MS::kSuccess);
}
FN_DAG(MFnIkJoint, MFn::kJoint)
MObject MFnIkJoint::create(MObject parent, MStatus* status) { return MFnDagNode::create("joint", parent, status); }
MStatus MFnIkJoint::getOrientation(MEulerRotation& rotation) const {
  const NodePtr node = NodeOf(fObject);
  return node ? (rotation = MEulerRotation(Read3(node, "jointOrient")), MS::kSuccess) : MS::kFailure;
}
MStatus MFnIkJoint::getOrientation(MQuaternion& quaternion) const {
  MEulerRotation e;
  const MStatus s = getOrientation(e);
  return quaternion = e.asQuaternion(), s;
}
MStatus MFnIkJoint::getOrientation(double rotation[3], MTransformationMatrix::RotationOrder& order) const {
  MEulerRotation e;
  const MStatus s = getOrientation(e);
  return order = MTransformationMatrix::kXYZ, e.asVector().get(rotation), s;
}
MStatus MFnIkJoint::setOrientation(const MEulerRotation& e) { return Set3(fObject, "jointOrient", e.reorder(MEulerRotation::kXYZ).asVector()); }
MStatus MFnIkJoint::setOrientation(const double r[3], MTransformationMatrix::RotationOrder order) {
  return setOrientation(MEulerRotation(r[0], r[1], r[2], static_cast<MEulerRotation::RotationOrder>(order - 1)));
}
MObject MFnCamera::create(MObject parent, MStatus* status) {
  const MObject made = MFnDagNode::create("camera", parent, status);
  // A transform that came with it is what is told; this is the camera's.
  if (made.hasFn(MFn::kTransform)) fObject = MFnDagNode(made).child(0);
  return made;
}
namespace {
double Lens(const MObject& object, const char* name, MStatus* status) {
  const NodePtr node = Need(object, status);
  return node ? GetNumber(*node, name) : 0;
}
MStatus SetLens(const MObject& object, const char* name, double v) {
  const NodePtr node = NodeOf(object);
  return St(node && PutNumber(*node, name, v));
}
const double kInch = 25.4;
MVector InSpace(const MDagPath& path, MSpace::Space space, const MVector& v, MStatus* status) {
  MMatrix m;
  Ok(status, ToSpace(path, space, m));
  return (v * m).normal();
}
}  // namespace
MPoint MFnCamera::eyePoint(MSpace::Space space, MStatus* status) const {
  MMatrix m;
  Ok(status, ToSpace(fPath, space, m));
  return MPoint() * m;
}
MVector MFnCamera::viewDirection(MSpace::Space space, MStatus* status) const { return InSpace(fPath, space, MVector::zNegAxis, status); }
MVector MFnCamera::rightDirection(MSpace::Space space, MStatus* status) const { return InSpace(fPath, space, MVector::xAxis, status); }
MVector MFnCamera::upDirection(MSpace::Space space, MStatus* status) const { return InSpace(fPath, space, MVector::yAxis, status); }
#define LENS(getter, setter, name)                                                        \
  double MFnCamera::getter(MStatus* status) const { return Lens(fObject, name, status); } \
  MStatus MFnCamera::setter(double v) { return SetLens(fObject, name, v); }
LENS(focalLength, setFocalLength, "focalLength")
LENS(horizontalFilmAperture, setHorizontalFilmAperture, "horizontalFilmAperture")
LENS(verticalFilmAperture, setVerticalFilmAperture, "verticalFilmAperture")
LENS(nearClippingPlane, setNearClippingPlane, "nearClipPlane")
LENS(farClippingPlane, setFarClippingPlane, "farClipPlane")
LENS(focusDistance, setFocusDistance, "focusDistance")
LENS(centerOfInterest, setCenterOfInterest, "centerOfInterest")
LENS(fStop, setFStop, "fStop")
LENS(shutterAngle, setShutterAngle, "shutterAngle")
LENS(overscan, setOverscan, "overscan")
LENS(lensSqueezeRatio, setLensSqueezeRatio, "lensSqueezeRatio")
LENS(cameraScale, setCameraScale, "cameraScale")
LENS(orthoWidth, setOrthoWidth, "orthographicWidth")
LENS(horizontalFilmOffset, setHorizontalFilmOffset, "horizontalFilmOffset")
LENS(verticalFilmOffset, setVerticalFilmOffset, "verticalFilmOffset")
bool MFnCamera::isOrtho(MStatus* s) const { return Lens(fObject, "orthographic", s) != 0; }
MStatus MFnCamera::setIsOrtho(bool on) { return SetLens(fObject, "orthographic", on); }
bool MFnCamera::isDepthOfField(MStatus* s) const { return Lens(fObject, "depthOfField", s) != 0; }
MStatus MFnCamera::setDepthOfField(bool on) { return SetLens(fObject, "depthOfField", on); }
MFnCamera::FilmFit MFnCamera::filmFit(MStatus* s) const { return static_cast<FilmFit>(std::lround(Lens(fObject, "filmFit", s))); }
MStatus MFnCamera::setFilmFit(FilmFit fit) { return fit < kInvalid ? SetLens(fObject, "filmFit", fit) : MStatus(MS::kInvalidParameter); }
double MFnCamera::aspectRatio(MStatus* s) const { return fObject.isNull() ? (Ok(s, false), 0) : horizontalFilmAperture(s) / verticalFilmAperture(); }
MStatus MFnCamera::setAspectRatio(double ratio) {
  return ratio > 0 ? setHorizontalFilmAperture(verticalFilmAperture() * ratio) : MStatus(MS::kInvalidParameter);
}
MPoint MFnCamera::centerOfInterestPoint(MSpace::Space space, MStatus* s) const {
  const MPoint eye = eyePoint(space, s);
  MMatrix m;
  ToSpace(fPath, space, m);
  return eye + MVector(0, 0, -centerOfInterest()) * m;
}
MStatus MFnCamera::set(const MPoint& eye, const MVector& view, const MVector& up, double horizontalFieldOfView, double aspectRatio) {
  const NodePtr node = NodeOf(fObject);
  if (!node || node->parents.empty() || view.isParallel(up)) return MS::kFailure;
  const MVector back = -view.normal(), side = (up ^ back).normal(), top = back ^ side;
  const double m[4][4] = {{side.x, side.y, side.z, 0}, {top.x, top.y, top.z, 0}, {back.x, back.y, back.z, 0}, {eye.x, eye.y, eye.z, 1}};
  MDagPath path = fPath;
  if (path.nodes.empty()) MDagPath::getAPathTo(fObject, path);
  path.pop();
  MFnTransform above(path);
  bool all = above.setRotation(MTransformationMatrix(MMatrix(m)).rotation(), MSpace::kWorld) == MS::kSuccess;
  all &= above.setTranslation(eye, MSpace::kWorld) == MS::kSuccess;
  all &= setAspectRatio(aspectRatio) == MS::kSuccess && setHorizontalFieldOfView(horizontalFieldOfView) == MS::kSuccess;
  return St(all);
}
namespace {
double Field(double aperture, double lens) { return lens > 0 ? 2 * std::atan(aperture * kInch / 2 / lens) : 0; }
}  // namespace
double MFnCamera::horizontalFieldOfView(MStatus* status) const { return Field(horizontalFilmAperture(), focalLength(status)); }
double MFnCamera::verticalFieldOfView(MStatus* status) const { return Field(verticalFilmAperture(), focalLength(status)); }
MStatus MFnCamera::setHorizontalFieldOfView(double v) { return setFocalLength(horizontalFilmAperture() * kInch / 2 / std::tan(v / 2)); }
MStatus MFnCamera::setVerticalFieldOfView(double v) { return setFocalLength(verticalFilmAperture() * kInch / 2 / std::tan(v / 2)); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
