#include "app/session/anyhost/PlayedInputs.h"

#include <utility>

#include "core/CoreImplementation.h"
#include "unidevice/Property.h"
#include "unidevice/software/SoftwareDevice.h"

namespace orv::app {

PlayedInputs::PlayedInputs(rws::core::CoreImplementation& core, InputFile file)
    : m_file(std::move(file)), m_device(new unidevice::SoftwareDevice(m_file.GetInput(), [&core] {
        return core.GetFrameTime();
      })) {
  for (std::size_t i = 0; i < m_file.GetTargets().size(); ++i) {
    const std::string& key = m_file.GetInput().columns[i].key;
    // Bound, not assigned: the mapping that is saved stays the user's.
    m_file.GetTargets()[i].input->bind(m_device->controlFor(key));
  }
}

PlayedInputs::~PlayedInputs() {
  for (const FoundInput& target : m_file.GetTargets()) target.input->bind(nullptr);
  m_device->destroy();
  for (const FoundInput& target : m_file.GetTargets()) target.input->rebind();
}

}  // namespace orv::app
