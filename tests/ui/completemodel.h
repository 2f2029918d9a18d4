// A model that the completeness check passes.
#pragma once

#include "core/arraystore.h"
#include "deskfixture.h"
#include "grid/griddefinition.h"
#include "sim/periods.h"
#include "sim/typfile.h"

#include <QTest>

#include <vector>

namespace support {

class CompleteModelFixture : public DeskFixture {
protected:
    std::filesystem::path program_folder() const { return folder.path() / "program"; }

    // Flow only, one layer, one period of 10 seconds.
    void make_complete_model() {
        make_model(3, 2);
        change([](app::Workspace& model) {
            grid::LayerFile::defaults(1).save(model.files);
            sim::TypFile().save(model.files);
            sim::PeriodTable periods;
            periods.unit = 1;
            periods.rows[0].length = 10;
            periods.save(model.files);
            core::ModelFlags& flags = model.project.flags;
            flags.set(0, 0, 1); // layers by thickness
            flags.set(9, 4, 1); // FlowActive
            struct Cell {
                int a, b;
            };
            for (const auto [a, b] :
                 {Cell{2, 11}, {9, 0}, {9, 1}, {9, 2}, {9, 3}, {1, 7}, {2, 1}, {1, 6}}) {
                flags.mark_defined(a, b);
            }
            core::ArrayStore store(model.files, model.project);
            store.write_array(flow_boundaries, 1, 1, std::vector<float>(6, 1));
            store.write_array(permeability, 1, 1, std::vector<float>(6, 1E-12F));
            store.write_array(property_zones, 1, 1, std::vector<float>(6, 1));
            model.project.flags.mark_edited();
        });
    }

    // A program of the program folder.
    std::filesystem::path program(const std::string& name, const std::string& lines) {
        const auto file = folder.write("program/" + name, "#!/bin/sh\n" + lines + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }

    // Runs the event loop until it is true; false after ten seconds.
    static bool becomes_true(const std::function<bool()>& test) {
        return QTest::qWaitFor(test, 10000);
    }

    static constexpr int flow_boundaries = 5, permeability = 1401, property_zones = 1403;
};

} // namespace support
