// The names that the host looks for: nothing else is seen from outside.
#include <maya/MFnPlugin.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include "adaptor/maya/plugin/Registration.h"

MStatus initializePlugin(MObject object) {
  return orv::rws::adaptor::maya::Load(object);
}

MStatus uninitializePlugin(MObject object) {
  return orv::rws::adaptor::maya::Unload(object);
}
