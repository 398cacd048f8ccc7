// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ExitRemovals.h"

#include "VesloraLinux/System/LostErrors.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdlib>

namespace veslora::ExitRemovals {
namespace {

/// A file by its folder's descriptor and its name. `folder` is written last and cleared first, so that the
/// handler never meets half of one.
struct Place {
    std::atomic<bool> isTaken = false;
    std::atomic<int> folder = -1;
    std::array<char, 64> name{};
};

// Never destroyed, as the handler may run behind whatever else is.
constinit std::array<Place, 16> places{};

void removeAll() {
    for (const Place& place : places) {
        if (const int folder = place.folder; folder >= 0) {
            unlinkat(folder, place.name.data(), 0);
        }
    }
}

class Removal final : public RemovalAtExit {
  public:
    explicit Removal(Place& place) : m_place(place) {}
    Removal(const Removal&) = delete;
    Removal& operator=(const Removal&) = delete;
    ~Removal() override {
        close(m_place.folder.exchange(-1));
        m_place.isTaken = false;
    }

  private:
    Place& m_place;
};

} // namespace

std::unique_ptr<RemovalAtExit> add(int folder, const std::string& name) {
    static const bool isArranged = std::atexit(removeAll) == 0;
    if (!isArranged || name.size() >= Place().name.size()) {
        return nullptr;
    }
    const int own = fcntl(folder, F_DUPFD_CLOEXEC, 0);
    if (own < 0) {
        LostErrors::tell("arrange the removal of", folder, name.c_str());
    }
    for (Place& place : places) {
        if (own >= 0 && !place.isTaken.exchange(true)) {
            place.name.fill('\0');
            name.copy(place.name.data(), name.size());
            place.folder = own;
            return std::make_unique<Removal>(place);
        }
    }
    close(own);
    return nullptr;
}

} // namespace veslora::ExitRemovals
