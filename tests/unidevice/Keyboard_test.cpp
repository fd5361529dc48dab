// When keys count, and by which places.
#include <gtest/gtest.h>

#include <deque>
#include <set>

#include "unidevice/Control.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/Device.h"
#include "unidevice/DriverManager.h"
#include "unidevice/KeyNames.h"
#include "unidevice/Property.h"
#include "unidevice/keyboard/KeyboardDriver.h"

namespace orv::unidevice {
namespace {

constexpr int kLetterW = 17, kArrowUp = 103;

/// The driver in the process's list for the time of a test.
struct Plugged {
  explicit Plugged(std::unique_ptr<KeySource> source = {})
      : driver(new KeyboardDriver(std::move(source))) {
    DriverManager::instance().addDriver(std::unique_ptr<Driver>(driver));
  }
  ~Plugged() { DriverManager::instance().removeDriver(KeyboardDriver::kName); }
  double read(const char* key) const {
    driver->update();
    return DriverManager::instance().findControl(ControlChoice{"Keyboard", key, 0}.tag())->read();
  }
  KeyboardDriver* driver;
};

/// Keys that are pressed by the test.
struct Hands : KeySource {
  void listen(bool on) override { isListening = on; }
  void poll(const Tell& tell) override {
    for (; !events.empty(); events.pop_front()) tell(events.front().first, events.front().second);
  }
  bool isListening = false;
  std::deque<std::pair<int, bool>> events;
};

TEST(Keyboard, KeysCountOnlyWhileTheyAreMeantForUs) {
  Plugged keyboard;
  KeyboardDriver& driver = *keyboard.driver;
  const auto reads = [&](double value) {
    EXPECT_EQ(keyboard.read("W"), value);
    EXPECT_EQ(driver.isListening(), value != 0.0);
  };
  driver.setActive(true);
  driver.setKey(kLetterW, true);
  reads(0.0);  // nobody keeps the devices awake
  driver.activate();
  reads(1.0);  // held before the take began
  driver.setTyping(true);
  reads(0.0);
  driver.setTyping(false);
  reads(1.0);
  driver.setActive(false);
  reads(0.0);
  driver.setActive(true);
  EXPECT_EQ(keyboard.read("W"), 0.0) << "its release may have gone to another program";
  driver.setKey(kLetterW, true);
  reads(1.0);
  driver.setKey(kArrowUp, true);
  EXPECT_EQ(keyboard.read("Up_Arrow"), 1.0);
  driver.setKey(kArrowUp, false);
  EXPECT_EQ(keyboard.read("Up_Arrow"), 0.0);
  for (const int code : {-1, 0, 9999}) driver.setKey(code, true);  // keys of no name
  driver.deactivate();
  reads(0.0);

  EXPECT_FALSE(driver.isMapped(kLetterW));
  Property gas("Gas");
  gas.assign(DriverManager::instance().findControl(ControlChoice{"Keyboard", "W", 0}.tag()));
  EXPECT_TRUE(driver.isMapped(kLetterW) && !driver.isMapped(kArrowUp) && !driver.isMapped(-1));
}

TEST(Keyboard, AnotherSourceIsHeardOnlyWhileKeysCount) {
  auto owned = std::make_unique<Hands>();
  Hands& hands = *owned;
  Plugged keyboard(std::move(owned));
  keyboard.driver->activate();
  EXPECT_FALSE(hands.isListening);
  keyboard.driver->setActive(true);
  EXPECT_TRUE(hands.isListening);
  keyboard.driver->setKey(kArrowUp, true);
  hands.events = {{kLetterW, true}};
  EXPECT_EQ(keyboard.read("W"), 1.0);
  EXPECT_EQ(keyboard.read("Up_Arrow"), 0.0) << "told by windows, and so a second time";
  keyboard.driver->setActive(false);
  EXPECT_FALSE(hands.isListening);
  hands.events = {{kArrowUp, true}};
  EXPECT_EQ(keyboard.read("Up_Arrow") + keyboard.read("W"), 0.0);
}

TEST(Keyboard, EveryKeyHasAPlaceOfItsOwn) {
  std::set<int> codes;
  std::set<std::string> names;
  for (const Key& key : allKeys()) {
    EXPECT_TRUE(codes.insert(key.code).second && names.insert(key.name).second) << key.name;
    EXPECT_EQ((ControlChoice{"Keyboard", key.name, 0}.check().why), "") << key.name;
  }
  const auto codeOf = [](const char* name) {
    for (const Key& key : allKeys())
      if (key.name == name) return key.code;
    return -1;
  };
  // Rows of a keyboard are runs of numbers.
  for (const auto& [row, first] : {std::pair("QWERTYUIOP", 16), std::pair("ASDFGHJKL", 30),
                                   std::pair("ZXCVBNM", 44), std::pair("1234567890", 2)})
    for (int i = 0; row[i]; ++i) EXPECT_EQ(codeOf(std::string(1, row[i]).c_str()), first + i);
}

}  // namespace
}  // namespace orv::unidevice
