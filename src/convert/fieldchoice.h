// What of a result file is converted for other programs, and under which names.
#pragma once

#include "convert/legacyvtk.h"
#include "core/modelfiles.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace base {
class Interaction;
}

namespace convert {

// The check boxes of the dialog, in the order of conversion.
enum class Box { pres, por, density, perm, head, vectors, temp };
struct BoxInfo {
    Box box;
    const char* name; // inside and in the name of the file
    const char* key;  // of the flow vectors, the first of three
    ValueForm form;
};
std::span<const BoxInfo> boxes();

struct FieldChoice {
    std::vector<Box> boxes;
    // Numbers of blocks from 1 to 99; tracers are counted behind the components.
    std::vector<int> species, tracers, minerals;
    bool all = false; // whatever the file holds
    bool ugradT = false;

    bool has(Box box) const;
    // Why the choice cannot be converted: u.grad(T) asks for temperature and flow vectors.
    std::optional<base::Refusal> refusal() const;
};

struct ChosenBlock {
    std::string name; // "Temperature", "pH", "Tracer-1", "Calcite"
    std::string key;  // its key line
    ValueForm form = ValueForm::plain;
    std::optional<Box> box;

    bool is_vectors() const { return box == Box::vectors; }
};

// The keys of the velocity blocks, X first.
std::span<const char* const> velocity_keys();

// The chosen blocks in the order of conversion; with `all` those that the file holds, as they
// follow each other there. No two have the same name. Names of components and minerals come from
// the companions (results::read_names) in `beside`, under the result's own name; or else, where the
// result's path holds "PERIOD", from those of the folder and name before that word; or else from
// the model's `files`. Tracers are "Tracer-1" and so on.
std::vector<ChosenBlock> chosen_blocks(results::StreamReader& stream, const FieldChoice& choice,
                                       const core::ModelFiles& files,
                                       const core::ModelFiles& beside, base::Interaction& user);

// A name as a part of a file name: what cannot stand in one becomes "_".
std::string file_name_part(std::string_view name);

// The result's name without its ending of four characters.
std::filesystem::path result_base(const std::filesystem::path& result);
// <result_base>-NAME.vtk
std::filesystem::path vtk_file(const std::filesystem::path& result, std::string_view name);

} // namespace convert
