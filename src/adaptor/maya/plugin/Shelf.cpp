#include "adaptor/maya/plugin/Shelf.h"

#include <maya/MDagModifier.h>
#include <maya/MStatus.h>

#include "adaptor/maya/MelText.h"
#include "core/services/DataRoot.h"
#include "core/services/Resources.h"
#include "util/AtomicFile.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kIcon[] = "/orvelicon.xpm";
constexpr char kIconResource[] = ":/data/core/images/orvelicon.xpm";

constexpr char kShelfBeforeIcon[] =
    "string $tabName = \"RigwrightStudio\";global string $gShelfTopLevel;"
    "if(`tabLayout -exists $gShelfTopLevel`){\tif( (`shelfLayout -exists $tabName`) == 0){\t"
    "addNewShelfTab $tabName;\tstring $currentShelf = `tabLayout -query -selectTab "
    "$gShelfTopLevel`;\tsetParent $currentShelf;\tstring $ShowInterfaceIcon = ";

constexpr char kShelfBehindIcon[] =
    ";\tshelfButton -enableCommandRepeat 1 -enable 1 -width `shelfLayout -query -cellWidth "
    "$currentShelf` -height `shelfLayout -query -cellHeight $currentShelf` -manage 1 -visible 1 "
    "-marginWidth 0 -marginHeight 0 -command OrvelShowUICmd -label \"Start Orvel Rigwright\" "
    "-annotation \"Start Orvel Rigwright\" -image $ShowInterfaceIcon -image1 $ShowInterfaceIcon "
    "-style \"iconOnly\";}}";

bool RunMel(const std::string& line) {
  MDagModifier modifier;
  MStatus status = modifier.commandToExecute(line.c_str());
  if (status) status = modifier.doIt();
  return status;
}

}  // namespace

std::string ShelfLine(const std::string& icon) {
  return kShelfBeforeIcon + QuoteMel(icon) + kShelfBehindIcon;
}

std::string ShelfRemovalLine() {
  return "string $tabName = \"RigwrightStudio\";global string $gShelfTopLevel;"
         "if (`tabLayout -exists $gShelfTopLevel`) { if ( (`shelfLayout -exists $tabName`) != 0) "
         "deleteShelfTab $tabName;}";
}

bool AddShelf(std::string& problem) {
  std::string bytes;
  const std::string icon = core::DataRoot::Get() + kIcon;
  if (!core::ReadResource(kIconResource, bytes, &problem)) return false;
  std::string present;
  if (!core::ReadResource(icon, present) || present != bytes) {
    if (!util::writeFile(icon, bytes, &problem)) return false;
  }
  if (RunMel(ShelfLine(icon))) return true;
  problem = "the host refused to make the shelf";
  return false;
}

void RemoveShelf() {
  RunMel(ShelfRemovalLine());
}

}  // namespace orv::rws::adaptor::maya
