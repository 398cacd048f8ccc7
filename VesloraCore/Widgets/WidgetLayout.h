// SPDX-License-Identifier: MIT
// The user's arrangement of widgets: which are in the rack, in what order and size, how they break into
// pages, and how the settings store keeps that as one short line of text. Plain values.
#pragma once

#include <array>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

/// The raw value is also the number of units that a module of that size takes on a page.
enum class WidgetSize { small = 1, wide = 2 };

enum class WidgetID { clock, timer, meters, music, metronome, claude, claudeUsage, keepAwake };

inline constexpr std::array allWidgetIDs{WidgetID::clock,       WidgetID::timer,     WidgetID::meters,
                                         WidgetID::music,       WidgetID::metronome, WidgetID::claude,
                                         WidgetID::claudeUsage, WidgetID::keepAwake};

[[nodiscard]] int units(WidgetSize size);

/// How the settings spell it, as in "claudeUsage".
[[nodiscard]] std::string_view rawValue(WidgetID id);
[[nodiscard]] std::optional<WidgetID> widgetIDFrom(std::string_view rawValue);

/// What people call it, untranslated: "Agent Usage". Ends with a null.
[[nodiscard]] std::string_view title(WidgetID id);

/// The sizes that it comes in, the usual one first.
[[nodiscard]] std::span<const WidgetSize> sizes(WidgetID id);
[[nodiscard]] WidgetSize defaultSize(WidgetID id);

/// Points. A size that the widget does not come in counts as small.
[[nodiscard]] double width(WidgetID id, WidgetSize size);

struct WidgetEntry {
    WidgetID id = WidgetID::clock;
    WidgetSize size = WidgetSize::small;

    [[nodiscard]] int units() const { return veslora::units(size); }
    [[nodiscard]] double width() const { return veslora::width(id, size); }
    bool operator==(const WidgetEntry&) const = default;
};

/// What one page can hold.
struct PageLimits {
    static constexpr int unitsPerPage = 5;

    int units = unitsPerPage;
    /// Points for the modules and the gaps between them, as far as the screen has room.
    double width = std::numeric_limits<double>::infinity();
    double gap = 0; ///< points between two modules at least

    bool operator==(const PageLimits&) const = default;
};

/// One module, as far as pages are concerned.
struct PageItem {
    int units = 1;
    double width = 0; ///< points
};

/// No widget is in it twice, and each has a size that it comes in; every operation keeps that.
struct WidgetLayout {
    static constexpr int unitsPerPage = PageLimits::unitsPerPage;
    static constexpr double widgetHeight = 112; ///< points, of every module

    std::vector<WidgetEntry> entries;

    /// What a new user sees: two full pages, with the clock left in the library.
    [[nodiscard]] static WidgetLayout defaultLayout();

    /// Reads what `storedValue` wrote and repairs it piece by piece: unknown and repeated widgets vanish, and
    /// a size that is unknown or not on offer becomes the usual one. The default layout for an absent text,
    /// and for one of which nothing is left; an empty text is a rack that the user has emptied.
    [[nodiscard]] static WidgetLayout fromStoredValue(std::optional<std::string_view> text);

    /// As in "timer,metronome:2": each widget with its size in units, where that is not its usual one.
    [[nodiscard]] std::string storedValue() const;

    [[nodiscard]] std::vector<WidgetID> ids() const;
    /// The widgets that are not in the rack.
    [[nodiscard]] std::vector<WidgetID> available() const;
    [[nodiscard]] bool contains(WidgetID id) const;
    [[nodiscard]] std::vector<std::vector<WidgetEntry>> pages(const PageLimits& limits = {}) const;

    /// Appends it, in the usual size unless it comes in the given one. Nothing when it is there already.
    void add(WidgetID id, std::optional<WidgetSize> size = std::nullopt);
    void remove(WidgetID id);
    /// Takes it out and puts it back so that it has that `index`, held to the list. Nothing when it is not
    /// there.
    void move(WidgetID id, int index);
    /// Nothing when it is not there or does not come in that size.
    void setSize(WidgetID id, WidgetSize size);

    /// The place nearest to `index` at which `id` would land on the page of number `page`; `index` where
    /// there is none.
    [[nodiscard]] int clampedIndex(int index, WidgetID id, int page, const PageLimits& limits = {}) const;

    /// Cuts a list of sizes into pages, each a list of indices: greedy and in order, never moving a later
    /// small one up to a page that is closed. One larger than a page gets one of its own.
    [[nodiscard]] static std::vector<std::vector<int>> pack(const std::vector<PageItem>& items,
                                                            const PageLimits& limits);
    /// The same where only the units count.
    [[nodiscard]] static std::vector<std::vector<int>> pack(const std::vector<int>& units, int perPage);

    /// The same for plain items, with the one at `moving`. Of two places equally near the lower one is
    /// taken.
    [[nodiscard]] static int clampedIndex(const std::vector<PageItem>& items, int moving, int index, int page,
                                          const PageLimits& limits);
    [[nodiscard]] static int clampedIndex(const std::vector<int>& units, int moving, int index, int page);

    bool operator==(const WidgetLayout&) const = default;
};

} // namespace veslora
