// The desktop program.
#include <QApplication>
#include <cstdio>
#include <exception>

#include "app/studio/Studio.h"
#include "app/studio/StudioOptions.h"
#include "app/studio/view/Graphics.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"

namespace {

int RunStudio(int argc, char** argv, const orv::app::StudioOptions& options) {
  using namespace orv;
  if (options.scale > 0.0) qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
  QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
  QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
  // As the view needs it, for all windows: they are composed of it.
  QSurfaceFormat::setDefaultFormat(app::view::MakeFormat(0));
  QApplication application(argc, argv);
  QApplication::setApplicationName("rigwright-studio");
  QApplication::setQuitOnLastWindowClosed(false);
  if (!options.dataRoot.empty()) rws::core::DataRoot::Set(options.dataRoot);
  std::string problem;
  if (!rws::core::NewLog(rws::core::DataRoot::GetDataFolder() + "/core.log", &problem))
    std::fprintf(stderr, "rigwright-studio: no log: %s\n", problem.c_str());
  app::Studio studio(options);
  if (!studio.Begin(problem)) {
    std::fprintf(stderr, "rigwright-studio: %s\n", problem.c_str());
    return 1;
  }
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  orv::app::StudioOptions options;
  int status = 0;
  if (!orv::app::ReadOptions(argc, argv, options, status)) return status;
  try {
    return RunStudio(argc, argv, options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rigwright-studio: unexpected failure: %s (please report)\n",
                 error.what());
  }
  return 1;
}
