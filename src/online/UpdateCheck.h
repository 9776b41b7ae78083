#pragma once

#include <string_view>

#include "platform/text/String.h"

namespace vintrace::online {

/// The paths of the service that tells of newer releases, and of the one that counts starts.
inline constexpr std::string_view UpdatePath = "/www/ssl/vcheck.php";
inline constexpr std::string_view ReportPath = "/www/ssl/kcheck.php";

/// Posts the three fields, as a form and in this order, to `path` on the service host over HTTPS,
/// and returns the body of the reply, of whatever status. It is empty when there was none, and only
/// as much as had come when the service was silent for five seconds or sent more than 64 KB. Never
/// raises for what happens on the way or is missing for it. Where the build has no service host,
/// nothing is sent and the result is empty.
String PostToService(std::string_view path, const String& app_id, const String& ver,
                     const String& regi);

}  // namespace vintrace::online
