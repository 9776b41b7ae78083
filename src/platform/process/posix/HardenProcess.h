#pragma once

namespace vintrace::posix {

/// Resets inherited settings that would endanger this process. Closed standard streams are opened
/// on /dev/null, so that no file or connection gets their numbers and with them the output of
/// libraries. SIGPIPE and SIGXFSZ are ignored, so that a closed pipe or a file that grows too large
/// is an error of the write. SIGCHLD has its default action, so that children can be awaited. To be
/// called before anything is opened.
void HardenProcess();

}  // namespace vintrace::posix
