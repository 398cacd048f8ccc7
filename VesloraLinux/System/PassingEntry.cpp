// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PassingEntry.h"

#include "VesloraLinux/System/LostErrors.h"

#include <sys/random.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>

namespace veslora {
namespace {

constexpr std::size_t digitCount = 12;

std::string randomDigits() {
    std::uint64_t random = 0;
    if (getrandom(&random, sizeof random, GRND_NONBLOCK) != sizeof random) {
        // Only before the kernel's generator is ready: then the clock will do, since an existing name is
        // refused.
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        random = static_cast<std::uint64_t>(now.tv_nsec);
    }
    char digits[32];
    std::snprintf(digits, sizeof digits, "%012llx",
                  static_cast<unsigned long long>(random & 0xffffffffffffU));
    return digits;
}

} // namespace

PassingEntry::PassingEntry(int folder, std::string_view prefix) : m_folder(folder), m_prefix(prefix) {
    rename();
}

PassingEntry::~PassingEntry() {
    if (m_isMade && unlinkat(m_folder, name(), 0) != 0) {
        LostErrors::tell("remove", m_folder, name());
    }
}

void PassingEntry::rename() {
    m_name = std::string(m_prefix) + randomDigits();
}

std::error_code PassingEntry::moveTo(const std::string& name) {
    if (renameat(m_folder, m_name.c_str(), m_folder, name.c_str()) != 0) {
        return {errno, std::generic_category()};
    }
    m_isMade = false;
    return {};
}

bool PassingEntry::isPassing(std::string_view name, std::string_view prefix) {
    return name.size() == prefix.size() + digitCount && name.starts_with(prefix) &&
           name.find_first_not_of("0123456789abcdef", prefix.size()) == std::string_view::npos;
}

} // namespace veslora
