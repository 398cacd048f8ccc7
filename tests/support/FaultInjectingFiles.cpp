// SPDX-License-Identifier: MIT
#include "tests/support/FaultInjectingFiles.h"

#include <utility>

namespace veslora {

void FaultInjectingFiles::failOperation(int number, std::errc code) {
    m_failing = m_operations + number;
    m_failure = code;
}

std::error_code FaultInjectingFiles::count() {
    return ++m_operations == m_failing ? std::make_error_code(m_failure) : std::error_code();
}

std::error_code FaultInjectingFiles::countWrite() {
    const std::error_code failure = count();
    return !failure && writeError ? std::make_error_code(*writeError) : failure;
}

std::error_code FaultInjectingFiles::countRead() {
    const std::error_code failure = count();
    return !failure && readError ? std::make_error_code(*readError) : failure;
}

ReadResult FaultInjectingFiles::read(const std::string& path, const ReadOptions& options) {
    const auto failure = countRead();
    return failure ? ReadResult{{}, failure} : limited(m_inner.read(path, options));
}

ReadResult FaultInjectingFiles::limited(ReadResult result) const {
    if (readLimit && result.bytes.size() > *readLimit) {
        result.bytes.resize(*readLimit);
    }
    return result;
}

std::unique_ptr<FileReader> FaultInjectingFiles::open(const std::string& path) {
    return countRead() ? nullptr : m_inner.open(path);
}

std::optional<FileStat> FaultInjectingFiles::stat(const std::string& path, Links links) {
    return count() ? std::nullopt : m_inner.stat(path, links);
}

std::optional<std::vector<std::string>> FaultInjectingFiles::list(const std::string& directory) {
    return count() ? std::nullopt : m_inner.list(directory);
}

std::error_code FaultInjectingFiles::write(const std::string& path, const std::string& bytes,
                                           const WriteOptions& options) {
    const auto failure = countWrite();
    return failure ? failure : m_inner.write(path, bytes, options);
}

std::error_code FaultInjectingFiles::replaceIfUnchanged(const std::string& path,
                                                        const std::optional<std::string>& expected,
                                                        const std::string& bytes) {
    const auto failure = countWrite();
    return failure ? failure : m_inner.replaceIfUnchanged(path, expected, bytes);
}

std::error_code FaultInjectingFiles::removeIfUnchanged(const std::string& path, const std::string& expected) {
    const auto failure = count();
    return failure ? failure : m_inner.removeIfUnchanged(path, expected);
}

void FaultInjectingFiles::sweepLeftovers(const std::string& path) {
    if (!count()) {
        m_inner.sweepLeftovers(path);
    }
}

std::error_code FaultInjectingFiles::remove(const std::string& path) {
    const auto failure = count();
    return failure ? failure : m_inner.remove(path);
}

std::error_code FaultInjectingFiles::makeDirectory(const std::string& path, std::uint32_t mode) {
    const auto failure = countWrite();
    return failure ? failure : m_inner.makeDirectory(path, mode);
}

std::error_code FaultInjectingFiles::setMode(const std::string& path, std::uint32_t mode) {
    const auto failure = count();
    return failure ? failure : m_inner.setMode(path, mode);
}

std::error_code FaultInjectingFiles::makeLink(const std::string& target, const std::string& path) {
    const auto failure = countWrite();
    return failure ? failure : m_inner.makeLink(target, path);
}

std::string FaultInjectingFiles::resolve(const std::string& path) {
    return count() ? path : m_inner.resolve(path);
}

bool FaultInjectingFiles::isExecutable(const std::string& path) {
    return !count() && m_inner.isExecutable(path);
}

class FaultInjectingFiles::OpenFolder final : public Folder {
  public:
    OpenFolder(FaultInjectingFiles& files, std::unique_ptr<Folder> inner)
        : m_files(files), m_inner(std::move(inner)) {}

    std::optional<FileStat> stat() override { return m_files.count() ? std::nullopt : m_inner->stat(); }
    std::error_code setMode(std::uint32_t mode) override {
        const auto failure = m_files.count();
        return failure ? failure : m_inner->setMode(mode);
    }
    std::optional<std::vector<std::string>> list() override {
        return m_files.count() ? std::nullopt : m_inner->list();
    }
    std::optional<std::vector<std::string>> listSome(std::size_t most) override {
        return m_files.count() ? std::nullopt : m_inner->listSome(most);
    }
    std::optional<FileStat> stat(const std::string& name) override {
        return m_files.count() ? std::nullopt : m_inner->stat(name);
    }
    ReadResult read(const std::string& name, const ReadOptions& options) override {
        const auto failure = m_files.countRead();
        return failure ? ReadResult{{}, failure} : m_files.limited(m_inner->read(name, options));
    }
    std::unique_ptr<FileReader> open(const std::string& name) override {
        return m_files.countRead() ? nullptr : m_inner->open(name);
    }
    std::error_code write(const std::string& name, const std::string& bytes,
                          const WriteOptions& options) override {
        const auto failure = m_files.countWrite();
        return failure ? failure : m_inner->write(name, bytes, options);
    }
    std::error_code remove(const std::string& name) override {
        const auto failure = m_files.count();
        return failure ? failure : m_inner->remove(name);
    }
    bool isExecutable(const std::string& name) override {
        return !m_files.count() && m_inner->isExecutable(name);
    }
    std::error_code makeLink(const std::string& target, const std::string& name) override {
        const auto failure = m_files.countWrite();
        return failure ? failure : m_inner->makeLink(target, name);
    }
    std::optional<std::string> linkTarget(const std::string& name) override {
        return m_files.count() ? std::nullopt : m_inner->linkTarget(name);
    }
    std::unique_ptr<RemovalAtExit> removeAtExit(const std::string& name) override {
        return m_files.count() ? nullptr : m_inner->removeAtExit(name);
    }
    OpenedFolder openFolder(const std::string& name) override {
        const auto failure = m_files.count();
        return failure ? OpenedFolder{nullptr, failure} : m_files.wrapped(m_inner->openFolder(name));
    }
    std::error_code makeFolder(const std::string& name, std::uint32_t mode) override {
        const auto failure = m_files.countWrite();
        return failure ? failure : m_inner->makeFolder(name, mode);
    }

  private:
    FaultInjectingFiles& m_files;
    std::unique_ptr<Folder> m_inner;
};

OpenedFolder FaultInjectingFiles::wrapped(OpenedFolder opened) {
    if (opened) {
        opened.folder = std::make_unique<OpenFolder>(*this, std::move(opened.folder));
    }
    return opened;
}

OpenedFolder FaultInjectingFiles::openFolder(const std::string& path) {
    const auto failure = count();
    return failure ? OpenedFolder{nullptr, failure} : wrapped(m_inner.openFolder(path));
}

} // namespace veslora
