#pragma once

namespace vintrace {

/// The program from its start to its end, on the current host: makes the file types and the
/// application object, and runs the event loop until the program quits. What breaks on the way is
/// reported to the user, and the program ends with exit status 1.
void _Main();

/// The steps of `_Main`, in their order.
void _EarlyStartup();
void _InitFileTypes();
void _NewAppInstance();
void _ApplicationAddMenuHandlers();
void _LateStartup();

}  // namespace vintrace
