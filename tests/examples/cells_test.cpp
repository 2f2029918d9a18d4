// The blocks of the stream that tell something about each cell or each face of a cell.
#include "examples/examplemodel.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

namespace examples {

namespace {

using support::array_of;
using support::array_texts;
using support::WorksheetCell;

struct ArrayBlock {
    const char* keyword;
    const char* extension;
    float otherwise;   // value of a cell when there is no array
    const char* marks; // boundary array whose cells of -1 turn the sign
};

TEST_P(ExampleModel, ArraysHoldTheModelsCellsAndTheSignsOfTheFixedOnes) {
    constexpr ArrayBlock blocks[] = {
        {"GEOLOGY", ".mds", 1, nullptr}, {"PRES", "", 0.1F, ".tic"},
        {"POR", ".por", 0.25F, ".hbo"},  {"PERM", ".per", 1e-12F, ".ibd"},
        {"PHI", ".hea", 0, nullptr},     {"TEMP", ".tem", 10, nullptr},
        {"VX", ".vx", 0, nullptr},       {"VY", ".vy", 0, nullptr},
        {"VZ", ".vz", 0, nullptr},       {"ICE", ".ice", 0, nullptr},
        {"TSOL", ".sol", -2, nullptr},   {"TLIQ", ".liq", 0, nullptr},
        {"DICHTE", "", 1000, nullptr},   {"RHOCF", "", 0, nullptr},
        {"AREAKT", "", 0, nullptr},
    };
    const bool thaws = model().flag(10, 5) == 1;
    const std::vector<WorksheetCell> cells = cells_in_order();
    for (const ArrayBlock& block : blocks) {
        SCOPED_TRACE(block.keyword);
        const std::string extension = block.extension;
        if (!thaws && (extension == ".ice" || extension == ".sol" || extension == ".liq")) {
            EXPECT_FALSE(stream().has(block.keyword));
            continue;
        }
        std::vector<double> expected;
        for (const WorksheetCell& cell : cells) {
            const float value = extension.empty() ? block.otherwise
                                                  : model().value(extension, cell, block.otherwise);
            const bool fixed = block.marks != nullptr && model().value(block.marks, cell, 1) == -1;
            expected.push_back(seven_digits(fixed ? -std::fabs(value) : value));
        }
        expect_cells(array_of(stream().block(block.keyword)), expected, cells);
    }
}

struct ZoneBlock {
    const char* keyword;
    int line;           // of the rock file
    const char* factor; // exponent behind the number
};

TEST_P(ExampleModel, RockPropertiesAreThoseOfEachCellsZone) {
    constexpr ZoneBlock blocks[] = {
        {"COMP3D", 4, ""},  {"ANISOI", 5, ""},   {"ANISOJ", 6, ""}, {"XANG", 7, ""},
        {"YANG", 8, ""},    {"RHOCM", 10, "E6"}, {"WLFM0", 11, ""}, {"HPR", 12, ""},
        {"WLXANI", 13, ""}, {"WLYANI", 14, ""},
    };
    const std::vector<WorksheetCell> cells = cells_in_order();
    for (const ZoneBlock& block : blocks) {
        SCOPED_TRACE(block.keyword);
        if (block.line == 4 && !model().rock_lines.at(3).starts_with("Compress")) {
            EXPECT_FALSE(stream().has("COMP3D"));
            continue;
        }
        std::vector<std::string> expected;
        for (const WorksheetCell& cell : cells) {
            const int zone = static_cast<int>(model().value(".mds", cell, 1));
            std::string field = model().zone_field(block.line, zone);
            field += field.find('.') == std::string::npos ? "." : "";
            expected.push_back(field + block.factor);
        }
        expect_cells(array_texts(stream().block(block.keyword)), expected, cells);
    }
}

TEST_P(ExampleModel, EachActiveTracerHasABlockWithItsConcentrationInItsOwnZone) {
    const std::vector<WorksheetCell> cells = cells_in_order();
    std::vector<double> beta(100);
    int active = 0;
    for (const std::vector<double>& tracer : model().tracers) {
        if (tracer.at(1) == 0)
            continue;
        SCOPED_TRACE(tracer.at(0));
        beta.at(static_cast<std::size_t>(active++)) = tracer.at(3);
        std::vector<double> expected;
        for (const WorksheetCell& cell : cells)
            expected.push_back(model().value(".itr", cell, 0) == tracer.at(0) ? tracer.at(2) : 0);
        expect_cells(array_of(stream().block("CONC", active)), expected, cells);
    }
    EXPECT_EQ(stream().word("ANZSUBS"), fmt::to_string(active));
    EXPECT_EQ(told("BETAC"), beta);
}

TEST_P(ExampleModel, FacesTakeUpRechargeAndHeatFlowWhereTheirWordsSaySo) {
    const auto values = [&](const std::string& extension, const std::vector<WorksheetCell>& cells,
                            bool taken, std::vector<double> result = {}) {
        for (const WorksheetCell& cell : cells)
            result.push_back(taken ? seven_digits(model().value(extension, cell, 0)) : 0);
        return result;
    };
    std::vector<WorksheetCell> left_right, front_back;
    for (int K = 1; K <= K0(); ++K) {
        for (int J = 1; J <= J0(); ++J)
            for (const int I : {1, I0()})
                left_right.push_back(cell_at(I, J, K));
        for (const int J : {1, J0()})
            for (int I = 1; I <= I0(); ++I)
                front_back.push_back(cell_at(I, J, K));
    }
    const bool flows = model().flag(9, 4) == 1 && model().flag(3, 1) == 0;
    const bool rains = flows && stream().word("IQRE") == "RECH";
    EXPECT_EQ(told("QRE"), values(".qre", level(1), stream().word("BASEF") == "FLO",
                                  values(".qre", level(K0()), rains)));
    EXPECT_EQ(told("QRELR"), values(".qrl", left_right, flows));
    EXPECT_EQ(told("QREVH"), values(".qvh", front_back, flows));
    EXPECT_EQ(told("QTOP3D"), values(".qba", level(K0()), stream().word("TOPT") == "WSD"));
    EXPECT_EQ(told("QBASAL3D"), values(".qba", level(1), stream().word("BASET") == "WSD"));
}

} // namespace

} // namespace examples
