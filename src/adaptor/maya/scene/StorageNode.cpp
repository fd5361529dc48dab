#include "adaptor/maya/scene/StorageNode.h"

#include <maya/MFnData.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include "adaptor/maya/scene/CStorageNode.h"
#include "adaptor/maya/scene/StorageTable.h"

namespace orv::rws::adaptor::maya {

namespace {

MObject MakeAttribute(const StorageAttribute& row, MStatus& status) {
  if (row.kind == StorageKind::kNumber) {
    MFnNumericAttribute maker;
    MObject attribute =
        maker.create(row.longName, row.shortName, MFnNumericData::kInt, 0.0, &status);
    maker.setHidden(true);
    maker.setStorable(true);
    return attribute;
  }
  const MFnData::Type type =
      row.kind == StorageKind::kText ? MFnData::kString : MFnData::kStringArray;
  MFnTypedAttribute maker;
  MObject attribute = maker.create(row.longName, row.shortName, type, MObject::kNullObj, &status);
  maker.setHidden(true);
  maker.setStorable(true);
  return attribute;
}

}  // namespace

// Of the block for in-house use: before the plug-in is handed to others, two ids must be registered
// with Autodesk and put here. Scenes saved before that are lost then.
const MTypeId StorageNode::kId(0x0007aa50);
const MTypeId CStorageNode::kId(0x0007aa51);
const MString StorageNode::kTypeName("StorageNode");
const MString CStorageNode::kTypeName("CStorageNode");

void* StorageNode::Create() {
  return new StorageNode;
}

MStatus StorageNode::Initialize() {
  for (const StorageAttribute& row : kSceneAttributes) {
    MStatus status;
    MObject attribute = MakeAttribute(row, status);
    if (status) status = addAttribute(attribute);
    if (!status) return status;
  }
  return MStatus::kSuccess;
}

void* CStorageNode::Create() {
  return new CStorageNode;
}

MStatus CStorageNode::Initialize() {
  for (const StorageAttribute& row : kRigAttributes) {
    MStatus status;
    MObject attribute = MakeAttribute(row, status);
    if (status) status = addAttribute(attribute);
    if (!status) return status;
  }
  return MStatus::kSuccess;
}

}  // namespace orv::rws::adaptor::maya
