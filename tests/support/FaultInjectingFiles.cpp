// SPDX-License-Identifier: MIT
#include "tests/support/FaultInjectingFiles.h"

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

ReadResult FaultInjectingFiles::read(const std::string& path, const ReadOptions& options) {
    if (const auto failure = count()) {
        return {{}, failure};
    }
    if (readError) {
        return {{}, std::make_error_code(*readError)};
    }
    ReadResult result = m_inner.read(path, options);
    if (readLimit && result.bytes.size() > *readLimit) {
        result.bytes.resize(*readLimit);
    }
    return result;
}

std::unique_ptr<FileReader> FaultInjectingFiles::open(const std::string& path) {
    return count() || readError ? nullptr : m_inner.open(path);
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

} // namespace veslora
