// The numbers of the components of the desktop program's own windows.
#pragma once

namespace orv::app {

enum ImportId : int {
  kImportFile = 10,  ///< labels
  kImportContent,
  kImportUnit,    ///< combo box
  kImportMetres,  ///< spinner
  kImportUp,      ///< combo box
  kImportSource,  ///< labels
  kImportSize,
  kImportOdd,
  kImportAccept = 20,
  kImportCancel,
};

enum ModelsId : int {
  kModelList = 10,
  kModelFromFile,
  kModelPicture,  ///< view
  kModelTitle,
  kModelText,
  kModelFacts,
  kModelGround,  ///< combo box; an item's id is its place in the list of nodes, 0 is none
  kModelAdd = 20,
  kModelCancel,
};

enum MakeModelId : int {
  kMakeParts = 10,  ///< tree
  kMakeTitle,
  kMakeText,
  kMakePicture,  ///< view
  kMakeChoosePicture,
  kMakeNoPicture,
  kMakeNotice,
  kMakeAccept = 20,
  kMakeCancel,
};

enum MediaId : int {
  kMediaText = 10,
  kMediaFile,  ///< label
  kMediaChoose,
  kMediaNone,
  kMediaNotice,
  kMediaFrameLabel,
  kMediaFrame,       ///< spinner
  kMediaOpacityRow,  ///< list
  kMediaOpacity,     ///< spinner (%)
  kMediaAccept = 20,
  kMediaCancel,
};

enum PreviewId : int {
  kPreviewCamera = 10,  ///< combo box; an item's id is its place in the list of cameras, 0 the eye
  kPreviewWidth,        ///< spinners
  kPreviewHeight,
  kPreviewSigns,    ///< check box
  kPreviewFrames,   ///< label
  kPreviewOverlay,  ///< check box
  kPreviewAccept = 20,
  kPreviewCancel,
};

enum PunchId : int {
  kPunchText = 10,  ///< label
  kPunchPreRoll,    ///< spinners (s)
  kPunchBlend,
  kPunchGoOn,  ///< check box
  kPunchAccept = 20,
  kPunchCancel,
};

enum FollowId : int {
  kFollowRig = 10,  ///< combo boxes
  kFollowProfile,
  kFollowName,     ///< text box
  kFollowInPlace,  ///< check boxes
  kFollowToEnd,
  kFollowAsProfile,
  kFollowAccept = 20,
  kFollowCancel,
};

enum ProgressId : int { kProgressText = 10, kProgressBar, kProgressCancel };

enum HelpId : int { kHelpPages = 10, kHelpScroll, kHelpText, kHelpClose };

}  // namespace orv::app
