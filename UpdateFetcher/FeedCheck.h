// SPDX-License-Identifier: MIT
// Asks a feed for a newer release: fetches it with its signature, and reads it only when that holds. Main
// thread only.
#pragma once

#include "UpdateFetcher/FetchLimits.h"
#include "VesloraCore/Updates/UpdateMessages.h"
#include "Web/HttpsFetch.h"

#include <QByteArray>

#include <functional>

namespace veslora {

class FeedCheck {
  public:
    /// Longest feed, and longest file with a signature, in bytes.
    static constexpr qint64 longestFeed = qint64{1} << 20;
    static constexpr qint64 longestSignature = 256;

    using Done = std::function<void(const UpdateAnswer&)>;

    FeedCheck(FeedQuestion question, const FetchLimits& limits);

    /// Begins; `done` is called once, later. Called once.
    void start(Done done);

    /// What a feed that came whole says. `signature` is base64; blanks and line ends around it don't count.
    [[nodiscard]] static UpdateAnswer judged(const FeedQuestion& question, const QByteArray& feed,
                                             const QByteArray& signature);

  private:
    void fetchSignature();

    FeedQuestion m_question;
    HttpsFetch m_feedFetch;
    HttpsFetch m_signatureFetch;
    QByteArray m_feed;
    QByteArray m_signature;
    Done m_done;
};

} // namespace veslora
