// The application object that Qt's timers need.
#pragma once

#include "support/ApplicationEnvironment.h"

namespace orv::tests {

inline testing::Environment* const kQtApplication =
    testing::AddGlobalTestEnvironment(new ApplicationEnvironment<QCoreApplication>);

}  // namespace orv::tests
