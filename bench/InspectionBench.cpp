// The inspection of whole documents, which the system holds in memory, and its operations on one
// block.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>

#include "inspection/BuildScan.h"
#include "inspection/ByteString.h"
#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

using benchmark::State;

constexpr std::uint8_t ReleaseCC = 9;
const std::string_view PrefixCC = "9.";

inspection::BuildPattern PatternOfCC() {
  return inspection::PatternOf(inspection::DocumentByteOrder::Little, PrefixCC);
}

/// The same bytes in every run, without the point that each delimiter ends in.
std::string RandomBytes(std::size_t size) {
  std::string bytes(size, '\0');
  std::ranges::generate(bytes, [engine = std::minstd_rand()]() mutable {
    return static_cast<char>(engine() >> 8 & 0xFF);
  });
  std::ranges::replace(bytes, '.', '/');
  return bytes;
}

void ReportBytes(State& state, std::size_t bytesPerIteration) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytesPerIteration));
}

void BuildInTheFirstBlock(State& state) {
  const TemporaryFolder folder;
  constexpr std::size_t Size = 1 << 20;
  const auto document = DocumentBuilder(Size).Release(ReleaseCC).Saved(BodyStart, 0, "3.0.034 ");
  const FolderItem item = folder.File("a.indd", document.Bytes());
  if (Inspect(item).buildText != "9.3.0.034") throw std::logic_error("another build was found");
  for (auto _ : state) benchmark::DoNotOptimize(Inspect(item));
}
BENCHMARK(BuildInTheFirstBlock);

/// Both scans read the whole `body`. The bytes that are counted are those of the document, of which
/// each scan reads one and a half times as many, since blocks overlap.
void NothingFound(State& state, const std::string& body) {
  const TemporaryFolder folder;
  const auto document = DocumentBuilder(BodyStart).Release(ReleaseCC).Put(BodyStart, body);
  const FolderItem item = folder.File("a.indd", document.Bytes());
  for (auto _ : state) benchmark::DoNotOptimize(Inspect(item));
  ReportBytes(state, document.Bytes().size());
}

constexpr std::size_t LongBody = 16 << 20;

void NothingFoundInRandomBytes(State& state) { NothingFound(state, RandomBytes(LongBody)); }
BENCHMARK(NothingFoundInRandomBytes)->Unit(benchmark::kMillisecond);

/// Every byte looks like the start of the delimiter.
void NothingFoundInFalseStarts(State& state) {
  NothingFound(state, std::string(LongBody, PatternOfCC().delimiter.front()));
}
BENCHMARK(NothingFoundInFalseStarts)->Unit(benchmark::kMillisecond);

void InStrBOfOneBlock(State& state) {
  const std::string block = RandomBytes(BlockSize);
  const std::string delimiter = PatternOfCC().delimiter;
  for (auto _ : state) benchmark::DoNotOptimize(inspection::InStrB(0, block, delimiter));
  ReportBytes(state, BlockSize);
}
BENCHMARK(InStrBOfOneBlock);

/// As many fields as a block can hold.
std::string BlockOfDelimiters() {
  std::string block;
  while (block.size() < BlockSize) block += PatternOfCC().delimiter;
  return block;
}

void CountFieldsBOfOneBlock(State& state) {
  const std::string block = BlockOfDelimiters();
  const std::string delimiter = PatternOfCC().delimiter;
  for (auto _ : state) benchmark::DoNotOptimize(inspection::CountFieldsB(block, delimiter));
  ReportBytes(state, BlockSize);
}
BENCHMARK(CountFieldsBOfOneBlock);

void LastNthFieldBOfOneBlock(State& state) {
  const std::string block = BlockOfDelimiters();
  const std::string delimiter = PatternOfCC().delimiter;
  const auto last = inspection::CountFieldsB(block, delimiter);
  for (auto _ : state) benchmark::DoNotOptimize(inspection::NthFieldB(block, delimiter, last));
  ReportBytes(state, BlockSize);
}
BENCHMARK(LastNthFieldBOfOneBlock);

}  // namespace
}  // namespace vintrace::test
