// Models by chance: grids of a few cells in which every kind of setting occurs.
#pragma once

#include "base/numbertext.h"
#include "core/itemcells.h"
#include "core/notes.h"
#include "grid/monitoring.h"
#include "input/smallmodel.h"
#include "sim/continua.h"
#include "sim/reinjection.h"
#include "sim/rockfile.h"
#include "sim/transport.h"

#include <fmt/format.h>

#include <functional>
#include <optional>
#include <random>

namespace randommodel {

class RandomModel {
public:
    explicit RandomModel(unsigned seed) : random_(seed) {
        make_grid();
        make_settings();
        make_rock();
        make_processes();
        make_periods_and_wells();
        make_points();
    }

    input::test::SmallModel& model() { return *model_; }

private:
    int number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    bool chance(int percent) { return number(1, 100) <= percent; }
    template <class T>
    T one_of(std::initializer_list<T> choices) {
        return std::data(choices)[number(0, static_cast<int>(choices.size()) - 1)];
    }
    // A value that seven digits tell, over some decades.
    float value(int decades = 3) {
        return base::leading_single(
            fmt::format("{}.{}E{}", number(1, 9), number(0, 9999), number(-decades, decades)));
    }
    std::vector<float> field(const std::function<float()>& next) {
        std::vector<float> values(static_cast<std::size_t>(cells_));
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = i > 0 && chance(50) ? values[i - 1] : next();
        }
        return values;
    }
    void set_field(int array, const std::function<float()>& next) {
        model_->set_array(array, field(next));
        core::mark_item_defined(flags(), array);
    }
    core::ModelFlags& flags() { return model_->project.flags; }
    core::ModelFiles& files() { return model_->files; }

    void make_grid() {
        nx_ = number(1, 6), ny_ = number(1, 5), nz_ = number(1, 4);
        cells_ = nx_ * ny_ * nz_;
        model_.emplace(nx_, ny_, nz_, one_of({0, 0, 1, 2}));
        grid::GridFile grid{nx_, ny_, nz_, {}, {}};
        for (int i = 0; i < nx_; ++i) {
            grid.Column_Width.push_back(value(1));
        }
        for (int i = 0; i < ny_; ++i) {
            grid.Row_Height.push_back(value(1));
        }
        grid::Save_Grid_File(grid, model_->project, files());
        grid_ = grid;
        grid::LayerFile layers = grid::LayerFile::defaults(nz_);
        const int unconfined = number(0, nz_);
        for (int i = 0; i < nz_; ++i) {
            layers.layers[std::size_t(i)].type = i < unconfined ? 1 : 0;
            layers.layers[std::size_t(i)].thickness = value(1);
        }
        layers.save(files());
        top_ = static_cast<float>(grid::Build_Cell_Coordinates(grid).y_edges.back());
        model_->project.set_single("GRIDPOSITION", "TOP", top_);
        model_->project.set_title(chance(80) ? "Becken Süd, 2. Lauf" : "");
        if (chance(30)) {
            set_field(3, [&] { return 100 + value(1); });
            set_field(4, [&] { return value(1); });
            flags().set(0, 0, 0);
        }
    }

    void make_settings() {
        model_->set_typ(sim::typ::KOPLNG, one_of({"CO-P # 750.0 # 1.7 # -0.002 # 2500", "----",
                                                  "C--P", "-OUP # 1 # 2. # 3.5 # 2400"}));
        model_->set_typ(sim::typ::IPUTDI, one_of({"12XX5XX8X0121", "1234567890125", "123"}));
        for (const int line : {7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 19, 20}) {
            model_->set_typ(line, one_of({"1", "0.5", "1E-5", "1.5E-07", "300", "998.25"}));
        }
        for (const int cell : {4, 5, 6}) {
            flags().set(8, cell, number(0, 3) + 16 * number(0, 15) + 256 * number(0, 100));
        }
        for (int cell = 0; cell < 5; ++cell) {
            flags().set(10, cell, number(0, 1));
        }
        if (chance(50)) {
            core::Save_IZV_Data(files(), "koppx", "Density", "\t1003.5");
            core::Save_IZV_Data(files(), "koppx", "Viscosity", "8.9E-04");
        }
        for (const char* key : {"Active", "Chi", "Iteration", "FlowLimit", "TransLimit"}) {
            if (chance(60)) {
                core::Save_IZV_Data(files(), "PICARD", key, one_of({"1", "0", "7.25", "1E-6"}));
            }
        }
    }

