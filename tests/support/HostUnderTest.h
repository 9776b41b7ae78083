#pragma once

#include <string>
#include <vector>

#include "platform/qt/QtHost.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

/// The real host, but for the browser.
class HostUnderTest : public qt::QtHost {
 public:
  using QtHost::QtHost;
  void ShowURL(const String& url) override { urls.push_back(url); }
  Lines urls;
};

}  // namespace vintrace::test
