// SPDX-License-Identifier: MIT
#include "bench/Report.h"

#include "VesloraCore/Text/Json.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace veslora::bench {

namespace {

std::string numberText(std::optional<double> number) {
    char text[32] = "null";
    if (number && std::isfinite(*number)) {
        std::snprintf(text, sizeof text, "%.6g", *number);
    }
    return text;
}

std::string quoted(const std::string& text) {
    return Json::makeString(text).print(Json::Layout::compact);
}

void printLine(const Figure& figure, bool isGood) {
    std::printf(R"({"name":%s,"value":%s,"unit":%s,"limit":%s,"ok":%s})"
                "\n",
                quoted(figure.name).c_str(), numberText(figure.value).c_str(), quoted(figure.unit).c_str(),
                numberText(figure.limit).c_str(), isGood ? "true" : "false");
    std::fflush(stdout);
}

} // namespace

bool Report::isGood(const Figure& figure) const {
    if (!std::isfinite(figure.value) || !figure.sensible.contains(figure.value)) {
        return false;
    }
    if (!m_hasLimits || !figure.limit) {
        return true;
    }
    return figure.bound == Bound::upper ? figure.value <= *figure.limit : figure.value >= *figure.limit;
}

void Report::add(const Figure& figure) {
    const bool good = isGood(figure);
    m_isGood &= good;
    printLine(figure, good);
}

void Report::addFailure(const std::string& name, const std::string& reason) {
    m_isGood = false;
    std::fprintf(stderr, "bench: %s: %s\n", name.c_str(), reason.c_str());
    printLine({.name = name, .value = std::nan(""), .unit = ""}, false);
}

double percentile(std::vector<double> values, double fraction) {
    if (values.empty()) {
        throw std::runtime_error("nothing was measured");
    }
    std::ranges::sort(values);
    const double rank = std::ceil(fraction * static_cast<double>(values.size()));
    const auto index = static_cast<std::size_t>(std::max(rank - 1, 0.0));
    return values[std::min(index, values.size() - 1)];
}

double median(std::vector<double> values) {
    return percentile(std::move(values), 0.5);
}

} // namespace veslora::bench
