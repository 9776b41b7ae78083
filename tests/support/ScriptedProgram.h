#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "shell/Startup.h"
#include "shell/Window1.h"
#include "support/DocumentBuilder.h"
#include "support/Environment.h"
#include "support/ScriptedHost.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

/// The program on a scripted desktop, with documents to open.
class ScriptedProgram : public testing::Test {
 protected:
  /// A document that release `version` saved with the build "VERSION.0.0.424".
  FolderItem Document(std::string_view name, std::uint8_t version = 8) const {
    return folder.File(
        name,
        DocumentBuilder(BodyStart + 500).Release(version).Saved(BodyStart, 1, "0.0.424").Bytes());
  }

  /// Starts the program with documents of these names, and clears the story.
  void StartWith(const Lines& names) {
    for (const auto& name : names) host.handedOver.emplace_back(Document(name));
    _Main();
    host.story.clear();
  }

  std::shared_ptr<Window1> Front() {
    return std::dynamic_pointer_cast<Window1>(host.Windows().At(0));
  }

  const TemporaryFolder folder;
  const Environment dataHome{"XDG_DATA_HOME", (folder.Path() / "data").c_str()};
  ScriptedHost host;
};

}  // namespace vintrace::test
