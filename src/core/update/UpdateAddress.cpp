#include "core/update/UpdateAddress.h"

namespace orv::rws::core {

std::string GetUpdateAddress() {
  return ORV_UPDATE_URL;
}

}  // namespace orv::rws::core
