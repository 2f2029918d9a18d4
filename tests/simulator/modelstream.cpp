#include "simulator/modelstream.h"

#include "base/numbertext.h"

#include <fmt/format.h>

#include <algorithm>

namespace minitervex::test {

namespace {

// N: cells, XY, YZ and XZ: both outer planes; X, Y, Z: one axis.
constexpr std::pair<std::string_view, std::string_view> blocks[] = {
    {"TITLE", "test"},        {"LINFO", "1"},
    {"KEY", "-----"},         {"STAT", "STAT"},
    {"KOPLNG", "----"},       {"KOPPX_FIELD", "1000.0 0.6 0.0 4000.0 0.001 "},
    {"MXIT", "5000"},         {"NPER", " 1 "},
    {"RHOF", "1000.0"},       {"NFREE", " 0 "},
    {"IFLO", "MASS"},         {"GRAV", "10.0"},
    {"COMPM", "0.0"},         {"HPF", "0.0"},
    {"QTOP3D", "P*0. "},      {"QBASAL3D", "P*0. "},
    {"MDIFS1", "0.0"},        {"DIFTS1", "0. "},
    {"DIFLS1", "0. "},        {"ANZSUBS", " 0 "},
    {"BETAC", "100*0. "},     {"ANZCHEM", " 0 "},
    {"ANZMINS", "0"},         {"NWELAR", "100*0"},
    {"DELTATMP", "100*0.0 "}, {"TMAXAR", "1.0 99*0. "},
    {"DELTAR", "1.0 99*0. "}, {"TCON", "10000*0.0"},
    {"SCON", "10000*0.0"},    {"IWL", "N*0"},
    {"WELLAR", "10000*0."},   {"PUMPAR", "10000*0."},
    {"PMONIX", "100*0"},      {"PMONIY", "100*0"},
    {"PMONIZ", "100*0"},      {"PMONIFR", "100*1"},
    {"DELX", "X*1. "},        {"DELY", "Y*1. "},
    {"DELZ", "Z*1. "},        {"PRES", "N*0.1 "},
    {"POR", "N*0.2 "},        {"DICHTE", "N*1000."},
    {"PERM", "N*1.E-12 "},    {"RHOCF", "N*0."},
    {"PHI", "N*0. "},         {"VX", "N*0."},
    {"VY", "N*0."},           {"VZ", "N*0."},
    {"QRE", "H*0."},          {"QRELR", "S*0."},
    {"QREVH", "F*0."},        {"ANISOI", "N*1. "},
    {"ANISOJ", "N*1. "},      {"TEMP", "N*10. "},
    {"RHOCM", "N*2.E6 "},     {"WLFM0", "N*2. "},
    {"WLXANI", "N*1. "},      {"WLYANI", "N*1. "},
    {"XANG", "N*0. "},        {"YANG", "N*0. "},
    {"HPR", "N*0. "},
};

} // namespace

ModelStream::ModelStream(int nx, int ny, int nz) : nx_(nx), ny_(ny), nz_(nz) {
    const std::pair<char, int> counts[] = {
        {'N', nx * ny * nz}, {'P', nx * ny}, {'H', 2 * nx * ny}, {'S', 2 * ny * nz},
        {'F', 2 * nx * nz},  {'X', nx},      {'Y', ny},          {'Z', nz}};
    set("I0", fmt::format("       {} ", nx));
    set("J0", fmt::format("       {} ", ny));
    set("K0", fmt::format("       {} ", nz));
    for (const auto& [keyword, lines] : blocks) {
        std::string text(lines);
        for (const auto& [letter, count] : counts)
            if (text.size() > 1 && text[1] == '*' && text[0] == letter)
                text.replace(0, 1, fmt::format("{}", count));
        set(keyword, text);
    }
}

ModelStream& ModelStream::set(std::string_view keyword, std::string_view lines) {
    const auto at = std::ranges::find(blocks_, keyword, &decltype(blocks_)::value_type::first);
    if (at == blocks_.end())
        blocks_.emplace_back(keyword, lines);
    else
        at->second = lines;
    return *this;
}

ModelStream& ModelStream::fill(std::string_view keyword, double value) {
    return cells(keyword, [=](int, int, int) { return value; });
}

ModelStream& ModelStream::cells(std::string_view keyword,
                                const std::function<double(int, int, int)>& value) {
    std::vector<double> values;
    for (int k = 0; k < nz_; ++k)
        for (int j = 0; j < ny_; ++j)
            for (int i = 0; i < nx_; ++i)
                values.push_back(value(i, j, k));
    return list(keyword, values);
}

ModelStream& ModelStream::list(std::string_view keyword, const std::vector<double>& values) {
    std::string text;
    for (const double value : values)
        text += base::exact_text(value) + " ";
    return set(keyword, text);
}

ModelStream& ModelStream::table(std::string_view keyword, const std::vector<double>& values,
                                int places) {
    list(keyword, values);
    blocks_[static_cast<std::size_t>(
                std::ranges::find(blocks_, keyword, &decltype(blocks_)::value_type::first) -
                blocks_.begin())]
        .second += fmt::format("{}*0. ", places - static_cast<int>(values.size()));
    return *this;
}

ModelStream& ModelStream::period(double seconds, int steps) {
    table("TMAXAR", {seconds}, 100);
    return table("DELTAR", {seconds / steps}, 100);
}

ModelStream& ModelStream::wells(const std::vector<WellAt>& wells) {
    std::vector<double> rates, temperatures, concentrations;
    for (const WellAt& well : wells) {
        rates.push_back(well.rate);
        temperatures.push_back(well.temperature);
        concentrations.push_back(well.concentration);
        concentrations.resize(100 * rates.size());
    }
    cells("IWL", [&](int i, int j, int k) {
        const auto at = std::ranges::find_if(
            wells, [=](const WellAt& well) { return well.i == i && well.j == j && well.k == k; });
        return at == wells.end() ? 0.0 : static_cast<double>(at - wells.begin() + 1);
    });
    const auto flowing = std::ranges::count_if(rates, [](double rate) { return rate != 0; });
    set("NWELAR", fmt::format("{} 99*0", flowing)).table("WELLAR", rates, 10000);
    table("TCON", temperatures, 10000);
    return table("SCON", concentrations, 10000);
}

std::string ModelStream::text() const {
    std::string text;
    for (const auto& [keyword, lines] : blocks_)
        text += fmt::format("# {}\r\n{}\r\n", keyword, lines);
    return text;
}

} // namespace minitervex::test