    void make_rock() {
        const int zones = number(1, sim::PropertyZonesMax);
        sim::RockFile rock(zones);
        for (const int line : {5, 6, 7, 8, 10, 11, 12, 13, 14}) {
            for (int zone = 1; zone <= zones; ++zone) {
                rock.set_field(line, zone,
                               one_of({"1", "2.", "3.0", "1E-6", "1.5E-06", "1234567890", "0."}));
            }
        }
        if (chance(40)) {
            rock.set_field(sim::rock::Cond, 1, "-2.9");
        }
        if (chance(40)) {
            rock.set_line(sim::rock::Compress, "Compress");
            for (int zone = 1; zone <= zones; ++zone) {
                rock.set_field(sim::rock::Compress, zone, one_of({"1E-10", "2.0E-9", "4."}));
            }
        }
        rock.save(files());
        set_field(1403, [&] { return static_cast<float>(number(1, zones)); });
        set_field(6, [&] { return value(1) / 100; });
        set_field(1401, [&] { return value() * 1E-12F; });
    }

    void make_processes() {
        std::string KEY = "-----";
        const bool flow = chance(75), heat = chance(60), transport = chance(60);
        KEY[0] = flow ? 'F' : '-';
        KEY[1] = heat ? one_of({'U', 'I', 'Z', 'S', '5'}) : '-';
        KEY[2] = transport ? one_of({'U', 'I', '5'}) : '-';
        const bool prescribed = flow && chance(25);
        KEY[3] = prescribed ? 'P' : '-';
        model_->set_typ(sim::typ::KEY, KEY);
        flags().set(9, 4, flow);
        flags().set(9, 5, heat);
        flags().set(9, 6, transport);
        flags().set(3, 1, prescribed);
        if (!prescribed && chance(20)) {
            flags().mark_defined(1, 1);
        }
        set_field(10, [&] { return value(); });
        set_field(1402, [&] { return value() - 5; });
        make_boundaries(5, flow && !prescribed);
        make_boundaries(1405, heat);
        make_boundaries(40, transport);
        if (prescribed) {
            for (const int array : {1408, 1409, 1410}) {
                set_field(array, [&] { return value(8) * (chance(50) ? 1.0F : -1.0F); });
            }
        } else if (flow) {
            make_recharge();
        }
        if (heat) {
            make_heat();
        }
        if (transport) {
            make_transport();
        }
    }

    // Each side closed, fixed, mixed or with a given flow, which holds for its whole face.
    void make_boundaries(int array, bool active) {
        if (!active && chance(70)) {
            return;
        }
        std::vector<float> codes(static_cast<std::size_t>(cells_), 1);
        const bool horizontal = flags().GridOrientation() == 0;
        const auto change = [&](const std::function<bool(int, int, int)>& on_face, float code,
                                int percent) {
            for (int layer = 1, at = 0; layer <= nz_; ++layer) {
                for (int row = 1; row <= ny_; ++row) {
                    for (int column = 1; column <= nx_; ++column, ++at) {
                        if (on_face(column, row, layer) && chance(percent)) {
                            codes[std::size_t(at)] = code;
                        }
                    }
                }
            }
        };
        const auto is_base = [&](int, int row, int layer) {
            return horizontal ? layer == nz_ : row == ny_;
        };
        const auto is_top = [&](int, int row, int layer) {
            return horizontal ? layer == 1 : row == 1;
        };
        const auto is_west = [](int column, int, int) { return column == 1; };
        if (array == 5 && chance(30)) {
            change(is_west, 2, 100);
            change(is_base, 1, 100);
        }
        if (array != 40 && chance(40)) {
            change(is_base, 2, one_of({100, 60}));
        }
        if (array == 1405 && chance(20)) {
            change(is_top, 2, 100);
        }
        change([&](int column, int, int) { return column == nx_ && nx_ > 1; }, -1,
               one_of({0, 100, 50}));
        change([&](int, int row, int) { return row == 1 && ny_ > 1; }, -1, one_of({0, 100, 30}));
        change([](int, int, int) { return true; }, -1, one_of({0, 0, 10}));
        model_->set_array(array, codes);
        core::mark_item_defined(flags(), array);
    }

    void make_recharge() {
        for (const int array : {1407, 1432, 1433}) {
            if (chance(40)) {
                set_field(array, [&] { return chance(40) ? 0 : value() * 1E-8F; });
            }
        }
        if (chance(20)) {
            flags().set(3, 14, 0);
        }
    }

