// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#undef _FORTIFY_SOURCE // whose headers define some of these functions themselves
#include "Faults.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

// The names are the C library's own.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_realloc(void*, std::size_t);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constexpr std::size_t countedBytes = 1 << 16;
faults::Plan plan;
std::atomic<int> count{0};
std::atomic<bool> isStruck{false}, isArmed{false};

bool strikes(faults::Kind kind)
{
    if (plan.kind != kind)
        return false;
    const int number = ++count;
    if (number < plan.nth || (number > plan.nth && !plan.isLasting))
        return false;
    if (!isStruck.exchange(true) && std::getenv("FAULTS")) {
        char name[sizeof plan.folder + 8];
        std::snprintf(name, sizeof name, "%s/struck", plan.folder);
        ::syscall(SYS_close, ::syscall(SYS_openat, AT_FDCWD, name, O_CREAT | O_WRONLY, 0600));
    }
    errno = plan.error;
    return true;
}

/// Whether an allocation is of ours or of a library that checks its own, as libsndfile and drivers
/// do not.
bool isRefused(std::size_t size, const void* caller)
{
    Dl_info info{};
    if (plan.kind != faults::Allocation || size < countedBytes || !isArmed ||
        !::dladdr(caller, &info) || !info.dli_fname)
        return false;
    for (const char* name : {"rvane", "faults", "Qt5Core", "Qt5Gui", "Qt5Svg", "png", "archive"}) {
        if (std::strstr(info.dli_fname, name))
            return strikes(faults::Allocation);
    }
    return false;
}

bool isHere(const char* path)
{
    return *plan.folder && std::strncmp(path, plan.folder, std::strlen(plan.folder)) == 0;
}
bool isHere(int file)
{
    char link[32], path[sizeof plan.folder + 256] = "";
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    return ::readlink(link, path, sizeof path - 1) > 0 && isHere(path);
}

/// The C library's own function.
template<class Function>
Function real(Function, const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

template<class Function, class... Arguments>
int call(faults::Kind kind, const char* path, const char* name, Function function,
         Arguments... arguments)
{
    if (plan.error && plan.error != EINTR && isHere(path) && strikes(kind))
        return -1;
    return real(function, name)(arguments...);
}

template<class Function, class Data>
ssize_t move(faults::Kind kind, const char* name, Function function, int file, Data data,
             std::size_t size)
{
    if (isHere(file) && strikes(kind)) {
        if (plan.error)
            return -1;
        size = size > 1 ? size / 2 : size;
    }
    return real(function, name)(file, data, size);
}

__attribute__((constructor)) void readPlan()
{
    if (const char* const text = std::getenv("FAULTS"))
        std::sscanf(text, "%255[^:]:%d:%d:%d:%d", plan.folder, &plan.kind, &plan.nth, &plan.error,
                    &plan.isLasting);
}

} // namespace

void faults::set(const Plan& wanted)
{
    plan = wanted;
    count = 0;
    isStruck = isArmed = false;
}

bool faults::hasStruck() { return isStruck; }

void* operator new(std::size_t size)
{
    const bool isTooMuch = isRefused(size, __builtin_return_address(0));
    void* const memory = isTooMuch ? nullptr : __libc_malloc(size);
    return memory ? memory : throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size)
{
    return isRefused(size, __builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}
void* realloc(void* old, std::size_t size)
{
    return isRefused(size, __builtin_return_address(0)) ? nullptr : __libc_realloc(old, size);
}
int open(const char* path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    const int file = call(faults::Open, path, "open", open, path, flags, mode);
    isArmed = isArmed || (file >= 0 && isHere(path));
    return file;
}
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
ssize_t read(int file, void* bytes, std::size_t size)
{
    return move(faults::Read, "read", read, file, bytes, size);
}
ssize_t write(int file, const void* bytes, std::size_t size)
{
    return move(faults::Write, "write", write, file, bytes, size);
}
int rename(const char* from, const char* to)
{
    return call(faults::Write, to, "rename", rename, from, to);
}
int linkat(int fromFolder, const char* from, int folder, const char* to, int flags)
{
    return call(faults::Write, to, "linkat", linkat, fromFolder, from, folder, to, flags);
}

} // extern "C"
#pragma GCC visibility pop
