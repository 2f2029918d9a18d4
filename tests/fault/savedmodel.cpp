#include "fault/savedmodel.h"

#include <fmt/format.h>

#include <algorithm>
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
    states_ = {now()};
    calls_ = require(run(), 0, saving_.command).calls;
    after_ = box_.all();
    const Contents last = now();
    add_states_between();
    states_.push_back(last);
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

// Between two units of work no hidden folder is there. A command that writes a file of the program,
// too, can fail just there.
void SavedModel::add_states_between() {
    for (std::size_t i = 0; i + 1 < calls_.size(); ++i) {
        if (calls_[i].starts_with("rmdir")) {
            run(fmt::format("{}:kill", i + 2));
            states_.push_back(now());
        }
    }
    if (!saving_.may_end_like.empty()) {
        box_.put(before_);
        require(box_.run(saving_.may_end_like), 3, saving_.may_end_like);
        states_.push_back(now());
    }
}

Outcome SavedModel::run(const std::string& plan, Counted counted) {
    box_.put(before_);
    return box_.run(saving_.command, saving_.input, plan, counted);
}

Outcome SavedModel::run_next(const std::string& plan) {
    return box_.run("project show " + saving_.model, "", plan);
}

bool SavedModel::is_old(const Contents& model) const {
    return std::find(states_.begin(), states_.end() - 1, model) != states_.end() - 1;
}

bool SavedModel::was_there() const {
    return states_.front().contains("model/" + saving_.model.substr(1));
}

std::string SavedModel::compared(const Contents& model) const {
    return fmt::format("\n  against old:{}\n  against new:{}", difference(model, states_.front()),
                       difference(model, states_.back()));
}

std::string SavedModel::fault_outside() {
    bool strays = false;
    for (const auto& [name, content] : box_.all()) {
        const auto old_file = before_.find(name), new_file = after_.find(name);
        if (name.starts_with("model/") || name.starts_with("elsewhere/")) {
            continue;
        }
        if (new_file == after_.end()) {
            strays = true;
        } else if (content != new_file->second &&
                   (old_file == before_.end() || content != old_file->second)) {
            return "half a file " + name;
        }
    }
    if (strays) {
        box_.run(saving_.command, saving_.input);
    }
    const std::string names = strays ? difference(box_.all(), after_) : "";
    return names.empty() ? "" : "after another run:" + names;
}
