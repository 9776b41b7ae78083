#pragma once

#include <string>
#include <vector>

#include "platform/qt/QtHost.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

/// The real host, but for the browser.
class HostUnderTest : public qt::QtHost {
 public:
  HostUnderTest() : QtHost(argv_) {}
  void ShowURL(const String& url) override { urls.push_back(url); }
  Lines urls;

 private:
  inline static char name_[] = "vintrace";
  inline static char* argv_[] = {name_, nullptr};
};

}  // namespace vintrace::test
