// The numbers of the components of small windows.
#pragma once

namespace orv::rws::core::windows {

enum MessageBoxId : int {
  kBoxIcon = 2,
  kBoxText = 3,
  kBoxFirstAnswer = 10,  ///< the buttons follow in the order of MessageBoxAnswer
};

enum CountdownId : int { kCountdownSeconds = 2, kCountdownFraction = 3, kCountdownCancel = 4 };

enum LogId : int {
  kLogLevel = 10,
  kLogSearch,
  kLogFollow,
  kLogCopy,
  kLogLines = 20,
  kLogCount,
};

enum PreferencesId : int {
  kPreferenceRows = 10,
  kPreferenceNotice,
  kDataRootPath,
  kDataRootOpen,
  kPreferencesClose,
};

/// Within a row of the preferences.
enum PreferenceRowId : int { kPreferenceLabel = 1, kPreferenceValue = 2 };

enum HotKeysId : int { kHotKeyList = 10, kHotKeysClose };

enum WhyId : int { kWhySummary = 10, kWhyReasons, kWhyRemedy, kWhyShowRig, kWhyClose };

enum LicenceId : int {
  kLicenceIcon = 10,
  kLicenceText,
  kLicenceFields,  ///< list around what a licence says
  kLicenceOwner,
  kLicenceNumber,
  kLicenceUntil,
  kLicenceFeatures,
  kLicenceNeeded,  ///< list around what a program that needs one shows
  kLicenceFile,
  kLicenceKinds,
  kLicenceReload,
  kLicenceFolder,
  kLicenceClose,
};

enum AboutId : int { kAboutName = 10, kAboutVersion, kAboutClose };

}  // namespace orv::rws::core::windows
