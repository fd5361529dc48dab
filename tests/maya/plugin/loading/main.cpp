// A host's process of its own that loads the plug-in as the shared library that it is, twice.
//
//   load_plugin PLUGIN.so
//
// Says what went wrong, and fails, unless each load begins as the first did and each unload leaves
// nothing.
#include <dlfcn.h>
#include <maya/MFileIO.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "mayahost/Host.h"

namespace {

int Fail(const std::string& what) {
  std::fprintf(stderr, "load_plugin: %s\n", what.c_str());
  for (const std::string& said : mayahost::Said()) std::fprintf(stderr, "  %s\n", said.c_str());
  return 1;
}

std::string Join(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

/// One life of the library: loaded, used until the undo queue is full, unloaded.
int LoadOnce(const char* path, bool unloadFull) {
  void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (!library) return Fail(dlerror());
  const auto entry = [library](const char* name) {
    return reinterpret_cast<mayahost::EntryPoint>(dlsym(library, name));
  };
  const auto initialize = entry("initializePlugin"), uninitialize = entry("uninitializePlugin");
  const auto* const version = static_cast<const char*>(dlsym(library, "MApiVersion"));
  if (!initialize || !uninitialize || !version) return Fail("an entry point is missing");
  if (std::string(version) != MAYA_API_VERSION_STRING) return Fail("it is for another API");
  mayahost::Said().clear();
  const std::string before = Join(mayahost::Registered());
  if (!mayahost::Load("OrvelRigwright", initialize)) return Fail("it can't be loaded");
  if (Join(mayahost::Registered()) == before) return Fail("it registers nothing");
  // A core of before would know a rig of this name.
  const std::string first = mayahost::Type("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  if (first != "MotionFilterCam_01") return Fail("the first rig is called \"" + first + "\"");
  for (int i = 0; i < 30; ++i) {
    mayahost::Type("OrvelCreateToolCmd -name \"SteadyCam\"");
    mayahost::Type("OrvelDeleteToolCmd -name \"SteadyCam_01\"");
  }
  if (mayahost::UndoQueue().size() < 50) return Fail("the queue is not full");
  mayahost::Undo();
  if (!unloadFull) MFileIO::newFile(true);
  if (!mayahost::Unload("OrvelRigwright", uninitialize)) return Fail("it can't be unloaded");
  if (!mayahost::UndoQueue().empty() || !mayahost::RedoQueue().empty())
    return Fail("its entries are still in the queue");
  if (Join(mayahost::Registered()) != before) return Fail("something stays registered");
  MFileIO::newFile(true);
  if (dlclose(library) != 0) return Fail(dlerror());
  // What still waits for the library would run here.
  QApplication::processEvents();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 2) return Fail("needs the path of the plug-in");
  mayahost::Reset();
  mayahost::SetBatch(false);
  for (const bool unloadFull : {true, false})
    if (const int failed = LoadOnce(argv[1], unloadFull)) return failed;
  std::puts("load_plugin: twice");
  return 0;
}
