// SPDX-License-Identifier: MIT
// Every seam's form on Linux, made in the order in which they need each other. Main thread only.
#pragma once

#include "VesloraLinux/Shared/WindowSystem.h"
#include "VesloraUI/Platform/Platform.h"

#include <memory>

namespace veslora {

class LinuxPlatform {
  public:
    /// Sets what Qt reads from the environment, unless the user set it to what the program can work with: to
    /// be called before the application object is made.
    static void prepareEnvironment();

    /// Lets large blocks of memory go back to the system as soon as they are freed, for the whole process.
    static void giveBackLargeBlocks();

    /// Whether the X server that Qt is about to connect to answers: without one Qt would end the program by
    /// force. To be asked after `prepareEnvironment`; true where the user chose another platform of Qt's.
    [[nodiscard]] static bool hasDisplay();

    /// Needs the application object. Null when no window system that the program knows is running.
    [[nodiscard]] static std::unique_ptr<LinuxPlatform> make();
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    [[nodiscard]] const Platform& seams() const;

  private:
    struct Parts;

    explicit LinuxPlatform(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace veslora
