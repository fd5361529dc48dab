// Views.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MStatus.h>
class QWidget;
OPENMAYA_MAJOR_NAMESPACE_OPEN
class M3dView {
 public:
  static M3dView active3dView(MStatus* status = NULL);
  static unsigned int numberOf3dViews();
  static MStatus get3dView(unsigned int index, M3dView& view);
  static QWidget* applicationShell(MStatus* status = NULL);
  MStatus refresh(bool all = false, bool force = false);
  MStatus refresh(bool all, bool force, bool offscreen) { return (void)offscreen, refresh(all, force); }
  static MStatus scheduleRefreshAllViews();
  MStatus getCamera(MDagPath& camera) const;
  int portWidth(MStatus* status = NULL) const;
  int portHeight(MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
