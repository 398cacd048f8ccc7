// SPDX-License-Identifier: MIT
// Figures as they are printed, one JSON object a line, and the judgement whether each of them is good.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace veslora::bench {

/// Both ends belong to it.
struct Range {
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();

    [[nodiscard]] bool contains(double value) const { return value >= lowest && value <= highest; }
};

/// On which side of its limit a figure must lie; on the limit is good either way.
enum class Bound { upper, lower };

struct Figure {
    std::string name;
    double value = 0;
    std::string unit;
    std::optional<double> limit; ///< absent for a figure that is only told
    Range sensible; ///< what a working measurement can give at all on any machine; outside it the instrument
                    ///< is broken
    Bound bound = Bound::upper;
};

class Report {
  public:
    /// Without `hasLimits` a figure is good when it is sensible: a short run proves that each is measured, no
    /// more.
    explicit Report(bool hasLimits) : m_hasLimits(hasLimits) {}

    /// Prints it at once.
    void add(const Figure& figure);
    /// A measurement that came to no figure.
    void addFailure(const std::string& name, const std::string& reason);

    /// Counts figures that another program has printed.
    void addOthers(bool areGood) { m_isGood &= areGood; }

    [[nodiscard]] bool isGood() const { return m_isGood; }

  private:
    [[nodiscard]] bool isGood(const Figure& figure) const;

    bool m_hasLimits;
    bool m_isGood = true;
};

/// The value below which the share `fraction` of the values lies, by the nearest rank; not for an empty list.
[[nodiscard]] double percentile(std::vector<double> values, double fraction);
[[nodiscard]] double median(std::vector<double> values);

} // namespace veslora::bench
