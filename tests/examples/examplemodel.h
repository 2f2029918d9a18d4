// A model made by a script of examples/ and the simulator input that `td` wrote from it.
#pragma once

#include "support/modelreader.h"
#include "support/streamreader.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace examples {

// Runs the script, `td check` and `td create-input`; std::runtime_error tells what they printed
// when one of them fails.
struct MadeModel {
    explicit MadeModel(const std::string& name);

    support::TempFolder folder;
    std::string bytes; // of the stream
    std::unique_ptr<support::Stream> stream;
    std::unique_ptr<support::ModelReader> model;
};

// The parameter is the name of the example.
class ExampleModel : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override;

    const MadeModel& made() const { return *made_; }
    const support::Stream& stream() const { return *made_->stream; }
    const support::ModelReader& model() const { return *made_->model; }

    // Extents of the simulator's axes.
    bool is_section() const { return model().flag(1, 4) != 0; }
    int I0() const { return model().columns; }
    int J0() const { return is_section() ? model().layers : model().rows; }
    int K0() const { return is_section() ? model().rows : model().layers; }

    // Where the simulator's cell lies. Its J runs to the north and its K upwards: against the rows
    // and layers of a map; in a section along the layers and against the rows.
    support::WorksheetCell cell_at(int I, int J, int K) const;
    // The cells of one K, and all cells, in the order of an array of the stream.
    std::vector<support::WorksheetCell> level(int K) const;
    std::vector<support::WorksheetCell> cells_in_order() const;

    // The values of a block's only line.
    std::vector<double> told(const char* keyword) const;
    // Numbers of the periods that are in use, from 1.
    std::vector<int> used_periods() const;
    // (K, J, I) of all wells of all periods: the order in which the simulator numbers them.
    std::set<std::tuple<int, int, int>> wells() const;

private:
    MadeModel* made_ = nullptr;
};

std::string bytes_of(const std::filesystem::path& file);

// A single and a double as the stream tells them: with seven and fifteen significant digits.
double seven_digits(float value);
double fifteen_digits(double value);

// Names the first cells in which the stream and the model differ; all would be too many to read.
template <typename Value>
void expect_cells(const std::vector<Value>& told, const std::vector<Value>& expected,
                  const std::vector<support::WorksheetCell>& cells) {
    ASSERT_EQ(told.size(), expected.size());
    for (std::size_t n = 0, wrong = 0; n < told.size() && wrong < 5; ++n) {
        if (told[n] == expected[n])
            continue;
        ++wrong;
        ADD_FAILURE() << "column " << cells[n].column << ", row " << cells[n].row << ", layer "
                      << cells[n].layer << ": the stream tells " << told[n] << ", the model has "
                      << expected[n];
    }
}

} // namespace examples
