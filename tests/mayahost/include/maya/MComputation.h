// Long work, which nobody stops here.
#pragma once
#include <maya/MApiNamespace.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MComputation {
 public:
  void beginComputation(bool = false, bool = true, bool = true) { fProgress = fLow; }
  bool isInterruptRequested() { return false; }
  void endComputation() {}
  void setProgressRange(int low, int high) { fLow = low, fHigh = high; }
  int progressMin() const { return fLow; }
  int progressMax() const { return fHigh; }
  void setProgress(int progress) { fProgress = progress; }
  int progress() const { return fProgress; }

 private:
  int fLow = 0, fHigh = 100, fProgress = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
