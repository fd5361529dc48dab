#include "adaptor/maya/HelperShader.h"

#include <maya/MColor.h>
#include <maya/MDGModifier.h>
#include <maya/MDagModifier.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSet.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MSelectionList.h>

#include <memory>

#include "adaptor/maya/Channels.h"
#include "adaptor/maya/LoggedModifier.h"
#include "adaptor/maya/MelText.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kPlainSet[] = "initialShadingGroup";
constexpr char kPlainShader[] = "lambert1";

std::string PutIntoPlainSet(const MDagPath& shape) {
  return std::string("sets -e -forceElement \"") + kPlainSet + "\" " +
         QuoteMel(shape.fullPathName().asUTF8());
}

/// A shader and its set, which are taken out of the scene and put back.
struct OwnShader {
  MObjectHandle shape, lambert, group;
  std::unique_ptr<MDagModifier> out;

  void Exchange() {
    if (out) {
      if (!out->undoIt())
        core::LogEntry(core::LogLevel::kWarning, "The host refused to put a shader back");
      out.reset();
      return;
    }
    if (!group.isValid() || !lambert.isValid()) return;
    const auto name = [](const MObjectHandle& node) {
      return QuoteMel(MFnDependencyNode(node.object()).name().asUTF8());
    };
    out = std::make_unique<MDagModifier>();
    MDagPath path;
    if (shape.isValid() && MDagPath::getAPathTo(shape.object(), path))
      out->commandToExecute(PutIntoPlainSet(path).c_str());
    out->commandToExecute(("delete " + name(group) + " " + name(lambert)).c_str());
    DoLogged(*out, "take a shader out of the scene");
  }
};

}  // namespace

void ShadePlainly(const MDagPath& shape) {
  MGlobal::executeCommand(PutIntoPlainSet(shape).c_str());
}

MObject LambertOf(const MDagPath& shape) {
  MObjectArray groups;
  MIntArray indices;
  if (!MFnMesh(shape).getConnectedShaders(shape.instanceNumber(), groups, indices) ||
      groups.length() == 0)
    return MObject::kNullObj;
  const MPlug source = FindPlug(groups[0], "surfaceShader").source();
  const MObject shader = source.isNull() ? MObject() : source.node();
  return shader.hasFn(MFn::kLambert) ? shader : MObject();
}

bool IsOwnShader(const MObject& lambert) {
  return !lambert.isNull() && !(MFnDependencyNode(lambert).name() == kPlainShader);
}

Exchange MakeOwnShader(const MDagPath& shape, const std::string& name) {
  MFnLambertShader lambert;
  const MObject shader = lambert.create();
  lambert.setName((name + "_shader").c_str());
  MSelectionList members;
  MFnSet group;
  const MObject set = group.create(members, MFnSet::kRenderableOnly);
  group.setName((name + "_shaderSG").c_str());
  MDGModifier modifier;
  modifier.connect(FindPlug(shader, "outColor"), FindPlug(set, "surfaceShader"));
  if (!DoLogged(modifier, "make the shader of " + name)) {
    for (MObject half : {set, shader}) MGlobal::deleteNode(half);
    return nullptr;
  }
  MGlobal::executeCommand(("sets -e -forceElement " + QuoteMel(group.name().asUTF8()) + " " +
                           QuoteMel(shape.fullPathName().asUTF8()))
                              .c_str());
  auto own = std::make_shared<OwnShader>();
  own->shape = MObjectHandle(shape.node());
  own->lambert = MObjectHandle(shader);
  own->group = MObjectHandle(set);
  return [own] { own->Exchange(); };
}

Colour ReadLambert(const MObject& lambert) {
  const MColor colour = MFnLambertShader(lambert).color();
  return {colour.r, colour.g, colour.b};
}

void PutLambert(const MObject& lambert, const Colour& colour) {
  MFnLambertShader(lambert).setColor(MColor(colour[0], colour[1], colour[2]));
}

}  // namespace orv::rws::adaptor::maya
