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

std::vector<PageItem> itemsOf(const std::vector<WidgetEntry>& entries) {
    std::vector<PageItem> result(entries.size());
    std::ranges::transform(entries, result.begin(), [](const WidgetEntry& entry) {
        return PageItem{entry.units(), entry.width()};
    });
    return result;
}

std::vector<PageItem> itemsOf(const std::vector<int>& units) {
    std::vector<PageItem> result(units.size());
    std::ranges::transform(units, result.begin(), [](int count) { return PageItem{count, 0}; });
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
int pageOf(int place, const std::vector<PageItem>& items, const PageLimits& limits) {
    const auto pages = WidgetLayout::pack(items, limits);
    const auto page = std::ranges::find_if(
        pages, [place](const std::vector<int>& indices) { return indices.back() >= place; });
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

std::vector<std::vector<WidgetEntry>> WidgetLayout::pages(const PageLimits& limits) const {
    std::vector<std::vector<WidgetEntry>> result;
    for (const auto& indices : pack(itemsOf(entries), limits)) {
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

int WidgetLayout::clampedIndex(int index, WidgetID id, int page, const PageLimits& limits) const {
    const auto all = ids();
    const auto found = std::ranges::find(all, id);
    if (found == all.end()) {
        return index;
    }
    return clampedIndex(itemsOf(entries), static_cast<int>(found - all.begin()), index, page, limits);
}

std::vector<std::vector<int>> WidgetLayout::pack(const std::vector<PageItem>& items,
                                                 const PageLimits& limits) {
    std::vector<std::vector<int>> pages;
    int units = 0;
    double width = 0;
    for (int index = 0; index < static_cast<int>(items.size()); ++index) {
        const PageItem& item = items[static_cast<std::size_t>(index)];
        const double wider = width + limits.gap + item.width;
        if (pages.empty() || units + item.units > limits.units || wider > limits.width) {
            pages.emplace_back();
            units = item.units;
            width = item.width;
        } else {
            units += item.units;
            width = wider;
        }
        pages.back().push_back(index);
    }
    return pages;
}

std::vector<std::vector<int>> WidgetLayout::pack(const std::vector<int>& units, int perPage) {
    return pack(itemsOf(units), PageLimits{.units = perPage});
}

int WidgetLayout::clampedIndex(const std::vector<PageItem>& items, int moving, int index, int page,
                               const PageLimits& limits) {
    if (moving < 0 || moving >= static_cast<int>(items.size())) {
        return index;
    }
    auto rest = items;
    const PageItem item = rest[static_cast<std::size_t>(moving)];
    rest.erase(rest.begin() + moving);
    for (const int place : placesNear(index, static_cast<int>(rest.size()))) {
        auto candidate = rest;
        candidate.insert(candidate.begin() + place, item);
        if (pageOf(place, candidate, limits) == page) {
            return place;
        }
    }
    return index;
}

int WidgetLayout::clampedIndex(const std::vector<int>& units, int moving, int index, int page) {
    return clampedIndex(itemsOf(units), moving, index, page, {});
}

} // namespace veslora
