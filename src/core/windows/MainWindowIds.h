// The numbers of the main window's components; 112 to 117 stand in core/WindowIds.h.
#pragma once

namespace orv::rws::core::windows {

inline constexpr char kMainLayout[] = "/core/layout/rws_main.xml";
inline constexpr char kFitCarLayout[] = "/core/layout/rws_fitcar.xml";

/// None of them is a number of a window that is docked in it: messages of those pass by here.
enum MainWindowComponent : int {
  kMainMenu = 300,
  kMenuEdit,
  kMainBanner = 303,  ///< border, hidden while all mapped devices are there
  kMainBannerText,
  kMainBannerDevices,  ///< button
  kMainColumns,        ///< splitter: lists, scene, pages
  kMainNotice = 308,   ///< border, hidden while there is nothing to say
  kMainNoticeText,     ///< label
  kMainNoticeLink,     ///< button, of a notice with a page
  kMainNoticeClose,    ///< button
  kMainStage,          ///< view: the scene, hidden where the host shows it by itself
  kMainLeft,           ///< splitter: tools, rigs
  kMainTimeline,       ///< view, hidden where the host has a time line
  kMainTimeButtons,    ///< list, hidden likewise; its buttons have the ids of commands
  kMainRight,          ///< splitter: pages, the scene's nodes
  kMainCurves,         ///< view below the time line; as all of its, the program's page shows it
  kCurvePanel,         ///< list
  kCurveInputs,        ///< tree

  // Tools.
  kToolSearch = 320,  ///< text box
  kToolTree,
  kToolProduct,  ///< list: the product's page comes into it
  kToolNotice,   ///< label

  // Rigs.
  kRigTree = 330,
  kRigNotice,  ///< label
  kRigSearch,  ///< text box

  // Nodes of the scene.
  kNodeArea = 340,  ///< hidden where the host shows its scene by itself
  kNodeSearch,      ///< text box
  kNodeTree,
  kNodeNotice,         ///< label
  kNodePose,           ///< group
  kNodeSpace,          ///< combo box: in its parent, in the world
  kNodeFields,         ///< list around the nine below
  kNodeNumbers = 350,  ///< spinners: translation, rotation, scale, x to z each
  kNodeGround = 360,   ///< entries of the tree's menu and of the menu bar
  kNodeFit,
  kNodeToWorld,
  kNodeSelectDriven,

  // Pages at the right.
  kPageParameters = 370,  ///< toggle buttons
  kPageUndo,
  kPageDevices,
  kPageTakes,              ///< hidden unless the program has a page for it
  kPanelParameters = 380,  ///< what they show
  kPanelUndo,
  kPanelDevices,
  kPanelTakes,
  kDockArea = 390,  ///< list: panels are docked in it
  kDockHint,        ///< label
  kDockFloat,       ///< button: into a window of its own, or back
  kDockHelp,        ///< label with links: what to do first, while there is no rig
  kUndoList = 395,  ///< list box; the item's id is the number of steps in force
  kDeviceList,      ///< list box
  kDeviceHint,      ///< label

  // Take.
  kTakeRecord = 400,  ///< buttons
  kTakeStop,
  kTakeRetry,
  kTakeSlowText,  ///< label beside the index: "4 x slower"
  kTakeTime,      ///< spinners (s)
  kTakeFrom,
  kTakeTo,
  kTakeRate,    ///< spinner (frames per second)
  kTakeStatus,  ///< label
  kTakeFrame,   ///< spinner: the time in frames

  // Curves of inputs.
  kCurvePoints = 411,  ///< toggle buttons
  kCurveDraw,
  kCurveSmooth,
  kCurveBrush,  ///< spinner (s)

  // Kept takes.
  kKeptList = 420,  ///< view
  kKeptHint,        ///< label
  kKeptName,        ///< text box
  kKeptStars,       ///< combo box; an item's id is the number of stars
  kKeptNote,        ///< text box
  kKeptUse,         ///< buttons
  kKeptDelete,
  kKeptExport,
  kKeptImport,
};

/// The page of a product.
enum ProductId : int {
  kProductTitle = 1,
  kProductText,    ///< text box of several lines
  kProductAuthor,  ///< label
  kProductCreate,  ///< button
};

/// The dialog that fits a car.
enum FitCarId : int {
  kFitText = 10,
  kFitBody = 11,    ///< combo boxes
  kFitWheels = 12,  ///< the first of four: front left, front right, back left, back right
  kFitAccept = 20,
  kFitCancel = 21,
};

}  // namespace orv::rws::core::windows
