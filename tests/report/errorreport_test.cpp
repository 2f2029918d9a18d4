#include "report/errorreport.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/textfile.h"
#include "report/attempt.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <ctime>

namespace report {
namespace {

namespace fs = std::filesystem;

// Always the third of February 2021, five past four.
Time fixed() {
    std::tm parts{};
    parts.tm_year = 121;
    parts.tm_mon = 1;
    parts.tm_mday = 3;
    parts.tm_hour = 4;
    parts.tm_min = 5;
    parts.tm_sec = 6;
    parts.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&parts));
}

const ProgInfo program{"Tervex Desk", "td", {1, 2, 3}};

std::vector<std::string> lines_of(const CallHistory& calls) {
    return {calls.Call_Stack().begin(), calls.Call_Stack().end()};
}

// The report on a failure: its fields, a comment of two lines, the system, the calls.
TEST(ErrorReport, the_report_has_its_frame_fields_comment_system_and_calls) {
    CallHistory calls(fixed);
    calls.CallStack("[Explicit_Implicit] Private Sub optFlowTerm_Click(Index As Integer)");
    calls.CallStackParam("Index", std::string("1"));
    const std::string rule(70, '-');
    const std::string text = report_text(program,
                                         {9,
                                          "Gr\xC3\xB6\xC3\x9F"
                                          "e",
                                          "Mod", "Proc", 4},
                                         "one\ntwo", {"Linux", {6, 1, 18}}, fixed(), calls);
    EXPECT_EQ(base::split_lines(text),
              (std::vector<std::string_view>{
                  rule,
                  "          E R R O R P R O T O K O L L from ErrorPartner",
                  rule,
                  "TERVEX DESK",
                  "          Error-No.:\t9",
                  "          Module:\tMod",
                  "          Procedure:\tProc",
                  "          Line-No.:\t4",
                  "          Gr\xC3\xB6\xC3\x9F"
                  "e (9)",
                  "Datum/Uhrzeit:\t2021-02-03 / 04:05:06",
                  rule,
                  "one",
                  "two",
                  rule,
                  "SYSTEMINFO:",
                  "Plattform:\tLinux",
                  "Version:\t6.1",
                  "Build:\t18",
                  rule,
                  "04:05:06 [Explicit_Implicit] Private Sub optFlowTerm_Click(Index As Integer)",
                  "\tIndex:1"}));
    std::size_t ends = 0;
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; ++at, ++ends) {
        EXPECT_EQ(text[at - 1], '\r');
    }
    EXPECT_EQ(ends, 21U);
    EXPECT_TRUE(text.ends_with("\r\n"));
}

TEST(ErrorReport, title_and_versions) {
    EXPECT_EQ(report_title(program), "Tervex Desk  V1.2.3 - Error Report");
    EXPECT_EQ(version_numbers("6.1.0-18-amd64"), (std::array{6, 1, 0}));
    EXPECT_EQ(version_numbers("5.15-rc"), (std::array{5, 15, 0}));
    EXPECT_EQ(version_numbers(""), (std::array{0, 0, 0}));
    EXPECT_EQ(version_numbers("99999999999.1"), (std::array{0, 0, 0}));
}

TEST(ErrorReport, saving_asks_before_it_replaces_and_keeps_silent_when_it_fails) {
    const support::TempFolder folder;
    const fs::path file = folder.path() / "td.ERR";
    const std::string told =
        "The error protocol has been written in file '" + file.string() + "' !";
    const std::string asked = "File exist '" + file.string() + "' overwrite ?";
    support::ScriptedUser user;
    user.expect_message("Tervex Desk", told);
    EXPECT_EQ(save_report(file, "\xC3\xB6\r\n", user), Saved::done);
    user.expect_question("Tervex Desk", asked, base::Answer::no);
    EXPECT_EQ(save_report(file, "new", user), Saved::declined);
    EXPECT_EQ(folder.read("td.ERR"), "\xF6\r\n");
    user.expect_question("Tervex Desk", asked, base::Answer::yes);
    user.expect_message("Tervex Desk", told);
    EXPECT_EQ(save_report(file, "new", user), Saved::done);
    EXPECT_EQ(folder.read("td.ERR"), "new");
    EXPECT_EQ(save_report(file / "below", "new", user), Saved::failed);
}

