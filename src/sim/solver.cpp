#include "sim/solver.h"

#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/fieldvalue.h"
#include "sim/typfile.h"

#include <algorithm>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* preconditioners[] = {"None", "Jacobi", "ILU", "SSOR"};
constexpr const char* terminations[] = {"abs", "rel", "mix (abs-rel)"};

constexpr FieldInfo field_table[] = {
    {"FlowSlider", FieldKind::slider, "Explicit = 0 to Implicit = 1", {}, "", "10"},
    {"HeatSlider", FieldKind::slider, "Explicit = 0 to Implicit = 1", {}, "", "10"},
    {"TransportSlider", FieldKind::slider, "Explicit = 0 to Implicit = 1", {}, "", "10"},
    {"APARF", FieldKind::number, "faster < factor < slower", {}, "", "1.0"},
    {"APART", FieldKind::number, "faster < factor < slower", {}, "", "1.0"},
    {"APARS", FieldKind::number, "faster < factor < slower", {}, "", "1.0"},
    {"ERRF", FieldKind::number, "Convergence limit", {}, "", "1.0E-18"},
    {"ERRT", FieldKind::number, "Convergence limit", {}, "", "1.0E-18"},
    {"ERRS", FieldKind::number, "Convergence limit", {}, "", "1.0E-10"},
    {"NoIteration",
     FieldKind::number,
     "Maximum Number of Iterations per time step",
     {},
     "",
     "20000"},
    {"optFlowCond", FieldKind::choice, "Preconditioner", preconditioners, "", "0"},
    {"optHeatCond", FieldKind::choice, "Preconditioner", preconditioners, "", "0"},
    {"optTransCond", FieldKind::choice, "Preconditioner", preconditioners, "", "0"},
    {"optFlowTerm", FieldKind::choice, "Termination conditions", terminations, "", "0"},
    {"optHeatTerm", FieldKind::choice, "Termination conditions", terminations, "", "0"},
    {"optTransTerm", FieldKind::choice, "Termination conditions", terminations, "", "0"},
};

// What belongs to flow, heat and transport; `code` is the second index of its solver code in row 8
// of ModelFlags.
struct Process {
    const char* slider;
    const char* preconditioner;
    const char* termination;
    const char* relaxation;
    const char* relaxation_refusal;
    int weight_line;
    int code;
};
constexpr std::array<Process, 3> processes = {{
    {"FlowSlider", "optFlowCond", "optFlowTerm", "APARF",
     "Fluid flow relaxation must be smaller or equal ", typ::OMF, 4},
    {"HeatSlider", "optHeatCond", "optHeatTerm", "APART",
     "Heat relaxation must be smaller or equal ", typ::OMT, 5},
    {"TransportSlider", "optTransCond", "optTransTerm", "APARS",
     "Transport relaxation must be smaller or equal ", typ::OMS, 6},
}};

// Fields that are a line of .typ as they stand.
struct LineField {
    int line;
    const char* field;
};
constexpr LineField line_fields[] = {
    {typ::APARF, "APARF"}, {typ::APART, "APART"}, {typ::APARS, "APARS"},      {typ::ERRF, "ERRF"},
    {typ::ERRT, "ERRT"},   {typ::ERRS, "ERRS"},   {typ::MXIT, "NoIteration"},
};

// Cell (row, 3) of ModelFlags tells that the solver was chosen.
struct ChosenCell {
    Solver solver;
    int row;
};
constexpr ChosenCell chosen_cells[] = {{Solver::PLU, 7}, {Solver::BiCGStab, 8}, {Solver::NAG, 9}};

} // namespace

SolverCode SolverCode::decode(int code) {
    const int known = std::max(code, 0);
    return {known % 16, known / 16 % 16, known / 256};
}

int SolverCode::code() const {
    return solver + 16 * std::clamp(preconditioner, 0, preconditioner_end) +
           256 * std::clamp(termination, 0, termination_end);
}

Solver chosen_solver(const core::ModelFlags& flags) {
    const int number = SolverCode::decode(flags.SolverControlFlow()).solver;
    return number >= 1 && number <= 3 ? Solver(number) : Solver::none;
}

std::string relaxation_limit(int NX, int NY, int NZ) {
    const auto square = [](int extent) { return (extent - 1.0) * (extent - 1.0); };
    const double limit = (square(NX) + square(NY) + square(NZ)) / 3;
    if (limit == 0)
        return "1.0";
    const std::string text = base::value_text(limit);
    const std::size_t point = text.find('.');
    return point == std::string::npos ? text : text.substr(0, point + 2);
}

SolverForm::SolverForm(Solver solver) : solver_(solver) {
    reset_fields();
}

std::span<const FieldInfo> SolverForm::fields() const {
    return field_table;
}

void SolverForm::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    const TypFile typ_file = TypFile::load(files);
    for (const LineField& item : line_fields)
        put(item.field, typ_file.line(item.line));
    for (std::size_t i = 0; i < processes.size(); ++i) {
        const Process& process = processes[i];
        stored_[i] = SolverCode::decode(project.flags(8, process.code));
        put(process.slider, std::to_string(tenth_position(typ_file.line(process.weight_line))));
        put(process.preconditioner, std::to_string(stored_[i].preconditioner));
        put(process.termination, std::to_string(stored_[i].termination));
    }
    limit_ = relaxation_limit(project.NX(), project.NY(), project.NZ());
}

bool SolverForm::enabled(std::string_view name) const {
    return solver_ != Solver::NAG ||
           std::ranges::none_of(processes, [name](const Process& process) {
               return name == process.preconditioner;
           });
}

std::optional<base::Refusal> SolverForm::check() const {
    if (solver_ != Solver::NAG)
        return std::nullopt;
    for (const Process& process : processes)
        if (base::leading_number(get(process.relaxation)) > base::leading_number(limit_))
            return base::Refusal{"Over the limit", process.relaxation_refusal + limit_,
                                 base::Icon::warning, process.relaxation};
    return std::nullopt;
}

SolverCode SolverForm::new_code(int process) const {
    const Process& names = processes.at(std::size_t(process));
    SolverCode code;
    code.solver = int(solver_);
    code.preconditioner = solver_ == Solver::NAG ? stored_.at(std::size_t(process)).preconditioner
                                                 : choice_index(*this, names.preconditioner,
                                                                SolverCode::preconditioner_end + 1);
    code.termination = choice_index(*this, names.termination, SolverCode::termination_end + 1);
    return code;
}

void SolverForm::save(core::Project& project, core::ModelFiles& files) {
    TypFile typ_file = TypFile::load(files);
    for (const LineField& item : line_fields)
        typ_file.set_line(item.line, get(item.field));
    for (std::size_t i = 0; i < processes.size(); ++i) {
        const Process& process = processes[i];
        const int position = choice_index(*this, process.slider, slider_end + 1);
        const std::string& stored = typ_file.line(process.weight_line);
        if (position != tenth_position(stored) || is_tenth(stored))
            typ_file.set_line(process.weight_line, tenth_text(position));
        project.flags.set(8, process.code, new_code(int(i)).code());
    }
    typ_file.save(files);
    for (const ChosenCell& cell : chosen_cells)
        project.flags.set(cell.row, 3, cell.solver == solver_ ? core::ModelFlags::defined : 0);
    project.flags.mark_edited();
}

} // namespace sim
