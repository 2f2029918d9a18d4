#include "support/modelreader.h"

#include "support/streamreader.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace support {

namespace {

constexpr std::size_t table_size = 2000; // 1000 numbers of 16 bits: each table of an array file
constexpr std::size_t points_start = 20, point_size = 28, point_count = 100;

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \r");
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(" \r") - first + 1));
}

std::vector<std::string> lines_of(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find("\r\n", at), bytes.size());
        lines.push_back(bytes.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

std::vector<double> numbers_of(const std::string& text) {
    constexpr std::string_view between = " ,\r\n";
    std::vector<double> numbers;
    std::size_t at = text.find_first_not_of(between);
    while (at != std::string::npos) {
        const std::size_t end = std::min(text.find_first_of(between, at), text.size());
        numbers.push_back(number_of(std::string_view(text).substr(at, end - at)));
        at = text.find_first_not_of(between, end);
    }
    return numbers;
}

// A number of the machine at an offset; the tests run on little-endian machines.
template <typename Number>
Number number_at(const std::string& bytes, std::size_t offset) {
    Number number{};
    if (offset + sizeof number > bytes.size())
        throw std::runtime_error("file ends before byte " + std::to_string(offset));
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

std::vector<double> slice(const std::vector<double>& all, std::size_t first, int count) {
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + count};
}

std::vector<ModelPeriod> periods_of(const std::vector<double>& numbers) {
    std::vector<ModelPeriod> periods;
    for (std::size_t at = 2; at + 7 <= numbers.size(); at += 7)
        periods.push_back(
            {numbers[at] != 0, numbers[at + 1], numbers[at + 2], numbers[at + 3], numbers[at + 4]});
    return periods;
}

std::vector<ModelPoint> points_of(const std::string& bytes) {
    std::vector<ModelPoint> points;
    for (std::size_t n = 0; n < point_count; ++n) {
        const std::size_t at = points_start + n * point_size + 8; // behind the name
        points.push_back({number_at<std::int16_t>(bytes, at) != 0, number_at<float>(bytes, at + 2),
                          number_at<float>(bytes, at + 6),
                          number_at<std::int16_t>(bytes, at + 10)});
    }
    return points;
}

} // namespace

ModelReader::ModelReader(std::filesystem::path base) : base_(std::move(base)) {
    project_lines_ = lines_of(bytes_of(".td1"));
    const std::vector<double> grid = numbers_of(bytes_of(".xy"));
    columns = static_cast<int>(grid.at(0));
    rows = static_cast<int>(grid.at(1));
    layers = static_cast<int>(grid.at(2));
    widths = slice(grid, 3, columns);
    heights = slice(grid, 3 + widths.size(), rows);
    const std::vector<double> list = numbers_of(bytes_of(".l"));
    for (const double type : slice(list, 1, layers))
        layer_types.push_back(static_cast<int>(type));
    thickness = slice(list, 1 + layer_types.size(), layers);
    rock_lines = lines_of(bytes_of(".mco"));
    const std::vector<double> times = numbers_of(bytes_of(".trn"));
    time_unit = static_cast<int>(times.at(1));
    periods = periods_of(times);
    points = points_of(bytes_of(".pol"));
    if (has(".ttc"))
        for (const std::string& line : lines_of(bytes_of(".ttc")))
            tracers.push_back(numbers_of(line));
}

bool ModelReader::has(const std::string& extension) const {
    return std::filesystem::exists(base_.string() + extension);
}

std::string ModelReader::setting(std::string_view section, std::string_view key) const {
    std::string current;
    for (const std::string& line : project_lines_) {
        if (line.starts_with("["))
            current = line.substr(1, line.find(']') - 1);
        else if (current == section && line.starts_with(key) && line.find('=') == key.size())
            return line.substr(key.size() + 1);
    }
    return {};
}

int ModelReader::flag(int a, int b) const {
    const std::string key = "MENU_" + std::to_string(a) + "_" + std::to_string(b);
    return static_cast<int>(number_of(setting("MENUSTATE", key)));
}

float ModelReader::value(const std::string& extension, WorksheetCell cell, float otherwise,
                         int period) const {
    if (!arrays_.contains(extension) && !has(extension))
        return otherwise;
    if (!arrays_.contains(extension))
        arrays_[extension] = bytes_of(extension);
    const std::string& bytes = arrays_.at(extension);
    const auto entry = [&](std::size_t table, int number) {
        const auto place = static_cast<std::size_t>(number - 1) * 2;
        return number_at<std::int16_t>(bytes, table * table_size + place);
    };
    const int key = entry(0, period);
    const int record = key == 0 ? 0 : entry(1, key);
    if (record == 0)
        return otherwise;
    const int before = ((record - 1) * layers + cell.layer - 1) * rows + cell.row - 1;
    const int place = before * columns + cell.column - 1;
    return number_at<float>(bytes, 2 * table_size + 4 * static_cast<std::size_t>(place));
}

std::string ModelReader::zone_field(int line, int zone) const {
    const std::string& text = rock_lines.at(static_cast<std::size_t>(line - 1));
    const auto start = static_cast<std::size_t>(10 * zone);
    return start < text.size() ? trimmed(text.substr(start, 10)) : std::string();
}

std::string ModelReader::bytes_of(const std::string& extension) const {
    std::ifstream in(base_.string() + extension, std::ios::binary);
    if (!in)
        throw std::runtime_error("no file " + base_.string() + extension);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace support
