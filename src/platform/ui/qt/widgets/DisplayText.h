#pragma once

#include <QString>
#include <string_view>

namespace vintrace::qt {

/// `bytes` as text to be drawn in one line. U+FFFD replaces invalid UTF-8, control characters, line
/// breaks of any kind, and characters that change the direction of writing, so that a name can't
/// alter the text around it. The bytes can't be recovered: different ones can give the same text.
QString DisplayText(std::string_view bytes);

/// The same for text of several lines, which keeps its line feeds.
QString DisplayLines(std::string_view bytes);

/// A tool tip that shows `text` literally, even if it looks like markup.
QString ToolTipText(const QString& text);

}  // namespace vintrace::qt
