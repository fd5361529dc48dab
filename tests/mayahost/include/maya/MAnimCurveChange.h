// Changes of keys, to be taken back.
#pragma once
#include <maya/MStatus.h>

#include <memory>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MAnimCurveChange {
 public:
  MAnimCurveChange(MStatus* status = NULL);
  ~MAnimCurveChange();
  MAnimCurveChange(const MAnimCurveChange&) = delete;
  MAnimCurveChange& operator=(const MAnimCurveChange&) = delete;
  MStatus undoIt();
  MStatus redoIt();
  bool isInteractive() const { return fInteractive; }
  void setInteractive(bool interactive) { fInteractive = interactive; }

  std::unique_ptr<mayahost::CurveChangeState> state;  ///< the stand-in's own

 private:
  bool fInteractive = false;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
