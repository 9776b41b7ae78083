#pragma once

namespace vintrace::posix {

/// Makes the standard streams safe for a program that doesn't need them: what is closed of them is
/// opened on /dev/null, so that no file or connection of the program's takes its number and gets
/// what a library prints; and a reader that goes away is no signal. To be called before anything is
/// opened.
void SecureStandardStreams();

}  // namespace vintrace::posix
