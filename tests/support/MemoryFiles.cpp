// SPDX-License-Identifier: MIT
#include "tests/support/MemoryFiles.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace veslora {
namespace {

constexpr int mostLinks = 40;
constexpr std::uint32_t ownerReads = 0400;
constexpr std::uint32_t ownerExecutes = 0100;
constexpr std::uint32_t permissionBits = 07777;

std::error_code error(std::errc code) {
    return std::make_error_code(code);
}

std::string parentOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string joined(const std::string& directory, const std::string& name) {
    return directory == "/" ? "/" + name : directory + "/" + name;
}

} // namespace

MemoryFiles::MemoryFiles() {
    m_nodes["/"] = {.kind = Kind::directory, .mode = 0755, .inode = ++m_lastInode, .isOurs = false};
}

/// The path without any link in it, whether or not something lies there. Absent where links lead in a circle.
std::optional<std::string> MemoryFiles::walk(const std::string& path, Links last, int rounds) const {
    if (rounds > mostLinks) {
        return std::nullopt;
    }
    std::string at = "/";
    for (std::size_t begin = path.find_first_not_of('/'); begin != std::string::npos;) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::size_t next = path.find_first_not_of('/', end);
        const std::string name = path.substr(begin, end - begin);
        begin = next;
        if (name == "." || name == "..") {
            at = name == "." ? at : parentOf(at);
            continue;
        }
        const auto found = m_nodes.find(joined(at, name));
        const bool isLink = found != m_nodes.end() && found->second.kind == Kind::link;
        if (isLink && (next != std::string::npos || last == Links::follow)) {
            const std::string& target = found->second.bytes;
            const auto real =
                walk(target.starts_with('/') ? target : joined(at, target), Links::follow, rounds + 1);
            if (!real) {
                return std::nullopt;
            }
            at = *real;
        } else {
            at = joined(at, name);
        }
    }
    return at;
}

const MemoryFiles::Node* MemoryFiles::find(const std::string& path, Links last) const {
    const auto real = walk(path, last);
    const auto found = real ? m_nodes.find(*real) : m_nodes.end();
    return found == m_nodes.end() ? nullptr : &found->second;
}

MemoryFiles::Node* MemoryFiles::find(const std::string& path, Links last) {
    return const_cast<Node*>(std::as_const(*this).find(path, last));
}

ReadResult MemoryFiles::read(const std::string& path, const ReadOptions& options) {
    ++m_reads;
    const Node* node = find(path, options.links);
    if (node == nullptr) {
        return {{}, error(std::errc::no_such_file_or_directory)};
    }
    if (node->kind == Kind::link) {
        return {{}, error(std::errc::too_many_symbolic_link_levels)};
    }
    if (node->kind == Kind::directory) {
        return {{}, error(std::errc::is_a_directory)};
    }
    if (node->kind == Kind::special) {
        return {{}, error(std::errc::not_supported)};
    }
    if ((options.owners == Owners::ours && !node->isOurs) || (node->mode & ownerReads) == 0) {
        return {{}, error(std::errc::permission_denied)};
    }
    if (node->bytes.size() > options.cap) {
        return {{}, error(std::errc::file_too_large)};
    }
    return {node->bytes, {}};
}

/// Finds its file by the path at each call.
class MemoryFiles::Reader final : public FileReader {
  public:
    Reader(MemoryFiles& files, std::string path) : m_files(files), m_path(std::move(path)) {}

    std::optional<FileStat> stat() override { return m_files.stat(m_path, Links::refuse); }
    std::size_t read(char* bytes, std::size_t capacity, std::uint64_t offset) override {
        const Node* node = m_files.find(m_path, Links::refuse);
        return node != nullptr && offset < node->bytes.size()
                   ? node->bytes.copy(bytes, capacity, static_cast<std::size_t>(offset))
                   : 0;
    }

  private:
    MemoryFiles& m_files;
    std::string m_path;
};

std::unique_ptr<FileReader> MemoryFiles::open(const std::string& path) {
    const Node* node = find(path, Links::refuse);
    const bool isReadable =
        node != nullptr && node->kind == Kind::file && node->isOurs && (node->mode & ownerReads) != 0;
    return isReadable ? std::make_unique<Reader>(*this, path) : nullptr;
}

