// SPDX-License-Identifier: MIT
// A library that is loaded while the program runs, for what need not be there.
#pragma once

#include <string>

namespace veslora {

/// Any thread. It is never unloaded: such a library may keep a destructor for every thread that used it.
class LoadedLibrary {
  public:
    explicit LoadedLibrary(const std::string& fileName);

    [[nodiscard]] explicit operator bool() const { return m_handle != nullptr; }

    /// Sets `function` to the library's one of that name; false when it has none.
    template <typename Function>
    [[nodiscard]] bool find(const char* name, Function& function) const {
        function = reinterpret_cast<Function>(symbol(name));
        return function != nullptr;
    }

    /// Why the last of these calls on this thread failed.
    [[nodiscard]] static const char* error();

  private:
    [[nodiscard]] void* symbol(const char* name) const;

    void* m_handle = nullptr;
};

} // namespace veslora
