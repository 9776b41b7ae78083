#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/text/Exceptions.h"
#include "platform/ui/Application.h"
#include "platform/ui/qt/QtHost.h"
#include "platform/ui/qt/widgets/WindowWidget.h"
#include "resources/Endpoints.h"
#include "shell/App.h"
#include "shell/MainMenuBar.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

/// The real host, except that it records addresses instead of opening a browser.
class HostUnderTest : public qt::QtHost {
 public:
  HostUnderTest() : QtHost(argv_) {}
  void ShowURL(const String& url) override { urls.push_back(url); }
  Lines urls;

 private:
  inline static char name_[] = "vintrace";
  inline static char* argv_[] = {name_, nullptr};
};

/// Records its events and lets a test handle them.
class TracingApplication : public App {
 public:
  Lines story;
  std::function<void()> onOpen;
  std::function<void()> onDocument;

  void Event_Open() override {
    story.emplace_back("open");
    if (onOpen) onOpen();
  }
  void Event_OpenDocument(const std::optional<FolderItem>& item) override {
    story.push_back("document " + item->NativePath());
    if (onDocument) onDocument();
  }
};

class QtHostTest : public testing::Test {
 protected:
  QtHostTest() {
    auto application = std::make_unique<TracingApplication>();
    application->SetMenuBar(MainMenuBar::Instance());
    app = application.get();
    host._RuntimeRegisterAppObject(std::move(application));
    _RuntimeSetExceptionHelper(_CallFunctionWithExceptionHandling);
  }

  /// Opens a window and waits until it is active.
  template <class Kind>
  std::shared_ptr<Kind> NewWindow() {
    auto window = Window::New<Kind>();
    QWidget& widget = Widget(*window);
    EXPECT_TRUE(QTest::qWaitFor([&widget] { return widget.isVisible(); }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
    return window;
  }

  qt::WindowWidget& Widget(const Window& window) { return *host.WidgetOf(window); }

  template <class Kind = QWidget>
  Kind& Child(const Window& window, std::string_view name) {
    return *Widget(window).findChild<Kind*>(QString::fromStdString(std::string(name)));
  }

  /// The centre of the control `name`, in coordinates of its window.
  QPoint Middle(const Window& window, std::string_view name) {
    const QWidget& control = Child(window, name);
    return control.mapTo(&Widget(window), control.rect().center());
  }

  /// Presses the key and returns the name of the widget that then has the focus, or "closed".
  std::string Press(const Window& window, Qt::Key key) {
    QTest::keyClick(Widget(window).focusWidget(), key);
    return window.IsOpen() ? Widget(window).focusWidget()->objectName().toStdString() : "closed";
  }

  HostUnderTest host;
  TracingApplication* app = nullptr;
  const Lines page{std::string(endpoints::WebPage)};
};

}  // namespace vintrace::test
