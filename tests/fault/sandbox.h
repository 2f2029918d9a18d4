// A folder in which td runs on a disk that fails as planned; see faultlib.cpp for the plans.
#pragma once

#include "support/tempfolder.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

// Everything below a folder: name from that folder on, then what it is, its mode and its bytes.
using Contents = std::map<std::string, std::string>;

struct Outcome {
    int status = 0; // of the program; minus the signal that ended it
    std::string out, err;
    std::vector<std::string> calls; // what was counted; "!" leads a call that was struck
};

enum class Counted { changes, reads };

class Sandbox {
public:
    // Makes the folders model, elsewhere (what links of the model lead to), install and user
    // (settings).
    Sandbox();

    // A command line of td: words separated by blanks, "@" for the model's folder and "%" for the
    // sandbox, each with a slash behind it.
    Outcome run(const std::string& line, const std::string& input = "",
                const std::string& plan = "", Counted counted = Counted::changes) const;

    // The same of another program.
    Outcome run_program(const std::string& program, const std::string& arguments,
                        const std::string& plan) const;

    // Puts the whole sandbox back to what it was.
    void put(const Contents& contents) const;
    Contents all() const;
    // The files that a unit of work changes together: those of the model, also behind links.
    Contents model() const;

    std::filesystem::path path(const std::string& name) const { return root_ / name; }

    // From now on every folder is a file system of its own.
    void set_apart() { apart_ = true; }
    // From now on the file system knows no locks.
    void set_without_locks() { without_locks_ = true; }

private:
    Outcome run_words(std::vector<std::string> words, const std::string& input,
                      const std::string& plan, Counted counted) const;
    std::vector<std::string> words_of(const std::string& program, const std::string& line) const;
    std::vector<std::string> environment(const std::string& plan, Counted counted) const;

    support::TempFolder folder_;
    std::filesystem::path root_;
    bool apart_ = false, without_locks_ = false;
};
