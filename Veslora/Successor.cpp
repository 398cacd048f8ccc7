// SPDX-License-Identifier: MIT
#include "Veslora/Successor.h"

#include "VesloraLinux/System/LinuxDirectories.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace veslora {

namespace {

/// As `execve` takes them.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

Successor::Successor(int argc, char** argv)
    : m_program(LinuxDirectories::executable()), m_arguments(argv, argv + argc) {
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        m_environment.emplace_back(*variable);
    }
}

std::string Successor::become() {
    execve(m_program.c_str(), pointersTo(m_arguments).data(), pointersTo(m_environment).data());
    return m_program + ": " + std::strerror(errno);
}

} // namespace veslora
