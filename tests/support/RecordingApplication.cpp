#include "support/RecordingApplication.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <utility>

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::vector<String> Words(const FolderItem& file) {
  std::ifstream stream(file.NativePath(), std::ios::binary);
  std::vector<String> words;
  for (String word; std::getline(stream, word, '\0');) words.push_back(word);
  return words;
}

}  // namespace

RecordingApplication::RecordingApplication(FolderItem path, std::string_view words,
                                           std::string_view then)
    : path_(std::move(path)) {
  const fs::path file = path_.NativePath();
  fs::create_directories(file.parent_path());
  // The notes appear whole.
  std::ofstream(file) << "#!/bin/sh\nprintf '%s\\0' " << words
                      << R"( >"$0.part" && mv "$0.part" "$0.started")" << '\n'
                      << then << '\n';
  fs::permissions(file, fs::perms::owner_all);
}

bool RecordingApplication::HasStarted() const { return Notes().Exists(); }

std::vector<String> RecordingApplication::AwaitStart() const {
  const auto end = std::chrono::steady_clock::now() + 15s;
  while (!HasStarted() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(2ms);
  auto words = Words(Notes());
  fs::remove(Notes().NativePath());
  return words;
}

}  // namespace vintrace::test
