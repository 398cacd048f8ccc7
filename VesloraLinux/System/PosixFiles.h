// SPDX-License-Identifier: MIT
// Files by POSIX calls; how they are read and written safely is in PosixReading and PosixWriting. Stateless;
// usable from any thread.
#pragma once

#include "VesloraUI/Platform/Files.h"

namespace veslora {

class PosixFiles final : public Files {
  public:
    [[nodiscard]] OpenedFolder openFolder(const std::string& path) override;
    [[nodiscard]] std::unique_ptr<FileReader> open(const std::string& path) override;
    [[nodiscard]] ReadResult read(const std::string& path, const ReadOptions& options) override;
    [[nodiscard]] std::optional<FileStat> stat(const std::string& path, Links links) override;
    [[nodiscard]] std::optional<std::vector<std::string>> list(const std::string& directory) override;

    [[nodiscard]] std::error_code write(const std::string& path, const std::string& bytes,
                                        const WriteOptions& options) override;
    [[nodiscard]] std::error_code replaceIfUnchanged(const std::string& path,
                                                     const std::optional<std::string>& expected,
                                                     const std::string& bytes) override;
    [[nodiscard]] std::error_code removeIfUnchanged(const std::string& path,
                                                    const std::string& expected) override;
    void sweepLeftovers(const std::string& path) override;
    std::error_code remove(const std::string& path) override;
    std::error_code makeDirectory(const std::string& path, std::uint32_t mode) override;
    std::error_code setMode(const std::string& path, std::uint32_t mode) override;
    std::error_code makeLink(const std::string& target, const std::string& path) override;
    [[nodiscard]] std::string resolve(const std::string& path) override;
    [[nodiscard]] bool isExecutable(const std::string& path) override;
};

} // namespace veslora
