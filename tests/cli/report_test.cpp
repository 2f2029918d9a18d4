// The error report, and the file to which failures are appended.
#include "tdtest.h"

#include "base/textfile.h"

#include <chrono>
#include <ctime>
#include <regex>

namespace {

class Report : public TdTest {
protected:
    // The same command in a program folder inside the model's, on a day of its own.
    Outcome run_in(const std::string& program_folder, const std::string& line) {
        std::istringstream in;
        std::ostringstream out, err;
        const td::Surroundings surroundings{
            [] { return std::chrono::system_clock::time_point(std::chrono::hours(24 * 365)); },
            true, folder.path() / program_folder};
        const int status = td::run_program(words_of(line), in, out, err, surroundings);
        return {status, out.str(), err.str()};
    }
};

const std::string needed = "report --number 9 --text 'Overflow in x' --module Grid "
                           "--procedure read_array --line 12 ";

TEST_F(Report, without_a_file_the_text_goes_to_standard_output) {
    const std::string text = run(needed + "--call '[Grid] A(n)' --arg n=1 --arg s=a=b "
                                          "--call '[Grid] B()' --comment 'Hello there'")
                                 .out;
    const std::string rule = std::string(70, '-') + "\r\n";
    const std::regex form(
        rule + "          E R R O R P R O T O K O L L from ErrorPartner\r\n" + rule +
        "TERVEX DESK\r\n          Error-No\\.:\t9\r\n          Module:\tGrid\r\n"
        "          Procedure:\tread_array\r\n          Line-No\\.:\t12\r\n"
        "          Overflow in x \\(9\\)\r\n"
        "Datum/Uhrzeit:\t\\d{4}-\\d\\d-\\d\\d / \\d\\d:\\d\\d:\\d\\d\r\n" +
        rule + "Hello there\r\n" + rule +
        "SYSTEMINFO:\r\nPlattform:\tLinux\r\nVersion:\t\\d+\\.\\d+\r\nBuild:\t\\d+\r\n" + rule +
        "\\d\\d:\\d\\d:\\d\\d \\[Grid\\] A\\(n\\)\r\n\tn:1\r\n\ts:a=b\r\n"
        "\\d\\d:\\d\\d:\\d\\d \\[Grid\\] B\\(\\)\r\n");
    EXPECT_TRUE(std::regex_match(text, form)) << text;
    EXPECT_NE(run(needed).out.find("\r\nTervex Desk - Application error! \r\nGo on with 'Retry', "
                                   "then 'Resume Next', or finally 'Leave Procedure'. \r\n"
                                   "Hopefully you do not need to 'End TD'. \r\nPlease send"),
              std::string::npos);
}

TEST_F(Report, a_file_is_replaced_only_when_the_user_says_so) {
    const std::string told =
        "Tervex Desk: The error protocol has been written in file '@r.ERR' !\n";
    const std::string save = needed + "--out @r.ERR";
    expect({{save, done("", told)},
            {save, refused("Tervex Desk: File exist '@r.ERR' overwrite ?")},
            {save + " --no", refused("")},
            {save + " --yes", done("", told)},
            {save + "/below", done()}});
    EXPECT_TRUE(folder.read("r.ERR").starts_with(std::string(70, '-') + "\r\n"));
}

TEST_F(Report, what_belongs_nowhere_is_wrong_usage) {
    expect({{needed + "--arg n=1 --call P", wrong_usage("td report: --arg stands before --call")},
            {"report --number 9", wrong_usage("td report: --text is required")},
            {needed + "--call P --arg n", wrong_usage("\"n\" has no \"=\"")}});
}

TEST_F(Report, a_run_time_failure_is_appended_to_the_file_in_the_program_folder) {
    std::filesystem::create_directory(folder.path() / "bin");
    const std::string line = "array read @gone.td1 6 --layer 2";
    const Outcome expected = failure(in_folder("the model does not exist (@gone.td1)"));
    EXPECT_EQ(run_in("bin", line), expected);
    const std::string kept = folder.read("bin/td.EPT");
    const std::string told = base::to_utf8(kept);
    for (const std::string part :
         {"          Error-No.:\t3\r\n          Module:\ttd\r\n          Procedure:\tarray "
          "read\r\n",
          "          the model does not exist (@gone.td1) (3)\r\n", "Datum/Uhrzeit:\t1971-01-0",
          "[td] array read\r\n\tMODEL:@gone.td1\r\n\tN:6\r\n"
          "\t--layer:2\r\n"}) {
        EXPECT_NE(told.find(in_folder(part)), std::string::npos) << part << told;
    }
    EXPECT_EQ(run_in("bin", line), expected);
    EXPECT_EQ(folder.read("bin/td.EPT"), kept + kept);
    EXPECT_EQ(run_in("bin", "grid sow").status, td::wrong_usage);
    EXPECT_EQ(run_in("bin", "open @m.txt").status, td::refused);
    EXPECT_EQ(folder.read("bin/td.EPT"), kept + kept);
    EXPECT_EQ(run_in("none", line), expected); // no folder there: that of the user's data
    EXPECT_EQ(user.read("tervexdesk/td.EPT"), kept);
    EXPECT_EQ(run(line), expected); // without surroundings nothing is kept
    EXPECT_EQ(folder.read("bin/td.EPT"), kept + kept);
}

} // namespace
