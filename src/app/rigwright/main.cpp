// The command line program.
#include <QString>
#include <QtGlobal>
#include <cstdio>
#include <exception>

#include "app/rigwright/Program.h"
#include "app/rigwright/Verbs.h"

namespace {

/// What Qt has to say beside errors is about the desktop that this program does without.
void hearQt(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg)
    std::fprintf(stderr, "rigwright: %s\n", text.toLocal8Bit().constData());
}

int runProgram(int argc, char** argv) {
  orv::app::Program program;
  orv::app::addInfoVerbs(program);
  orv::app::addRigVerbs(program);
  orv::app::addRowVerbs(program);
  orv::app::addNodeVerbs(program);
  orv::app::addFitVerb(program);
  orv::app::addSettingVerbs(program);
  orv::app::addProfileVerbs(program);
  orv::app::addDeviceVerbs(program);
  orv::app::addRangeVerb(program);
  orv::app::addResimVerb(program);
  orv::app::addTakeVerb(program);
  orv::app::addInputsVerb(program);
  orv::app::addExportVerb(program);
  orv::app::addPlotVerb(program);
  orv::app::addPreferenceVerb(program);
  return program.run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(hearQt);
  qputenv("QT_QPA_PLATFORM", "offscreen");  // pictures are drawn without any display
  try {
    return runProgram(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rigwright: unexpected failure: %s (nothing was written; please report)\n",
                 error.what());
  } catch (...) {
    std::fprintf(stderr, "rigwright: unexpected failure (nothing was written; please report)\n");
  }
  return 1;
}
