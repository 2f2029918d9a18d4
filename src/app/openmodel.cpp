#include "app/openmodel.h"

#include "app/predecessor.h"
#include "app/recentfiles.h"
#include "app/toolfiles.h"
#include "base/busy.h"
#include "base/textfile.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "sim/periods.h"
#include "sim/rockfile.h"
#include "sim/typfile.h"

#include <functional>
#include <utility>

namespace app {

namespace fs = std::filesystem;

namespace {

// A list that is missing, foreign or of the older form is written new at once.
void renew_points(core::ModelFiles& files) {
    const auto bytes = files.read_if(".pol");
    const grid::ReadPoints points = grid::read_points(bytes.value_or(""));
    if (!bytes || points.rewrite) {
        grid::Write_Monitoring_Points(points.list, files);
    }
}

Loaded read_model(const std::function<Loaded()>& load, const fs::path& shown,
                  base::Interaction& user) {
    const base::Busy hourglass(user);
    Loaded loaded = load();
    if (!loaded.workspace) {
        return loaded;
    }
    if (auto refusal = companions_refusal(*loaded.workspace, shown)) {
        return {std::nullopt, std::move(refusal)};
    }
    create_tool_files(loaded.workspace->files);
    renew_points(loaded.workspace->files);
    return loaded;
}

Loaded open_loaded(const std::function<Loaded()>& load, const fs::path& shown,
                   base::Interaction& user, const fs::path& user_folder,
                   std::optional<grid::Recovery> recovery = {}) {
    Loaded loaded = read_model(load, shown, user);
    if (!loaded.workspace) {
        return loaded;
    }
    Workspace& workspace = *loaded.workspace;
    if (!offer_conversion(workspace, user)) {
        return {};
    }
    if (recovery) {
        grid::end_cut_off_session(workspace.project, workspace.files, *recovery);
    }
    workspace.save();
    remember_model(workspace.Model_Path(), user_folder);
    return loaded;
}

} // namespace

std::optional<base::Refusal> companions_refusal(const Workspace& workspace, const fs::path& shown) {
    const core::ModelFiles& files = workspace.files;
    check_tool_files(files);
    static_cast<void>(files.read_if(".pol"));
    static_cast<void>(sim::PeriodTable::load(files));
    if (!grid::LayerFile::load(files, workspace.project.NZ())) {
        return base::Refusal{base::desk_title, shown.string() + " has no layer data for the grid."};
    }
    static_cast<void>(sim::TypFile::load(files));
    static_cast<void>(sim::RockFile::load(files));
    return std::nullopt;
}

Loaded open_model(const fs::path& path, base::Interaction& user, const fs::path& user_folder,
                  std::optional<grid::Recovery> recovery) {
    const std::string text = path.string();
    const std::string_view name = base::trimmed(text);
    if (name.empty()) {
        return {};
    }
    const auto load = [name] { return load_model(name, core::Access::write); };
    return open_loaded(load, name, user, user_folder, recovery);
}

Loaded open_files(core::ModelFiles files, const fs::path& shown, base::Interaction& user,
                  const fs::path& user_folder) {
    const auto load = [&] { return load_files(std::move(files), shown); };
    return open_loaded(load, shown, user, user_folder);
}

} // namespace app
