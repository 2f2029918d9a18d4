#include "results/importparts.h"

#include "core/itemcells.h"
#include "input/boundaries.h"
#include "input/simulatorfield.h"
#include "results/savedfield.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace results {

namespace {

using input::Face;
using input::FaceCounts;

// `sealed` is a closed cell of a base without flow: a single cell of 2 would open that.
constexpr signed char fixed_value = -1, closed = 1, given_flow = 2, sealed = 3;

struct BoundaryBlocks {
    input::Process process;
    int number;
    std::string_view top, base, sides;
};
constexpr BoundaryBlocks boundary_blocks[] = {
    {input::Process::flow, input::arrays::ibd.number, "TOPF", "BASEF", "SEITEF"},
    {input::Process::heat, input::arrays::hbo.number, "TOPT", "BASET", "SEITET"},
    {input::Process::transport, input::arrays::tic.number, "TOPS", "BASES", "SEITES"},
};

using Words = std::vector<std::string>;

// The codes of all cells in the order of the stream, and how the faces see them.
class Codes {
public:
    Codes(const input::SimulatorGrid& grid, const std::vector<bool>& fixed)
        : grid_(grid), codes_(static_cast<std::size_t>(grid.N()), closed) {
        for (std::size_t cell = 0; cell < fixed.size(); ++cell) {
            codes_[cell] = fixed[cell] ? fixed_value : closed;
        }
    }

    // As the array has it.
    float value(std::size_t cell) const { return codes_[cell] == sealed ? closed : codes_[cell]; }

    void visit(std::size_t face, const std::function<void(signed char&)>& work) {
        const int I0 = grid_.I0(), J0 = grid_.J0(), K0 = grid_.K0();
        const auto range = [face](Face first, Face last, int count) {
            return std::pair(face == last ? count : 1, face == first ? 1 : count);
        };
        const auto [K1, K2] = range(input::base_face, input::top_face, K0);
        const auto [J1, J2] = range(input::first_J, input::last_J, J0);
        const auto [I1, I2] = range(input::first_I, input::last_I, I0);
        for (int K = K1; K <= K2; ++K) {
            for (int J = J1; J <= J2; ++J) {
                for (int I = I1; I <= I2; ++I) {
                    work(codes_[static_cast<std::size_t>(grid_.place({I, J, K}))]);
                }
            }
        }
    }

    void change(std::size_t face, signed char from, signed char to) {
        visit(face, [=](signed char& code) { code = code == from ? to : code; });
    }

    FaceCounts count(std::size_t face) {
        FaceCounts counts;
        visit(face, [&](signed char code) {
            ++(code == fixed_value ? counts.A : code == given_flow ? counts.T : counts.O);
        });
        return counts;
    }

private:
    input::SimulatorGrid grid_;
    std::vector<signed char> codes_;
};

bool is_base_like(input::Process process, std::size_t face) {
    return face == input::base_face || (face == input::top_face && process == input::Process::heat);
}

input::Words words_of(input::Process process, std::size_t face, const FaceCounts& counts) {
    if (face == input::top_face) {
        return input::top_words(process, counts, false);
    }
    return face == input::base_face ? input::base_words(process, counts)
                                    : input::side_words(process, counts);
}

// What the stream tells of each face.
using FaceWords = std::array<Words, input::face_count>;

bool same_words(const input::Words& words, const Words& told) {
    return std::ranges::equal(words, told,
                              [](const char* a, const std::string& b) { return a == b; });
}

// The number of cells with a given flow, nearest to the present one, with which a face of these
// cells has the words that are told.
std::optional<std::int64_t> flow_cells(input::Process process, std::size_t face,
                                       const FaceCounts& counts, const Words& told) {
    const std::int64_t cells = counts.O + counts.T;
    for (std::int64_t distance = 0; distance <= cells; ++distance) {
        for (const std::int64_t T : {counts.T - distance, counts.T + distance}) {
            const bool is_possible = T >= 0 && T <= cells;
            if (is_possible &&
                same_words(words_of(process, face, {counts.A, 0, cells - T, T}), told)) {
                return T;
            }
        }
    }
    return std::nullopt;
}

// Divides the lines of the four sides: a tie of votes gives a side two. False: it cannot be.
bool divide_lines(input::Process process, std::span<const std::string> lines, std::size_t side,
                  Codes& codes, FaceWords& told) {
    if (side == input::face_count) {
        return lines.empty();
    }
    const std::size_t behind = input::face_count - side - 1;
    for (const std::size_t count : {1U, 2U}) {
        if (lines.size() < count + behind || lines.size() > count + 2 * behind) {
            continue;
        }
        const Words words(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count));
        if (flow_cells(process, side, codes.count(side), words) &&
            divide_lines(process, lines.subspan(count), side + 1, codes, told)) {
            told[side] = words;
            return true;
        }
    }
    return false;
}

