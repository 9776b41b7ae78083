// Writes the example documents to FOLDER, or with --check compares those in FOLDER with them:
// make_examples [--check] FOLDER

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "support/DocumentBuilder.h"

namespace vintrace::test {
namespace {

constexpr std::uint8_t Mac = 0;
constexpr std::uint8_t Windows = 3;

struct Example {
  std::string name;
  DocumentBuilder document;
};

std::vector<Example> Examples() {
  constexpr std::size_t Size = BodyStart + 4096;
  constexpr std::size_t Place = BodyStart + 1024;
  return {
      {"CS5.5 Macintosh.indd", DocumentBuilder(Size).Release(7, 5).Saved(Place, Mac, "5.2.314 ")},
      {"CS4 Windows.indd",
       DocumentBuilder(Size).BigEndian().Release(6).Saved(Place, Windows, "0.6.457 ")},
      {"CC 2018 Macintosh.indd", DocumentBuilder(Size).Release(13).Saved(Place, Mac, "1.0.207 ")},
      {"newer than CC 2019.indd", DocumentBuilder(Size).Release(16).Saved(Place, Mac, "0.0.77 ")},
      {"nothing found.indd", DocumentBuilder(BodyStart).Release(9)},
  };
}

void Write(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  if (!file.flush()) throw std::runtime_error("can't write " + path.string());
}

bool Holds(const std::filesystem::path& path, const std::string& bytes) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {}) == bytes;
}

int Run(const std::vector<std::string>& arguments) {
  const bool check = !arguments.empty() && arguments.front() == "--check";
  if (arguments.size() != (check ? 2U : 1U)) {
    std::cerr << "Usage: make_examples [--check] FOLDER\n";
    return 2;
  }
  int status = 0;
  for (const auto& [name, document] : Examples()) {
    const auto path = std::filesystem::path(arguments.back()) / name;
    if (!check) {
      Write(path, document.Bytes());
    } else if (!Holds(path, document.Bytes())) {
      std::cerr << name << " differs from the output of make_examples\n";
      status = 1;
    }
  }
  return status;
}

}  // namespace
}  // namespace vintrace::test

int main(int argc, char* argv[]) {
  try {
    return vintrace::test::Run(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::exception& exception) {
    std::cerr << "make_examples: " << exception.what() << '\n';
    return 1;
  }
}
