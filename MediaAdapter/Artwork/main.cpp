// SPDX-License-Identifier: MIT
// veslora-media-artwork: reads an address from standard input and prints a small PNG or JPEG of the picture
// there. Ends with 1 where there is none. It lives for one picture only, since decoders and TLS take much
// memory and a broken picture may bring them down.
#include "MediaAdapter/Artwork/ArtworkFile.h"
#include "MediaAdapter/Artwork/ArtworkPicture.h"
#include "MediaAdapter/Artwork/FileUrl.h"
#include "MediaAdapter/Artwork/RemoteArtwork.h"

#include <QCoreApplication>

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace {

/// Room for 4096 characters, which are four bytes each at most.
constexpr std::size_t longestAddress = std::size_t{4096} * 4;
constexpr rlim_t mostMemory = rlim_t{768} << 20;
constexpr rlim_t mostSeconds = 5;

bool limit(__rlimit_resource resource, rlim_t most) {
    const rlimit both{most, most};
    return setrlimit(resource, &both) == 0;
}

/// What a picture that was made to do harm may take.
bool limitAll() {
    const bool isMemoryLimited = !VESLORA_LIMITS_MEMORY || limit(RLIMIT_AS, mostMemory);
    return isMemoryLimited && limit(RLIMIT_CPU, mostSeconds) && limit(RLIMIT_CORE, 0) &&
           limit(RLIMIT_FSIZE, 0);
}

/// Ends of lines are no part of the address. Empty when it is longer than any.
std::string readAddress() {
    std::string address(longestAddress + 1, '\0');
    address.resize(std::fread(address.data(), 1, address.size(), stdin));
    while (address.ends_with('\n')) {
        address.pop_back();
    }
    return address.size() <= longestAddress ? address : std::string();
}

int print(const QByteArray& bytes) {
    const QByteArray picture = veslora::ArtworkPicture::shrunk(bytes);
    const auto size = static_cast<std::size_t>(picture.size());
    const bool isPrinted = size > 0 && std::fwrite(picture.data(), 1, size, stdout) == size;
    return isPrinted && std::fflush(stdout) == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (!limitAll()) {
        return 1;
    }
    const std::string address = readAddress();
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(count, arguments);
    if (const auto path = veslora::FileUrl::path(address)) {
        return print(veslora::ArtworkFile::read(*path));
    }
    veslora::RemoteArtwork remote;
    remote.fetch(QString::fromStdString(address),
                 [](const QByteArray& bytes) { QCoreApplication::exit(print(bytes)); });
    return QCoreApplication::exec();
}
