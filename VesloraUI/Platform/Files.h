// SPDX-License-Identifier: MIT
// The seam for files, above all for those of other programs: whatever lies there is hostile until it was read
// safely. Paths are absolute UTF-8 text. Operations are synchronous; nothing throws.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/FileRefusal.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace veslora {

/// What to do when the last part of a path is a symbolic link.
enum class Links { refuse, follow };

/// Whether a write must have reached the disk before it counts as done.
enum class Sync { no, yes };

struct FileStat {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    Timestamp modified =
        0; ///< for comparing with the clock; a double cannot tell neighbouring nanoseconds apart
    std::int64_t modifiedNanoseconds = 0; ///< the same moment, exact, since 1970
    std::uint32_t mode = 0;               ///< permission bits alone, as in 0644
    bool isRegular = false;
    bool isDirectory = false;
    bool isLink = false;
    bool isOurs = false; ///< owned by the user that the program runs as

    /// What another program's file must be before it is read.
    [[nodiscard]] bool isOurFile() const { return isRegular && isOurs; }
    bool operator==(const FileStat&) const = default;
};

/// Whose files may be read.
enum class Owners {
    ours,  ///< only our own user's
    anyone ///< for files of our own installation, which belong to the system's administrator
};

struct ReadOptions {
    Links links = Links::refuse;
    Owners owners = Owners::ours;
    std::size_t cap = std::size_t{1} << 20; ///< a longer file is refused (`file_too_large`), never cut
};

struct WriteOptions {
    /// Permission bits of the file. Absent: those of the file that is replaced, or 0600 for a new one.
    std::optional<std::uint32_t> mode;
    Sync sync = Sync::no;
};

/// Either the bytes or the reason why there are none.
struct ReadResult {
    std::string bytes;
    std::error_code error;
    explicit operator bool() const { return !error; }
};

/// An open file that is read piece by piece, for files too large to be held whole.
class FileReader {
  public:
    virtual ~FileReader() = default;

    /// As of now, of the file that was opened, whatever its path names by now. Absent when it can't be asked.
    [[nodiscard]] virtual std::optional<FileStat> stat() = 0;

    /// Reads up to `capacity` bytes from `offset` on into `bytes`. How many there were: 0 at the end of the
    /// file and when it can't be read.
    [[nodiscard]] virtual std::size_t read(char* bytes, std::size_t capacity, std::uint64_t offset) = 0;
};

class Folder;

/// While this lives, a file goes when the program ends by `exit`, in which nothing of the program's own is
/// destroyed any more: a window system's library ends it so once the server is gone.
class RemovalAtExit {
  public:
    virtual ~RemovalAtExit() = default;
};

/// Either a folder or the reason why there is none.
struct OpenedFolder {
    std::unique_ptr<Folder> folder;
    std::error_code error;

    explicit operator bool() const { return folder != nullptr; }
    [[nodiscard]] Folder* operator->() const { return folder.get(); }
};

/// A folder that was opened, and what lies in it by its name. It stays the same folder whatever its path
/// leads to by now; in one that was deleted nothing is found or made. A name that is empty, "." or "..", or
/// that holds a slash, is refused (`invalid_argument`, or absent), and a link in the folder is never
/// followed, whatever the options say. Any thread, one at a time.
class Folder {
  public:
    virtual ~Folder() = default;

    /// Of the folder itself.
    [[nodiscard]] virtual std::optional<FileStat> stat() = 0;
    /// Sets the permission bits of the folder itself.
    virtual std::error_code setMode(std::uint32_t mode) = 0;

    // As the operations of `Files`.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> list() = 0;
    /// So many of the names at most, whichever come first, for a folder that may hold any number of them.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> listSome(std::size_t most) = 0;
    [[nodiscard]] virtual std::optional<FileStat> stat(const std::string& name) = 0;
    [[nodiscard]] virtual ReadResult read(const std::string& name, const ReadOptions& options) = 0;
    [[nodiscard]] virtual std::unique_ptr<FileReader> open(const std::string& name) = 0;
    [[nodiscard]] virtual std::error_code write(const std::string& name, const std::string& bytes,
                                                const WriteOptions& options) = 0;
    virtual std::error_code remove(const std::string& name) = 0;
    [[nodiscard]] virtual bool isExecutable(const std::string& name) = 0;

