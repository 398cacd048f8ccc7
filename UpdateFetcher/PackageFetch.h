// SPDX-License-Identifier: MIT
// Brings a package into its folder, and tells later whether it is still the one that was signed. Main thread
// only.
#pragma once

#include "UpdateFetcher/FetchLimits.h"
#include "UpdateFetcher/PackageFolder.h"
#include "VesloraCore/Updates/UpdateMessages.h"
#include "Web/HttpsFetch.h"

#include <functional>

namespace veslora {

class PackageFetch {
  public:
    using Done = std::function<void(const UpdateAnswer&)>;

    PackageFetch(PackageQuestion question, const FetchLimits& limits);

    /// Downloads; `done` is called once, later. Whatever fails leaves no file. Called once.
    void start(Done done);

    /// Looks at the file that lies there.
    [[nodiscard]] static UpdateAnswer verified(const PackageQuestion& question);

  private:
    [[nodiscard]] UpdateAnswer judged(std::optional<FetchFailure> failure);

    PackageQuestion m_question;
    HttpsFetch m_fetch;
    PackageFolder m_folder;
    Done m_done;
};

} // namespace veslora
