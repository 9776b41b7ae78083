#pragma once

#include "platform/files/FileType.h"

/// The file types that the program knows.
namespace vintrace::FileTypes1 {

/// InDesign documents, by the name "indd"; file dialogs know it from `_Initialize` on.
FileType& pIndd();

/// Makes and registers the types. Called once at start-up, before any dialog.
void _Initialize();

}  // namespace vintrace::FileTypes1
