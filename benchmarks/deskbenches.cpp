// The start of the desktop program, the opening of a model in it, and a large table.

#include "benches.h"
#include "childprocess.h"
#include "deskparts.h"

#include "ui/desk.h"
#include "ui/tableview.h"

#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace bench {

namespace {

namespace fs = std::filesystem;

// CPU seconds that one program takes more than another.
void measure_difference(benchmark::State& state, const std::function<double()>& whole,
                        const std::function<double()>& part) {
    double difference = 0;
    for ([[maybe_unused]] auto _ : state) {
        difference += std::max(0.0, whole() - part());
    }
    state.counters["cost"] = benchmark::Counter(difference, benchmark::Counter::kAvgIterations);
}

double picture_of_window(const fs::path& picture, std::vector<std::string> model = {}) {
    std::vector<std::string> words{"--snapshot", "main", "--out", picture.string()};
    words.insert(words.end(), model.begin(), model.end());
    return run_child(TD_DESK_PROGRAM, words).cpu_seconds;
}

// A layer of 2000 x 2000 cells as the array browser shows it.
class LargeTable : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex&) const override { return 2000; }
    int columnCount(const QModelIndex&) const override { return 2000; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(index.row() * 0.001 + index.column())
                                       : QVariant();
    }
};

// The example model, made when it is first asked for.
fs::path doublet(const fs::path& folder) {
    const fs::path model = folder / "doublet" / "doublet.td1";
    if (!fs::exists(model)) {
        ::setenv("TD", TD_PROGRAM, 1);
        run_child("/bin/bash",
                  {TD_SOURCE_DIR "/examples/doublet.sh", model.parent_path().string()});
    }
    return model;
}

} // namespace

std::shared_ptr<QApplication> screenless_application() {
    static int count = 1;
    static char name[] = "bench";
    static char* words[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen"); // also for the programs that are measured
    return std::make_shared<QApplication>(count, words);
}

void add_desk(const fs::path& folder) {
    const fs::path picture = folder / "window.png";
    benchmark::RegisterBenchmark("window", [picture](benchmark::State& state) {
        measure_difference(
            state, [&] { return picture_of_window(picture); },
            [&] { return run_child(TD_EMPTY_WINDOW, {picture.string()}).cpu_seconds; });
    });
    benchmark::RegisterBenchmark("window doublet", [folder, picture](benchmark::State& state) {
        const std::string model = doublet(folder).string();
        measure_difference(
            state, [&] { return picture_of_window(picture, {model}); },
            [&] { return picture_of_window(picture); });
    });
    benchmark::RegisterBenchmark("table", [](benchmark::State& state) {
        Silent nobody;
        ui::Desk desk(nobody, {});
        LargeTable model;
        for ([[maybe_unused]] auto _ : state) {
            ui::TableView view(desk, model);
            view.resize(1000, 800);
            view.show();
            QApplication::processEvents();
        }
    });
}

} // namespace bench
