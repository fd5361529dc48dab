// The numbers of the tool configuration's components.
#pragma once

namespace orv::rws::core::windows {

inline constexpr char kToolConfigLayout[] = "/core/layout/rws_toolconfig.xml";
inline constexpr char kGroupRow[] = "/core/layout/rows/group.xml";
inline constexpr char kSpinnerRow[] = "/core/layout/rows/spinner.xml";
inline constexpr char kCheckBoxRow[] = "/core/layout/rows/checkbox.xml";
inline constexpr char kComboBoxRow[] = "/core/layout/rows/combobox.xml";
inline constexpr char kTextBoxRow[] = "/core/layout/rows/textbox.xml";
inline constexpr char kButtonRow[] = "/core/layout/rows/button.xml";
inline constexpr char kGaugeRow[] = "/core/layout/rows/gauge.xml";
inline constexpr char kNoteRow[] = "/core/layout/rows/note.xml";

enum ToolConfigId : int {
  kConfigTitle = 200,   ///< label: the rig's name, or how many rigs
  kConfigSearch = 204,  ///< text box
  kConfigScroll = 205,
  kConfigRows = 206,      ///< list: groups and rows come into it
  kConfigNotice = 207,    ///< label: what a request had to say
  kConfigInputs = 208,    ///< button: the rig's inputs
  kConfigProfiles = 209,  ///< list: the row of profiles comes into it

  kResetGroup = 228,  ///< of a group's popup
};

/// Within each row.
enum ParameterRowId : int {
  kRowLabel = 1,
  kRowValue = 2,  ///< spinner, check box, combo box, text box, button, or the label of a gauge
  kRowSlider = 3,
  kRowReset = 4,  ///< button
  kGroupRows = 5,
  kGroupBox = 6,
};

}  // namespace orv::rws::core::windows
