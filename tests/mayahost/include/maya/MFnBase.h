// What all function sets have.
#pragma once
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#define declareMinimalMFn(MFnClass)                        \
 public:                                                   \
  MFnClass() = default;                                    \
  MFnClass(MObject& object, MStatus* status = NULL);       \
  MFnClass(const MObject& object, MStatus* status = NULL); \
  MFn::Type type() const override;

#define declareDagMFn(MFnClass) \
  declareMinimalMFn(MFnClass)   \
  MFnClass(const MDagPath& path, MStatus* status = NULL);

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnBase {
 public:
  virtual ~MFnBase() = default;
  virtual MFn::Type type() const;
  bool hasObj(MFn::Type type) const;
  bool hasObj(const MObject& object) const;
  MObject object(MStatus* status = NULL) const;
  virtual MStatus setObject(MObject& object);
  virtual MStatus setObject(const MObject& object);

 protected:
  MStatus Take(const MObject& object);
  MObject fObject;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
