#include "examples/examplemodel.h"

#include <fmt/format.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace examples {

using support::WorksheetCell;

namespace {

void run(const std::string& command, const std::filesystem::path& log) {
    const int status = std::system((command + " >>'" + log.string() + "' 2>&1").c_str());
    if (status != 0)
        throw std::runtime_error(command + "\n" + bytes_of(log));
}

} // namespace

MadeModel::MadeModel(const std::string& name) {
    const std::string td = TD_PROGRAM, script = TD_SOURCE_DIR "/examples/" + name + ".sh";
    const std::string place = folder.path().string(), base = place + "/" + name;
    const std::filesystem::path log = folder.path() / "log";
    run(fmt::format("env TD='{}' bash '{}' '{}'", td, script, place), log);
    run(fmt::format("'{}' check '{}.td1'", td, base), log);
    run(fmt::format("'{}' create-input '{}.td1' --install '{}'", td, base, place), log);
    bytes = bytes_of(base + ".nml");
    stream = std::make_unique<support::Stream>(bytes);
    model = std::make_unique<support::ModelReader>(base);
}

void ExampleModel::SetUp() {
    // All tests of an example look at one model, which is made by the first of them.
    static std::map<std::string, std::unique_ptr<MadeModel>> made_models;
    std::unique_ptr<MadeModel>& slot = made_models[GetParam()];
    if (slot == nullptr)
        slot = std::make_unique<MadeModel>(GetParam());
    made_ = slot.get();
}

WorksheetCell ExampleModel::cell_at(int I, int J, int K) const {
    return is_section() ? WorksheetCell{I, model().rows + 1 - K, J}
                        : WorksheetCell{I, model().rows + 1 - J, model().layers + 1 - K};
}

std::vector<WorksheetCell> ExampleModel::level(int K) const {
    std::vector<WorksheetCell> cells;
    for (int J = 1; J <= J0(); ++J)
        for (int I = 1; I <= I0(); ++I)
            cells.push_back(cell_at(I, J, K));
    return cells;
}

std::vector<WorksheetCell> ExampleModel::cells_in_order() const {
    std::vector<WorksheetCell> cells;
    for (int K = 1; K <= K0(); ++K) {
        const std::vector<WorksheetCell> next = level(K);
        cells.insert(cells.end(), next.begin(), next.end());
    }
    return cells;
}

std::vector<double> ExampleModel::told(const char* keyword) const {
    return support::expanded(stream().block(keyword).lines.at(0));
}

std::vector<int> ExampleModel::used_periods() const {
    std::vector<int> used;
    for (std::size_t p = 0; p < model().periods.size(); ++p)
        if (model().periods[p].used)
            used.push_back(static_cast<int>(p) + 1);
    return used;
}

std::set<std::tuple<int, int, int>> ExampleModel::wells() const {
    std::set<std::tuple<int, int, int>> found;
    for (const int period : used_periods())
        for (int K = 1; K <= K0(); ++K)
            for (int J = 1; J <= J0(); ++J)
                for (int I = 1; I <= I0(); ++I)
                    if (model().value(".wel", cell_at(I, J, K), 0, period) != 0)
                        found.insert({K, J, I});
    return found;
}

std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

double seven_digits(float value) {
    return support::number_of(fmt::format("{:.7g}", value));
}

double fifteen_digits(double value) {
    return support::number_of(fmt::format("{:.15g}", value));
}

} // namespace examples
