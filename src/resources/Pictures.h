#pragma once

#include <memory>

#include "platform/Picture.h"

namespace vintrace {

/// Gives a picture of the application. It is opened at the first call and shared from then on, for
/// the life of the process. An `IOException` of the opening passes through, and the next call tries
/// again.
using PictureAccessor = std::shared_ptr<const Picture> (*)();

namespace pictures {

/// The releases, 48 by 48 pixels.
std::shared_ptr<const Picture> cs();
std::shared_ptr<const Picture> cs2();
std::shared_ptr<const Picture> cs3();
std::shared_ptr<const Picture> cs4();
std::shared_ptr<const Picture> cs5();
std::shared_ptr<const Picture> cs55();
std::shared_ptr<const Picture> cs6();
std::shared_ptr<const Picture> cc();
std::shared_ptr<const Picture> cc2014();
std::shared_ptr<const Picture> cc2015();
std::shared_ptr<const Picture> cc2017();
std::shared_ptr<const Picture> cc2018();
std::shared_ptr<const Picture> cc2019();

/// A release outside the table, 48 by 48 pixels.
std::shared_ptr<const Picture> und();

/// The ground of the about window, 460 by 300 pixels.
std::shared_ptr<const Picture> splash();

/// The program itself, 48 by 48 pixels.
std::shared_ptr<const Picture> icon48();

}  // namespace pictures
}  // namespace vintrace
