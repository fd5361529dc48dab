// Ids of the main window's menu entries.
#pragma once

namespace orv::rws::core::windows {

/// Entries from here on, up to kLastProgramCommand, are the program's: see Program::RunCommand.
inline constexpr int kProgramCommands = 3000;
inline constexpr int kLastProgramCommand = 3999;

enum ProgramCommand : int {
  kCommandNew = kProgramCommands,
  kCommandOpen,
  kCommandSave,
  kCommandSaveAs,
  kCommandRecent,  ///< a menu; its entries follow from kFirstRecent on
  kCommandImport,
  kCommandExportScene,  ///< for delivery
  kCommandExportPoses,
  kCommandExportPicture,
  kCommandOpenModel,  ///< a pre-rigged model into the scene
  kCommandMakeModel,
  kCommandQuit,
  kCommandExamples,  ///< a menu; its entries follow from kFirstExample on
  kCommandHelp,
  kCommandLicence,
  kCommandUpdate,
  kCommandPreview,  ///< a folder of pictures
  kCommandExportAnimation,
  // The menu of time.
  kCommandTime = 3040,  ///< the menu itself
  kCommandPlay,
  kCommandPlayBackwards,
  kCommandFrameBack,
  kCommandFrameOn,
  kCommandKeyBack,
  kCommandKeyOn,
  kCommandRangeBegin,
  kCommandRangeEnd,
  kCommandLoop,
  kCommandEveryFrame,
  kCommandSound,
  kCommandBackdrop,
  kCommandCurves,
  kCommandPunch,       ///< a take between the marks
  kCommandPunchBegin,  ///< the marks
  kCommandPunchEnd,
  kCommandFollow,  ///< a rig's line, driven once more
  kFirstRecent = 3100,
  kFirstExample = 3200,
};

/// Entries that the main window answers by itself.
enum WindowCommand : int {
  kCommandUndo = 2000,
  kCommandRedo,
  kCommandDelete,
  kCommandDuplicate,
  kCommandRename,
  kCommandGroup,
  kCommandUngroup,
  kCommandSelectAll,
  kCommandConfigure,  ///< the selected rig's parameters
  kCommandInputs,     ///< its inputs
  kCommandRecord,
  kCommandStop,
  kCommandRetry,
  kCommandResimulate,
  kCommandPreferences,
  kCommandDevices,
  kCommandLog,
  kCommandHotKeys,
  kCommandWhy,
  kCommandRescanTools,
  kCommandAbout,
  kCommandArmAll,   ///< takes record all inputs of the selected rigs
  kCommandArmNone,  ///< takes play what was recorded of them
};

}  // namespace orv::rws::core::windows
