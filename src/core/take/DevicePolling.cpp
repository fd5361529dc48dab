#include "core/take/DevicePolling.h"

#include "core/CoreImplementation.h"
#include "core/UserInterface.h"
#include "core/instances/Instance.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"

namespace orv::rws::core {

DevicePolling::Wake::Wake(CoreImplementation& core) : m_core(core) {
  DevicePolling& devices = core.GetDevices();
  if (devices.m_users++ > 0) return;
  core.StartTimer(kTimer, kPeriod);
  if (static_cast<RecordManager&>(core).IsRecording()) return;
  Activate(core);
  devices.Poll(core);
}

DevicePolling::Wake::~Wake() {
  DevicePolling& devices = m_core.GetDevices();
  if (--devices.m_users > 0) return;
  m_core.KillTimer(kTimer);
  if (!static_cast<RecordManager&>(m_core).IsRecording())
    unidevice::DriverManager::instance().deactivateAll();
}

DevicePolling::Search::Search(CoreImplementation& core) : m_core(core) {
  ++core.GetDevices().m_searches;
}

DevicePolling::Search::~Search() {
  --m_core.GetDevices().m_searches;
}

DevicePolling::DevicePolling() : m_generation(unidevice::DriverManager::generation()) {}

void DevicePolling::Activate(CoreImplementation& core) {
  auto& drivers = unidevice::DriverManager::instance();
  if (auto* driver = drivers.find("windriver")) {
    if (MainWindowView* window = core.GetMainWindow()) driver->setWindow(window->GetWindowHandle());
  }
  drivers.activateAll();
}

void DevicePolling::BeginTake(CoreImplementation& core) {
  Activate(core);
  const std::uint64_t now = unidevice::DriverManager::generation();
  if (now != m_generation) core.GetMessages().Tell(DevicesChanged{});
  m_generation = now;
  // Devices may have come since the mappings were loaded.
  for (Instance* instance : core.List(false)) instance->RebindInputs();
}

void DevicePolling::EndTake() {
  if (m_users == 0) unidevice::DriverManager::instance().deactivateAll();
}

void DevicePolling::Read() {
  unidevice::DriverManager::instance().updateAll();
}

void DevicePolling::Poll(CoreImplementation& core) {
  const MessageQueue::Hold hold(core.GetMessages());
  Read();
  const std::uint64_t now = unidevice::DriverManager::generation();
  if (now == m_generation) return;
  m_generation = now;
  core.GetMessages().Tell(DevicesChanged{});
  const bool inTake = static_cast<RecordManager&>(core).IsRecording();
  for (Instance* instance : inTake ? core.GetTakeInstances() : core.List(false))
    instance->RebindInputs();
}

}  // namespace orv::rws::core
