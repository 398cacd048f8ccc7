// SPDX-License-Identifier: MIT
// A text cut into what a person sees as one character each, and the bounds within which it may be handed to
// the fonts at all. Pure functions, any thread.
#pragma once

#include <QList>
#include <QString>

namespace veslora {

struct TextCluster {
    int from = 0;   ///< in UTF-16 units
    int length = 0; ///< in UTF-16 units
    int scalars = 0;

    bool operator==(const TextCluster&) const = default;
};

namespace TextClusters {

/// The text's clusters from its start, as far as all of it that comes before their end is
/// - of 400 UTF-16 units at most,
/// - of four code points a cluster at most,
/// - of four scripts at most, since the first use of a script takes milliseconds,
/// - and without anything that is never shown as itself, or that the toolkit does not know.
/// They reach to the text's end unless it goes beyond one of the bounds. Nothing is shaped for this, and no
/// more is read than that.
[[nodiscard]] QList<TextCluster> bounded(const QString& text);

/// Whether the clusters are all of the text.
[[nodiscard]] bool areWhole(const QList<TextCluster>& clusters, const QString& text);

} // namespace TextClusters

} // namespace veslora
