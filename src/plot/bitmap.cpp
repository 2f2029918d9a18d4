#include "plot/bitmap.h"

#include "base/binaryio.h"
#include "plot/colourtable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

namespace plot {

namespace {

constexpr int file_head = 14, info_head = 40;
constexpr int dots_per_metre = 3780; // 96 an inch

double extent(double metres) {
    return std::isfinite(metres) && metres > 0 ? metres : 0;
}

int pixels_of(double metres, double scale) {
    return 1 + static_cast<int>(std::lround(extent(metres) * scale));
}

// The part of a line inside 0 to `x`, 0 to `y`.
std::optional<std::pair<Point, Point>> clipped(Point a, Point b, double x, double y) {
    double from = 0, to = 1;
    const auto cut = [&](double start, double step, double limit) {
        const double low = -start, high = limit - start;
        if (step == 0) {
            return low <= 0 && high >= 0;
        }
        from = std::max(from, std::min(low / step, high / step));
        to = std::min(to, std::max(low / step, high / step));
        return from <= to;
    };
    const Point step{b.x - a.x, b.y - a.y};
    if (!std::isfinite(step.x) || !std::isfinite(step.y) || !cut(a.x, step.x, x) ||
        !cut(a.y, step.y, y)) {
        return std::nullopt;
    }
    return std::pair{Point{a.x + from * step.x, a.y + from * step.y},
                     Point{a.x + to * step.x, a.y + to * step.y}};
}

} // namespace

BitmapFile::BitmapFile(const Sheet& sheet) : sheet_(sheet) {
    const double longer = std::max(extent(sheet.width), extent(sheet.height));
    scale_ = longer > 0 ? (longer_side - 1) / longer : 1;
    width_ = pixels_of(sheet.width, scale_);
    height_ = pixels_of(sheet.height, scale_);
    row_bytes_ = (static_cast<std::size_t>(width_) * 3 + 3) / 4 * 4;
    pixels_.assign(row_bytes_ * static_cast<std::size_t>(height_), '\xFF');
    for (int y = 0; y < height_; ++y) {
        const std::size_t row = row_bytes_ * static_cast<std::size_t>(y);
        std::fill(pixels_.begin() + static_cast<std::ptrdiff_t>(row) + 3 * width_,
                  pixels_.begin() + static_cast<std::ptrdiff_t>(row + row_bytes_), '\0');
    }
}

Point BitmapFile::pixel(Point point) const {
    return {(point.x - sheet_.left) * scale_, point.y * scale_};
}

void BitmapFile::set(int x, int y) {
    const std::size_t at =
        row_bytes_ * static_cast<std::size_t>(height_ - 1 - y) + 3 * static_cast<std::size_t>(x);
    const ColourBytes bytes = colour_bytes(colour_);
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        pixels_[at + n] = static_cast<char>(bytes[bytes.size() - 1 - n]);
    }
}

void BitmapFile::Plot_Line(Point from, Point to) {
    last_ = to;
    const auto part = clipped(pixel(from), pixel(to), width_ - 1, height_ - 1);
    if (!part) {
        return;
    }
    const auto& [a, b] = *part;
    const int steps =
        static_cast<int>(std::lround(std::max(std::abs(b.x - a.x), std::abs(b.y - a.y))));
    for (int n = 0; n <= steps; ++n) {
        const double place = steps > 0 ? static_cast<double>(n) / steps : 0;
        set(static_cast<int>(std::lround(a.x + place * (b.x - a.x))),
            static_cast<int>(std::lround(a.y + place * (b.y - a.y))));
    }
}

void BitmapFile::Plot_Vertex(Point point) {
    Plot_Line(last_, point);
}

void BitmapFile::Plot_Circle(Point centre, double radius) {
    constexpr int sides = 48;
    Point last{centre.x + radius, centre.y};
    for (int n = 1; n <= sides; ++n) {
        const double angle = 2 * std::numbers::pi * n / sides;
        const Point next{centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
        Plot_Line(last, next);
        last = next;
    }
}

void BitmapFile::Plot_Solid(const Corners& corners) {
    const auto& [upper_left, upper_right, lower_left, lower_right] = corners;
    Plot_Polygon(std::array{upper_left, upper_right, lower_right, lower_left});
}

void BitmapFile::Plot_Polygon(std::span<const Point> corners) {
    std::vector<Point> on_pixels;
    double top = height_, bottom = 0;
    for (const Point& corner : corners) {
        on_pixels.push_back(pixel(corner));
        top = std::min(top, on_pixels.back().y);
        bottom = std::max(bottom, on_pixels.back().y);
    }
    const int first = static_cast<int>(std::ceil(std::max(top, 0.0)));
    const int last = static_cast<int>(std::floor(std::min(bottom, height_ - 1.0)));
    for (int y = first; y <= last; ++y) {
        fill_row(y, on_pixels);
    }
}

// The pixels whose middle lies inside; of two polygons at an edge, the one to the right and below
// has the pixels on it.
void BitmapFile::fill_row(int y, std::span<const Point> corners) {
    double left = width_, right = 0;
    for (std::size_t n = 0; n < corners.size(); ++n) {
        const Point a = corners[n], b = corners[(n + 1) % corners.size()];
        if ((a.y <= y) != (b.y <= y)) {
            const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x);
            left = std::min(left, x);
            right = std::max(right, x);
        }
    }
    const double end = std::min(std::ceil(right), static_cast<double>(width_));
    for (int x = static_cast<int>(std::ceil(std::max(left, 0.0))); x < end; ++x) {
        set(x, y);
    }
}

std::string BitmapFile::Plot_Close() {
    base::ByteWriter head;
    const auto size = static_cast<std::int32_t>(pixels_.size());
    head.bytes("BM");
    head.int32(file_head + info_head + size);
    head.int32(0);
    head.int32(file_head + info_head);
    head.int32(info_head);
    head.int32(width_);
    head.int32(height_);
    head.int16(1);
    head.int16(24);
    head.int32(0);
    head.int32(size);
    head.int32(dots_per_metre);
    head.int32(dots_per_metre);
    head.int32(0);
    head.int32(0);
    return head.data() + pixels_;
}

} // namespace plot