TEST(CallHistory, values_are_shown_by_their_kind) {
    CallHistory calls(fixed);
    calls.CallStack("P");
    for (const ParameterValue& value :
         {ParameterValue(ValueKind::array), ParameterValue(ValueKind::null),
          ParameterValue(ValueKind::empty), ParameterValue(ValueKind::nothing),
          ParameterValue(ObjectValue{"Form"}), ParameterValue("a:b")}) {
        calls.CallStackParam("v", value);
    }
    EXPECT_EQ(lines_of(calls),
              (std::vector<std::string>{"04:05:06 P", "\tv:[ARRAY]", "\tv:[NULL]", "\tv:[EMPTY]",
                                        "\tv:[NOTHING]", "\tv:[OBJECT:Form]", "\tv:a:b"}));
}

TEST(CallHistory, keeps_the_last_thousand_lines) {
    CallHistory calls(fixed);
    for (int i = 1; i <= 1003; ++i) {
        calls.CallStack("P(" + std::to_string(i) + ")");
    }
    EXPECT_EQ(calls.Call_Stack().size(), 1000U);
    EXPECT_EQ(calls.Call_Stack().front(), "04:05:06 P(4)");
    EXPECT_EQ(calls.step_of("P(1)"), 1003);
}

TEST(CallHistory, a_signature_names_module_and_procedure) {
    const auto parts = [](std::string_view signature) {
        const Procedure procedure = procedure_of(signature);
        return procedure.module + "|" + procedure.name;
    };
    EXPECT_EQ(parts("[M] Private Sub opt_Click(Index As Integer)"), "M|opt_Click");
    EXPECT_EQ(parts("[M] Function F() As Long"), "M|F");
    EXPECT_EQ(parts("CreateTervexNml(PERM)"), "|CreateTervexNml");
    EXPECT_EQ(parts("[td] array read"), "td|array read");
    EXPECT_EQ(parts("[open"), "|[open");
}

// Keeps what `attempt` tells, as the programs do.
class LoggedUser : public support::ScriptedUser {
public:
    explicit LoggedUser(FailureLog& log) : log_(log) {}
    void called(std::string_view signature) override { log_.calls().CallStack(signature); }
    base::Reaction failure(const base::Failure& failure) override {
        log_.append(failure, 3);
        return ScriptedUser::failure(failure);
    }

private:
    FailureLog& log_;
};

TEST(FailureLog, every_failure_is_appended_with_its_procedure_and_step) {
    const support::TempFolder folder;
    FailureLog log(program, fixed);
    log.set_folders({folder.path() / "gone", folder.path() / "made/data"});
    LoggedUser user(log);
    log.enter("[td] run");
    attempt(user, "[Writer] Block(GRID)", [] {});
    user.expect_failure("short", base::Reaction::next);
    attempt(user, "[Writer] Block(PERM)", [] { throw base::FileFailure("short", "m.per"); });
    log.append({"late", {}}, 3);

    EXPECT_EQ(folder.names(), std::vector<std::string>{"made"});
    const std::string kept = folder.read("made/data/td.EPT");
    const std::size_t second = kept.find("TERVEX DESK", kept.find("TERVEX DESK") + 1);
    EXPECT_NE(kept.find("          Module:\tWriter\r\n          Procedure:\tBlock\r\n"
                        "          Line-No.:\t2\r\n          short (m.per) (3)\r\n"),
              std::string::npos)
        << kept;
    EXPECT_NE(kept.find("          Procedure:\trun\r\n          Line-No.:\t1\r\n"
                        "          late (3)\r\n",
                        second),
              std::string::npos)
        << kept;
    EXPECT_TRUE(kept.ends_with("\r\n04:05:06 [td] run\r\n04:05:06 [Writer] Block(GRID)\r\n"
                               "04:05:06 [Writer] Block(PERM)\r\n"));
}

TEST(FailureLog, what_cannot_be_written_is_lost_without_a_word) {
    const support::TempFolder folder;
    const fs::path file = folder.write("file", "");
    FailureLog log(program, fixed);
    log.append({"no folder", {}}, 3);
    log.set_folders({file, file / "below"});
    log.append({"no place", {}}, 3);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"file"});
}

TEST(ModelLog, lines_of_an_opened_model_and_of_an_unknown_case) {
    EXPECT_EQ(opened_line(fixed()), "Model opened: 2021-02-03 04:05:06");
    EXPECT_EQ(
        case_error("m", "f", "v"),
        (std::vector<std::string>{"module: m", "function: f", "case error", "case variable: v"}));
}

} // namespace
} // namespace report
