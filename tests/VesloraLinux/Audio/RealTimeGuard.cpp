// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Audio/RealTimeGuard.h"

#include <dlfcn.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VESLORA_WATCHES 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VESLORA_WATCHES 0
#endif
#endif
#ifndef VESLORA_WATCHES
#define VESLORA_WATCHES 1
#endif

namespace {

thread_local bool isGuarded = false;
thread_local std::size_t heap = 0;
thread_local std::size_t locks = 0;

} // namespace

#if VESLORA_WATCHES

template <class Lock>
using Locking = int (*)(Lock*);

/// The C library's own function of that name.
template <class Lock>
static Locking<Lock> replaced(const char* name) {
    return reinterpret_cast<Locking<Lock>>(dlsym(RTLD_NEXT, name));
}

template <class Lock>
static int counted(Locking<Lock> real, Lock* lock) {
    locks += isGuarded ? 1 : 0;
    return real(lock);
}

// The C library's own, for those who replace them.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);

// The headers give the parameters names that only the library may use.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
void* malloc(std::size_t size) noexcept {
    heap += isGuarded ? 1 : 0;
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) noexcept {
    heap += isGuarded ? 1 : 0;
    return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) noexcept {
    heap += isGuarded ? 1 : 0;
    return __libc_realloc(memory, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    heap += isGuarded ? 1 : 0;
    return __libc_memalign(alignment, size);
}
void free(void* memory) noexcept {
    heap += isGuarded && memory != nullptr ? 1 : 0;
    __libc_free(memory);
}

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    static const auto real = replaced<pthread_mutex_t>("pthread_mutex_lock");
    return counted(real, mutex);
}
int pthread_mutex_trylock(pthread_mutex_t* mutex) noexcept {
    static const auto real = replaced<pthread_mutex_t>("pthread_mutex_trylock");
    return counted(real, mutex);
}
int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept {
    static const auto real = replaced<pthread_rwlock_t>("pthread_rwlock_rdlock");
    return counted(real, lock);
}
int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept {
    static const auto real = replaced<pthread_rwlock_t>("pthread_rwlock_wrlock");
    return counted(real, lock);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
}

#endif

namespace veslora::testing {
namespace {

constexpr int couldNotWatch = 77;

/// From here on this process may only end itself.
bool refuseSystemCalls() {
    std::array<sock_filter, 5> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    sock_fprog program{.len = filter.size(), .filter = filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

RealTimeGuard::RealTimeGuard() {
    heap = 0;
    locks = 0;
    isGuarded = true;
}

RealTimeGuard::~RealTimeGuard() {
    isGuarded = false;
}

bool RealTimeGuard::isWatching() {
    return VESLORA_WATCHES != 0;
}

std::size_t RealTimeGuard::heapCalls() const {
    return heap;
}

std::size_t RealTimeGuard::lockCalls() const {
    return locks;
}

SystemCalls systemCallsOf(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        if (!refuseSystemCalls()) {
            _exit(couldNotWatch);
        }
        work();
        syscall(SYS_exit_group, 0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child ||
        (WIFEXITED(status) && WEXITSTATUS(status) == couldNotWatch)) {
        return SystemCalls::unwatchable;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? SystemCalls::none : SystemCalls::some;
}

} // namespace veslora::testing
