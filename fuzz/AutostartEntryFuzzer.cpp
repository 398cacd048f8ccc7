// SPDX-License-Identifier: MIT
// A desktop entry in the autostart folder. Whatever stood in it, it can be switched on and off, and any path
// is read as it was written.
#include "VesloraLinux/System/AutostartEntry.h"
#include "fuzz/Fuzzing.h"

#include <string>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(fuzz::textOf(data, size));
    const std::string on = AutostartEntry::turnedOn(text, "/usr/bin/veslora");
    require(AutostartEntry::isOn(on, {"GNOME"}));
    require(AutostartEntry::programOf(on) == "/usr/bin/veslora");
    require(AutostartEntry::turnedOn(on, "/usr/bin/veslora") == on);
    require(!AutostartEntry::isOn(AutostartEntry::turnedOff(text), {}));
    require(!AutostartEntry::isOn(AutostartEntry::turnedOff(on), {}));
    // A line's end can't be in a path of ours, and neither can a null byte.
    const std::string path = "/" + text.substr(0, text.find_first_of(std::string("\n\r\0", 3)));
    require(AutostartEntry::programOf(AutostartEntry::make(path)) == path);
    return 0;
}
