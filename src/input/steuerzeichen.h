// The settings of <base>.typ as the input file has them.
#pragma once

#include <string>
#include <string_view>

namespace core {
class ModelFlags;
}
namespace sim {
class TypFile;
}

namespace input {

// Texts of the settings, normalised for writing only: the file itself is never rewritten.
struct TervexSteuerzeichen {
    std::string KEY;    // five letters; the fourth is "R" when produced water is re-injected
    std::string KOPLNG; // four letters, "-" wherever a process is off
    std::string A0 = "750", A1 = "1.8",
                A2 = "-0.0025"; // rock capacity as a function of temperature
    std::string rock_density = "2400";
    std::string IPUTDI, LINFO;
    std::string OMF, OMT, OMS;
    std::string APARF, APART, APARS;
    std::string ERRF, ERRT, ERRS;
    std::string MXIT, basal_heat_flow, HPF, COMPM, RHOF;

    TervexSteuerzeichen(const sim::TypFile& file, const core::ModelFlags& flags);
};

// What a comma-stopping reader gets of a line: its first piece, trimmed, without a pair of quotes.
std::string first_piece(std::string_view line);

} // namespace input
