// Commands of `td`, run in process on a folder of their own.
//
// A command is one line: words separated by blanks, 'words in quotes' as they stand, "@" for the
// folder. After every command the fixture looks at the whole folder: no hidden folder stays behind,
// and a command that failed has changed nothing.
#pragma once

#include "base/textfile.h"
#include "support/tempfolder.h"
#include "td/command.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

struct Outcome {
    int status = 0;
    std::string out, err;
    bool operator==(const Outcome&) const = default;
};

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << "status " << outcome.status << "\n--- out\n"
         << outcome.out << "--- err\n"
         << outcome.err;
}

inline Outcome done(const std::string& out = "", const std::string& err = "") {
    return {td::done, out, err};
}
// The line on standard error comes without its line end.
inline Outcome refused(const std::string& err) {
    return {td::refused, "", err.empty() ? "" : err + "\n"};
}
inline Outcome wrong_usage(const std::string& err) {
    return {td::wrong_usage, "", err + "\n"};
}
inline Outcome failure(const std::string& err) {
    return {td::run_time_failure, "", "error: " + err + "\n"};
}

// A command line, what must come of it, and its standard input.
struct Case {
    std::string line;
    Outcome expected;
    std::string input = "";
};

class TdTest : public testing::Test {
protected:
    using Files = std::map<std::string, std::string>;

    // The user's own folders are moved away for the time of a test.
    TdTest() {
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
            const char* value = std::getenv(name);
            saved_.emplace_back(name, value == nullptr ? "" : value);
            ::setenv(name, user.path().c_str(), 1);
        }
    }
    ~TdTest() override {
        for (const auto& [name, value] : saved_) {
            value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
        }
    }

    // `text` with the folder in place of "@".
    std::string in_folder(std::string text) const {
        for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos;) {
            text.replace(at, 1, folder.path().string() + "/");
        }
        return text;
    }

    std::vector<std::string> words_of(const std::string& line) const {
        std::vector<std::string> words;
        std::string word;
        bool open = false, quoted = false;
        for (const char c : line + " ") {
            if (c == '\'') {
                quoted = !quoted;
                open = true;
            } else if (c == ' ' && !quoted) {
                if (open) {
                    words.push_back(in_folder(word));
                }
                word.clear();
                open = false;
            } else {
                word += c;
                open = true;
            }
        }
        return words;
    }

    // A command that may fail half-way: only the hidden folder is looked for.
    Outcome run_freely(const std::string& line, const std::string& input = "") {
        std::istringstream in(input);
        std::ostringstream out, err;
        const int status = td::run_program(words_of(line), in, out, err);
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder.path())) {
            EXPECT_NE(file.path().filename().string().substr(0, 1), ".") << line << file.path();
        }
        return {status, out.str(), err.str()};
    }

    Outcome run(const std::string& line, const std::string& input = "") {
        const Files before = files();
        const Outcome outcome = run_freely(line, input);
        EXPECT_TRUE(outcome.status == td::done || files() == before) << line << ": changed files";
        return outcome;
    }

    // Commands that prepare the case, one a line; their messages do not matter.
    void prepare(const std::string& lines) {
        std::istringstream text(lines);
        for (std::string line; std::getline(text, line);) {
            const Outcome outcome = run(line);
            EXPECT_EQ(outcome.status, td::done) << line << ": " << outcome.err;
        }
    }

    // "@" stands for the folder in what is expected, too.
    void expect(std::initializer_list<Case> cases) {
        for (const Case& c : cases) {
            const Outcome expected{c.expected.status, in_folder(c.expected.out),
                                   in_folder(c.expected.err)};
            EXPECT_EQ(run(c.line, c.input), expected) << c.line;
        }
    }

    // A new model of 3 columns, 2 rows and 2 layers; `more` are options of `grid set`.
    void make_model(const std::string& more = "--layers 2") {
        prepare("new @m.td1 --yes\n"
                "grid set @m.td1 --columns 3 --rows 2 --finish " +
                more);
    }
    // The same, complete, with flow only.
    void make_complete_model(const std::string& more = "--layers 2") {
        make_model(more);
        for (const std::string array : {"1403", "5"}) {
            prepare("array create @m.td1 " + array + " --default 1");
            EXPECT_EQ(run("array write @m.td1 " + array + " --define", "1 1 1 1 1 1"), done());
        }
        prepare("type set @m.td1 --flow 1\n"
                "coupling set @m.td1\n"
                "info-results set @m.td1\n"
                "solver set @m.td1 bicgstab\n"
                "rock set @m.td1 --yes\n"
                "periods set @m.td1 --unit 5");
    }

    Files files() const {
        Files found;
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder.path())) {
            found[file.path().string()] =
                file.is_regular_file() ? base::read_bytes(file.path()) : "(folder)";
        }
        return found;
    }

    // The cell of the flags as `flags show` prints it.
    std::string flag(const std::string& a_b) {
        const std::string record = run("flags show @m.td1 " + a_b).out;
        return record.substr(record.rfind('\t') + 1, record.size() - record.rfind('\t') - 2);
    }

    support::TempFolder folder, user;

private:
    std::vector<std::pair<std::string, std::string>> saved_;
};