    /// Makes or replaces the symbolic link `name` atomically, so that it points to `target`.
    virtual std::error_code makeLink(const std::string& target, const std::string& name) = 0;
    /// What a symbolic link says; absent where there is none.
    [[nodiscard]] virtual std::optional<std::string> linkTarget(const std::string& name) = 0;

    /// Null where it can't be arranged. The folder itself need not live on.
    [[nodiscard]] virtual std::unique_ptr<RemovalAtExit> removeAtExit(const std::string& name) = 0;

    /// Opens a folder in this one, on the conditions of `Files::openFolder`.
    [[nodiscard]] virtual OpenedFolder openFolder(const std::string& name) = 0;
    /// Makes a folder in this one. One that is there already is no error and keeps its mode.
    virtual std::error_code makeFolder(const std::string& name, std::uint32_t mode) = 0;
};

class Files {
  public:
    virtual ~Files() = default;

    /// Opens a folder of our own user. Links above it are followed, as the user may have moved their home;
    /// one in its own place is refused (`not_a_directory`), and so is another user's folder
    /// (`permission_denied`). May be called on any thread.
    [[nodiscard]] virtual OpenedFolder openFolder(const std::string& path) = 0;

    /// Opens a regular file of our own user for reading piece by piece; links are refused. Null when there is
    /// none. May be called on any thread, as may `stat` and `list`; a reader belongs to one thread at a time.
    [[nodiscard]] virtual std::unique_ptr<FileReader> open(const std::string& path) = 0;

    /// Reads a regular file, whole. Never blocks on a pipe or a device, and refuses those and, unless
    /// `options` say otherwise, links and other users' files. `no_such_file_or_directory` when there is
    /// nothing.
    [[nodiscard]] virtual ReadResult read(const std::string& path, const ReadOptions& options) = 0;

    /// Absent when nothing is there or it can't be asked.
    [[nodiscard]] virtual std::optional<FileStat> stat(const std::string& path, Links links) = 0;

    /// The names in a directory, without "." and "..", in no order. Absent when it can't be listed.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> list(const std::string& directory) = 0;

    /// Replaces or makes the file atomically: a new file beside it, then a rename. A link at `path` is
    /// replaced itself, so resolve configuration files first. On failure the old file is untouched and
    /// nothing is left over. Owner and group of a file that is replaced are kept where the user may do that.
    [[nodiscard]] virtual std::error_code write(const std::string& path, const std::string& bytes,
                                                const WriteOptions& options) = 0;

    /// Replaces a file of the user's by `bytes`, but only if it still holds `expected`; where that is absent,
    /// makes it, but only if there is none. An edit of another program's at any moment is never lost: then
    /// that file stays and `FileRefusal::changed` is the answer; what an unlucky third program left between
    /// two edits stays beside it as "<name>.veslora-kept.<random>". Mode, owner, group, access list and
    /// extended attributes are kept; where they or a second name of the file can't be, it is refused. Links
    /// are refused, so resolve first.
    [[nodiscard]] virtual std::error_code replaceIfUnchanged(const std::string& path,
                                                             const std::optional<std::string>& expected,
                                                             const std::string& bytes) = 0;

    /// Removes a file of the user's, on the same conditions.
    [[nodiscard]] virtual std::error_code removeIfUnchanged(const std::string& path,
                                                            const std::string& expected) = 0;

    /// Removes what a program of ours that was killed in the midst of `replaceIfUnchanged`,
    /// `removeIfUnchanged` or `write` left in the folder of `path`. Nothing that could be anybody else's, or
    /// that is still in use.
    virtual void sweepLeftovers(const std::string& path) = 0;

    /// Removes a file or a link; a directory is refused. An absent one is `no_such_file_or_directory`.
    virtual std::error_code remove(const std::string& path) = 0;

    /// Makes a directory and its missing parents; the new ones get `mode`. One that is there already is no
    /// error and keeps its mode.
    virtual std::error_code makeDirectory(const std::string& path, std::uint32_t mode) = 0;

    virtual std::error_code setMode(const std::string& path, std::uint32_t mode) = 0;

    /// Makes or replaces the symbolic link `path` atomically, so that it points to `target`.
    virtual std::error_code makeLink(const std::string& target, const std::string& path) = 0;

    /// Follows every link of `path`, also when the file itself does not exist. `path` itself when that fails.
    [[nodiscard]] virtual std::string resolve(const std::string& path) = 0;

    /// A regular file that our user may execute.
    [[nodiscard]] virtual bool isExecutable(const std::string& path) = 0;
};

} // namespace veslora
