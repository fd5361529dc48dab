// The numbers of the components that show inputs and devices.
#pragma once

namespace orv::rws::core::windows {

enum InputConfigId : int {
  kInputTitle = 300,  ///< label
  kInputProfiles,     ///< list: the row of profiles comes into it
  kInputNotice,       ///< label: what a request had to say
  kInputDevices,      ///< button
  kInputRows,         ///< list: the inputs come into it
  kInputHint,         ///< label: that there are none
  kInputChosen,       ///< list with all that is of the chosen input
  kInputName,         ///< labels
  kInputMapping,
  kInputDescription,
  kInputPress = 310,  ///< buttons
  kInputPressPair,
  kInputUnmap,
  kInputTask,  ///< border around the next two, while a control is looked for
  kInputTaskText,
  kInputTaskCancel,
  kInputGraph,
  kInputDeadzone,  ///< spinners
  kInputExponent,
  kInputMultiplier,
  kInputOffset,
  kInputInvert,       ///< check box
  kInputCalibration,  ///< list: the calibration comes into it
  kInputArmAll,       ///< check box
};

/// Within the row of an input.
enum InputRowId : int {
  kInputRowName = 1,  ///< button that chooses it
  kInputRowMapping = 2,
  kInputRowConflict = 3,  ///< list around the next
  kInputRowConflictText = 4,
  kInputRowBars = 5,
  kInputRowArmed = 6,  ///< check box
};

/// Within the document of a calibration.
enum CalibrationId : int {
  kCalibrationControl = 1,  ///< combo box, where there are two controls
  kCalibrationState = 2,
  kCalibratePedal = 3,
  kCalibrateAxis = 4,
  kCalibrationForget = 5,
  kMeasure = 6,  ///< border around the next ones, while it is measured
  kMeasureText = 7,
  kMeasureValue = 8,
  kMeasureNext = 9,
  kMeasureCancel = 10,
  kCalibrationButtons = 11,  ///< list of those above
};

enum DevicesId : int {
  kDevicesHint = 400,
  kDevicesRows,
  kDevicesAbsent,  ///< border around the next
  kDevicesAbsentText,
  kDevicesControl,  ///< label: the control that is calibrated
  kDevicesCalibration,
};

/// Within the row of a device, and of one of its controls.
enum DeviceRowId : int { kDeviceGroup = 11, kDeviceControls = 12, kDeviceLamps = 13 };
enum ControlRowId : int { kControlName = 1, kControlBar = 2, kControlCalibration = 3 };

}  // namespace orv::rws::core::windows
