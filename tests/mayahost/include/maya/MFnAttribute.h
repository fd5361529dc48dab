// Definitions of attributes.
#pragma once
#include <maya/MFnBase.h>
#include <maya/MFnNumericData.h>
#include <maya/MTypeId.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnAttribute : public MFnBase {
  declareMinimalMFn(MFnAttribute)
  enum DisconnectBehavior { kDelete, kReset, kNothing };
  bool isReadable(MStatus* status = NULL) const;
  MStatus setReadable(bool state);
  bool isWritable(MStatus* status = NULL) const;
  MStatus setWritable(bool state);
  bool isConnectable(MStatus* status = NULL) const;
  MStatus setConnectable(bool state);
  bool isStorable(MStatus* status = NULL) const;
  MStatus setStorable(bool state);
  bool isCached(MStatus* status = NULL) const;
  MStatus setCached(bool state);
  bool isArray(MStatus* status = NULL) const;
  MStatus setArray(bool state);
  bool isKeyable(MStatus* status = NULL) const;
  MStatus setKeyable(bool state);
  bool isHidden(MStatus* status = NULL) const;
  MStatus setHidden(bool state);
  bool isChannelBoxFlagSet(MStatus* status = NULL) const;
  MStatus setChannelBox(bool state);
  bool isUsedAsColor(MStatus* status = NULL) const;
  MStatus setUsedAsColor(bool state);
  bool isWorldSpace(MStatus* status = NULL) const;
  MStatus setWorldSpace(bool state);
  bool usesArrayDataBuilder(MStatus* status = NULL) const;
  MStatus setUsesArrayDataBuilder(bool state);
  bool isRenderSource(MStatus* status = NULL) const;
  MStatus setRenderSource(bool state);
  bool affectsAppearance(MStatus* status = NULL) const;
  MStatus setAffectsAppearance(bool state);
  bool isAffectsWorldSpace(MStatus* status = NULL) const;
  MStatus setAffectsWorldSpace(bool state);
  bool isUsedAsFilename(MStatus* status = NULL) const;
  MStatus setUsedAsFilename(bool state);
  bool isIndeterminant(MStatus* status = NULL) const;
  MStatus setIndeterminant(bool state);
  bool indexMatters(MStatus* status = NULL) const;
  MStatus setIndexMatters(bool state);
  bool isExtension(MStatus* status = NULL) const;
  bool isDynamic(MStatus* status = NULL) const;
  DisconnectBehavior disconnectBehavior(MStatus* status = NULL) const;
  MStatus setDisconnectBehavior(DisconnectBehavior behavior);
  bool isInternal(MStatus* status = NULL) const { return internal(status); }
  MStatus setInternal(bool state);
  bool internal(MStatus* status = NULL) const;
  MString name(MStatus* status = NULL) const;
  MString niceNameOverride(MStatus* status = NULL) const;
  MStatus setNiceNameOverride(const MString& name);
  MStatus addToCategory(const MString& category);
  bool hasCategory(const MString& category, MStatus* status = NULL) const;
  MString shortName(MStatus* status = NULL) const;
  MObject parent(MStatus* status = NULL) const;
  bool acceptsAttribute(const MObject& attribute, MStatus* status = NULL) const;
  bool accepts(MFnData::Type type, MStatus* status = NULL) const;
  bool accepts(MFnNumericData::Type type, MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
