// Boundary words: what the cells of each face of the grid have in common.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace input {

class Creation;
class ModelArrays;
struct ArrayItem;

enum class Process { flow, heat, transport };

// Cells of a face by their boundary value: A -1, Z 0, O 1, T 2.
struct FaceCounts {
    std::int64_t A = 0, Z = 0, O = 0, T = 0;
};

// Faces in the order of writing. The sides are the first and last column and the first and last J;
// in a horizontal model the first J is the worksheet's last row, in a cross-section it is layer 1.
enum Face : std::size_t { top_face, base_face, first_I, first_J, last_I, last_J, face_count };

struct Faces {
    std::array<FaceCounts, face_count> counts;
    std::int64_t wrong_cells = 0; // cells of the faces with any other value, each once
};

// Counts the cells of all faces of a boundary array.
Faces count_faces(const ModelArrays& arrays, const ArrayItem& item);

// Words of a face. The tests of a face are independent of each other at some places, so that a tie
// chooses two words or none. `unconfined_top`: the first layer is unconfined.
using Words = std::vector<const char*>;
Words top_words(Process process, const FaceCounts& cells, bool unconfined_top);
Words base_words(Process process, const FaceCounts& cells);
Words side_words(Process process, const FaceCounts& cells);

// The blocks TOP, BASE and SEITE of a process, from its boundary array or, when it is off, "NFLO"
// throughout. Ends the creation when a cell holds a value that means nothing.
void Boundary(Creation& creation, Process process);

} // namespace input
