// A command that saves a model, and the two states that it may leave behind.
#pragma once

#include "fault/sandbox.h"
#include "fault/savings.h"

#include <string>
#include <vector>

class SavedModel {
public:
    // Makes the old state and finds the new one by a run without faults; std::runtime_error when a
    // command does not do as it should.
    explicit SavedModel(const Saving& saving);

    // What a run without faults counts.
    const std::vector<std::string>& calls() const { return calls_; }
    std::vector<std::string> reads() { return run("", Counted::reads).calls; }

    // The command on the old state.
    Outcome run(const std::string& plan = "", Counted counted = Counted::changes);
    // The next command on what it has left.
    Outcome run_next(const std::string& plan = "");

    // The model as it is now, and how it compares.
    Contents now() const { return box_.model(); }
    bool is_old(const Contents& model) const { return model == old_; }
    bool is_new(const Contents& model) const { return model == new_; }
    bool was_there() const;
    // The names that differ from the old and from the new state.
    std::string compared(const Contents& model) const;

    // Files of the program and of the user are each old or new as well, and old as long as the
    // model is; a temporary one vanishes when the command runs again. Tells what is wrong, or
    // nothing.
    std::string fault_outside();

    std::string folder() const { return box_.path("").string(); }

private:
    Outcome require(const Outcome& outcome, int status, const std::string& line) const;
    void make_old_state();

    Saving saving_;
    Sandbox box_;
    Contents before_, after_; // the whole sandbox
    Contents old_, new_;      // the model in it
    std::vector<std::string> calls_;
};
