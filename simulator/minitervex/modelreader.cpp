#include "minitervex/modelreader.h"

#include "base/failure.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>

namespace minitervex {

namespace {

constexpr int most_cells = 20'000'000;

enum class Sense { positive, not_negative, any };

void require(const InputStream& input, std::string_view block, const Vector& values, Sense sense) {
    const double lowest = values.minCoeff();
    if (sense == Sense::positive && !(lowest > 0))
        input.fail(block, "holds a value that is not above 0");
    if (sense == Sense::not_negative && !(lowest >= 0))
        input.fail(block, "holds a value below 0");
    if (values.cwiseAbs().maxCoeff() > std::numeric_limits<float>::max())
        input.fail(block, "holds a value beyond all reason");
}

Vector checked(const InputStream& input, std::string_view block, std::int64_t count, Sense sense) {
    Vector values = input.values(block, count);
    require(input, block, values, sense);
    return values;
}

double checked(const InputStream& input, std::string_view block, Sense sense) {
    return checked(input, block, 1, sense)[0];
}

// The values of outer planes, the first half those of the first plane. A plane of a model of one
// cell stands there twice when it has a value.
Vector checked_planes(const InputStream& input, std::string_view block, std::int64_t count,
                      const Grid& grid) {
    if (grid.cells() > 1)
        return checked(input, block, count, Sense::any);
    const std::vector<Item> items = input.items(block, count, count + 1);
    Vector values = Vector::Constant(count, items.front().value);
    values[count - 1] = items.back().value;
    require(input, block, values, Sense::any);
    return values;
}

Marks marks_of(const Vector& values) {
    Marks marks(static_cast<std::size_t>(values.size()));
    for (Eigen::Index cell = 0; cell < values.size(); ++cell)
        marks[static_cast<std::size_t>(cell)] = values[cell] < 0 ? 1 : 0;
    return marks;
}

Water read_water(const InputStream& input) {
    const Vector koppx = checked(input, "KOPPX_FIELD", 5, Sense::not_negative);
    return {.density = checked(input, "RHOF", Sense::positive),
            .gravity = checked(input, "GRAV", Sense::positive),
            .viscosity = koppx[4],
            .compressibility = koppx[2],
            .heat_capacity = koppx[3],
            .conductivity = koppx[1]};
}

} // namespace

Grid read_grid(const InputStream& input) {
    constexpr std::array<const char*, 3> counts{"I0", "J0", "K0"};
    constexpr std::array<const char*, 3> dimensions{"IDIM", "JDIM", "KDIM"};
    constexpr std::array<const char*, 3> sizes{"DELX", "DELY", "DELZ"};
    Grid grid;
    std::int64_t cells = 1;
    for (std::size_t axis = X; axis <= Z; ++axis) {
        grid.count[axis] = input.integer(counts[axis], 1, most_cells);
        cells *= grid.count[axis];
        if (cells > most_cells)
            input.fail(counts[axis], fmt::format("more than {} cells", most_cells));
        if (input.has(dimensions[axis]) &&
            input.integer(dimensions[axis], 1, most_cells) != grid.count[axis])
            input.fail(dimensions[axis], fmt::format("differs from # {}", counts[axis]));
    }
    for (std::size_t axis = X; axis <= Z; ++axis) {
        const Vector widths = checked(input, sizes[axis], grid.count[axis], Sense::positive);
        grid.size[axis].assign(widths.begin(), widths.end());
    }
    return grid;
}

namespace {

// Fluxes into the model through its outer faces, in m/s: top and base, then left and right
// (alternating), then south and north of each layer.
void read_recharge(const InputStream& input, const Grid& grid, FlowInput& flow) {
    const auto [nx, ny, nz] = grid.count;
    const Vector plan = checked_planes(input, "QRE", 2 * std::int64_t{nx} * ny, grid);
    const Vector sides = checked(input, "QRELR", 2 * std::int64_t{ny} * nz, Sense::any);
    const Vector fronts = checked(input, "QREVH", 2 * std::int64_t{nx} * nz, Sense::any);
    flow.recharge = Vector::Zero(grid.cells());
    flow.outer_inflow = Faces(grid);
    const auto add = [&](int cell, int axis, double rate) {
        flow.recharge[cell] += rate * grid.area(cell, axis);
    };
    const auto add_upper = [&](int cell, int axis, double rate) {
        add(cell, axis, rate);
        flow.outer_inflow.at(axis, cell) = rate;
    };
    for (int j = 0; j < ny; ++j)
        for (int i = 0; i < nx; ++i) {
            add_upper(grid.number(i, j, nz - 1), Z, plan[i + nx * j]);
            add(grid.number(i, j, 0), Z, plan[i + nx * (ny + j)]);
        }
    for (int k = 0; k < nz; ++k) {
        for (int j = 0; j < ny; ++j) {
            add(grid.number(0, j, k), X, sides[2 * (j + ny * k)]);
            add_upper(grid.number(nx - 1, j, k), X, sides[2 * (j + ny * k) + 1]);
        }
        for (int i = 0; i < nx; ++i) {
            add(grid.number(i, 0, k), Y, fronts[i + nx * 2 * k]);
            add_upper(grid.number(i, ny - 1, k), Y, fronts[i + nx * (2 * k + 1)]);
        }
    }
}

Vector read_storage(const InputStream& input, const Model& model) {
    const int cells = model.grid.cells();
    const Vector rock =
        input.has("COMP3D")
            ? checked(input, "COMP3D", cells, Sense::not_negative)
            : Vector(Vector::Constant(cells, checked(input, "COMPM", Sense::not_negative)));
    return model.water.density * model.water.gravity *
           (rock + model.porosity * model.water.compressibility);
}

Faces read_velocity(const InputStream& input, const Grid& grid) {
    constexpr std::array<const char*, 3> blocks{"VX", "VY", "VZ"};
    Faces velocity(grid);
    for (int axis = X; axis <= Z; ++axis) {
        const auto place = static_cast<std::size_t>(axis);
        const Vector values = checked(input, blocks[place], grid.cells(), Sense::any);
        each_face(grid, [&](int along, int lower, int) {
            if (along == axis)
                velocity.at(axis, lower) = values[lower];
        });
    }
    return velocity;
}

void read_flow(const InputStream& input, const std::string& key, Model& model) {
    const int cells = model.grid.cells();
    FlowInput& flow = model.flow;
    flow.active = key[0] == 'F';
    flow.prescribed = flow.active && key[3] == 'P';
    flow.steady = input.word("STAT") == "STAT";
    const Vector permeability = checked(input, "PERM", cells, Sense::any);
    flow.fixed = marks_of(permeability);
    flow.permeability = permeability.cwiseAbs();
    flow.head = checked(input, "PHI", cells, Sense::any);
    flow.anisotropy_x = checked(input, "ANISOI", cells, Sense::not_negative);
    flow.anisotropy_y = checked(input, "ANISOJ", cells, Sense::not_negative);
    flow.storage = read_storage(input, model);
    read_recharge(input, model.grid, flow);
    flow.velocity = read_velocity(input, model.grid);
    if (!(model.water.viscosity > 0))
        input.fail("KOPPX_FIELD", "the viscosity is not above 0");
}

// Heat flows through the top and the base, in W/m2, positive into the model.
Vector read_heat_sources(const InputStream& input, const Model& model) {
    const Grid& grid = model.grid;
    const auto [nx, ny, nz] = grid.count;
    const double water = checked(input, "HPF", Sense::any);
    const Vector rock = checked(input, "HPR", grid.cells(), Sense::any);
    const Vector top = checked_planes(input, "QTOP3D", std::int64_t{nx} * ny, grid);
    const Vector base = checked_planes(input, "QBASAL3D", std::int64_t{nx} * ny, grid);
    Vector source(grid.cells());
    for (int cell = 0; cell < grid.cells(); ++cell)
        source[cell] = grid.volume(cell) *
                       ((1 - model.porosity[cell]) * rock[cell] + model.porosity[cell] * water);
    for (int column = 0; column < nx * ny; ++column) {
        const int upper = column + nx * ny * (nz - 1);
        source[upper] += top[column] * grid.area(upper, Z);
        source[column] += base[column] * grid.area(column, Z);
    }
    return source;
}

void read_heat(const InputStream& input, const std::string& key, Model& model) {
    const int cells = model.grid.cells();
    const Water& water = model.water;
    HeatInput& heat = model.heat;
    heat.active = key[1] != '-';
    heat.temperature = checked(input, "TEMP", cells, Sense::any);
    heat.anisotropy_x = checked(input, "WLXANI", cells, Sense::not_negative);
    heat.anisotropy_y = checked(input, "WLYANI", cells, Sense::not_negative);
    heat.source = read_heat_sources(input, model);
    const Eigen::ArrayXd pores = model.porosity.array();
    const Eigen::ArrayXd rock = checked(input, "RHOCM", cells, Sense::not_negative).array();
    const Eigen::ArrayXd matrix = checked(input, "WLFM0", cells, Sense::not_negative).array();
    heat.capacity = (1 - pores) * rock + pores * (water.density * water.heat_capacity);
    // Rock and water conduct side by side at random: the geometric mean.
    heat.conductivity.resize(cells);
    for (int cell = 0; cell < cells; ++cell)
        heat.conductivity[cell] =
            std::pow(matrix[cell], 1 - pores[cell]) * std::pow(water.conductivity, pores[cell]);
    if (heat.active && !(heat.capacity.minCoeff() > 0))
        input.fail("RHOCM", "a cell has no heat capacity");
}

void read_tracers(const InputStream& input, const std::string& key, Model& model) {
    TracerInput& tracers = model.tracers;
    model.substances = input.integer("ANZSUBS", 0, 99);
    tracers.active = key[2] != '-' && model.substances > 0;
    tracers.fixed = marks_of(checked(input, "PRES", model.grid.cells(), Sense::any));
    if (key[2] == '-')
        return;
    tracers.diffusion = checked(input, "MDIFS1", Sense::not_negative);
    tracers.longitudinal = checked(input, "DIFLS1", Sense::not_negative);
    tracers.transverse = checked(input, "DIFTS1", Sense::not_negative);
    for (int n = 1; n <= model.substances; ++n)
        tracers.concentrations.push_back(
            checked(input, fmt::format("CONC {}", n), model.grid.cells(), Sense::any));
}

} // namespace

Model read_model(const InputStream& input) {
    require_computable(input);
    const std::string key = input.word("KEY");
    Model model;
    model.grid = read_grid(input);
    model.notes = notes_on(input);
    model.tells_progress = input.word("LINFO") != "3";
    model.iterations = input.integer("MXIT", 1, 1'000'000'000);
    model.water = read_water(input);
    const Vector porosity = checked(input, "POR", model.grid.cells(), Sense::any);
    model.porosity = porosity.cwiseAbs();
    if (model.porosity.maxCoeff() > 1)
        input.fail("POR", "holds a value above 1");
    model.heat.fixed = marks_of(porosity);
    read_flow(input, key, model);
    read_heat(input, key, model);
    read_tracers(input, key, model);
    read_periods(input, model);
    read_points(input, model);
    if (input.has("AREAKT")) // the last block: where it is whole, so is the stream
        input.items("AREAKT", model.grid.cells());
    return model;
}

} // namespace minitervex
