// SPDX-License-Identifier: MIT
// Opened folders of MemoryFiles: each remembers its inode and looks for where that lies by now.
#include "VesloraCore/Text/PathText.h"
#include "tests/support/MemoryFiles.h"

#include <algorithm>
#include <utility>

namespace veslora {

namespace {

std::error_code error(std::errc code) {
    return std::make_error_code(code);
}

} // namespace

class MemoryFiles::Removal final : public RemovalAtExit {
  public:
    Removal(MemoryFiles& files, std::string path) : m_files(files), m_path(std::move(path)) {
        m_files.m_atExit.insert(m_path);
    }
    Removal(const Removal&) = delete;
    Removal& operator=(const Removal&) = delete;
    ~Removal() override { m_files.m_atExit.extract(m_path); }

  private:
    MemoryFiles& m_files;
    std::string m_path;
};

void MemoryFiles::endProgram() {
    for (const std::string& path : m_atExit) {
        remove(path);
    }
}

class MemoryFiles::OpenFolder final : public Folder {
  public:
    OpenFolder(MemoryFiles& files, std::uint64_t inode) : m_files(files), m_inode(inode) {}

    std::optional<FileStat> stat() override {
        const auto path = own();
        return path ? m_files.stat(*path, Links::refuse) : std::nullopt;
    }
    std::error_code setMode(std::uint32_t mode) override {
        const auto path = own();
        return path ? m_files.setMode(*path, mode) : error(std::errc::no_such_file_or_directory);
    }
    std::optional<std::vector<std::string>> list() override {
        const auto path = own();
        return path ? m_files.list(*path) : std::vector<std::string>();
    }
    std::optional<std::vector<std::string>> listSome(std::size_t most) override {
        auto names = list();
        if (names && names->size() > most) {
            names->resize(most);
        }
        return names;
    }
    std::optional<FileStat> stat(const std::string& name) override {
        const auto path = of(name);
        return path ? m_files.stat(*path, Links::refuse) : std::nullopt;
    }
    ReadResult read(const std::string& name, const ReadOptions& options) override {
        const auto path = of(name);
        ReadOptions refusing = options;
        refusing.links = Links::refuse;
        return path ? m_files.read(*path, refusing) : ReadResult{{}, reasonOf(name)};
    }
    std::unique_ptr<FileReader> open(const std::string& name) override {
        const auto path = of(name);
        return path ? m_files.open(*path) : nullptr;
    }
    std::error_code write(const std::string& name, const std::string& bytes,
                          const WriteOptions& options) override {
        const auto path = of(name);
        return path ? m_files.write(*path, bytes, options) : reasonOf(name);
    }
    std::error_code remove(const std::string& name) override {
        const auto path = of(name);
        return path ? m_files.remove(*path) : reasonOf(name);
    }
    bool isExecutable(const std::string& name) override {
        const auto found = stat(name);
        return found && found->isRegular && m_files.isExecutable(*of(name));
    }
    std::error_code makeLink(const std::string& target, const std::string& name) override {
        const auto path = of(name);
        return path ? m_files.makeLink(target, *path) : reasonOf(name);
    }
    std::optional<std::string> linkTarget(const std::string& name) override {
        const auto path = of(name);
        const Node* node = path ? std::as_const(m_files).find(*path, Links::refuse) : nullptr;
        return node != nullptr && node->kind == Kind::link ? std::optional(node->bytes) : std::nullopt;
    }
    std::unique_ptr<RemovalAtExit> removeAtExit(const std::string& name) override {
        const auto path = of(name);
        return path ? std::make_unique<Removal>(m_files, *path) : nullptr;
    }
    OpenedFolder openFolder(const std::string& name) override {
        const auto path = of(name);
        return path ? m_files.openFolder(*path) : OpenedFolder{nullptr, reasonOf(name)};
    }
    std::error_code makeFolder(const std::string& name, std::uint32_t mode) override {
        const auto path = of(name);
        if (!path) {
            return reasonOf(name);
        }
        return m_files.exists(*path) ? m_files.openFolder(*path).error : m_files.makeDirectory(*path, mode);
    }

  private:
    /// The folder's own path; absent once it was deleted.
    [[nodiscard]] std::optional<std::string> own() const {
        const auto found = std::ranges::find_if(
            m_files.m_nodes, [this](const auto& node) { return node.second.inode == m_inode; });
        return found == m_files.m_nodes.end() ? std::nullopt : std::optional(found->first);
    }
    [[nodiscard]] std::optional<std::string> of(const std::string& name) const {
        const auto path = PathText::isName(name) ? own() : std::nullopt;
        return path ? std::optional((*path == "/" ? "" : *path) + "/" + name) : std::nullopt;
    }
    /// Why there is no path for a name.
    [[nodiscard]] static std::error_code reasonOf(const std::string& name) {
        return error(PathText::isName(name) ? std::errc::no_such_file_or_directory
                                            : std::errc::invalid_argument);
    }

    MemoryFiles& m_files;
    std::uint64_t m_inode;
};

OpenedFolder MemoryFiles::openFolder(const std::string& path) {
    if (!PathText::isName(path.substr(path.rfind('/') + 1))) {
        return {nullptr, error(std::errc::invalid_argument)};
    }
    const Node* node = find(path, Links::refuse);
    if (node == nullptr) {
        return {nullptr, error(std::errc::no_such_file_or_directory)};
    }
    if (node->kind != Kind::directory) {
        return {nullptr, error(std::errc::not_a_directory)};
    }
    if (!node->isOurs) {
        return {nullptr, error(std::errc::permission_denied)};
    }
    return {std::make_unique<OpenFolder>(*this, node->inode), {}};
}

} // namespace veslora
