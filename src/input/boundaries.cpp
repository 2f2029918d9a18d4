#include "input/boundaries.h"

#include "base/interaction.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/griddefinition.h"
#include "input/creation.h"
#include "input/gridblocks.h"

#include <fmt/format.h>

#include <algorithm>

namespace input {

namespace {

void count_cell(Faces& faces, float value, const std::array<bool, face_count>& member) {
    std::int64_t FaceCounts::*kind = value == -1  ? &FaceCounts::A
                                     : value == 0 ? &FaceCounts::Z
                                     : value == 1 ? &FaceCounts::O
                                     : value == 2 ? &FaceCounts::T
                                                  : nullptr;
    if (kind == nullptr) {
        ++faces.wrong_cells;
        return;
    }
    for (std::size_t face = 0; face < face_count; ++face) {
        if (member[face]) {
            ++(faces.counts[face].*kind);
        }
    }
}

void count_row(Faces& faces, std::span<const float> row, std::array<bool, face_count> member) {
    const std::size_t last = row.size() - 1;
    const bool whole = std::ranges::find(member, true) != member.end();
    for (std::size_t i = 0; i <= last; i = whole || i == last ? i + 1 : last) {
        member[first_I] = i == 0;
        member[last_I] = i == last;
        count_cell(faces, row[i], member);
    }
}

} // namespace

Faces count_faces(const ModelArrays& arrays, const ArrayItem& item) {
    Faces faces;
    const SimulatorGrid& grid = arrays.grid();
    arrays.visit_rows(item, 1, [&](std::span<const float> row, int J, int K) {
        std::array<bool, face_count> member{};
        member[top_face] = K == grid.K0();
        member[base_face] = K == 1;
        member[first_J] = J == 1;
        member[last_J] = J == grid.J0();
        count_row(faces, row, member);
    });
    return faces;
}

Words top_words(Process process, const FaceCounts& cells, bool unconfined_top) {
    const auto [A, Z, O, T] = cells;
    if (process == Process::heat) {
        return base_words(process, cells);
    }
    if (process == Process::transport) {
        return {A >= Z && A >= O ? "CONC" : "NFLO"};
    }
    if (unconfined_top) {
        return {"FREE"};
    }
    return {A >= Z && A >= O && A >= T ? "HEAD" : "NFLO"};
}

Words base_words(Process process, const FaceCounts& cells) {
    const auto [A, Z, O, T] = cells;
    if (process == Process::transport) {
        return {A >= Z && A >= O && A >= T ? "CONC" : "NFLO"};
    }
    const bool heat = process == Process::heat;
    if (T >= 1) {
        return {heat ? "WSD" : "FLO"};
    }
    Words words;
    if (A > Z && A > O && A > T) {
        words.push_back(heat ? "TEMP" : "HEAD");
    }
    if (heat && Z > A && Z > O) {
        words.push_back("NFLO");
    }
    if (O >= A && O >= Z && O >= T) {
        words.push_back("NFLO");
    }
    return words;
}

Words side_words(Process process, const FaceCounts& cells) {
    const auto [A, Z, O, T] = cells;
    const bool constant = A >= Z && A >= O && A >= T;
    if (process != Process::flow) {
        return {!constant ? "NFLO" : process == Process::heat ? "TEMP" : "CONC"};
    }
    Words words;
    if (constant) {
        words.push_back("HEAD");
    }
    if (O >= A && O >= Z && O >= T) {
        words.push_back("NFLO");
    }
    if (T > A && T > Z && T > O) {
        words.push_back("FLO");
    }
    if (Z > A && Z > O && Z > T) {
        words.push_back("NFLO");
    }
    return words;
}

namespace {

struct BoundaryBlocks {
    Process process;
    ArrayItem item;
    const char* top;
    const char* base;
    const char* sides;
    const char* name;
};

constexpr BoundaryBlocks boundary_blocks[] = {
    {Process::flow, arrays::ibd, "TOPF", "BASEF", "SEITEF", "Flow"},
    {Process::heat, arrays::hbo, "TOPT", "BASET", "SEITET", "Heat"},
    {Process::transport, arrays::tic, "TOPS", "BASES", "SEITES", "Transport"},
};

// Words of the six faces, in their order.
using FaceWords = std::array<Words, face_count>;

bool is_on(const core::ModelFlags& flags, Process process) {
    switch (process) {
    case Process::flow:
        return flags.FlowActive() == 1 && flags.FlowPrescribed() == 0;
    case Process::heat:
        return flags.HeatActive() == 1;
    case Process::transport:
        return flags.TransportActive() == 1;
    }
    return false;
}

Faces faces_of_model(const Creation& creation, const BoundaryBlocks& blocks) {
    const ModelArrays& arrays = creation.arrays;
    if (arrays.has(blocks.item) && arrays.store().has_period(blocks.item.number, 1)) {
        return count_faces(arrays, blocks.item);
    }
    Faces faces; // no boundary was set anywhere: closed
    faces.counts.fill({.O = 1});
    return faces;
}

bool has_unconfined_top(const Creation& creation) {
    return creation.grid.horizontal() && layers_of_model(creation).layers.front().type == 1;
}

void report_wrong_cells(Creation& creation, const BoundaryBlocks& blocks, std::int64_t count) {
    const std::string text =
        fmt::format("Wrong {} Boundary is set. Please check. Otherwise "
                    "modeling errors could occur",
                    blocks.process == Process::flow ? "Fluid Flow" : blocks.name);
    for (std::int64_t cell = 0; cell < count; ++cell) {
        creation.user.beep();
        creation.user.message(base::Icon::warning, "Warning", text);
    }
}

FaceWords words_of_faces(Creation& creation, const BoundaryBlocks& blocks, Faces& faces) {
    faces = faces_of_model(creation, blocks);
    const bool unconfined = blocks.process == Process::flow && has_unconfined_top(creation);
    FaceWords words;
    words[top_face] = top_words(blocks.process, faces.counts[top_face], unconfined);
    words[base_face] = base_words(blocks.process, faces.counts[base_face]);
    for (const std::size_t side : {first_I, first_J, last_I, last_J}) {
        words[side] = side_words(blocks.process, faces.counts[side]);
    }
    return words;
}

void write_words(Creation& creation, const char* keyword, std::span<const Words> faces) {
    creation.block(keyword, [&creation, faces] {
        for (const Words& words : faces) {
            for (const char* word : words) {
                creation.stream.text_line(word);
            }
        }
    });
}

void remember(Creation& creation, Process process, const FaceWords& words) {
    const auto last = [](const Words& of_face) {
        return std::string(of_face.empty() ? "" : of_face.back());
    };
    if (process == Process::flow) {
        creation.TOPF = last(words[top_face]);
        creation.BASEF = last(words[base_face]);
    } else if (process == Process::heat) {
        creation.TOPT = last(words[top_face]);
        creation.BASET = last(words[base_face]);
    }
}

} // namespace

void Boundary(Creation& creation, Process process) {
    const BoundaryBlocks& blocks = boundary_blocks[static_cast<std::size_t>(process)];
    FaceWords words;
    Faces faces;
    if (is_on(creation.project.flags, process)) {
        creation.attempt(blocks.top, [&] { words = words_of_faces(creation, blocks, faces); });
    } else {
        words.fill({"NFLO"});
    }
    report_wrong_cells(creation, blocks, faces.wrong_cells);
    remember(creation, process, words);
    const std::span<const Words> all(words);
    write_words(creation, blocks.top, all.subspan(top_face, 1));
    write_words(creation, blocks.base, all.subspan(base_face, 1));
    write_words(creation, blocks.sides, all.subspan(first_I));
    if (faces.wrong_cells > 0) {
        creation.end();
    }
}

} // namespace input
