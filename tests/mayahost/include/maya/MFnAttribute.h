// Definitions of attributes.
#pragma once
#include <maya/MFnBase.h>
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
  bool isDynamic(MStatus* status = NULL) const;
  DisconnectBehavior disconnectBehavior(MStatus* status = NULL) const;
  MStatus setDisconnectBehavior(DisconnectBehavior behavior);
  MStatus setInternal(bool state);
  bool internal(MStatus* status = NULL) const;
  MString name(MStatus* status = NULL) const;
  MString shortName(MStatus* status = NULL) const;
  MObject parent(MStatus* status = NULL) const;
  bool accepts(MFn::Type) const { return true; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
