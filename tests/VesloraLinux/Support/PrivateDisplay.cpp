// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/PrivateDisplay.h"

#include <unistd.h>

#include <stdexcept>
#include <vector>

namespace veslora::testing {

PrivateDisplay::PrivateDisplay(const std::string& size)
    : m_program(std::vector<std::string>{VESLORA_DISPLAY, size}, STDOUT_FILENO, ProgramInput::told) {
    const std::string answered = answer("display");
    const std::size_t space = answered.find(' ');
    m_name = answered.substr(0, space);
    m_folder = answered.substr(space + 1);
}

void PrivateDisplay::startWindowManager(const std::string& name) const {
    ask("window-manager " + name);
}

void PrivateDisplay::startCompositor() const {
    ask("compositor");
}

std::string PrivateDisplay::startBus() const {
    return ask("bus");
}

void PrivateDisplay::killCompositor() const {
    ask("kill compositor");
}

void PrivateDisplay::kill() const {
    ask("kill display");
}

std::string PrivateDisplay::ask(const std::string& request) const {
    m_program.tell(request);
    return answer(request);
}

std::string PrivateDisplay::answer(const std::string& word) const {
    const std::string line = m_program.nextLine();
    if (line.compare(0, word.size() + 1, word + " ") != 0) {
        throw std::runtime_error("no " + word + " on the display: " + line);
    }
    return line.substr(word.size() + 1);
}

} // namespace veslora::testing
