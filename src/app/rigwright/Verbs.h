// The verbs of the program, one file per group.
#pragma once

namespace orv::app {

class Program;

void addInfoVerbs(Program& program);       ///< tools, info
void addRigVerbs(Program& program);        ///< add, remove, rename, clone
void addRowVerbs(Program& program);        ///< order, check, group
void addNodeVerbs(Program& program);       ///< parent, place
void addFitVerb(Program& program);         ///< fit
void addSettingVerbs(Program& program);    ///< set, press
void addProfileVerbs(Program& program);    ///< profile list, apply, save, ...
void addDeviceVerbs(Program& program);     ///< devices, map
void addPreferenceVerb(Program& program);  ///< preferences
void addRangeVerb(Program& program);
void addResimVerb(Program& program);
void addTakeVerb(Program& program);
void addInputsVerb(Program& program);
void addExportVerb(Program& program);
void addPlotVerb(Program& program);

}  // namespace orv::app
