// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/QuietLibraries.h"

#include <cstdio>

#include <sys/types.h>
#include <unistd.h>

namespace {

thread_local int quietCount = 0;

ssize_t writeUnlessQuiet(void*, const char* text, std::size_t size)
{
    for (std::size_t done = 0; quietCount == 0 && done < size;) {
        const ssize_t count = write(STDERR_FILENO, text + done, size - done);
        if (count < 0)
            return 0;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(size);
}

} // namespace

QuietLibraries::QuietLibraries() { ++quietCount; }

QuietLibraries::~QuietLibraries() { --quietCount; }

void QuietLibraries::install()
{
#ifdef __GLIBC__ // where the stream can be replaced
    std::FILE* gate = fopencookie(nullptr, "w", {nullptr, writeUnlessQuiet, nullptr, nullptr});
    if (!gate)
        return;
    std::setvbuf(gate, nullptr, _IONBF, 0);
    gate->_fileno = STDERR_FILENO; // for code that asks whether it is a terminal
    stderr = gate;
#endif
}
