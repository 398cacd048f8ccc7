// SPDX-License-Identifier: MIT
#include "UpdateFetcher/FeedCheck.h"

#include "UpdateFetcher/AppcastReader.h"
#include "UpdateFetcher/Ed25519.h"
#include "UpdateFetcher/FetchFailures.h"

#include <utility>

namespace veslora {

namespace {

HttpsFetch::Sink sinkInto(QByteArray& bytes) {
    return [&bytes](const QByteArray& more) {
        bytes += more;
        return true;
    };
}

} // namespace

FeedCheck::FeedCheck(FeedQuestion question, const FetchLimits& limits)
    : m_question(std::move(question)),
      m_feedFetch(limits.security, {.most = longestFeed, .whole = limits.feed, .stall = limits.stall}),
      m_signatureFetch(limits.security,
                       {.most = longestSignature, .whole = limits.feed, .stall = limits.stall}) {}

void FeedCheck::start(Done done) {
    m_done = std::move(done);
    m_feedFetch.fetch(QString::fromStdString(m_question.feed), sinkInto(m_feed),
                      [this](std::optional<FetchFailure> failure) {
                          if (failure) {
                              m_done(updateFailureOf(*failure));
                          } else {
                              fetchSignature();
                          }
                      });
}

void FeedCheck::fetchSignature() {
    m_signatureFetch.fetch(
        QString::fromStdString(m_question.feed) + QStringLiteral(".sig"), sinkInto(m_signature),
        [this](std::optional<FetchFailure> failure) {
            // A feed without one, or with something else in its place, is not signed.
            const bool isUnsigned = failure == FetchFailure::missing || failure == FetchFailure::tooLarge;
            if (failure) {
                m_done(isUnsigned ? UpdateFailure::badSignature : updateFailureOf(*failure));
            } else {
                m_done(judged(m_question, m_feed, m_signature));
            }
        });
}

UpdateAnswer FeedCheck::judged(const FeedQuestion& question, const QByteArray& feed,
                               const QByteArray& signature) {
    const std::string_view bytes(feed.constData(), static_cast<std::size_t>(feed.size()));
    if (!Ed25519::isSigned(bytes, signature.trimmed().toStdString(), question.key)) {
        return UpdateFailure::badSignature;
    }
    const auto items = AppcastReader::read(feed);
    const auto running = ReleaseVersion::parse(question.version);
    if (!items || !running) {
        return UpdateFailure::unreadable;
    }
    const auto newest = Appcast::newest(*items, question.kind, question.architecture);
    if (!newest) {
        return UpdateFailure::noPackage;
    }
    return newest->version > *running ? UpdateAnswer(*newest) : UpdateAnswer(NothingNewer{});
}

} // namespace veslora
