// Ctrl-C and the request to end, as a flag that long work asks for.
#pragma once

namespace orv::app {

/// From here on SIGINT and SIGTERM set a flag instead of ending the program at once. Whoever does
/// not want to wait for a step that does not ask sends the signal three times.
void catchInterrupts();

bool isInterrupted();

/// Throws Interrupted when the flag is set. Called between steps that leave nothing half done, and
/// before anything is written.
void checkInterrupt();

}  // namespace orv::app
