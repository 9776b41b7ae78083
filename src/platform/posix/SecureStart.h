#pragma once

namespace vintrace::posix {

/// Makes a process safe from the state in which its starter may have left it, and a program that
/// doesn't need its standard streams safe from them. What is closed of them is opened on /dev/null,
/// so that no file or connection of the program's takes its number and gets what a library prints.
/// A reader that goes away, or a file that gets too large, is an error and no signal. The ends of
/// child processes can be awaited. To be called before anything is opened.
void SecureStart();

}  // namespace vintrace::posix
