#include "platform/ui/ExceptionHandling.h"

#include "platform/text/String.h"
#include "platform/ui/Host.h"

namespace vintrace {

void _CallFunctionWithExceptionHandling(const std::function<void()>& function) {
  try {
    function();
  } catch (const std::exception& exception) {
    _UnhandledException(exception);
  }
}

void _UnhandledException(const std::exception& exception) {
  Host::Current().ShowMessage(String("予期しないエラーが起こりました。")
                                  .append(EndOfLine)
                                  .append(OneLine(exception.what())));
}

}  // namespace vintrace
