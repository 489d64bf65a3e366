// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Linked into every program of the sanitizer build: what the sanitizers are told when the
// environment says nothing else, so that programs behave the same under ctest and by hand.
#include <dlfcn.h>
#include <link.h>

#include <cstring>

#define EXPORTED extern "C" __attribute__((visibility("default")))

// The names are the sanitizers' own.
// NOLINTBEGIN(bugprone-reserved-identifier)
EXPORTED const char* __asan_default_options()
{
    return "detect_leaks=1:detect_stack_use_after_return=1:strict_init_order=1";
}

EXPORTED const char* __ubsan_default_options() { return "print_stacktrace=1"; }

EXPORTED const char* __lsan_default_options() { return "print_suppressions=0"; }

EXPORTED const char* __lsan_default_suppressions()
{
    return
        // Mesa's software driver keeps what it allocates once until the process ends.
        "leak:swrast_dri.so\n"
        "leak:libgallium\n"
        // Qt 5's platform without a display forgets its screen.
        "leak:libqoffscreen\n"
        // liquid-dsp 1.5 forgets 72 bytes whenever it designs a half-band filter.
        "leak:qs1dsearch_create\n";
}

EXPORTED const char* __tsan_default_options()
{
    return
        // Qt, GLib and Mesa are not built with the sanitizer, which does not see their locks: what
        // they themselves copy and free is no news, whatever they are called by.
        "ignore_noninstrumented_modules=1:"
        // Mesa's driver holds more locks at a time than the detector can count; it gives up then.
        "detect_deadlocks=0";
}

EXPORTED const char* __tsan_default_suppressions()
{
    return
        // A functor that is posted to another thread is destroyed by the one that needs it last.
        // Which that is, a counter in Qt's library tells, which the sanitizer does not see.
        "race:~QFunctorSlotObject\n";
}

// NOLINTEND(bugprone-reserved-identifier)

/// Unloads a library, except for those that leak: a leak can only be told to be a library's while
/// it is still there when leaks are looked for, at the end of the process.
EXPORTED int dlclose(void* handle)
{
    const link_map* library = nullptr;
    if (dlinfo(handle, RTLD_DI_LINKMAP, &library) == 0 &&
        (std::strstr(library->l_name, "_dri.so") || std::strstr(library->l_name, "libgallium") ||
         std::strstr(library->l_name, "libqoffscreen")))
        return 0;
    static const auto unload = reinterpret_cast<int (*)(void*)>(dlsym(RTLD_NEXT, "dlclose"));
    return unload(handle);
}
