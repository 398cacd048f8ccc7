// SPDX-License-Identifier: MIT
// A file system that lives in the test's memory and holds to the rules of the real one: parents must exist,
// links lead elsewhere, a replaced file is a new one. Paths are absolute.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <map>
#include <set>
#include <string>

namespace veslora {

class MemoryFiles final : public Files {
  public:
    /// What a file written now is stamped with.
    Timestamp clock = 1'800'000'000;

    /// Why no file of the user's may be replaced or removed, while it is set.
    std::optional<FileRefusal> refusal;

    MemoryFiles();

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

    /// Makes or replaces a file, and the directories above it, as another program would.
    void put(const std::string& path, const std::string& bytes, std::uint32_t mode = 0644);
    /// Changes a file in place, as a program does that truncates it and writes: it stays the same file.
    void rewrite(const std::string& path, const std::string& bytes);
    /// Adds to the end of a file, which is made if there is none.
    void append(const std::string& path, const std::string& bytes);
    /// Gives a file or a directory another name, as the same file; replaces a file of that name.
    void move(const std::string& from, const std::string& to);
    /// Removes a directory with all that lies in it.
    void removeTree(const std::string& path);
    /// Stamps a file with `clock`.
    void touch(const std::string& path);
    /// Makes something that is neither file nor directory nor link, such as a pipe.
    void putSpecial(const std::string& path);
    /// Removes what is to go when the program ends by `exit`.
    void endProgram();
    /// Gives a file or a folder to another user.
    void giveAway(const std::string& path);

    /// What a file holds, links followed and for any owner; absent where there is none.
    [[nodiscard]] std::optional<std::string> text(const std::string& path) const;
    [[nodiscard]] bool exists(const std::string& path) const;
    /// How many files and links were written or made through the seam, and by how many of them the disk was
    /// made to hold them.
    [[nodiscard]] int writes() const { return m_writes; }
    /// How many files were read whole, or were to be.
    [[nodiscard]] int reads() const { return m_reads; }
    [[nodiscard]] int syncedWrites() const { return m_syncedWrites; }

  private:
    class Reader;
    class OpenFolder;
    class Removal;
    enum class Kind { file, directory, link, special };
    struct Node {
        Kind kind = Kind::file;
        std::string bytes; ///< of a file, or the target of a link
        std::uint32_t mode = 0;
        std::uint64_t inode = 0;
        Timestamp modified = 0;
        bool isOurs = true;
    };

    [[nodiscard]] std::optional<std::string> walk(const std::string& path, Links last, int rounds = 0) const;
    [[nodiscard]] const Node* find(const std::string& path, Links last) const;
    [[nodiscard]] Node* find(const std::string& path, Links last);
    [[nodiscard]] std::error_code refusalOf(const std::string& path,
                                            const std::optional<std::string>& expected) const;
    [[nodiscard]] std::error_code place(const std::string& path, Node node);
    Node& make(const std::string& path, Kind kind, const std::string& bytes, std::uint32_t mode);

    std::map<std::string, Node> m_nodes; ///< by their paths without any link in them
    std::multiset<std::string> m_atExit;
    std::uint64_t m_lastInode = 0;
    int m_writes = 0;
    int m_reads = 0;
    int m_syncedWrites = 0;
};

} // namespace veslora
