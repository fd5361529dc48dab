// The application object that widgets need.
#pragma once

#include <QApplication>

#include "support/ApplicationEnvironment.h"

namespace orv::tests {

inline testing::Environment* const kWidgetApplication =
    testing::AddGlobalTestEnvironment(new ApplicationEnvironment<QApplication>);

}  // namespace orv::tests
