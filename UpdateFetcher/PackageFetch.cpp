// SPDX-License-Identifier: MIT
#include "UpdateFetcher/PackageFetch.h"

#include "UpdateFetcher/Ed25519.h"
#include "UpdateFetcher/FetchFailures.h"

#include <QTimer>

#include <utility>

namespace veslora {

namespace {

std::string nameOf(const AppcastItem& item) {
    return Appcast::fileName(item.version, item.architecture);
}

} // namespace

PackageFetch::PackageFetch(PackageQuestion question, const FetchLimits& limits)
    : m_question(std::move(question)),
      m_fetch(limits.security,
              {.most = m_question.item.length, .whole = limits.package, .stall = limits.stall}),
      m_folder(m_question.folder) {}

void PackageFetch::start(Done done) {
    m_done = std::move(done);
    if (!m_folder.begin(nameOf(m_question.item))) {
        QTimer::singleShot(0, &m_fetch, [this] { m_done(UpdateFailure::folder); });
        return;
    }
    m_fetch.fetch(
        QString::fromStdString(m_question.item.url),
        [this](const QByteArray& bytes) {
            return m_folder.add({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        },
        [this](std::optional<FetchFailure> failure) {
            const UpdateAnswer answer = judged(failure);
            m_folder.drop();
            m_done(answer);
        });
}

/// By what was written, not by what was received.
UpdateAnswer PackageFetch::judged(std::optional<FetchFailure> failure) {
    if (failure) {
        return updateFailureOf(*failure);
    }
    const auto bytes = m_folder.written();
    if (!bytes) {
        return UpdateFailure::folder;
    }
    if (static_cast<std::int64_t>(bytes->size()) != m_question.item.length) {
        return UpdateFailure::incomplete;
    }
    if (!Ed25519::isSigned(*bytes, m_question.item.signature, m_question.key)) {
        return UpdateFailure::badSignature;
    }
    return m_folder.keep() ? UpdateAnswer(PackageReady{}) : UpdateAnswer(UpdateFailure::folder);
}

UpdateAnswer PackageFetch::verified(const PackageQuestion& question) {
    const PackageFolder folder(question.folder);
    if (!folder.isUsable()) {
        return UpdateFailure::folder;
    }
    const auto bytes = folder.read(nameOf(question.item), question.item.length);
    const bool isSigned = bytes && Ed25519::isSigned(*bytes, question.item.signature, question.key);
    return isSigned ? UpdateAnswer(PackageReady{}) : UpdateAnswer(UpdateFailure::changed);
}

} // namespace veslora
