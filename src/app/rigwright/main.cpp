// The command line program.
#include <QString>
#include <QtGlobal>
#include <cstdio>
#include <exception>

#include "app/rigwright/Program.h"
#include "app/rigwright/Verbs.h"

namespace {

/// What Qt has to say beside errors is about the desktop that this program does without.
void HearQt(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg)
    std::fprintf(stderr, "rigwright: %s\n", text.toLocal8Bit().constData());
}

int RunProgram(int argc, char** argv) {
  orv::app::Program program;
  orv::app::AddInfoVerbs(program);
  orv::app::AddRigVerbs(program);
  orv::app::AddRowVerbs(program);
  orv::app::AddNodeVerbs(program);
  orv::app::AddFitVerb(program);
  orv::app::AddModelVerbs(program);
  orv::app::AddSettingVerbs(program);
  orv::app::AddProfileVerbs(program);
  orv::app::AddDeviceVerbs(program);
  orv::app::AddCalibrateVerbs(program);
  orv::app::AddRangeVerb(program);
  orv::app::AddResimVerb(program);
  orv::app::AddTakeVerb(program);
  orv::app::AddTakesVerb(program);
  orv::app::AddVerifyVerb(program);
  orv::app::AddFollowVerb(program);
  orv::app::AddInputsVerb(program);
  orv::app::AddEditInputsVerb(program);
  orv::app::AddWhyVerb(program);
  orv::app::AddExportVerb(program);
  orv::app::AddPlotVerb(program);
  orv::app::AddSweepVerbs(program);
  orv::app::AddPreferenceVerb(program);
  orv::app::AddLicenceVerb(program);
  return program.Run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(HearQt);
  qputenv("QT_QPA_PLATFORM", "offscreen");  // pictures are drawn without any display
  try {
    return RunProgram(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rigwright: unexpected failure: %s (nothing was written; please report)\n",
                 error.what());
  } catch (...) {
    std::fprintf(stderr, "rigwright: unexpected failure (nothing was written; please report)\n");
  }
  return 1;
}
