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

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
}

namespace {

constexpr int maxFiles = 1 << 12;
constexpr std::size_t countedBytes = 1 << 16;
faults::Plan plan;
std::atomic<int> count{0};
std::atomic<bool> isStruck{false};
std::atomic<bool> isArmed{false};
std::atomic<bool> isCounted[maxFiles]; // by descriptor

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
bool isHere(int file) { return file >= 0 && file < maxFiles && isCounted[file]; }

template<class Function>
Function real(Function, const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

template<class Function, class... Arguments>
int call(faults::Kind kind, const char* path, Function function, const char* name,
         Arguments... rest)
{
    if (plan.error && plan.error != EINTR && isHere(path) && strikes(kind))
        return -1;
    return real(function, name)(rest...);
}

template<class Function, class Data>
ssize_t move(faults::Kind kind, Function function, const char* name, int file, Data data,
             std::size_t size)
{
    if (isHere(file) && strikes(kind)) {
        if (plan.error)
            return -1;
        size = size > 1 ? size / 2 : size;
    }
    return real(function, name)(file, data, size);
}

int opened(int (*function)(const char*, int, ...), const char* name, const char* path, int flags,
           mode_t mode)
{
    const int file = call(faults::Open, path, function, name, path, flags, mode);
    if (file >= 0 && file < maxFiles)
        isCounted[file] = isHere(path);
    isArmed = isArmed || isHere(file);
    return file;
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
    isStruck = false;
    isArmed = false;
}

bool faults::hasStruck() { return isStruck; }

#define FAULTS_ALLOCATED(size, call) (isRefused(size, __builtin_return_address(0)) ? nullptr : call)
#define FAULTS_OPENED(name)                                                                        \
    int name(const char* path, int flags, ...)                                                     \
    {                                                                                              \
        std::va_list rest;                                                                         \
        va_start(rest, flags);                                                                     \
        const mode_t mode = va_arg(rest, mode_t);                                                  \
        va_end(rest);                                                                              \
        return opened(name, #name, path, flags, mode);                                             \
    }

void* operator new(std::size_t size)
{
    void* const memory = FAULTS_ALLOCATED(size, __libc_malloc(size));
    return memory ? memory : throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) { return FAULTS_ALLOCATED(size, __libc_malloc(size)); }
void* calloc(std::size_t number, std::size_t size)
{
    return FAULTS_ALLOCATED(number * size, __libc_calloc(number, size));
}
void* realloc(void* old, std::size_t size)
{
    return FAULTS_ALLOCATED(size, __libc_realloc(old, size));
}
FAULTS_OPENED(open)
FAULTS_OPENED(open64)
ssize_t read(int file, void* bytes, std::size_t size)
{
    return move(faults::Read, read, "read", file, bytes, size);
}
ssize_t write(int file, const void* bytes, std::size_t size)
{
    return move(faults::Write, write, "write", file, bytes, size);
}
int rename(const char* from, const char* to)
{
    return call(faults::Write, to, rename, "rename", from, to);
}
int linkat(int fromFolder, const char* from, int folder, const char* to, int flags)
{
    return call(faults::Write, to, linkat, "linkat", fromFolder, from, folder, to, flags);
}
int close(int file)
{
    if (file >= 0 && file < maxFiles)
        isCounted[file] = false;
    return static_cast<int>(::syscall(SYS_close, file));
}

} // extern "C"
#pragma GCC visibility pop