std::optional<FileStat> MemoryFiles::stat(const std::string& path, Links links) {
    const Node* node = find(path, links);
    if (node == nullptr) {
        return std::nullopt;
    }
    return FileStat{.device = 1,
                    .inode = node->inode,
                    .size = static_cast<std::int64_t>(node->bytes.size()),
                    .modified = node->modified,
                    .modifiedNanoseconds = static_cast<std::int64_t>(node->modified * 1e9),
                    .mode = node->mode,
                    .isRegular = node->kind == Kind::file,
                    .isDirectory = node->kind == Kind::directory,
                    .isLink = node->kind == Kind::link,
                    .isOurs = node->isOurs};
}

std::optional<std::vector<std::string>> MemoryFiles::list(const std::string& directory) {
    const auto real = walk(directory, Links::follow);
    const Node* node = find(directory, Links::follow);
    if (node == nullptr || node->kind != Kind::directory) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (const auto& [path, inner] : m_nodes) {
        if (path != "/" && parentOf(path) == *real) {
            names.push_back(path.substr(path.rfind('/') + 1));
        }
    }
    return names;
}

/// Puts `node` where `path` says, in place of any file or link there.
std::error_code MemoryFiles::place(const std::string& path, Node node) {
    const auto real = walk(path, Links::refuse);
    const Node* parent = real ? find(parentOf(*real), Links::follow) : nullptr;
    if (parent == nullptr) {
        return error(std::errc::no_such_file_or_directory);
    }
    if (parent->kind != Kind::directory) {
        return error(std::errc::not_a_directory);
    }
    if (const Node* old = find(*real, Links::refuse); old != nullptr && old->kind == Kind::directory) {
        return error(std::errc::is_a_directory);
    }
    node.inode = ++m_lastInode;
    node.modified = clock;
    m_nodes[*real] = std::move(node);
    return {};
}

std::error_code MemoryFiles::write(const std::string& path, const std::string& bytes,
                                   const WriteOptions& options) {
    const Node* old = find(path, Links::refuse);
    const bool replaces = old != nullptr && old->kind == Kind::file;
    const std::uint32_t mode = options.mode.value_or(replaces ? old->mode : 0600);
    const std::error_code failure =
        place(path, {.bytes = bytes, .mode = mode, .isOurs = !replaces || old->isOurs});
    if (!failure) {
        ++m_writes;
        m_syncedWrites += options.sync == Sync::yes ? 1 : 0;
    }
    return failure;
}

std::error_code MemoryFiles::refusalOf(const std::string& path,
                                       const std::optional<std::string>& expected) const {
    const Node* node = find(path, Links::refuse);
    const bool isAsExpected =
        expected ? node != nullptr && node->kind == Kind::file && node->bytes == *expected : node == nullptr;
    if (!isAsExpected) {
        return FileRefusal::changed;
    }
    return node != nullptr && refusal ? make_error_code(*refusal) : std::error_code();
}

std::error_code MemoryFiles::replaceIfUnchanged(const std::string& path,
                                                const std::optional<std::string>& expected,
                                                const std::string& bytes) {
    const std::error_code refused = refusalOf(path, expected);
    return refused ? refused : write(path, bytes, {.sync = Sync::yes});
}

std::error_code MemoryFiles::removeIfUnchanged(const std::string& path, const std::string& expected) {
    const std::error_code refused = refusalOf(path, expected);
    return refused ? refused : remove(path);
}

void MemoryFiles::sweepLeftovers(const std::string& path) {
    const std::string folder = parentOf(path);
    for (const std::string& name : list(folder).value_or(std::vector<std::string>())) {
        if (name.starts_with(".veslora-tmp.")) {
            remove(joined(folder, name));
        }
    }
}

std::error_code MemoryFiles::remove(const std::string& path) {
    const Node* node = find(path, Links::refuse);
    if (node == nullptr) {
        return error(std::errc::no_such_file_or_directory);
    }
    if (node->kind == Kind::directory) {
        return error(std::errc::is_a_directory);
    }
    m_nodes.erase(*walk(path, Links::refuse));
    return {};
}

