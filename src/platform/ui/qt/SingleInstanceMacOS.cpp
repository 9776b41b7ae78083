// The system starts a program once, and hands it all documents by an event.

#include "platform/ui/qt/SingleInstance.h"

namespace vintrace::qt {

class SingleInstance::Bus {};

SingleInstance::SingleInstance() = default;
SingleInstance::~SingleInstance() = default;

bool SingleInstance::HandOver(const StartRequest& /*request*/) { return false; }

void SingleInstance::Serve(std::function<void(const StartRequest&)> /*taken*/) {}

void SingleInstance::Release() {}

}  // namespace vintrace::qt