FaceWords words_of_stream(ImportedStream& stream, const BoundaryBlocks& blocks, Codes& codes) {
    FaceWords told;
    told[input::top_face] = stream.lines(blocks.top, 1);
    told[input::base_face] = stream.lines(blocks.base, 1);
    constexpr std::size_t sides = 4;
    const Words lines = stream.lines(blocks.sides, 2 * sides);
    if (lines.size() == sides ||
        !divide_lines(blocks.process, lines, input::first_I, codes, told)) {
        for (std::size_t side = 0; side < std::min(sides, lines.size()); ++side) {
            told[input::first_I + side] = {lines[side]};
        }
    }
    return told;
}

bool has_flow(const Words& told) {
    return std::ranges::any_of(
        told, [](const std::string& word) { return word == "FLO" || word == "WSD"; });
}

// Given flows everywhere on their faces, but not on the edge to a base that has none.
void open_faces(Codes& codes, input::Process process, const FaceWords& told) {
    for (std::size_t face = 0; face < input::face_count; ++face) {
        if (!has_flow(told[face]) && is_base_like(process, face)) {
            codes.change(face, closed, sealed);
        }
    }
    for (std::size_t face = 0; face < input::face_count; ++face) {
        if (has_flow(told[face])) {
            codes.change(face, closed, given_flow);
        }
    }
}

// The edges of other faces must not outvote the cells of a side or of the top.
void settle_vote(Codes& codes, input::Process process, std::size_t face, const Words& told) {
    const FaceCounts counts = codes.count(face);
    const auto wanted = flow_cells(process, face, counts, told);
    if (!wanted || *wanted == counts.T) {
        return;
    }
    const signed char from = *wanted > counts.T ? closed : given_flow;
    const signed char to = *wanted > counts.T ? given_flow : closed;
    std::int64_t left = std::abs(*wanted - counts.T);
    codes.visit(face, [&](signed char& code) {
        if (left > 0 && code == from) {
            code = to;
            --left;
        }
    });
}

// One cell is enough for a base.
void keep_base_open(Codes& codes, std::size_t face) {
    const FaceCounts counts = codes.count(face);
    std::int64_t seen = 0;
    codes.visit(face, [&](signed char& code) {
        if (counts.T == 0 && code == closed && seen++ == counts.O / 2) {
            code = given_flow;
        }
    });
}

// Faces share their edges, so that one may have to give way to another.
void settle_faces(Codes& codes, input::Process process, const FaceWords& told) {
    constexpr int rounds = 4;
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t face = 0; face < input::face_count; ++face) {
            if (!is_base_like(process, face)) {
                settle_vote(codes, process, face, told[face]);
            } else if (has_flow(told[face])) {
                keep_base_open(codes, face);
            }
        }
    }
}

bool is_on(const ModelImport& import, Marks process) {
    switch (process) {
    case Marks::flow:
        return import.flow() && !import.prescribed();
    case Marks::heat:
        return import.heat();
    case Marks::transport:
        return import.transport();
    }
    return false;
}

} // namespace

std::vector<bool> marked_cells(const Field& field) {
    std::vector<bool> marked;
    marked.reserve(field.grid().cells());
    for (int K = 1; K <= field.nK(); ++K) {
        for (int J = 1; J <= field.nJ(); ++J) {
            for (const float value : field.row(K, J)) {
                marked.push_back(value < 0);
            }
        }
    }
    return marked;
}

void save_boundary(ModelImport& import, Marks process, const std::vector<bool>& fixed) {
    const bool on = is_on(import, process);
    if (!on && std::ranges::find(fixed, true) == fixed.end()) {
        return;
    }
    const BoundaryBlocks& blocks = boundary_blocks[static_cast<std::size_t>(process)];
    Codes codes(import.grid, fixed);
    if (on && process != Marks::transport) {
        const FaceWords told = words_of_stream(import.stream, blocks, codes);
        open_faces(codes, blocks.process, told);
        settle_faces(codes, blocks.process, told);
    }
    save_cells(import.store, blocks.number, import.grid, [&](int J, int K, std::span<float> cells) {
        const auto first = static_cast<std::size_t>(import.grid.place({1, J, K}));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            cells[i] = codes.value(first + i);
        }
    });
    core::mark_item_defined(import.project.flags, blocks.number);
}

} // namespace results
