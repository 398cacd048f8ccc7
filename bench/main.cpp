// SPDX-License-Identifier: MIT
// Measures the program that lies beside this one, on a display, a bus and in a home of its own, and prints
// one figure a line.
#include "bench/Measurements.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

using namespace veslora::bench;

bool gives(const Measurement& measurement, const std::string& name) {
    return measurement.name == name || std::ranges::count(measurement.figures, name) > 0;
}

bool isWanted(const Measurement& measurement, const std::vector<std::string>& names) {
    return names.empty() ||
           std::ranges::any_of(names, [&](const std::string& name) { return gives(measurement, name); });
}

bool isKnown(const std::string& name) {
    return std::ranges::any_of(measurements(), [&](const Measurement& each) { return gives(each, name); });
}

int explain(const std::string& unknown) {
    std::fprintf(stderr, "bench: no figure is called %s. There are:\n", unknown.c_str());
    for (const Measurement& measurement : measurements()) {
        for (const std::string_view figure : measurement.figures) {
            std::fprintf(stderr, "  %.*s\n", static_cast<int>(figure.size()), figure.data());
        }
    }
    return 2;
}

int measureAll(const std::vector<std::string>& names, bool isShort) {
    Report report(!isShort);
    const Stage stage;
    const std::string executables = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    for (const Measurement& measurement : measurements()) {
        if (!isWanted(measurement, names)) {
            continue;
        }
        try {
            measurement.run({stage, report, isShort, executables});
        } catch (const std::exception& error) {
            report.addFailure(std::string(measurement.name), error.what());
        }
    }
    return report.isGood() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> names(argv + 1, argv + argc);
    const bool isShort = std::erase(names, "--smoke") > 0;
    for (const std::string& name : names) {
        if (!isKnown(name)) {
            return explain(name);
        }
    }
    try {
        return measureAll(names, isShort);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 1;
    }
}
