#include "shell/FileTypes1.h"

namespace vintrace::FileTypes1 {

FileType& pIndd() {
  static FileType type;
  return type;
}

void _Initialize() {
  pIndd().Name = "indd";
  pIndd().Extensions = ".indd";
  pIndd().MacType = "????";
  pIndd().MacCreator = "";
  pIndd().Register();
}

}  // namespace vintrace::FileTypes1
