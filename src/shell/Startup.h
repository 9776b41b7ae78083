#pragma once

namespace vintrace {

/// Runs the program on the current host: registers the file types, creates the application object,
/// and runs the event loop until the program quits. If an exception escapes, shows it to the user
/// and quits with exit status 1.
void _Main();

/// The steps of `_Main`, in order.
void _EarlyStartup();
void _InitFileTypes();
void _NewAppInstance();
void _ApplicationAddMenuHandlers();
void _LateStartup();

}  // namespace vintrace
