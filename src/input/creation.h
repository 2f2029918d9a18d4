// One creation of an input file: what its blocks share while they are written one after another.
#pragma once

#include "input/inputfile.h"
#include "input/keywordstream.h"
#include "input/simulatorfield.h"
#include "input/steuerzeichen.h"
#include "input/timeblocks.h"
#include "input/wells.h"
#include "sim/transport.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace input {

class Creation {
public:
    // Begins <base>.nml aside.
    Creation(core::Project& model, core::ModelFiles& model_files, base::Interaction& asked);

    // Runs a step that reads what several blocks need. False: it failed or the creation has ended.
    bool attempt(std::string_view name, const std::function<void()>& step);

    // One block: its key line, then what `values` writes. Values that fail are dropped whole, so
    // that the block stays empty, and the next block follows. Nothing once the creation has ended.
    void block(std::string_view keyword, const std::function<void()>& values);
    void block(std::string_view keyword, std::string_view text);
    // A block of a numbered family such as CONC.
    void block(std::string_view keyword, int number, const std::function<void()>& values);

    // Shows a warning and ends the creation: the stream stays as far as it got.
    void end_with(std::string_view title, std::string_view text);
    void end();
    bool ended() const { return ended_; }
    CreatedInput result() const { return result_; }

    core::Project& project;
    core::ModelFiles& files;
    base::Interaction& user;
    const ModelArrays arrays;
    const SimulatorGrid& grid;
    KeywordStream stream;

    // What earlier blocks leave for later ones. Empty when it could not be read.
    std::optional<TervexSteuerzeichen> settings;
    std::optional<ActivePeriods> periods;
    std::optional<sim::TracerTable> tracers;
    std::optional<WellTable> wells;
    // Words of the top and the base of the grid; two tests may choose none.
    std::string TOPF, BASEF, TOPT, BASET;
    bool recharge_on_top = false; // IQRE is "RECH"

    int ChemicalSpecies() const { return 0; }
    int TotalSpecies() const;

private:
    void values_of_block(std::string_view keyword, const std::function<void()>& values);
    void advance();

    CreatedInput result_;
    int blocks_ = 0;
    bool ended_ = false;
};

} // namespace input
