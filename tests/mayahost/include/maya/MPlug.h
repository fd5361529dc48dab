// An attribute of a node: its value and connections.
#pragma once
#include <maya/MAngle.h>
#include <maya/MDGContext.h>
#include <maya/MDistance.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPlug {
 public:
  enum FreeToChangeState { kFreeToChange = 0, kNotFreeToChange, kChildrenNotFreeToChange };
  MPlug() = default;
  MPlug(const MObject& node, const MObject& attribute);
  explicit MPlug(const mayahost::PlugRef& ref);
  MString name(MStatus* status = NULL) const;
  MString info(MStatus* status = NULL) const { return name(status); }
  MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false, bool includeInstancedIndices = false, bool useAlias = false,
                      bool useFullAttributePath = false, bool useLongNames = false, MStatus* status = NULL) const;
  bool isNull(MStatus* status = NULL) const;
  MObject node(MStatus* status = NULL) const;
  MObject attribute(MStatus* status = NULL) const;
  bool isCompound(MStatus* status = NULL) const;
  bool isArray(MStatus* status = NULL) const;
  bool isElement(MStatus* status = NULL) const;
  bool isChild(MStatus* status = NULL) const;
  bool isConnected(MStatus* status = NULL) const;
  bool isSource(MStatus* status = NULL) const;
  bool isDestination(MStatus* status = NULL) const;
  bool isLocked(MStatus* status = NULL) const;
  MStatus setLocked(bool locked);
  bool isKeyable(MStatus* status = NULL) const;
  MStatus setKeyable(bool keyable);
  bool isChannelBoxFlagSet(MStatus* status = NULL) const;
  MStatus setChannelBox(bool visible);
  bool isDynamic(MStatus* status = NULL) const;
  FreeToChangeState isFreeToChange(bool checkParents = true, bool checkChildren = true, MStatus* status = NULL) const;
  bool isFromReferencedFile(MStatus* status = NULL) const;
  bool isNetworked(MStatus* status = NULL) const;
  bool isProcedural(MStatus* status = NULL) const;
  bool isDefaultValue(bool forceEval = true, MStatus* status = NULL) const;
  unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = NULL) const;
  unsigned int numConnectedElements(MStatus* status = NULL) const;
  unsigned int numConnectedChildren(MStatus* status = NULL) const;
  MPlug connectionByPhysicalIndex(unsigned int index, MStatus* status = NULL) const;
  MStatus setNumElements(unsigned int count);
  MStatus setAttribute(const MObject& attribute);
  unsigned int numElements(MStatus* status = NULL) const;
  unsigned int evaluateNumElements(MStatus* status = NULL);
  unsigned int numChildren(MStatus* status = NULL) const;
  unsigned int logicalIndex(MStatus* status = NULL) const;
  MStatus selectAncestorLogicalIndex(unsigned int index, const MObject& attribute = MObject::kNullObj);
  MPlug child(unsigned int index, MStatus* status = NULL) const;
  MPlug child(const MObject& attribute, MStatus* status = NULL) const;
  MPlug parent(MStatus* status = NULL) const;
  MPlug array(MStatus* status = NULL) const;
  MPlug elementByLogicalIndex(unsigned int index, MStatus* status = NULL) const;
  MPlug elementByPhysicalIndex(unsigned int index, MStatus* status = NULL) const;
  MPlug operator[](unsigned int index) const { return elementByPhysicalIndex(index); }
  bool connectedTo(MPlugArray& plugs, bool asDst, bool asSrc, MStatus* status = NULL) const;
  bool destinationsWithConversions(MPlugArray& plugs, MStatus* status = NULL) const { return destinations(plugs, status); }
  MPlug sourceWithConversion(MStatus* status = NULL) const { return source(status); }
  MPlug source(MStatus* status = NULL) const;
  bool destinations(MPlugArray& plugs, MStatus* status = NULL) const;
  MStatus getValue(double& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(float& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(bool& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(int& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(short& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(char& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(MInt64& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(MString& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(MObject& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(MTime& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(MAngle& value, MDGContext& context = MDGContext::fsNormal) const;
  MStatus getValue(MDistance& value, MDGContext& context = MDGContext::fsNormal) const;
  double asDouble(MStatus* status = NULL) const;
  double asDouble(MDGContext& context, MStatus* status = NULL) const;
  float asFloat(MStatus* status = NULL) const;
  float asFloat(MDGContext& context, MStatus* status = NULL) const;
  bool asBool(MStatus* status = NULL) const;
  bool asBool(MDGContext& context, MStatus* status = NULL) const;
  char asChar(MStatus* status = NULL) const;
  int asInt(MStatus* status = NULL) const;
  int asInt(MDGContext& context, MStatus* status = NULL) const;
  MInt64 asInt64(MStatus* status = NULL) const;
  short asShort(MStatus* status = NULL) const;
  MString asString(MStatus* status = NULL) const;
  MString asString(MDGContext& context, MStatus* status = NULL) const;
  MObject asMObject(MStatus* status = NULL) const;
  MObject asMObject(MDGContext& context, MStatus* status = NULL) const;
  MTime asMTime(MStatus* status = NULL) const;
  MAngle asMAngle(MStatus* status = NULL) const;
  MDistance asMDistance(MStatus* status = NULL) const;
  MDataHandle asMDataHandle(MStatus* status = NULL) const;
  MStatus setMDataHandle(const MDataHandle& handle);
  void destructHandle(MDataHandle&) {}
  MStatus setValue(double value);
  MStatus setValue(float value);
  MStatus setValue(int value);
  MStatus setValue(short value);
  MStatus setValue(bool value);
  MStatus setValue(MInt64 value) { return setValue(static_cast<double>(value)); }
  MStatus setValue(char value) { return setValue(static_cast<int>(value)); }
  MStatus setValue(const char* value);
  MStatus setValue(const MString& value);
  MStatus setValue(const MObject& value);
  MStatus setValue(MObject& value);
  MStatus setValue(const MTime& value);
  MStatus setValue(const MAngle& value);
  MStatus setValue(const MDistance& value);
  MStatus setDouble(double value) { return setValue(value); }
  MStatus setFloat(float value) { return setValue(value); }
  MStatus setInt(int value) { return setValue(value); }
  MStatus setShort(short value) { return setValue(value); }
  MStatus setBool(bool value) { return setValue(value); }
  MStatus setChar(char value) { return setValue(value); }
  MStatus setInt64(MInt64 value) { return setValue(value); }
  MStatus setString(const MString& value) { return setValue(value); }
  MStatus setMObject(const MObject& value) { return setValue(value); }
  MStatus setMTime(const MTime& value) { return setValue(value); }
  MStatus setMAngle(const MAngle& value) { return setValue(value); }
  MStatus setMDistance(const MDistance& value) { return setValue(value); }
  bool operator==(const MPlug& o) const;
  bool operator!=(const MPlug& o) const { return !(*this == o); }
  bool operator==(const MObject& attribute) const;
  bool operator!=(const MObject& attribute) const { return !(*this == attribute); }

  mayahost::PlugRef Ref() const;  ///< the stand-in's own, as what follows
  std::shared_ptr<mayahost::Thing> fNode, fAttribute;
  std::vector<int> fIndices;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
