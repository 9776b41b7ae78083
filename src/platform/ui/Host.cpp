#include "platform/ui/Host.h"

#include <cassert>
#include <utility>

#include "platform/text/Exceptions.h"
#include "platform/ui/Window.h"

namespace vintrace {
namespace {

Host* current = nullptr;

}  // namespace

Host::Host() {
  assert(current == nullptr);
  current = this;
}

Host::~Host() { current = nullptr; }

Host& Host::Current() {
  assert(current != nullptr);
  return *current;
}

void Host::_RuntimeRegisterAppObject(std::unique_ptr<vintrace::Application> application) {
  application_ = std::move(application);
}

vintrace::Application& Host::Application() const {
  if (!application_) throw NilObjectException("Application");
  return *application_;
}

}  // namespace vintrace
