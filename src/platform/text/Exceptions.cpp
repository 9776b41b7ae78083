#include "platform/text/Exceptions.h"

namespace vintrace {
namespace {

ExceptionHelper installed = nullptr;

}  // namespace

void _RuntimeSetExceptionHelper(ExceptionHelper helper) { installed = helper; }

void _RuntimeCall(const std::function<void()>& function) {
  if (installed == nullptr) return function();
  installed(function);
}

}  // namespace vintrace
