// The inspection of whole documents that are in the page cache.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>

#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

using benchmark::State;

constexpr std::uint8_t ReleaseCC = 9;

/// The same bytes in every run, without '.', with which each delimiter ends.
std::string RandomBytes(std::size_t size) {
  std::string bytes(size, '\0');
  std::ranges::generate(bytes, [engine = std::minstd_rand()]() mutable {
    return static_cast<char>(engine() >> 8 & 0xFF);
  });
  std::ranges::replace(bytes, '.', '/');
  return bytes;
}

void BuildInTheFirstBlock(State& state) {
  const TemporaryFolder folder;
  constexpr std::size_t Size = 1 << 20;
  const auto document = DocumentBuilder(Size).Release(ReleaseCC).Saved(BodyStart, 0, "3.0.034 ");
  const FolderItem item = folder.File("a.indd", document.Bytes());
  if (Inspect(item).buildText != "9.3.0.034") throw std::logic_error("found another build");
  for (auto _ : state) benchmark::DoNotOptimize(Inspect(item));
}
BENCHMARK(BuildInTheFirstBlock);

/// The scan reads the whole `body`.
void NothingFound(State& state, const std::string& body) {
  const TemporaryFolder folder;
  const auto document = DocumentBuilder(BodyStart).Release(ReleaseCC).Put(BodyStart, body);
  const FolderItem item = folder.File("a.indd", document.Bytes());
  for (auto _ : state) benchmark::DoNotOptimize(Inspect(item));
  const auto size = static_cast<std::int64_t>(document.Bytes().size());
  state.SetBytesProcessed(state.iterations() * size);
}

constexpr std::size_t LongBody = 16 << 20;

void NothingFoundInRandomBytes(State& state) { NothingFound(state, RandomBytes(LongBody)); }
BENCHMARK(NothingFoundInRandomBytes)->Unit(benchmark::kMillisecond);

/// Every byte looks like the start of the delimiter.
void NothingFoundInFalseStarts(State& state) { NothingFound(state, std::string(LongBody, '\x09')); }
BENCHMARK(NothingFoundInFalseStarts)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vintrace::test
