// Monitoring files, depth logs and mass balances.
#include "checks.h"
#include "targets.h"

#include "base/textfile.h"
#include "results/depthlog.h"
#include "results/massbalance.h"
#include "results/names.h"
#include "results/timeseries.h"
#include "td/terminaluser.h"

#include <sstream>

namespace fuzz {

namespace {

// Two species, a tracer and two minerals, of which the model has one.
results::StreamNames chemistry() {
    return {3, 2, 2, {{1, "PH"}, {2, "Na"}, {3, "Tracer 1"}}, {{2, "Calcite"}}};
}

void chart(std::string_view bytes, const results::StreamNames& names) {
    std::ostringstream boxes;
    td::TerminalUser user(boxes, td::StandingAnswer::none);
    const auto series = results::LoadMatrix(bytes, "m.100", names, user);
    if (!series) {
        return;
    }
    require(series->columns == results::column_count(names), "columns do not fit the names");
    require(series->rows() > 0, "a series without records");
    const auto csv = results::series_csv(*series, names);
    require(base::split_lines(csv).size() == series->rows() + 1, "a table of other length");
    results::LoadChart(*series, "m.nlo", names, {"Head", "VX", "pe"}, true);
}

void show_balance(const results::MassBalance& balance) {
    for (const std::string& parameter : balance.parameters()) {
        for (const std::string& mode : results::balance_modes(parameter)) {
            require(!results::graph_refusal(balance, parameter, mode), "a parameter is not there");
            const auto graph = results::Get_MB_Array(balance, parameter, mode);
            require(graph.values.size() == balance.steps(), "a graph of other length");
        }
    }
}

} // namespace

void series(std::string_view bytes) {
    succeeds([&] { chart(bytes, {}); });
    chart(bytes, chemistry());
}

void depthlog(std::string_view bytes) {
    for (int index = 0; index <= results::mineral_index; ++index) {
        succeeds([&] {
            const auto log = results::Get_Array(bytes, "m.cal", "P1", index, 1);
            require(log.values.size() == log.altitudes.size() && !log.values.empty(),
                    "a log without rows");
        });
    }
    results::Get_Array(bytes, "m.cal", "P2", results::solute_index, 2);
}

void balance(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) {
        const auto table = results::Get_Existing_Data(b, "m.fwp");
        show_balance(table);
        return table.bytes();
    });
}

} // namespace fuzz