std::error_code MemoryFiles::makeDirectory(const std::string& path, std::uint32_t mode) {
    const auto real = walk(path, Links::follow);
    if (!real) {
        return error(std::errc::too_many_symbolic_link_levels);
    }
    for (std::size_t end = 0; end != std::string::npos && *real != "/";) {
        end = real->find('/', end + 1);
        const std::string part = real->substr(0, end);
        const auto found = m_nodes.find(part);
        if (found == m_nodes.end()) {
            make(part, Kind::directory, {}, mode);
        } else if (found->second.kind != Kind::directory) {
            return error(std::errc::not_a_directory);
        }
    }
    return {};
}

std::error_code MemoryFiles::setMode(const std::string& path, std::uint32_t mode) {
    Node* node = find(path, Links::follow);
    if (node == nullptr) {
        return error(std::errc::no_such_file_or_directory);
    }
    if (!node->isOurs) {
        return error(std::errc::operation_not_permitted);
    }
    node->mode = mode & permissionBits;
    return {};
}

std::error_code MemoryFiles::makeLink(const std::string& target, const std::string& path) {
    const std::error_code failure = place(path, {.kind = Kind::link, .bytes = target, .mode = 0777});
    m_writes += failure ? 0 : 1;
    return failure;
}

std::string MemoryFiles::resolve(const std::string& path) {
    return walk(path, Links::follow).value_or(path);
}

bool MemoryFiles::isExecutable(const std::string& path) {
    const Node* node = find(path, Links::follow);
    return node != nullptr && node->kind == Kind::file && (node->mode & ownerExecutes) != 0;
}

MemoryFiles::Node& MemoryFiles::make(const std::string& path, Kind kind, const std::string& bytes,
                                     std::uint32_t mode) {
    Node& node = m_nodes[path];
    node = {kind, bytes, mode & permissionBits, ++m_lastInode, clock, true};
    return node;
}

void MemoryFiles::put(const std::string& path, const std::string& bytes, std::uint32_t mode) {
    const auto real = walk(path, Links::refuse);
    if (!real || makeDirectory(parentOf(*real), 0755)) {
        throw std::invalid_argument(path);
    }
    make(*real, Kind::file, bytes, mode);
}

void MemoryFiles::rewrite(const std::string& path, const std::string& bytes) {
    Node* node = find(path, Links::follow);
    if (node == nullptr || node->kind != Kind::file) {
        throw std::invalid_argument(path);
    }
    node->bytes = bytes;
    node->modified = clock;
}

void MemoryFiles::append(const std::string& path, const std::string& bytes) {
    if (find(path, Links::follow) == nullptr) {
        put(path, {});
    }
    rewrite(path, *text(path) + bytes);
}

void MemoryFiles::move(const std::string& from, const std::string& to) {
    if (find(from, Links::refuse) == nullptr || makeDirectory(parentOf(to), 0755)) {
        throw std::invalid_argument(from);
    }
    std::map<std::string, Node> moved;
    for (auto node = m_nodes.lower_bound(from); node != m_nodes.end() && node->first.starts_with(from);) {
        const std::string rest = node->first.substr(from.size());
        if (rest.empty() || rest.front() == '/') {
            moved[to + rest] = std::move(node->second);
            node = m_nodes.erase(node);
        } else {
            ++node;
        }
    }
    for (auto& [path, node] : moved) {
        m_nodes[path] = std::move(node);
    }
}

void MemoryFiles::removeTree(const std::string& path) {
    std::erase_if(m_nodes,
                  [&](const auto& node) { return node.first == path || node.first.starts_with(path + "/"); });
}

void MemoryFiles::touch(const std::string& path) {
    rewrite(path, text(path).value());
}

void MemoryFiles::putSpecial(const std::string& path) {
    put(path, {});
    find(path, Links::refuse)->kind = Kind::special;
}

void MemoryFiles::giveAway(const std::string& path) {
    Node* node = find(path, Links::follow);
    if (node == nullptr) {
        throw std::invalid_argument(path);
    }
    node->isOurs = false;
}

std::optional<std::string> MemoryFiles::text(const std::string& path) const {
    const Node* node = find(path, Links::follow);
    return node != nullptr && node->kind == Kind::file ? std::optional(node->bytes) : std::nullopt;
}

bool MemoryFiles::exists(const std::string& path) const {
    return find(path, Links::refuse) != nullptr;
}

} // namespace veslora
