// Small helpers of the probes.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnTransform.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

namespace orv::rws::adaptor::maya {

inline MObject ProbeTransform(const char* name, MObject parent = MObject::kNullObj) {
  MFnTransform maker;
  MObject node = maker.create(parent);
  maker.setName(name);
  return node;
}

inline MPlug ProbePlug(const MObject& node, const char* name) {
  return MFnDependencyNode(node).findPlug(name, true);
}

inline MDagPath ProbePath(const MObject& node) {
  MDagPath path;
  MFnDagNode(node).getPath(path);
  return path;
}

}  // namespace orv::rws::adaptor::maya
