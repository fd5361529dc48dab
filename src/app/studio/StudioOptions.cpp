#include "app/studio/StudioOptions.h"

#include <CLI/CLI.hpp>
#include <QRegularExpression>
#include <iostream>

#include "core/services/Product.h"

namespace orv::app {

namespace {

std::string CheckGeometry(const std::string& text) {
  static const QRegularExpression pattern(R"(^\d{2,5}x\d{2,5}([+-]\d+[+-]\d+)?$)");
  return pattern.match(QString::fromStdString(text)).hasMatch()
             ? std::string()
             : "must be WIDTHxHEIGHT or WIDTHxHEIGHT+X+Y";
}

constexpr int kWrongUsage = 2;

}  // namespace

bool ReadOptions(int argc, char** argv, StudioOptions& options, int& status) {
  CLI::App app("Performs rigs of a glTF scene, with windows", "rigwright-studio");
  app.set_version_flag("--version",
                       std::string(rws::core::kProductName) + " " + rws::core::kProductVersion);
  app.add_option("SCENE", options.scene, "Scene to open (.glb or .gltf)")->type_name("");
  app.add_option("--script", options.script,
                 "Do what this file says, a command a line; - is standard input")
      ->type_name("FILE");
  app.add_option("--geometry", options.geometry, "Size and place of the main window")
      ->type_name("WxH+X+Y")
      ->check(CheckGeometry);
  app.add_option("--theme", options.theme, "Look (default: the preference)")
      ->check(CLI::IsMember({"dark", "light"}));
  app.add_option("--lang", options.language, "Language (default: the preference)")
      ->check(CLI::IsMember({"en", "de"}));
  app.add_option("--scale", options.scale, "Size of everything (default: the screen's)")
      ->check(CLI::Range(0.5, 4.0));
  std::string quality;
  app.add_option("--quality", quality, "Of the scene's picture; fixed is the same on every machine")
      ->check(CLI::IsMember({"fixed", "machine"}));
  app.add_option("--data-root", options.dataRoot, "Folder for profiles, preferences and logs")
      ->type_name("DIR");
  app.add_option("--seed", options.seed, "Seed of a script's random events (default: 1)")
      ->type_name("N");
  try {
    app.parse(argc, argv);
    options.isFixedQuality = quality == "fixed";
    return true;
  } catch (const CLI::Success& done) {
    status = app.exit(done);
  } catch (const CLI::ParseError& error) {
    std::cerr << "rigwright-studio: " << error.what() << " (see rigwright-studio --help)\n";
    status = kWrongUsage;
  }
  return false;
}

}  // namespace orv::app
