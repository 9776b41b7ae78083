#include "support/RecordingApplication.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>
#include <utility>

namespace vintrace::test {

namespace fs = std::filesystem;

RecordingApplication::RecordingApplication(FolderItem path, std::string_view words,
                                           std::string_view then)
    : path_(std::move(path)) {
  const fs::path file = path_.NativePath();
  fs::create_directories(file.parent_path());
  // The renaming makes all words appear at once.
  std::ofstream(file) << "#!/bin/sh\nprintf '%s\\0' " << words
                      << R"( >"$0.part" && mv "$0.part" "$0.started")" << '\n'
                      << then << '\n';
  fs::permissions(file, fs::perms::owner_all);
}

std::vector<String> RecordingApplication::AwaitStart() const {
  using namespace std::chrono_literals;
  const fs::path notes = path_.NativePath() + ".started";
  const auto end = std::chrono::steady_clock::now() + 15s;
  while (!fs::exists(notes) && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(2ms);
  }
  std::vector<String> words;
  std::ifstream stream(notes);
  for (String word; std::getline(stream, word, '\0');) words.push_back(word);
  fs::remove(notes);
  return words;
}

}  // namespace vintrace::test
