// SPDX-License-Identifier: MIT
// A folder held open by its descriptor, through which everything in it is reached. Any thread, one at a time.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Files.h"

#include <string>

namespace veslora {

class PosixFolder final : public Folder {
  public:
    /// As `Files::openFolder`, where `path` begins in `folder`; AT_FDCWD for an absolute one.
    [[nodiscard]] static OpenedFolder openAt(int folder, const std::string& path);

    explicit PosixFolder(FileDescriptor folder) : m_folder(std::move(folder)) {}

    [[nodiscard]] std::optional<FileStat> stat() override;
    std::error_code setMode(std::uint32_t mode) override;
    [[nodiscard]] std::optional<std::vector<std::string>> list() override;
    [[nodiscard]] std::optional<std::vector<std::string>> listSome(std::size_t most) override;
    [[nodiscard]] std::optional<FileStat> stat(const std::string& name) override;
    [[nodiscard]] ReadResult read(const std::string& name, const ReadOptions& options) override;
    [[nodiscard]] std::unique_ptr<FileReader> open(const std::string& name) override;
    [[nodiscard]] std::error_code write(const std::string& name, const std::string& bytes,
                                        const WriteOptions& options) override;
    std::error_code remove(const std::string& name) override;
    [[nodiscard]] bool isExecutable(const std::string& name) override;
    std::error_code makeLink(const std::string& target, const std::string& name) override;
    [[nodiscard]] std::optional<std::string> linkTarget(const std::string& name) override;
    [[nodiscard]] std::unique_ptr<RemovalAtExit> removeAtExit(const std::string& name) override;
    [[nodiscard]] OpenedFolder openFolder(const std::string& name) override;
    std::error_code makeFolder(const std::string& name, std::uint32_t mode) override;

  private:
    FileDescriptor m_folder;
};

} // namespace veslora
