// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/WidgetLayout.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <numeric>

namespace veslora {

namespace {

constexpr std::string_view blanks = " \t";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Cuts the first piece that is not empty off `text`, up to `separator`. Empty at the end of the text.
std::string_view takePiece(std::string_view& text, char separator) {
    text.remove_prefix(std::min(text.find_first_not_of(separator), text.size()));
    const auto end = text.find(separator);
    const auto piece = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return piece;
}

/// A decimal integer, with or without a sign, that is the number of units of a size.
std::optional<WidgetSize> sizeFrom(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    if (number == units(WidgetSize::small)) {
        return WidgetSize::small;
    }
    if (number == units(WidgetSize::wide)) {
        return WidgetSize::wide;
    }
    return std::nullopt;
}

auto find(std::vector<WidgetEntry>& entries, WidgetID id) {
    return std::ranges::find(entries, id, &WidgetEntry::id);
}

std::vector<int> unitsOf(const std::vector<WidgetEntry>& entries) {
    std::vector<int> result(entries.size());
    std::ranges::transform(entries, result.begin(), [](const WidgetEntry& entry) { return entry.units(); });
    return result;
}

/// Every place at which an item can be put into a list of `count`, the nearest to `index` first.
std::vector<int> placesNear(int index, int count) {
    std::vector<int> places(static_cast<std::size_t>(count) + 1);
    std::iota(places.begin(), places.end(), 0);
    std::ranges::stable_sort(places, [index](int left, int right) {
        // As wide numbers: the distance from an extreme index does not fit an int.
        return std::llabs(static_cast<long long>(left) - index) <
               std::llabs(static_cast<long long>(right) - index);
    });
    return places;
}

/// The number of the page that the item at `place` is on.
int pageOf(int place, const std::vector<int>& units) {
    const auto pages = WidgetLayout::pack(units, WidgetLayout::unitsPerPage);
    const auto page =
        std::ranges::find_if(pages, [place](const std::vector<int>& items) { return items.back() >= place; });
    return static_cast<int>(page - pages.begin());
}

} // namespace

WidgetLayout WidgetLayout::defaultLayout() {
    return {{{WidgetID::timer, WidgetSize::wide},
             {WidgetID::music, WidgetSize::small},
             {WidgetID::metronome, WidgetSize::wide},
             {WidgetID::claude, WidgetSize::wide},
             {WidgetID::claudeUsage, WidgetSize::small},
             {WidgetID::meters, WidgetSize::small},
             {WidgetID::keepAwake, WidgetSize::small}}};
}

WidgetLayout WidgetLayout::fromStoredValue(std::optional<std::string_view> text) {
    if (!text) {
        return defaultLayout();
    }
    WidgetLayout layout;
    for (std::string_view rest = *text; !rest.empty();) {
        std::string_view piece = takePiece(rest, ',');
        const auto id = widgetIDFrom(trimmed(takePiece(piece, ':')));
        if (id) {
            layout.add(*id, sizeFrom(trimmed(piece)));
        }
    }
    if (layout.entries.empty() && !trimmed(*text).empty()) {
        return defaultLayout();
    }
    return layout;
}

std::string WidgetLayout::storedValue() const {
    std::string text;
    for (const WidgetEntry& entry : entries) {
        if (!text.empty()) {
            text += ',';
        }
        text += rawValue(entry.id);
        if (entry.size != defaultSize(entry.id)) {
            text += ':' + std::to_string(entry.units());
        }
    }
    return text;
}

std::vector<WidgetID> WidgetLayout::ids() const {
    std::vector<WidgetID> result(entries.size());
    std::ranges::transform(entries, result.begin(), [](const WidgetEntry& entry) { return entry.id; });
    return result;
}

std::vector<WidgetID> WidgetLayout::available() const {
    std::vector<WidgetID> result;
    std::ranges::copy_if(allWidgetIDs, std::back_inserter(result),
                         [this](WidgetID id) { return !contains(id); });
    return result;
}

bool WidgetLayout::contains(WidgetID id) const {
    return std::ranges::any_of(entries, [id](const WidgetEntry& entry) { return entry.id == id; });
}

std::vector<std::vector<WidgetEntry>> WidgetLayout::pages() const {
    std::vector<std::vector<WidgetEntry>> result;
    for (const auto& indices : pack(unitsOf(entries), unitsPerPage)) {
        auto& page = result.emplace_back();
        for (const int index : indices) {
            page.push_back(entries[static_cast<std::size_t>(index)]);
        }
    }
    return result;
}

void WidgetLayout::add(WidgetID id, std::optional<WidgetSize> size) {
    if (contains(id)) {
        return;
    }
    const auto offered = sizes(id);
    const bool isOffered = size && std::ranges::find(offered, *size) != offered.end();
    entries.push_back({id, isOffered ? *size : defaultSize(id)});
}

void WidgetLayout::remove(WidgetID id) {
    std::erase_if(entries, [id](const WidgetEntry& entry) { return entry.id == id; });
}

void WidgetLayout::move(WidgetID id, int index) {
    const auto found = find(entries, id);
    if (found == entries.end()) {
        return;
    }
    const WidgetEntry entry = *found;
    entries.erase(found);
    entries.insert(entries.begin() + std::clamp(index, 0, static_cast<int>(entries.size())), entry);
}

void WidgetLayout::setSize(WidgetID id, WidgetSize size) {
    const auto offered = sizes(id);
    const auto found = find(entries, id);
    if (found != entries.end() && std::ranges::find(offered, size) != offered.end()) {
        found->size = size;
    }
}

int WidgetLayout::clampedIndex(int index, WidgetID id, int page) const {
    const auto all = ids();
    const auto found = std::ranges::find(all, id);
    if (found == all.end()) {
        return index;
    }
    return clampedIndex(unitsOf(entries), static_cast<int>(found - all.begin()), index, page);
}

std::vector<std::vector<int>> WidgetLayout::pack(const std::vector<int>& units, int perPage) {
    std::vector<std::vector<int>> pages;
    int sum = 0;
    for (int index = 0; index < static_cast<int>(units.size()); ++index) {
        const int size = units[static_cast<std::size_t>(index)];
        if (pages.empty() || sum + size > perPage) {
            pages.emplace_back();
            sum = 0;
        }
        pages.back().push_back(index);
        sum += size;
    }
    return pages;
}

int WidgetLayout::clampedIndex(const std::vector<int>& units, int moving, int index, int page) {
    if (moving < 0 || moving >= static_cast<int>(units.size())) {
        return index;
    }
    auto rest = units;
    const int item = rest[static_cast<std::size_t>(moving)];
    rest.erase(rest.begin() + moving);
    for (const int place : placesNear(index, static_cast<int>(rest.size()))) {
        auto candidate = rest;
        candidate.insert(candidate.begin() + place, item);
        if (pageOf(place, candidate) == page) {
            return place;
        }
    }
    return index;
}

} // namespace veslora
