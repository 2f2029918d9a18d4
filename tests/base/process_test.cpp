#include "base/process.h"

#include "support/failureof.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <csignal>

#include <unistd.h>

namespace {
using namespace base;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

class StartedProcess : public testing::Test {
protected:
    fs::path program(const std::string& name, const std::string& text) {
        const fs::path file = folder.write(name, text);
        fs::permissions(file, fs::perms::owner_all);
        return file;
    }
    Process start_script(const std::string& lines) {
        return Process::start(launch(program("script", "#!/bin/sh\n" + lines)));
    }
    Launch launch(const fs::path& file) { return {file, {}, folder.path(), output, false}; }

    void expect_failure(const Launch& launch, const std::string& what, const fs::path& file) {
        EXPECT_EQ(support::failure_of([&] { Process::start(launch); }, file), what);
    }

    const support::TempFolder folder;
    const fs::path output = folder.path() / "output";
    const std::function<bool()> never = [] { return false; };
};

TEST_F(StartedProcess, gets_its_arguments_unharmed_and_its_folder) {
    fs::create_directory(folder.path() / "a folder");
    Launch call = launch(program("a 'program'", "#!/bin/sh\npwd\nprintf '<%s>' \"$@\" >&2\ncat\n"));
    call.arguments = {"two words", "\"quotes'", "", "$HOME `pwd`", "*", "line\nbreak", "ü"};
    call.folder = folder.path() / "a folder";
    EXPECT_EQ(Process::start(call).wait(never), 0);
    EXPECT_EQ(folder.read("output"),
              call.folder.string() + "\n<two words><\"quotes'><><$HOME `pwd`><*><line\nbreak><ü>");
}

TEST_F(StartedProcess, begins_its_output_anew_unless_it_is_to_append) {
    Launch call = launch(program("script", "#!/bin/sh\necho line\n"));
    for (const bool append : {false, false, true}) {
        call.append = append;
        EXPECT_EQ(Process::start(call).wait(never), 0);
    }
    EXPECT_EQ(folder.read("output"), "line\nline\n");
}

TEST_F(StartedProcess, has_an_exit_status) {
    EXPECT_EQ(start_script("exit 7\n").wait(never), 7);
    EXPECT_EQ(start_script("kill -9 $$\n").wait(never), 128 + 9);
}

TEST_F(StartedProcess, has_one_though_its_starter_was_told_to_ignore_the_ends_of_children) {
    ::signal(SIGCHLD, SIG_IGN);
    bool waited_too_long = false;
    const auto end = std::chrono::steady_clock::now() + 10s;
    EXPECT_EQ(start_script("exit 7\n").wait([&] {
        return waited_too_long = std::chrono::steady_clock::now() > end;
    }),
              7);
    EXPECT_FALSE(waited_too_long);
}

TEST_F(StartedProcess, that_cannot_be_is_a_failure) {
    const fs::path none = folder.path() / "none";
    const fs::path plain = folder.write("plain", "#!/bin/sh\n");
    const fs::path no_format = program("no format", "exit 0\n");
    expect_failure(launch(none), "cannot be started: No such file or directory", none);
    expect_failure(launch(plain), "cannot be started: Permission denied", plain);
    expect_failure(launch(folder.path()), "cannot be started: Is a directory", folder.path());
    expect_failure(launch(no_format), "cannot be started: Exec format error", no_format);
    Launch call = launch("/bin/true");
    call.folder = none;
    expect_failure(call, "cannot be entered: No such file or directory", none);
    call.folder = plain;
    expect_failure(call, "cannot be entered: Not a directory", plain);
    call = launch("/bin/true");
    call.output = none / "output";
    expect_failure(call, "cannot be written: No such file or directory", call.output);
}

TEST_F(StartedProcess, runs_on_in_a_session_of_its_own) {
    Process process = start_script("until [ -e go ]; do sleep 0.01; done\n");
    EXPECT_EQ(::getsid(process.id()), process.id());
    EXPECT_EQ(process.exit_status(), std::nullopt);
    folder.write("go", "");
    EXPECT_EQ(process.wait(never), 0);
}

// What the program does with an interrupt, its exit status, and what it has printed by then.
TEST_F(StartedProcess, is_stopped_cleanly_and_at_last_by_force) {
    const struct {
        std::string script;
        int status;
        std::string printed;
    } cases[] = {
        {"trap 'echo saved; exit 0' INT\necho\nwhile :; do sleep 0.01; done\n", 0, "\nsaved\n"},
        {"echo\nexec sleep 60\n", 128 + 2, "\n"},
        {"trap '' INT\necho\nexec sleep 60\n", 128 + 15, "\n"},
        {"trap '' INT TERM\necho\nexec sleep 60\n", 128 + 9, "\n"},
    };
    for (const auto& c : cases) {
        Process process = start_script(c.script);
        const auto stop = [&] { return fs::file_size(output) > 0; };
        EXPECT_EQ(process.wait(stop, 300ms), std::nullopt) << c.script;
        EXPECT_EQ(process.exit_status(), c.status) << c.script;
        EXPECT_EQ(folder.read("output"), c.printed) << c.script;
    }
}

} // namespace
