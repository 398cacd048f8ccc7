// SPDX-License-Identifier: MIT
#include "VesloraLinux/Shared/LoadedLibrary.h"

#include <dlfcn.h>

namespace veslora {

LoadedLibrary::LoadedLibrary(const std::string& fileName)
    : m_handle(dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {}

void* LoadedLibrary::symbol(const char* name) const {
    return dlsym(m_handle, name);
}

const char* LoadedLibrary::error() {
    return dlerror();
}

} // namespace veslora
