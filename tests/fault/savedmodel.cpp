#include "fault/savedmodel.h"

#include <fmt/format.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

std::string difference(const Contents& found, const Contents& wanted) {
    std::string names;
    for (const auto& [name, what] : found) {
        const auto other = wanted.find(name);
        if (other == wanted.end() || other->second != what) {
            names += (other == wanted.end() ? " +" : " !") + name;
        }
    }
    for (const auto& [name, what] : wanted) {
        names += found.contains(name) ? "" : " -" + name;
    }
    return names;
}

} // namespace

SavedModel::SavedModel(const Saving& saving) : saving_(saving) {
    make_old_state();
    old_ = now();
    calls_ = require(run(), 0, saving_.command).calls;
    after_ = box_.all();
    new_ = now();
    require(run(), 0, saving_.command);
    if (const std::string names = difference(box_.all(), after_); !names.empty()) {
        throw std::runtime_error(saving_.command + " does not write the same again:" + names);
    }
}

Outcome SavedModel::require(const Outcome& outcome, int status, const std::string& line) const {
    if (outcome.status != status) {
        throw std::runtime_error(
            fmt::format("{}: status {}, {}", line, outcome.status, outcome.err));
    }
    return outcome;
}

void SavedModel::make_old_state() {
    std::istringstream lines(saving_.setup);
    for (std::string line; std::getline(lines, line);) {
        require(box_.run(line, layer_of_ones), 0, line);
    }
    if (saving_.linked) {
        for (const std::string name : {"m.td1", "m.por"}) {
            fs::rename(box_.path("model/" + name), box_.path("elsewhere/" + name));
            fs::create_symlink("../elsewhere/" + name, box_.path("model/" + name));
        }
    }
    if (saving_.apart) {
        box_.set_apart();
    }
    for (const auto& file : fs::directory_iterator(box_.path("model"))) {
        fs::permissions(file, fs::perms(0640)); // not what a new file gets
    }
    before_ = box_.all();
}

Outcome SavedModel::run(const std::string& plan, Counted counted) {
    box_.put(before_);
    return box_.run(saving_.command, saving_.input, plan, counted);
}

Outcome SavedModel::run_next(const std::string& plan) {
    return box_.run(saving_.next.empty() ? "project show " + saving_.model : saving_.next, "",
                    plan);
}

bool SavedModel::was_there() const {
    return old_.contains("model/" + saving_.model.substr(1));
}

std::string SavedModel::compared(const Contents& model) const {
    return fmt::format("\n  against old:{}\n  against new:{}", difference(model, old_),
                       difference(model, new_));
}

std::string SavedModel::fault_outside() {
    const bool model_is_new = is_new(now());
    const auto is_in = [](const Contents& state, const auto& file) {
        const auto found = state.find(file.first);
        return found != state.end() && found->second == file.second;
    };
    bool strays = false;
    for (const auto& file : box_.all()) {
        const std::string& name = file.first;
        const bool of_model = name.starts_with("model/") || name.starts_with("elsewhere/");
        if (of_model || is_in(before_, file)) {
            continue;
        }
        if (is_in(after_, file)) {
            if (!model_is_new) {
                return "a new file beside the old model: " + name;
            }
        } else if (after_.contains(name)) {
            return "half a file " + name;
        } else {
            strays = true;
        }
    }
    if (strays) {
        box_.run(saving_.command, saving_.input);
    }
    const std::string names = strays ? difference(box_.all(), after_) : "";
    return names.empty() ? "" : "after another run:" + names;
}
