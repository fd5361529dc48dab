// Cores on a host without a scene, for tests of the engine alone.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/tools/Tool.h"
#include "support/FakeAdaptor.h"
#include "support/ProbeRig.h"
#include "support/QtApplication.h"
#include "support/TempFolder.h"
#include "unidevice/Control.h"

namespace orv::tests {

/// One core that knows the probe.
class CoreTest : public testing::Test {
 protected:
  CoreTest() {
    core.SetAdaptor(&adaptor);
    core.LoadTools({&plugin});
  }
  void Tick(unsigned ms) { core.OnTimer(rws::core::RecordManager::kTakeTimer, ms); }

  FakeAdaptor adaptor;
  ProbePlugin plugin;
  rws::core::CoreImplementation core;
};

/// A data root of its own, with one run of the program after the other on it.
class DataRootTest : public testing::Test {
 protected:
  DataRootTest() {
    rws::core::DataRoot::Set(folder.path);
    rws::core::SetLogListener([this](rws::core::LogLevel level, const std::string& text) {
      if (level == rws::core::LogLevel::kError) errors.push_back(text);
    });
  }
  ~DataRootTest() override {
    core.reset();
    rws::core::SetLogListener({});
    rws::core::DataRoot::Set("");
  }
  void Start(const std::vector<rws::CCameraPlugin*>& rigs,
             rws::TemplateMaker makeTemplate = nullptr) {
    core.reset();
    core = std::make_unique<rws::core::CoreImplementation>();
    core->SetAdaptor(&adaptor);
    core->LoadTools(rigs, makeTemplate);
  }

  TempFolder folder;
  std::vector<std::string> errors;
  FakeAdaptor adaptor;
  ProbePlugin plugin;
  std::unique_ptr<rws::core::CoreImplementation> core;
};

}  // namespace orv::tests
