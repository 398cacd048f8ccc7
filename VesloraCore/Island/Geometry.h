// SPDX-License-Identifier: MIT
// Points, sizes and rectangles of the logic. Screen rectangles have their origin at the bottom left and y
// grows upwards; view rectangles have theirs at the top left. All lengths are points (logical pixels).
#pragma once

namespace veslora {

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

/// A rectangle given by its corner of least coordinates. `width` and `height` are never negative in values
/// that this project makes.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double minX() const { return x; }
    [[nodiscard]] double midX() const { return x + width / 2; }
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double minY() const { return y; }
    [[nodiscard]] double midY() const { return y + height / 2; }
    [[nodiscard]] double maxY() const { return y + height; }
    [[nodiscard]] Size size() const { return {width, height}; }

    /// Grown outwards by `horizontal` on the left and right and by `vertical` on the top and bottom.
    [[nodiscard]] Rect grownBy(double horizontal, double vertical) const {
        return {x - horizontal, y - vertical, width + 2 * horizontal, height + 2 * vertical};
    }
    /// Closed on every edge: a point on the border is inside.
    [[nodiscard]] bool contains(Point point) const {
        return minX() <= point.x && point.x <= maxX() && minY() <= point.y && point.y <= maxY();
    }
    /// Whether `other` lies wholly inside, borders included.
    [[nodiscard]] bool contains(const Rect& other) const {
        return minX() <= other.minX() && other.maxX() <= maxX() && minY() <= other.minY() &&
               other.maxY() <= maxY();
    }
    /// Whether the two share an area; a shared border alone is none.
    [[nodiscard]] bool intersects(const Rect& other) const {
        return minX() < other.maxX() && other.minX() < maxX() && minY() < other.maxY() &&
               other.minY() < maxY();
    }
    bool operator==(const Rect&) const = default;
};

} // namespace veslora
