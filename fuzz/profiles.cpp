// Whatever document reads as profiles must leave a tree with finite values in their ranges, and
// must come back the same from the present form.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "core/config/ConfigProfileManager.h"
#include "core/config/ConfigTree.h"
#include "core/config/InputProfileManager.h"
#include "unidevice/Property.h"
#include "unidevice/PropertyHandler.h"

using namespace orv;
using rws::core::ConfigElement;
using rws::core::ConfigProfileManager;
using rws::core::ConfigTree;
using rws::core::InputProfileManager;
using util::xml::Element;
using util::xml::Tag;

static void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

namespace {

/// One element of each kind, in nested groups that share labels.
struct Rig {
  Rig() {
    tree.BeginGroup("A", "");
    tree.AddCheckBox("On", "", &on, nullptr);
    tree.AddSpinner("Factor", "", &factor, -1.0, 100.0, 0.1, 2, nullptr);
    tree.BeginGroup("A", "");
    tree.AddSpinnerInt("Count", "", &count, -3, 9, 1, nullptr);
    tree.AddTextBox("Text", "", &text, nullptr);
    tree.EndGroup();
    tree.EndGroup();
    tree.BeginGroup("B", "");
    tree.AddComboBox("Mode", "", {"x", "y", "1"}, &mode, nullptr);
    tree.AddButton("Press", "", nullptr);
    tree.AddSpinner("Factor", "", &second, 0.0, 1e300, 0.1, 2, nullptr);
    tree.EndGroup();
  }
  bool on = false;
  double factor = 1.0, second = 2.0;
  int count = 1, mode = 0;
  std::string text;
  ConfigTree tree;
};

Tag written(const Rig& rig) {
  Tag profile("configprofile");
  rig.tree.Write(profile);
  return profile;
}

}  // namespace

static void checkConfig(const Element& document) {
  std::vector<Tag> profiles;
  if (!ConfigProfileManager::Parse(document, "Stem", profiles)) return;
  for (Tag& profile : profiles) {
    Rig rig;
    rig.tree.Read(profile);
    require(rig.factor >= -1.0 && rig.factor <= 100.0, "a real value is in its range");
    require(rig.second >= 0.0 && rig.second <= 1e300, "the second real value is in its range");
    require(rig.count >= -3 && rig.count <= 9, "a whole number is in its range");
    require(rig.mode >= 0 && rig.mode <= 2, "an index is in its range");

    rig.tree.Upgrade(profile);
    Rig upgraded;
    upgraded.tree.Read(profile);
    require(written(upgraded) == written(rig), "the upgraded profile has the same values");

    Tag saved("");
    require(saved.loadText(written(rig).toText()) == 0, "a written profile reads");
    std::vector<Tag> again;
    require(ConfigProfileManager::Parse(saved, "Stem", again) && again.size() == 1, "as a profile");
    Rig back;
    require(back.tree.Read(again[0]).empty(), "without complaint");
    require(written(back) == written(rig), "and has the same values");

    for (const ConfigElement* element : rig.tree.GetElements()) {
      std::string problem;
      ConfigElement& other = *back.tree.Find(element->GetId() < 0 ? 0 : element->GetId());
      if (element->GetId() >= 0 && element->HasValue())
        require(other.SetValueText(element->GetValueText(), problem) && problem.empty(),
                "a value's text is a value");
    }
    require(written(back) == written(rig), "texts bring the same values back");
  }
}

static void checkInputs(const Element& document) {
  std::vector<Tag> profiles;
  if (!InputProfileManager::Parse(document, "Stem", profiles)) return;
  for (const Tag& profile : profiles) {
    unidevice::PropertyHandler properties;
    auto* gas = properties.add(std::make_unique<unidevice::Property>("Gas", "", 7));
    properties.add(std::make_unique<unidevice::Property>("Brake", "", 7));
    InputProfileManager::ApplyTo(profile, properties);
    for (const double number : {gas->multiplier, gas->exponent, gas->deadzone, gas->offset})
      require(std::isfinite(number), "a number of an input is finite");
    require(std::isfinite(gas->read()), "an input reads a finite value");
  }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Element document;
  if (document.loadText({reinterpret_cast<const char*>(data), size}) != 0) return 0;
  checkConfig(document);
  checkInputs(document);
  return 0;
}
