// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Audio/AllocationGuard.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool isGuarded = false;
thread_local std::size_t uses = 0;

void count() {
    if (isGuarded) {
        ++uses;
    }
}

void* allocate(std::size_t size, std::size_t alignment) {
    count();
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    if (void* const memory = std::aligned_alloc(alignment, rounded == 0 ? alignment : rounded)) {
        return memory;
    }
    throw std::bad_alloc();
}

void release(void* memory) {
    if (memory != nullptr) {
        count();
    }
    std::free(memory);
}

} // namespace

// The forms for arrays end up here by themselves; so would the one that does not throw, but for a sanitizer,
// which has one of its own.
void* operator new(std::size_t size) {
    return allocate(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return allocate(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}

namespace veslora::testing {

AllocationGuard::AllocationGuard() {
    uses = 0;
    isGuarded = true;
}

AllocationGuard::~AllocationGuard() {
    isGuarded = false;
}

std::size_t AllocationGuard::count() const {
    return uses;
}

} // namespace veslora::testing
