// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

/// Reasons of a load or unload notification.
enum class LibraryReason : int {
    ProcessDetach = 0,
    ProcessAttach = 1,
    ThreadAttach = 2,
    ThreadDetach = 3,
};

/// The library's load and unload notification: registers the translation catalogue "Orvane" on
/// process attach, unregisters it on process detach, does nothing for any other reason. Always
/// returns true. The library calls it when it is loaded and unloaded.
ORVANE_API bool OrvaneLibraryEntry(LibraryReason reason);
