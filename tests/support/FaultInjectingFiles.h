// SPDX-License-Identifier: MIT
// Files that fail when a test wants them to, in front of others that work. What is done through an opened
// folder counts and fails as the rest does.
#pragma once

#include "VesloraUI/Platform/Files.h"

namespace veslora {

class FaultInjectingFiles final : public Files {
  public:
    /// Every write, new directory and new link fails with this while it is set, as on a full or a broken
    /// disk.
    std::optional<std::errc> writeError;
    /// Every read fails with this while it is set.
    std::optional<std::errc> readError;
    /// Every read gives no more than so many bytes while it is set, as of a file that its owner is still
    /// writing.
    std::optional<std::size_t> readLimit;

    explicit FaultInjectingFiles(Files& inner) : m_inner(inner) {}

    /// Lets the operation of that number fail, counted from 1 with the next one; what gives no error code
    /// tells that nothing is there. Replaces an order that still stands.
    void failOperation(int number, std::errc code);

    /// How many operations there were.
    [[nodiscard]] int operations() const { return m_operations; }

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

  private:
    class OpenFolder;
    /// What becomes of a read that was let through.
    [[nodiscard]] ReadResult limited(ReadResult result) const;
    [[nodiscard]] std::error_code count();
    [[nodiscard]] std::error_code countWrite();
    [[nodiscard]] std::error_code countRead();
    [[nodiscard]] OpenedFolder wrapped(OpenedFolder opened);

    Files& m_inner;
    int m_operations = 0;
    int m_failing = 0; ///< the number of the operation that is to fail; 0 for none
    std::errc m_failure{};
};

} // namespace veslora