    void make_heat() {
        if (chance(70)) {
            set_field(1437, [&] { return value(1); });
        }
        if (chance(40)) {
            flags().set(10, 5, 1);
            set_field(1434, [&] { return value(1) / 1000; });
            set_field(1435, [&] { return -value(1); });
            set_field(1436, [&] { return -value(1); });
        }
    }

    void make_transport() {
        sim::TracerTable tracers;
        for (int tracer = 1; tracer <= 5; ++tracer) {
            auto& row = tracers.rows[std::size_t(tracer - 1)];
            row = {chance(50), value(2), chance(50) ? value(2) : 0};
            if (chance(60)) {
                set_field(1440 + tracer, [&] { return value(); });
            }
        }
        tracers.save(files());
        if (chance(50)) {
            set_field(1406, [&] { return static_cast<float>(number(0, 5)); });
        }
        flags().mark_defined(9, 8);
        sim::Dispersion{one_of({"0.5", "1.25", "3"}), "2.5", one_of({"10", "0.125"})}.save(files());
        if (chance(30)) {
            flags().set(10, 6, 1);
            sim::Boxmodel box;
            box.active = "1";
            box.P_Zones = "1,3";
            box.density = {"1", "2.5", "", "4"};
            box.aperture = {"0.001", "2E-4", "", ""};
            box.tortuosity = {"1", "1.5", "2", ""};
            box.save(files());
        }
    }

    void make_periods_and_wells() {
        sim::PeriodTable& table = model_->periods;
        table.unit = number(1, 5);
        model_->project.set_integer("OPTIONS", "SIMULATION_MODE", number(1, 2));
        std::vector<int> active{1};
        for (int row = 1; row <= number(1, 8); ++row) {
            sim::Period& period = table.rows[std::size_t(row - 1)];
            period.active = row == 1 || chance(70);
            period.length = base::leading_number(base::value_text(value(2)));
            period.steps = number(1, 400);
            period.monitoring_frequency = static_cast<float>(number(1, 9));
            period.temperature_shift = chance(50) ? 0 : value(1);
            if (period.active && row > 1) {
                active.push_back(row);
            }
        }
        model_->save_periods();
        if (chance(60)) {
            make_wells(active);
        }
    }

    void make_wells(const std::vector<int>& periods) {
        for (const int period : periods) {
            std::vector<float> rates(static_cast<std::size_t>(cells_)), temperatures = rates;
            for (int i = 0; i < number(period == 1 ? 1 : 0, 4); ++i) {
                const auto cell = static_cast<std::size_t>(number(0, cells_ - 1));
                rates[cell] = value() * (chance(50) ? 1.0F : -1.0F);
                temperatures[cell] = chance(50) ? 0 : value(1);
            }
            rates[0] = period == 1 ? -0.5F : rates[0];
            model_->set_array(11, rates, period);
            model_->set_array(299, temperatures, period);
        }
        core::mark_item_defined(flags(), 11);
        const int species = sim::TracerTable::load(files()).ActiveTracers();
        if (flags().TransportActive() == 1 && species > 0 && chance(60)) {
            sim::ReinjectionTable table;
            table.species = species;
            for (int well = 0; well < number(1, 5); ++well) {
                table.rows.push_back({1, {}});
                for (int i = 0; i < species; ++i) {
                    table.rows.back().concentrations.push_back(chance(40) ? 0 : value(2));
                }
            }
            files().write(".sco", table.bytes());
        }
    }

    void make_points() {
        grid::MonitoringList list;
        const auto edges = grid::Build_Cell_Coordinates(grid_);
        for (int slot = 0; slot < number(0, 6); ++slot) {
            grid::Bore& bore = list.bores[std::size_t(slot * 2)];
            bore.Active = chance(70);
            bore.X = static_cast<float>(edges.x_centres[std::size_t(number(0, nx_ - 1))]);
            bore.Y = top_ - static_cast<float>(edges.y_centres[std::size_t(number(0, ny_ - 1))]);
            bore.Layer = static_cast<std::int16_t>(number(1, nz_));
        }
        grid::Write_Monitoring_Points(list, files());
    }

    std::mt19937 random_;
    std::optional<input::test::SmallModel> model_;
    grid::GridFile grid_;
    int nx_ = 1, ny_ = 1, nz_ = 1, cells_ = 1;
    float top_ = 0;
};

} // namespace randommodel
