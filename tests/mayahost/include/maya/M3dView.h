// Views.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MStatus.h>
class QWidget;
OPENMAYA_MAJOR_NAMESPACE_OPEN
class M3dView {
 public:
  static M3dView active3dView(MStatus* status = NULL);
  static QWidget* applicationShell(MStatus* status = NULL);
  MStatus refresh(bool all = false, bool force = false);
  MStatus refresh(bool all, bool force, bool offscreen) { return (void)offscreen, refresh(all, force); }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
