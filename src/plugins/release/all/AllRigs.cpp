#include "plugins/release/all/AllRigs.h"

#include "plugins/release/1dpositioner/1dpositioner_C1DPositionerObject.h"
#include "plugins/release/1drotator/1drotator_C1DRotatorObject.h"
#include "plugins/release/1dscaler/1dscaler_C1DScalerObject.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"
#include "plugins/release/crawlertracks/crawlertracks_CrawlerTracks.h"
#include "plugins/release/directinputlink/directinputlink_CDirectInputLinkObject.h"
#include "plugins/release/firepower/firepower_Firepower.h"
#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamObject.h"
#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"
#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"

namespace orv::rws::addon {

std::vector<CCameraPlugin*> AllRigs() {
  static CMotionFilterCamPlugin motionFilterCam;
  static CSteadyCamPlugin steadyCam;
  static CDirectInputLinkPlugin directInputLink;
  static C1DPositionerPlugin positioner;
  static C1DRotatorPlugin rotator;
  static C1DScalerPlugin scaler;
  static CCarCamPlugin fourWheeler;
  static CCameraRailPlugin cameraRail;
  static CrawlerTracksPlugin crawlerTracks;
  static CFirepowerPlugin firepower;
  return {&motionFilterCam, &steadyCam,   &directInputLink, &positioner,    &rotator,
          &scaler,          &fourWheeler, &cameraRail,      &crawlerTracks, &firepower};
}

}  // namespace orv::rws::addon
