// Parts of shapes.
#include <maya/MElements_.h>
#include <maya/MFnSingleIndexedComponent.h>

#include "Fn.h"

namespace mayahost {
namespace {
struct Word {
  const char* text;
  MFn::Type component, shape;
};
const Word kWords[] = {{"vtx", MFn::kMeshVertComponent, MFn::kMesh},
                       {"e", MFn::kMeshEdgeComponent, MFn::kMesh},
                       {"f", MFn::kMeshPolygonComponent, MFn::kMesh},
                       {"cv", MFn::kCurveCVComponent, MFn::kNurbsCurve}};

int CountOf(const MDagPath& path, MFn::Type component) {
  const ShapePtr shape = GeometryOf(path.node());
  if (!shape) return 0;
  if (component == MFn::kMeshEdgeComponent) return static_cast<int>(EdgesOf(*shape).size());
  if (component == MFn::kMeshPolygonComponent) return static_cast<int>(shape->counts.size());
  return static_cast<int>(component == MFn::kCurveCVComponent ? shape->cvs.size() : shape->points.size() / 3);
}
ComponentPtr Of(const MObject& object) { return std::dynamic_pointer_cast<Component>(object.thing); }
}  // namespace

ComponentPtr ParseComponent(const MDagPath& path, const std::string& text) {
  const auto open = text.find('[');
  const Word* word = nullptr;
  for (const Word& each : kWords)
    if (open != std::string::npos && text.substr(0, open) == each.text) word = &each;
  MDagPath shape = path;
  shape.extendToShape();
  if (!word || text.back() != ']' || !shape.node().hasFn(word->shape)) return nullptr;
  const std::string range = text.substr(open + 1, text.size() - open - 2);
  const auto component = std::make_shared<Component>(word->component);
  const int count = CountOf(shape, word->component);
  if (range == "*") return component->complete = count, component;
  const auto colon = range.find(':');
  const int first = std::atoi(range.c_str()), last = colon == std::string::npos ? first : std::atoi(range.c_str() + colon + 1);
  for (int i = std::max(first, 0); i <= std::min(last, count - 1); ++i) component->elements.insert(i);
  return component->elements.empty() ? nullptr : component;
}

std::vector<std::string> RunsOf(const Component& component) {
  std::string word = "vtx";
  for (const Word& each : kWords)
    if (each.component == component.type) word = each.text;
  if (component.complete) return {word + "[*]"};
  std::vector<std::string> runs;
  for (auto at = component.elements.begin(); at != component.elements.end();) {
    const int first = *at;
    int last = first;
    while (++at != component.elements.end() && *at == last + 1) last = *at;
    runs.push_back(word + "[" + std::to_string(first) + (last > first ? ":" + std::to_string(last) : "") + "]");
  }
  return runs;
}
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MElements_::MElements_(const MObject& component) {
  const ComponentPtr some = Of(component);
  all = !some || some->complete;
  if (!all) of.assign(some->elements.begin(), some->elements.end());
}

FN_SET(MFnComponent, MFn::kComponent)
int MFnComponent::elementCount(MStatus* status) const {
  const ComponentPtr some = Of(fObject);
  Ok(status, some != nullptr);
  return !some ? 0 : some->complete ? *some->complete : static_cast<int>(some->elements.size());
}
MFn::Type MFnComponent::componentType(MStatus* status) const { return Ok(status, !fObject.isNull()), fObject.apiType(); }
bool MFnComponent::isEqual(MObject& other, MStatus* status) const {
  const ComponentPtr a = Of(fObject), b = Of(other);
  Ok(status, a && b);
  return a && b && a->type == b->type && a->elements == b->elements && a->complete == b->complete;
}
bool MFnComponent::isComplete(MStatus* status) const {
  const ComponentPtr some = Of(fObject);
  return Ok(status, some != nullptr), some && some->complete;
}
MStatus MFnComponent::setComplete(bool complete) {
  const ComponentPtr some = Of(fObject);
  if (some) some->complete = complete ? std::optional<int>(static_cast<int>(some->elements.size())) : std::nullopt;
  return St(some != nullptr);
}

FN_SET(MFnSingleIndexedComponent, MFn::kSingleIndexedComponent)
MObject MFnSingleIndexedComponent::create(MFn::Type component, MStatus* status) {
  const bool can = std::any_of(std::begin(kWords), std::end(kWords), [&](const Word& word) { return word.component == component; });
  Ok(status, can);
  return fObject = can ? Obj(std::make_shared<Component>(component)) : MObject();
}
MStatus MFnSingleIndexedComponent::addElement(int element) {
  const ComponentPtr some = Of(fObject);
  if (!some || element < 0) return MS::kFailure;
  return some->elements.insert(element), some->complete.reset(), MS::kSuccess;
}
MStatus MFnSingleIndexedComponent::addElements(MIntArray& elements) {
  MStatus status = St(!fObject.isNull());
  for (const int element : elements)
    if (addElement(element) != MS::kSuccess) status = MS::kFailure;
  return status;
}
int MFnSingleIndexedComponent::element(int index, MStatus* status) const {
  const ComponentPtr some = Of(fObject);
  const bool can = index >= 0 && index < elementCount();
  Ok(status, can);
  return !can ? 0 : some->complete ? index : *std::next(some->elements.begin(), index);
}
MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const {
  elements.clear();
  for (int i = 0; i < elementCount(); ++i) elements.append(element(i));
  return St(!fObject.isNull());
}
MStatus MFnSingleIndexedComponent::setCompleteData(int elements) {
  const ComponentPtr some = Of(fObject);
  if (some) some->complete = elements, some->elements.clear();
  return St(some != nullptr);
}
MStatus MFnSingleIndexedComponent::getCompleteData(int& elements) const { return isComplete() ? (elements = elementCount(), MS::kSuccess) : MS::kFailure; }
int MFnSingleIndexedComponent::elementMax(MStatus* status) const {
  const int count = elementCount(status);
  return count > 0 ? element(count - 1) : 0;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE
