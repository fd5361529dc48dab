/// Runs the Khronos glTF validator (an npm package) on files that the tests wrote.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace orv::tests {

class GltfValidator {
 public:
  /// Whether node and the package are there. The first call fetches the package into the build
  /// folder, and says on stderr when it can't.
  static bool available() {
    static const bool result = prepare();
    return result;
  }

  /// Errors that the validator finds in the file, one a line; "" for none. Asks for available().
  static std::string errorsOf(const std::string& file) {
    const std::string command = "node '" ORV_SOURCE_DIR "/tests/support/validate_gltf.mjs' '" +
                                folder() + "' '" + file + "' 2>&1";
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "cannot run " + command;
    char part[4096];
    while (std::fgets(part, sizeof part, pipe) != nullptr) output += part;
    const int status = pclose(pipe);
    return status != 0 && output.empty() ? "the validator failed" : output;
  }

 private:
  static std::string folder() { return ORV_BINARY_DIR "/validator"; }

  static bool prepare() {
    const std::string package = folder() + "/node_modules/gltf-validator/package.json";
    if (std::system("command -v node >/dev/null 2>&1") == 0) {
      std::filesystem::create_directories(folder());
      // Programs of one test run share the folder.
      const std::string install = "flock '" + folder() + "/lock' sh -c 'test -f \"" + package +
                                  "\" || npm install --silent --prefix \"" + folder() +
                                  "\" gltf-validator@2.0.0-dev.3.10' >/dev/null 2>&1";
      if (std::system(install.c_str()) == 0 && std::filesystem::exists(package)) return true;
    }
    std::fputs(
        "\n*** THE glTF VALIDATOR IS MISSING: written files are NOT validated. ***\n"
        "*** Install node and npm, and allow npm to fetch gltf-validator.   ***\n\n",
        stderr);
    return false;
  }
};

}  // namespace orv::tests
