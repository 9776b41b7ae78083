#pragma once

#include <QString>
#include <string_view>

namespace vintrace::qt {

/// `bytes` as a text to be drawn in one line. U+FFFD stands for what is no valid UTF-8, for control
/// characters and line breaks of any kind, and for characters that turn the direction of writing,
/// so that a name shows neither more nor less than its own place. Not for giving bytes back:
/// different bytes can look alike.
QString DisplayText(std::string_view bytes);

/// The same for a text of more than one line: a line feed stays, everything else is as above.
QString DisplayLines(std::string_view bytes);

/// A tool tip that shows `text` as it is, whatever looks like markup in it.
QString ToolTipText(const QString& text);

}  // namespace vintrace::qt
