// Measures opening many documents at once on the display:
//
//   many_documents COUNT            opens them in the program
//   many_documents COUNT plain      opens plain Qt windows with as many controls
//
// Prints three numbers: microseconds from the hand-over until the last window has been painted,
// kilobytes of memory per window, and microseconds for copying the rows of all windows (with plain:
// a text of that length) to the clipboard.

#include <unistd.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <vector>

#include "platform/ui/Desktop.h"
#include "platform/ui/qt/QtHost.h"
#include "platform/ui/qt/widgets/ContentWidget.h"
#include "platform/ui/qt/widgets/WindowWidget.h"
#include "shell/App.h"
#include "shell/Startup.h"
#include "support/DocumentBuilder.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int BytesPerRow = 60;

long ResidentKilobytes() {
  long whole = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> whole >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// The results of one run.
class Measurement {
 public:
  explicit Measurement(int count) : count_(count) {}

  void Start() {
    memory_ = ResidentKilobytes();
    start_ = Clock::now();
  }
  void AllPainted() {
    painted_ = Clock::now() - start_;
    memory_ = ResidentKilobytes() - memory_;
  }
  void Copy(const std::function<void()>& copy) {
    const auto start = Clock::now();
    copy();
    Print(painted_, Clock::now() - start);
  }

 private:
  static long long Microseconds(Clock::duration time) {
    return std::chrono::duration_cast<std::chrono::microseconds>(time).count();
  }
  void Print(Clock::duration painted, Clock::duration copied) const {
    std::printf("%lld %ld %lld\n", Microseconds(painted), memory_ / count_, Microseconds(copied));
  }

  int count_;
  long memory_ = 0;
  Clock::time_point start_;
  Clock::duration painted_{};
};

/// The real host, except that messages, which would wait for a user, go to standard error.
class BenchHost : public qt::QtHost {
 public:
  using QtHost::QtHost;
  std::function<void(qt::WindowWidget&)> shown;
  void Show(Window& window) override {
    QtHost::Show(window);
    shown(*WidgetOf(window));
  }
  void ShowMessage(const String& text) override { std::fprintf(stderr, "%s\n", text.c_str()); }
};

/// Calls `painted` when `widget` has been painted for the first time.
class FirstPaint : public QObject {
 public:
  FirstPaint(QWidget& widget, std::function<void()> painted)
      : QObject(&widget), painted_(std::move(painted)) {
    widget.installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      watched->removeEventFilter(this);
      QTimer::singleShot(0, this, painted_);
    }
    return false;
  }

 private:
  std::function<void()> painted_;
};

int OpenDocuments(char* argv[], int count) {
  const TemporaryFolder folder;
  BenchHost host(argv);
  _EarlyStartup();
  Measurement measurement(count);
  int painted = 0;
  host.shown = [&](qt::WindowWidget& widget) {
    new FirstPaint(widget.Content(), [&] {
      if (++painted < count) return;
      measurement.AllPainted();
      measurement.Copy([] { App::Instance()._EditAllCopy_Action(); });
      desktop::Quit(0);
    });
  };
  std::vector<FolderItem> documents;
  for (int i = 0; i < count; ++i) {
    documents.push_back(folder.File(
        "document " + std::to_string(i) + ".indd",
        DocumentBuilder(BodyStart + 500).Release(8).Saved(BodyStart, 1, "0.0.424").Bytes()));
  }
  QTimer::singleShot(500, [&] {
    measurement.Start();
    for (const FolderItem& document : documents) host.HandOver(document);
  });
  host.Run();
  return host.ExitStatus();
}

/// A window with the size and the number of controls of a document's window.
std::unique_ptr<QWidget> PlainWindow(int number) {
  auto window = std::make_unique<QWidget>();
  window->setWindowTitle("document " + QString::number(number));
  window->setFixedSize(280, 172);
  for (int i = 0; i < 6; ++i) (new QLabel("Adobe InDesign CS6", window.get()))->move(20, 20 * i);
  (new QLabel(window.get()))->setGeometry(200, 20, 48, 48);
  (new QPushButton("閉じる", window.get()))->move(20, 140);
  (new QPushButton("該当バージョンで開く", window.get()))->move(120, 140);
  return window;
}

int OpenPlainWindows(int argc, char* argv[], int count) {
  QApplication application(argc, argv);
  Measurement measurement(count);
  std::vector<std::unique_ptr<QWidget>> windows;
  const std::function<void()> next = [&] {
    if (static_cast<int>(windows.size()) == count) {
      measurement.AllPainted();
      const QString text(count * BytesPerRow, 'x');
      measurement.Copy([&] { QApplication::clipboard()->setText(text); });
      return QApplication::quit();
    }
    windows.push_back(PlainWindow(static_cast<int>(windows.size())));
    new FirstPaint(*windows.back(), next);
    windows.back()->show();
  };
  QTimer::singleShot(500, [&] {
    measurement.Start();
    next();
  });
  return QApplication::exec();
}

}  // namespace
}  // namespace vintrace::test

int main(int argc, char* argv[]) {
  const int count = argc > 1 ? std::atoi(argv[1]) : 0;
  if (count < 1) return 2;
  const bool plain = argc > 2 && std::strcmp(argv[2], "plain") == 0;
  return plain ? vintrace::test::OpenPlainWindows(argc, argv, count)
               : vintrace::test::OpenDocuments(argv, count);
}
