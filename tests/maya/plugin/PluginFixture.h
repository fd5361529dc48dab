// The plug-in in the stand-in.
#pragma once

#include <gtest/gtest.h>
#include <maya/MFileIO.h>
#include <maya/MFnPlugin.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/plugin/PluginSession.h"
#include "adaptor/maya/scene/StorageAccess.h"
#include "core/CoreImplementation.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "mayahost/Host.h"
#include "support/TempFolder.h"
#include "util/AtomicFile.h"
#include "util/xml/Tag.h"

namespace orv::tests {

/// A new scene, a data root of its own, and the plug-in when it is asked for.
class PluginTest : public testing::Test {
 protected:
  PluginTest() {
    rws::core::DataRoot::Set(folder.path);
    mayahost::Reset();
    mayahost::SetBatch(false);
  }
  ~PluginTest() override {
    // What is in use can't be unloaded.
    MFileIO::newFile(true);
    if (rws::adaptor::maya::PluginSession::Get()) Unload();
    mayahost::Reset();
    mayahost::SetBatch(false);
    rws::core::DataRoot::Set("");
  }

  bool Load() { return mayahost::Load("OrvelRigwright", &initializePlugin); }
  bool Unload() { return mayahost::Unload("OrvelRigwright", &uninitializePlugin); }
  rws::core::CoreImplementation& Core() {
    return rws::adaptor::maya::PluginSession::Get()->GetCore();
  }

  static std::string Join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
  }
  static std::string Registered() { return Join(mayahost::Registered()); }
  static std::string Said() { return Join(mayahost::Said()); }
  static void Forget() { mayahost::Said().clear(); }
  static std::string Run(const std::string& line) { return mayahost::Type(line); }
  static bool Try(const std::string& line) {
    mayahost::Type(line);
    return !mayahost::Failed();
  }

  std::vector<std::string> Rigs() {
    std::vector<std::string> names;
    for (rws::core::Instance* rig : Core().List(false)) names.push_back(rig->GetInstanceName());
    return names;
  }
  /// All that a scene file keeps of the rigs, as sorted lines: a rig lists its nodes in the order
  /// in which it made them, or found them.
  std::string Records() {
    util::xml::Tag tag("rigs");
    Core().SaveScene(tag);
    std::istringstream text(tag.toText());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return Join(lines);
  }
  static std::vector<std::string> Tags() {
    std::vector<std::string> tags;
    for (const auto& node : rws::adaptor::maya::FindTaggedNodes()) tags.push_back(node.tag);
    return tags;
  }

  std::string Path(const std::string& name) const { return folder.path + "/" + name + ".ma"; }
  void Save(const std::string& name) {
    EXPECT_TRUE(MFileIO::saveAs(Path(name).c_str(), "mayaAscii", true));
  }
  void Open(const std::string& name) {
    EXPECT_TRUE(MFileIO::open(Path(name).c_str(), "mayaAscii", true));
  }
  void Import(const std::string& name, const char* space) {
    EXPECT_TRUE(MFileIO::import(Path(name).c_str(), "mayaAscii", false, space));
  }
  std::string Text(const std::string& name) const {
    std::string text;
    EXPECT_TRUE(util::readFile(Path(name), text));
    return text;
  }
  int CountInFile(const std::string& name, const std::string& word) const {
    const std::string text = Text(name);
    int count = 0;
    for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++count;
    return count;
  }
  void ReplaceInFile(const std::string& name, const std::string& from, const std::string& to) {
    std::string text = Text(name);
    for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
      text.replace(at, from.size(), to);
    EXPECT_TRUE(util::writeFile(Path(name), text));
  }

  TempFolder folder;
};

}  // namespace orv::tests
