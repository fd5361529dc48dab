// The verbs of the program, one file per group.
#pragma once

namespace orv::app {

class Program;

void AddInfoVerbs(Program& program);       ///< tools, info
void AddRigVerbs(Program& program);        ///< add, remove, rename, clone
void AddRowVerbs(Program& program);        ///< order, check, group
void AddNodeVerbs(Program& program);       ///< parent, place
void AddFitVerb(Program& program);         ///< fit
void AddModelVerbs(Program& program);      ///< import, model make, list, info, add
void AddSettingVerbs(Program& program);    ///< set, press
void AddProfileVerbs(Program& program);    ///< profile list, apply, save, ...
void AddDeviceVerbs(Program& program);     ///< devices, map
void AddCalibrateVerbs(Program& program);  ///< calibrate list, set, clear
void AddWhyVerb(Program& program);
void AddPreferenceVerb(Program& program);  ///< preferences
void AddLicenceVerb(Program& program);     ///< licence
void AddRangeVerb(Program& program);
void AddResimVerb(Program& program);
void AddTakeVerb(Program& program);
void AddTakesVerb(Program& program);
void AddVerifyVerb(Program& program);
void AddFollowVerb(Program& program);
void AddInputsVerb(Program& program);
void AddEditInputsVerb(Program& program);  ///< edit-inputs
void AddExportVerb(Program& program);
void AddPlotVerb(Program& program);
void AddSweepVerbs(Program& program);  ///< sweep, sweep open, collect, work

}  // namespace orv::app
