// SPDX-License-Identifier: MIT
// Whether each mark on a letter can be told apart: the letter must look different without it. For the main
// thread.
#pragma once

#include <QFont>
#include <QHash>
#include <QImage>
#include <QString>

namespace veslora {

class MarkInk {
  public:
    MarkInk(const QFont& font, double ratio) : m_font(font), m_ratio(ratio) {}

    /// Whether each code point of a cluster but the first changes its picture, and by at least half of what
    /// it changes on the bare first one: of three accents in one place the third makes the first a little
    /// bolder, which nobody sees.
    [[nodiscard]] bool shows(const QString& cluster);

  private:
    [[nodiscard]] bool showsAll(const QString& cluster);
    [[nodiscard]] const QImage& picture(const QString& text);
    [[nodiscard]] int difference(const QString& one, const QString& other);

    QFont m_font;
    double m_ratio;
    QHash<QString, QImage> m_pictures;
    QHash<QString, bool> m_known; ///< texts repeat their letters
};

} // namespace veslora
