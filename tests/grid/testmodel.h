// A model of all defaults in a folder of its own.
#pragma once

#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/gridform.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <string>
#include <vector>

struct TestModel {
    support::TempFolder folder;
    core::Project project;
    core::ModelFiles files{folder.path() / "m.td1", core::Access::write};

    void define_mesh(int columns, int rows, int layers, const char* size = "1") {
        grid::Grid_Number form;
        form.load(project, files);
        form.set("txtLayers", fmt::to_string(layers));
        form.set("txtColumns", fmt::to_string(columns));
        form.set("txtRows", fmt::to_string(rows));
        form.set("txtColumnSize", size);
        form.set("txtRowSize", size);
        ASSERT_FALSE(form.check());
        form.save(project, files);
    }
};

inline std::string title_and_text(const std::optional<base::Refusal>& refusal) {
    return refusal ? refusal->title + ": " + refusal->text : "accepted";
}

inline std::string notice_of(const std::vector<core::Notice>& notices) {
    return notices.empty() ? "none" : notices.front().title + ": " + notices.front().text;
}
