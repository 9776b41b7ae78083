// Measures how long programs take from their start to their first window:
//
//   start_to_window [-n ROUNDS] PROGRAM [ARG…] -- PROGRAM [ARG…] [-- …]
//
// Each round (30, after two to warm up) starts every program once, in turn, and kills it when its
// window has been painted. Two times are measured from just before the start:
//
//   mapped   until the server reports that a window has been mapped on the root window. Windows
//            that no window manager would manage (override-redirect) don't count, nor do windows of
//            a few pixels, which toolkits make for their own use.
//   painted  until the window's image, fetched every half millisecond, has two colours. The root
//            window has only one, so an unpainted window through which it shows doesn't count.
//
// The other programs are compared with the last. The display must have no window manager, whose
// frames would be measured instead of the programs' own windows, and no other programs; Xvfb is
// suitable.

#include <poll.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using Command = std::vector<char*>;  // Ends with a null pointer.

constexpr int WarmUps = 2;
constexpr int DefaultRounds = 30;
constexpr std::chrono::seconds Patience{30};
constexpr std::chrono::microseconds BetweenPictures{500};
constexpr std::uint16_t SmallestSide = 10;

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

/// A running program, killed with the object.
class Process {
 public:
  explicit Process(const Command& command) {
    const int error =
        posix_spawnp(&id_, command.front(), nullptr, nullptr, command.data(), environ);
    if (error != 0) throw std::runtime_error(std::string(command.front()) + ": " + strerror(error));
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process() {
    if (ended_) return;
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }

  bool HasEnded() { return ended_ = ended_ || waitpid(id_, nullptr, WNOHANG) == id_; }

 private:
  pid_t id_ = 0;
  bool ended_ = false;
};

/// The display, observed through its root window.
class Display {
 public:
  Display() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_.get()) != 0) throw std::runtime_error("no display");
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data;
    const std::uint32_t values[] = {screen.black_pixel, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_change_window_attributes(connection_.get(), screen.root,
                                 XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    xcb_clear_area(connection_.get(), 0, screen.root, 0, 0, 0, 0);
    xcb_flush(connection_.get());
  }

  /// The program's window if the next event, awaited for up to 0.1 seconds, reports its mapping.
  std::optional<xcb_window_t> NextMappedWindow() {
    const auto event = NextEvent();
    if (!event || TypeOf(*event) != XCB_MAP_NOTIFY) return std::nullopt;
    const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(*event);
    if (mapped.override_redirect != 0 || !IsOfSize(mapped.window)) return std::nullopt;
    return mapped.window;
  }

  bool NextEventDestroys(xcb_window_t window) {
    const auto event = NextEvent();
    return event && TypeOf(*event) == XCB_DESTROY_NOTIFY &&
           reinterpret_cast<const xcb_destroy_notify_event_t&>(*event).window == window;
  }

  bool IsPainted(xcb_window_t window) const {
    const auto size = GeometryOf(window);
    if (!size) return false;
    const Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection_.get(),
                            xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0,
                                          0, size->width, size->height, 0x00FFFFFF),
                            nullptr));
    return image && HasTwoColours(*image);
  }

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  static int TypeOf(const xcb_generic_event_t& event) { return event.response_type & 0x7F; }

  /// The next event; null if none comes within 0.1 seconds.
  Reply<xcb_generic_event_t> NextEvent() {
    Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
    if (event) return event;
    pollfd arrival{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
    poll(&arrival, 1, 100);
    event.reset(xcb_poll_for_event(connection_.get()));
    if (xcb_connection_has_error(connection_.get()) != 0) throw std::runtime_error("display lost");
    return event;
  }

  Reply<xcb_get_geometry_reply_t> GeometryOf(xcb_window_t window) const {
    return Reply<xcb_get_geometry_reply_t>(xcb_get_geometry_reply(
        connection_.get(), xcb_get_geometry(connection_.get(), window), nullptr));
  }

  bool IsOfSize(xcb_window_t window) const {
    const auto geometry = GeometryOf(window);
    return geometry && std::min(geometry->width, geometry->height) >= SmallestSide;
  }

  /// Compares whole pixels: the plane mask of the request zeroes their unused bytes.
  static bool HasTwoColours(const xcb_get_image_reply_t& image) {
    constexpr std::size_t BytesPerPixel = 4;
    if (image.depth != 24 && image.depth != 32) throw std::runtime_error("needs 24-bit colours");
    const std::span pixels(xcb_get_image_data(&image),
                           static_cast<std::size_t>(xcb_get_image_data_length(&image)));
    return !std::equal(pixels.begin() + BytesPerPixel, pixels.end(), pixels.begin());
  }

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
};

