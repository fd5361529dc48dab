// Animation curves.
#pragma once
#include <maya/MAngle.h>
#include <maya/MAnimCurveChange.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MTime.h>
#include <maya/MTimeArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnAnimCurve : public MFnDependencyNode {
  declareMinimalMFn(MFnAnimCurve)
  // clang-format off
  enum AnimCurveType {
    kAnimCurveTA, kAnimCurveTL, kAnimCurveTT, kAnimCurveTU, kAnimCurveUA, kAnimCurveUL, kAnimCurveUT, kAnimCurveUU, kAnimCurveUnknown
  };
  // clang-format on
  // clang-format off
  enum TangentType {
    kTangentGlobal, kTangentFixed, kTangentLinear, kTangentFlat, kTangentSmooth, kTangentStep, kTangentSlow, kTangentFast, kTangentClamped,
    kTangentPlateau, kTangentStepNext, kTangentAuto
  };
  // clang-format on
  enum InfinityType { kConstant = 0, kLinear = 1, kCycle = 3, kCycleRelative = 4, kOscillate = 5 };
  typedef double TangentValue;
  MFnAnimCurve(const MPlug& plug, MStatus* status = NULL);
  MObject create(const MObject& node, const MObject& attribute, MDGModifier* modifier = NULL, MStatus* status = NULL);
  MObject create(const MObject& node, const MObject& attribute, AnimCurveType type, MDGModifier* modifier = NULL, MStatus* status = NULL);
  MObject create(MPlug& plug, MDGModifier* modifier = NULL, MStatus* status = NULL);
  MObject create(MPlug& plug, AnimCurveType type, MDGModifier* modifier = NULL, MStatus* status = NULL);
  MObject create(AnimCurveType type, MDGModifier* modifier = NULL, MStatus* status = NULL);
  AnimCurveType animCurveType(MStatus* status = NULL) const;
  bool isTimeInput(MStatus* status = NULL) const;
  bool isUnitlessInput(MStatus* status = NULL) const;
  unsigned int numKeys(MStatus* status = NULL) const;
  unsigned int numKeyframes(MStatus* status = NULL) const { return numKeys(status); }
  bool isStatic(MStatus* status = NULL) const;
  AnimCurveType timedAnimCurveTypeForPlug(const MPlug& plug, MStatus* status = NULL) const;
  AnimCurveType unitlessAnimCurveTypeForPlug(const MPlug& plug, MStatus* status = NULL) const;
  MStatus evaluate(const MTime& time, double& value) const;
  double evaluate(const MTime& time, MStatus* status = NULL) const;
  MStatus evaluate(double unitlessInput, double& value) const;
  double unitlessInput(unsigned int index, MStatus* status = NULL) const;
  MStatus setUnitlessInput(unsigned int index, double input, MAnimCurveChange* change = NULL);
  bool find(double unitlessInput, unsigned int& index, MStatus* status = NULL) const;
  unsigned int findClosest(double unitlessInput, MStatus* status = NULL) const;
  MTime time(unsigned int index, MStatus* status = NULL) const;
  double value(unsigned int index, MStatus* status = NULL) const;
  MStatus setTime(unsigned int index, const MTime& time, MAnimCurveChange* change = NULL);
  MStatus setValue(unsigned int index, double value, MAnimCurveChange* change = NULL);
  bool find(const MTime& time, unsigned int& index, MStatus* status = NULL) const;
  unsigned int findClosest(const MTime& time, MStatus* status = NULL) const;
  unsigned int addKey(const MTime& time, double value, TangentType in = kTangentGlobal, TangentType out = kTangentGlobal, MAnimCurveChange* change = NULL,
                      MStatus* status = NULL);
  unsigned int addKey(double unitlessInput, double value, TangentType in = kTangentGlobal, TangentType out = kTangentGlobal, MAnimCurveChange* change = NULL,
                      MStatus* status = NULL);
  MStatus addKeyframe(const MTime& time, double value, MAnimCurveChange* change = NULL);
  MStatus addKeyframe(const MTime& time, double value, TangentType in, TangentType out, MAnimCurveChange* change = NULL);
  MStatus addKeys(const MTimeArray* times, const MDoubleArray* values, TangentType in = kTangentGlobal, TangentType out = kTangentGlobal,
                  bool keepExistingKeys = false, MAnimCurveChange* change = NULL);
  MStatus remove(unsigned int index, MAnimCurveChange* change = NULL);
  TangentType inTangentType(unsigned int index, MStatus* status = NULL) const;
  TangentType outTangentType(unsigned int index, MStatus* status = NULL) const;
  MStatus setInTangentType(unsigned int index, TangentType type, MAnimCurveChange* change = NULL);
  MStatus setOutTangentType(unsigned int index, TangentType type, MAnimCurveChange* change = NULL);
  MStatus getTangent(unsigned int index, TangentValue& x, TangentValue& y, bool in) const;
  MStatus getTangent(unsigned int index, MAngle& angle, double& weight, bool in) const;
  MStatus getTangent(unsigned int index, float& x, float& y, bool in) const;
  MStatus setTangentTypes(const MIntArray& indices, TangentType in = kTangentGlobal, TangentType out = kTangentGlobal, MAnimCurveChange* change = NULL);
  MStatus setTangent(unsigned int index, TangentValue x, TangentValue y, bool in, MAnimCurveChange* change = NULL, bool convertUnits = true);
  MStatus setTangent(unsigned int index, const MAngle& angle, double weight, bool in, MAnimCurveChange* change = NULL, bool convertUnits = true);
  MStatus setAngle(unsigned int index, const MAngle& angle, bool in, MAnimCurveChange* change = NULL);
  MStatus setWeight(unsigned int index, double weight, bool in, MAnimCurveChange* change = NULL);
  bool isWeighted(MStatus* status = NULL) const;
  MStatus setIsWeighted(bool weighted, MAnimCurveChange* change = NULL);
  bool tangentsLocked(unsigned int index, MStatus* status = NULL) const;
  MStatus setTangentsLocked(unsigned int index, bool locked, MAnimCurveChange* change = NULL);
  bool weightsLocked(unsigned int index, MStatus* status = NULL) const;
  MStatus setWeightsLocked(unsigned int index, bool locked, MAnimCurveChange* change = NULL);
  bool isBreakdown(unsigned int index, MStatus* status = NULL) const;
  MStatus setIsBreakdown(unsigned int index, bool breakdown, MAnimCurveChange* change = NULL);
  InfinityType preInfinityType(MStatus* status = NULL) const;
  InfinityType postInfinityType(MStatus* status = NULL) const;
  MStatus setPreInfinityType(InfinityType type, MAnimCurveChange* change = NULL);
  MStatus setPostInfinityType(InfinityType type, MAnimCurveChange* change = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
