#pragma once

#include <QIcon>

namespace vintrace {
class Picture;
}

namespace vintrace::qt {

/// The picture in its two sizes, decoded once and shared by all callers.
QIcon IconOf(const Picture& picture);

}  // namespace vintrace::qt
