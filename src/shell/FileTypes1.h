#pragma once

#include "platform/files/FileType.h"

/// The file types that the program knows.
namespace vintrace::FileTypes1 {

/// InDesign documents, under the name "indd". File dialogs know the type after `_Initialize`.
FileType& pIndd();

/// Registers the types. Called once at start-up, before any dialog.
void _Initialize();

}  // namespace vintrace::FileTypes1
