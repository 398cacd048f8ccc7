// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/FileAttributes.h"

#include "VesloraUI/Platform/FileRefusal.h"

#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <optional>
#include <string>

namespace veslora::FileAttributes {
namespace {

constexpr auto accessList = "system.posix_acl_access";

/// Absent where there is none; `failed` is set where it could not be told.
std::optional<std::string> valueOf(int file, const char* name, bool& failed) {
    std::string value;
    while (true) {
        const ssize_t length = fgetxattr(file, name, nullptr, 0);
        value.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        const ssize_t read = length < 0 ? length : fgetxattr(file, name, value.data(), value.size());
        if (read >= 0) {
            value.resize(static_cast<std::size_t>(read));
            return value;
        }
        if (errno != ERANGE) {
            failed = errno != ENODATA && errno != ENOTSUP;
            return std::nullopt;
        }
    }
}

bool hasSameOwners(int one, int other) {
    struct stat first {};
    struct stat second {};
    return fstat(one, &first) == 0 && fstat(other, &second) == 0 && first.st_uid == second.st_uid &&
           first.st_gid == second.st_gid;
}

bool copyAccessList(int from, int to) {
    bool failed = false;
    const auto list = valueOf(from, accessList, failed);
    if (failed) {
        return false;
    }
    if (!list) {
        // The folder may have given the new file a list by its default.
        return fremovexattr(to, accessList) == 0 || errno == ENODATA || errno == ENOTSUP;
    }
    // With another owner or group the same list would give the rights to somebody else.
    return hasSameOwners(from, to) && fsetxattr(to, accessList, list->data(), list->size(), 0) == 0;
}

/// The names of all attributes, each with a null byte behind it. Absent where they can't be told.
std::optional<std::string> namesOf(int file) {
    std::string names;
    while (true) {
        const ssize_t length = flistxattr(file, nullptr, 0);
        names.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        const ssize_t read = length <= 0 ? length : flistxattr(file, names.data(), names.size());
        if (read >= 0) {
            names.resize(static_cast<std::size_t>(read));
            return names;
        }
        if (errno != ERANGE) {
            return errno == ENOTSUP ? std::optional(std::string()) : std::nullopt;
        }
    }
}

bool copyUserAttributes(int from, int to) {
    const auto names = namesOf(from);
    if (!names) {
        return false;
    }
    for (std::size_t at = 0; at < names->size();) {
        const std::string name = names->c_str() + at;
        at += name.size() + 1;
        if (!name.starts_with("user.")) {
            continue;
        }
        bool failed = false;
        const auto value = valueOf(from, name.c_str(), failed);
        if (failed || (value && fsetxattr(to, name.c_str(), value->data(), value->size(), 0) != 0)) {
            return false;
        }
    }
    return true;
}

} // namespace

std::error_code copy(int from, int to) {
    return copyUserAttributes(from, to) && copyAccessList(from, to)
               ? std::error_code()
               : make_error_code(FileRefusal::losesAttributes);
}

} // namespace veslora::FileAttributes
