#pragma once

#include <QString>

namespace vintrace {
class FileType;
}

namespace vintrace::qt {

/// The type as file dialogs show it and as the toolkit's own read it, such as "indd (*.indd)".
QString FilterLabel(const FileType& type);

}  // namespace vintrace::qt
