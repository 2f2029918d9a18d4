// Fuzz targets: each gives arbitrary bytes to one reader of the program, and what was read to its
// writer.
//
// base::FileFailure, base::RangeFailure and td::UsageError are the expected answers to bad input.
// Whatever else leaves a target is a finding, and so are a crash, more than a second and more than
// 300 MB.
#pragma once

#include <span>
#include <string_view>

namespace fuzz {

struct Target {
    const char* name; // also that of the folder with its corpus
    void (*run)(std::string_view input);
};
std::span<const Target> targets();

// Runs one target on one input, past the expected failures. A Finding (checks.h) or any other
// exception is a fault of the program.
void run(std::string_view target, std::string_view input);

// Project file and other INI files.
void project(std::string_view bytes);
void inifile(std::string_view bytes);
void notes(std::string_view bytes);
void settings(std::string_view bytes);

// Binary files. The input of the first two says how the file differs from a good one.
void arrayfile(std::string_view differences);
void zonefile(std::string_view differences);
void points(std::string_view bytes);
void reinjection(std::string_view bytes);

// Text files.
void gridfile(std::string_view bytes);
void layerfile(std::string_view bytes);
void exchange(std::string_view bytes);
void typfile(std::string_view bytes);
void periods(std::string_view bytes);
void timeparameters(std::string_view bytes);
void rockfile(std::string_view bytes);
void tracer(std::string_view bytes);
void dispersion(std::string_view bytes);

// View settings of a result file.
void viewersettings(std::string_view bytes);

// Series at monitoring points, depth logs and mass balances.
void series(std::string_view bytes);
void depthlog(std::string_view bytes);
void balance(std::string_view bytes);

// Files that conversions of results read.
void rvb(std::string_view bytes);
void his(std::string_view bytes);
void tal(std::string_view bytes);
void irgrid(std::string_view bytes);
// A formula on a small stream.
void formula(std::string_view text);

// Files of the simulator.
void stream(std::string_view bytes);
// A model that replaces another one. The last byte chooses orientation and answers.
void modelimport(std::string_view bytes);

// The input stream as minitervex reads it. A small model is computed for one step, and its result
// is read as the next input.
void minitervex(std::string_view bytes);

// Contour levels and the stroke font of plots.
void ctr(std::string_view bytes);
void font(std::string_view bytes);

// Text forms of the worksheet: zones, rules of a search, arrays, grid files.
void zon(std::string_view bytes);
void trs(std::string_view bytes);
void arraytext(std::string_view bytes);
void grd(std::string_view bytes);

// Command lines of `td`: words closed by a zero byte, lines by 1E (hexadecimal). Each runs on the
// same small model, made anew in a folder out of which no word may lead.
void arguments(std::string_view words);

// Scripts of worksheet sessions, ended with No and with Yes.
void session(std::string_view script);

void numbers(std::string_view text);

} // namespace fuzz
