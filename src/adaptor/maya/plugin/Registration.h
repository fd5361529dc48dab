// Loading and unloading, as a list that is walked both ways.
#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace orv::rws::adaptor::maya {

/// What the host asks when it loads the plug-in. On failure all that was registered by then is
/// taken back, and the status tells the step by MStatus::perror.
MStatus Load(MObject& plugin);
/// What it asks when it unloads it: nothing of ours is left behind.
MStatus Unload(MObject& plugin);

}  // namespace orv::rws::adaptor::maya
