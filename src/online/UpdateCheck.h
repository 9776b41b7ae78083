#pragma once

#include <string_view>

#include "platform/text/String.h"

namespace vintrace::online {

/// The paths of the update service and of the service that counts starts.
inline constexpr std::string_view UpdatePath = "/www/ssl/vcheck.php";
inline constexpr std::string_view ReportPath = "/www/ssl/kcheck.php";

/// Posts the three fields as a form, in this order, to `path` on the service host over HTTPS, and
/// returns the body of the reply, whatever its status. The body is empty if there is no reply or
/// one of more than 64 KB, and incomplete if the service is silent for five seconds. Never raises
/// for a failed connection or a missing network. Without a service host, or if the environment
/// variable VINTRACE_OFFLINE is set and not empty, sends nothing and returns an empty text.
String PostToService(std::string_view path, const String& app_id, const String& ver,
                     const String& regi);

}  // namespace vintrace::online