/// Calls `answer` until it is true. Raises `std::runtime_error` if the program ends or is too slow.
void Await(Process& process, const std::function<bool()>& answer) {
  const auto start = Clock::now();
  while (!answer()) {
    if (process.HasEnded()) throw std::runtime_error("the program ended by itself");
    if (Clock::now() - start > Patience) throw std::runtime_error("no window within 30 seconds");
  }
}

struct Times {
  Milliseconds mapped;
  Milliseconds painted;
};

Times Measure(Display& display, const Command& command) {
  Times times{};
  std::optional<xcb_window_t> window;
  {
    const auto start = Clock::now();
    Process process(command);
    Await(process, [&] { return (window = display.NextMappedWindow()).has_value(); });
    times.mapped = Clock::now() - start;
    Await(process, [&] {
      if (display.IsPainted(*window)) return true;
      std::this_thread::sleep_for(BetweenPictures);
      return false;
    });
    times.painted = Clock::now() - start;
  }
  // After this, the server has finished with the program, and the next one finds an idle display.
  const auto end = Clock::now();
  while (!display.NextEventDestroys(*window)) {
    if (Clock::now() - end > Patience) throw std::runtime_error("the window was not destroyed");
  }
  return times;
}

struct Series {
  std::vector<double> mapped;
  std::vector<double> painted;
};

/// The quantile `part`, from 0 to 1, of sorted values; interpolated between two of them.
double Quantile(const std::vector<double>& sorted, double part) {
  const double place = part * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const auto above = std::min(below + 1, sorted.size() - 1);
  return std::lerp(sorted[below], sorted[above], place - static_cast<double>(below));
}

void PrintRow(const Command& command, const char* what, std::vector<double> values,
              std::vector<double> reference) {
  std::ranges::sort(values);
  std::ranges::sort(reference);
  const double median = Quantile(values, 0.5);
  std::printf("%-7s  %7.1f  %7.1f  %7.1f  %7.1f  %6.3f  ", what, median, values.front(),
              Quantile(values, 0.25), Quantile(values, 0.75), median / Quantile(reference, 0.5));
  for (const char* word : command) {
    if (word != nullptr) std::printf("%s ", word);
  }
  std::printf("\n");
}

void Print(const std::vector<Command>& commands, const std::vector<Series>& all) {
  std::printf("Milliseconds from the start; ratio: of the median to that of the last program\n");
  std::printf("until     median      min       q1       q3   ratio  program\n");
  for (std::size_t i = 0; i < commands.size(); ++i) {
    PrintRow(commands[i], "mapped", all[i].mapped, all.back().mapped);
    PrintRow(commands[i], "painted", all[i].painted, all.back().painted);
  }
}

void Compare(const std::vector<Command>& commands, int rounds) {
  Display display;
  std::vector<Series> all(commands.size());
  for (int round = -WarmUps; round < rounds; ++round) {
    for (std::size_t i = 0; i < commands.size(); ++i) {
      const Times times = Measure(display, commands[i]);
      if (round < 0) continue;
      all[i].mapped.push_back(times.mapped.count());
      all[i].painted.push_back(times.painted.count());
    }
  }
  Print(commands, all);
}

std::vector<Command> CommandsOf(std::span<char*> words) {
  std::vector<Command> commands(1);
  for (char* word : words) {
    if (std::strcmp(word, "--") == 0) {
      commands.emplace_back();
    } else {
      commands.back().push_back(word);
    }
  }
  for (Command& command : commands) {
    if (command.empty()) throw std::invalid_argument("a program is missing");
    command.push_back(nullptr);
  }
  return commands;
}

}  // namespace

int main(int argc, char* argv[]) try {
  std::span words(argv + 1, static_cast<std::size_t>(argc - 1));
  int rounds = DefaultRounds;
  if (words.size() >= 2 && std::strcmp(words[0], "-n") == 0) {
    rounds = std::max(1, std::atoi(words[1]));
    words = words.subspan(2);
  }
  Compare(CommandsOf(words), rounds);
} catch (const std::exception& exception) {
  std::fprintf(stderr, "start_to_window: %s\n", exception.what());
  return 1;
}
