#pragma once

#include <memory>
#include <string_view>

#include "platform/ui/Picture.h"

/// The program's sixteen pictures. Each is opened when it is first needed, and shared for the life
/// of the process. All raise `IOException` if the picture can't be opened; the next call tries
/// again.
namespace vintrace::pictures {

/// The picture of that name, such as "cs6".
std::shared_ptr<const Picture> Named(std::string_view name);

// The releases, 48 by 48 pixels.
inline auto cs() { return Named("cs"); }
inline auto cs2() { return Named("cs2"); }
inline auto cs3() { return Named("cs3"); }
inline auto cs4() { return Named("cs4"); }
inline auto cs5() { return Named("cs5"); }
inline auto cs55() { return Named("cs55"); }
inline auto cs6() { return Named("cs6"); }
inline auto cc() { return Named("cc"); }
inline auto cc2014() { return Named("cc2014"); }
inline auto cc2015() { return Named("cc2015"); }
inline auto cc2017() { return Named("cc2017"); }
inline auto cc2018() { return Named("cc2018"); }
inline auto cc2019() { return Named("cc2019"); }

/// For a release outside the table, 48 by 48 pixels.
inline auto und() { return Named("und"); }

/// The background of the about window, 460 by 300 pixels.
inline auto splash() { return Named("splash"); }

/// The program's icon, 48 by 48 pixels.
inline auto icon48() { return Named("icon48"); }

}  // namespace vintrace::pictures
