// Damaged files of every form: whatever one holds, each command that reads it ends, says which file
// is at fault, and leaves the model as it was.
#include "core/modelfiles.h"
#include "core/zonefile.h"
#include "support/tempfolder.h"
#include "td/command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <sstream>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

// A file of a model and the commands that read it, one a line. "@" stands for the model's folder.
struct Form {
    const char* file;
    const char* commands;
    // The fault may show in another file only, one that the damaged one no longer fits.
    bool blames_others = false;
};

constexpr Form forms[] = {
    {"m.td1",
     "open @m.td1 --yes\nsave @m.td1\nproject show @m.td1\nflags show @m.td1\nmenu @m.td1\n"
     "grid show @m.td1 --edges\ngrid set @m.td1 --columns 4\ngrid size @m.td1 --column 3=2\n"
     "layers show @m.td1\nlayers set @m.td1 --type 1=1\narray list @m.td1\n"
     "array read @m.td1 1401\narray create @m.td1 1402\narray copy-period @m.td1 1401 1 3\n"
     "rock set @m.td1 --zones 3 --yes\nwells @m.td1\ncheck @m.td1 --all\n"
     "save-as @m.td1 @copy.td1 --yes\ncreate-input @m.td1 --install @",
     true},
    {"m.xy",
     "open @m.td1\ngrid show @m.td1 --edges\ngrid size @m.td1 --column 3=5\narray read @m.td1 "
     "1401\n"
     "wells @m.td1\ncreate-input @m.td1 --install @",
     true},
    {"m.l", "open @m.td1\nlayers show @m.td1\nlayers set @m.td1 --thickness all=3\n"
            "create-input @m.td1 --install @"},
    {"m.pol", "open @m.td1\npoints list @m.td1\npoints set @m.td1 7 --x 5\n"
              "observations list @m.td1\nobservations add @m.td1 B2\n"
              "create-input @m.td1 --install @"},
    {"m.typ", "open @m.td1\ntype show @m.td1\ntype set @m.td1 --heat 0\ncoupling show @m.td1\n"
              "coupling set @m.td1 --full 1\ninfo-results show @m.td1\n"
              "info-results set @m.td1 --vtk 1\nsolver show @m.td1\nsolver set @m.td1 bicgstab\n"
              "reference-density show @m.td1\nreference-density set @m.td1 999\n"
              "heat set @m.td1 --basal 0.07\ncreate-input @m.td1 --install @"},
    {"m.izv", "note get @m.td1 PICARD Chi\nnote set @m.td1 PICARD Chi 0.4\n"
              "outer-iteration show @m.td1\nouter-iteration set @m.td1 --chi 0.3\n"
              "boxmodel show @m.td1\nboxmodel check @m.td1\nboxmodel set @m.td1 --zones 2\n"
              "coupling set @m.td1 --water Density=997\ncreate-input @m.td1 --install @"},
    {"m.trn", "open @m.td1\nperiods show @m.td1 --all\nperiods set @m.td1 --unit 4\n"
              "periods save @m.td1 @saved.tpr\nwells @m.td1\ncreate-input @m.td1 --install @"},
    {"m.mco", "open @m.td1\nrock show @m.td1\nrock set @m.td1 --zones 3 --porosity 3=0.1 --yes\n"
              "heat set @m.td1 --capacity 1=2.2\nrock clear @m.td1 --yes\ncheck @m.td1 --all\n"
              "create-input @m.td1 --install @"},
    {"m.ttc", "tracer show @m.td1\ntracer set @m.td1 --tracer 2 --active 1\n"
              "reinjection show @m.td1\ncreate-input @m.td1 --install @"},
    {"m.tma", "dispersion show @m.td1\ndispersion set @m.td1 --diffusion 0.6\n"
              "create-input @m.td1 --install @"},
    {"m.sco", "reinjection show @m.td1\nreinjection set @m.td1 --well 1 --species 1 --value 2\n"
              "create-input @m.td1 --install @"},
    {"m.upl", "open @m.td1"},
    {"m.ppl", "open @m.td1"},
    {"m.per", "array info @m.td1 1401\narray read @m.td1 1401 --period 2 --layer 2\n"
              "array get @m.td1 1401 3 2 --period 2\narray write @m.td1 1401 --period 5\n"
              "array copy-period @m.td1 1401 1 2 --yes\narray copy-period @m.td1 1401 2 7 --yes\n"
              "rock set @m.td1 --yes\ncheck @m.td1 --all\ncreate-input @m.td1 --install @"},
    {"m.mds", "array info @m.td1 1403\nrock set @m.td1 --yes\ncheck @m.td1 --all\n"
              "create-input @m.td1 --install @"},
    {"m.ibd", "array read @m.td1 5\ncheck @m.td1\ncreate-input @m.td1 --install @"},
    {"m.wel", "wells @m.td1\nreinjection show @m.td1\ncreate-input @m.td1 --install @"},
    {"m.299", "wells @m.td1\ncreate-input @m.td1 --install @"},
    {"m.top", "array read @m.td1 3 --layer 2\narray write @m.td1 3 --layer 2"},
    {"m.pez", "array copy-period @m.td1 1401 1 2 --yes\narray copy-period @m.td1 1401 2 9 --yes"},
    {"saved.tpr", "periods load @m.td1 @saved.tpr"},
    {"points.bor", "points import @m.td1 @points.bor"},
    {"values.obs", "observations import @m.td1 @values.obs"},
    {"other.mco", "rock load @m.td1 @other.mco --yes\nheat load @m.td1 @other.mco"},
    {"layer.txt", "array write @m.td1 1401 --file @layer.txt"},
    {"td.ini", "setting get MODELPATH --install @\nsetting set MODELPATH x --install @"},
    {"BD5.0", "recent list --user @\nrecent add @m.td1 --user @"},
    {"old.bd5", "open @old.bd5 --yes\nproject show @old.bd5", true},
    {"old.lea", "open @old.bd5 --yes\narray list @old.bd5"},
};

using Files = std::map<std::string, std::string>;

struct Outcome {
    int status;
    std::string out, err;
};

// A small model with a file of every form, made once; each test damages one of them.
class BadFiles : public testing::Test {
protected:
    static inline support::TempFolder* folder_ = nullptr;
    static inline std::map<std::string, std::size_t> turns_;
    static inline Files good_;

    static void SetUpTestSuite() {
        // In memory, where there is such a folder: hundreds of commands flush their files.
        if (fs::is_directory("/dev/shm")) {
            ::setenv("TMPDIR", "/dev/shm", 1);
        }
        folder_ = new support::TempFolder;
        ::setenv("XDG_CONFIG_HOME", folder_->path().c_str(), 1);
        make_model();
        good_ = files();
    }
    static void TearDownTestSuite() {
        delete folder_;
        folder_ = nullptr;
    }

    static fs::path path(std::string_view name) { return folder_->path() / name; }

    // Runs a line of words; "@" at the beginning of one is the model's folder.
    static Outcome td(const std::string& line, const std::string& input = "") {
        std::vector<std::string> words;
        std::istringstream text(line);
        for (std::string word; text >> word;) {
            words.push_back(word[0] == '@' ? path(word.substr(1)).string() : word);
        }
        std::istringstream in(input);
        std::ostringstream out, err;
        const int status = ::td::run_program(words, in, out, err);
        return {status, out.str(), err.str()};
    }

    static void done(const std::string& line, const std::string& input = "") {
        const Outcome outcome = td(line, input);
        EXPECT_EQ(outcome.status, ::td::done) << line << ": " << outcome.err;
    }

    static Files files() {
        Files found;
        for (const auto& entry : fs::directory_iterator(folder_->path())) {
            const std::string name = entry.path().filename().string();
            found[name] = entry.is_regular_file() ? folder_->read(name) : "no file";
        }
        return found;
    }

    static void restore() {
        for (const auto& [name, bytes] : files()) {
            if (!good_.contains(name) || bytes == "no file") {
                fs::remove_all(path(name));
            }
        }
        for (const auto& [name, bytes] : good_) {
            folder_->write(name, bytes);
        }
    }

    // One of the commands that read the damaged file, each in its turn, after `damage` has put that
    // file in its place.
    static void expect_handled(const Form& form, const std::function<void()>& damage,
                               const std::string& fault) {
        const std::string line = next_command(form);
        restore();
        fs::remove(path(form.file));
        damage();
        const Files before = files();
        const Outcome outcome = td(line, "1 2 3 4 5 6");
        const std::string where = line + " (" + form.file + ", " + fault + ")";
        ASSERT_TRUE(outcome.status >= 0 && outcome.status <= 3) << where;
        EXPECT_EQ(outcome.err.find("out of memory"), std::string::npos) << where;
        if (outcome.status == ::td::run_time_failure) {
            expect_blame(form, outcome.err, where);
        }
        if (outcome.status != ::td::done) {
            expect_unchanged(before, files(), line, where);
        }
    }

    static void expect_handled(const Form& form, const std::string& bytes,
                               const std::string& fault) {
        expect_handled(
            form, [&] { folder_->write(form.file, bytes); }, fault);
    }

private:
    static void make_model();

    static std::string next_command(const Form& form) {
        std::vector<std::string> lines;
        std::istringstream text(form.commands);
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        return lines[turns_[form.file]++ % lines.size()];
    }

    static void expect_blame(const Form& form, const std::string& err, const std::string& where) {
        const std::string named =
            form.blames_others ? folder_->path().string() + "/" : path(form.file).string() + ")";
        EXPECT_NE(err.find("error: "), std::string::npos) << where << ": " << err;
        EXPECT_NE(err.find("(" + named), std::string::npos) << where << ": " << err;
    }

    // What could not be completed of an input file stays, and the project file remembers it.
    static void expect_unchanged(Files before, Files after, const std::string& line,
                                 const std::string& where) {
        if (line.starts_with("create-input")) {
            for (const char* name : {"m.nml", "m.td1", "tervex.ctl"}) {
                before.erase(name);
                after.erase(name);
            }
        }
        for (const auto& [name, bytes] : after) {
            EXPECT_TRUE(before.contains(name)) << where << " left " << name;
            EXPECT_TRUE(before[name] == bytes) << where << " changed " << name;
        }
        EXPECT_EQ(before.size(), after.size()) << where;
    }
};

void BadFiles::make_model() {
    done("new @m.td1");
    done("grid set @m.td1 --layers 2 --columns 3 --column-size 10 --rows 2 --row-size 5 --finish");
    done("layers set @m.td1 --geometry thickness --thickness all=4");
    done("type set @m.td1 --flow 1 --heat 1 --transport 1 --continua 1");
    done("coupling set @m.td1 --full 1 --rock-temperature 1 --a0 800.0 --water Density=998.2");
    done("info-results set @m.td1 --level 2 --vtk 1");
    for (const char* layer : {"1", "2"}) {
        const std::string suffix = std::string(" --define --layer ") + layer;
        done("array write @m.td1 1403" + suffix, "1 1 2 2 1 1");
        done("array write @m.td1 5" + suffix, "-1 1 1 1 1 2");
        done("array write @m.td1 1405" + suffix, "-1 1 1 1 1 2");
        done("array write @m.td1 40" + suffix, "-1 1 1 1 1 1");
        done("array write @m.td1 3" + suffix, "9 8 7 6 5 4");
        done("array write @m.td1 11" + suffix, "0 0.1 0 0 0 -0.2");
        done("array write @m.td1 1406" + suffix, "0 1 2 0 0 0");
    }
    done("array write @m.td1 299", "11 12 13 14 15 16");
    done("rock set @m.td1 --zones 2 --porosity all=0.2 --permeability 2=1E-13 --yes");
    done("heat set @m.td1 --capacity all=2.1 --basal 0.06");
    done("array write @m.td1 1401 --period 2 --layer 2", "1 2 3 4 5 6");
    done("tracer set @m.td1 --tracer 1 --active 1 --concentration 2.5");
    done("dispersion set @m.td1 --diffusion 0.5");
    done("periods set @m.td1 --unit 5 --flow transient --period 1 --use 1 --length 2 --steps 10 "
         "--period 2 --use 1 --length 3 --steps 5");
    done("solver set @m.td1 bicgstab");
    done("outer-iteration set @m.td1 --active 1 --chi 0.5");
    done("boxmodel set @m.td1 --active 1 --zones 1,2 --density A=1 --aperture A=1E-4");
    done("points set @m.td1 1 --name B1 --active 1 --x 12 --y 3 --layer 1");
    done("observations add @m.td1 B1 --time 3 --head 7");
    done("reinjection set @m.td1 --well 1 --species 1 --value 1.5");
    {
        core::ModelFiles model(path("m.td1"), core::Access::write);
        core::Zone zone;
        zone.nodes = 3;
        zone.x = {0, 1, 9, 9};
        zone.y = {0, 1, 1, 4};
        core::ZoneFile(model, 2).write_zones(1, 1, 1501, {zone, zone});
        model.commit();
    }
    done("open @m.td1");
    fs::remove_all(path("tervexdesk"));
    done("periods save @m.td1 @saved.tpr");
    done("points export @m.td1 @points.bor");
    done("observations export @m.td1 @values.obs");
    fs::copy_file(path("m.mco"), path("other.mco"));
    folder_->write("layer.txt", "1 2 3\r\n4 5 6\r\n");
    done("setting set MODELPATH @models --install @");
    done("recent add @m.td1 --user @");
    done("array write @m.td1 9", "1E-5 1E-5 1E-4 1E-5 1E-5 1E-5");
    fs::rename(path("m.lea"), path("old.lea"));
    fs::copy_file(path("m.td1"), path("old.bd5"));
    fs::copy_file(path("m.l"), path("old.l"));
    fs::copy_file(path("m.xy"), path("old.xy"));
    done("check @m.td1");
    done("create-input @m.td1 --install @");
}

// About `count` places in a file of `size` bytes, its ends among them.
std::vector<std::size_t> spread(std::size_t size, std::size_t count) {
    std::vector<std::size_t> places;
    for (std::size_t at = 0; at < size; at += std::max<std::size_t>(1, size / count)) {
        places.push_back(at);
    }
    if (size > 0) {
        places.push_back(size - 1);
    }
    return places;
}

// Where the numbers of a text begin.
std::vector<std::size_t> numbers_of(const std::string& text) {
    constexpr const char* digits = "0123456789";
    std::vector<std::size_t> starts;
    for (std::size_t at = text.find_first_of(digits); at != std::string::npos;
         at = text.find_first_of(digits,
                                 std::min(text.find_first_not_of(digits, at), text.size()))) {
        starts.push_back(at);
    }
    return starts;
}

TEST_F(BadFiles, are_told_wherever_they_are_cut_off) {
    for (const Form& form : forms) {
        const std::string good = good_.at(form.file);
        for (const std::size_t size : spread(good.size(), 8)) {
            expect_handled(form, good.substr(0, size), "cut at " + std::to_string(size));
        }
    }
}

TEST_F(BadFiles, may_hold_anything) {
    std::mt19937 random(20);
    const auto noise = [&random](std::size_t size) {
        std::string bytes(size, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return char(random() & 0xFFU); });
        return bytes;
    };
    for (const Form& form : forms) {
        std::string spotted = good_.at(form.file);
        for (std::size_t at = 0; at < spotted.size(); at += 11) {
            spotted[at] = '\0';
        }
        for (const std::size_t size : {7U, 5000U}) {
            expect_handled(form, noise(size), "noise");
            expect_handled(form, good_.at(form.file).substr(0, size) + noise(size), "noisy end");
            expect_handled(form, spotted, "scattered NUL bytes");
        }
        expect_handled(form, std::string(9000, '\0'), "NUL bytes");
        expect_handled(form, std::string(9000, '\xFF'), "bytes 255");
        expect_handled(form, std::string(1 << 20, '7'), "a line of a megabyte");
    }
}

TEST_F(BadFiles, may_hold_absurd_numbers) {
    const std::string absurd[] = {"999999999999999999999", "-1", "0", "1E300", "32767", "x"};
    const std::string large[] = {"\xFF\xFF", "\xFF\x7F", "\xFF\xFF\x7F\x7F"};
    std::size_t turn = 0;
    for (const Form& form : forms) {
        const std::string good = good_.at(form.file);
        const std::vector<std::size_t> numbers = numbers_of(good);
        for (const std::size_t i : spread(numbers.size(), 8)) {
            const std::size_t end =
                std::min(good.find_first_not_of("0123456789", numbers[i]), good.size());
            const std::string& number = absurd[turn++ % std::size(absurd)];
            std::string bad = good;
            bad.replace(numbers[i], end - numbers[i], number);
            expect_handled(form, bad, number + " at " + std::to_string(numbers[i]));
        }
        for (const std::size_t at : spread(good.size(), 4)) {
            const std::string& bytes = large[turn++ % std::size(large)];
            std::string bad = good;
            bad.replace(at - at % 2, std::min(bytes.size(), bad.size() - at), bytes);
            expect_handled(form, bad, "large at " + std::to_string(at));
        }
    }
}

TEST_F(BadFiles, may_be_no_files_at_all) {
    for (const Form& form : forms) {
        expect_handled(
            form, [&] { fs::create_directories(path(form.file) / "inside"); }, "a folder");
        if (form.file[0] == 'm') { // of the model itself: an exchange file may come from a pipe
            expect_handled(
                form, [&] { EXPECT_EQ(::mkfifo(path(form.file).c_str(), 0600), 0); }, "a pipe");
        }
    }
}

// A file of tests/data/broken in the place of `file`; what the command says of it. "@" stands for
// the model's folder in both.
struct Broken {
    const char* name;
    const char* file;
    const char* command;
    const char* message;
};

constexpr Broken broken_files[] = {
    {"columns_cut.xy", "m.xy", "grid show @m.td1",
     "error: ends at line 5, where row height 2 of 2 was expected (@m.xy)"},
    {"columns_missing.xy", "m.xy", "array read @m.td1 1401",
     "error: ends at line 1, where the number of columns was expected (@m.xy)"},
    {"columns_forty_thousand.xy", "m.xy", "grid show @m.td1",
     "error: the number of columns in line 1 is 40000, where 1 to 32767 was expected (@m.xy)"},
    {"rows_word.xy", "m.xy", "grid size @m.td1 --column 1=5",
     "error: the number of rows in line 1 is 0, where 1 to 32767 was expected (@m.xy)"},
    {"columns_more_than_bytes.xy", "m.xy", "grid show @m.td1",
     "error: has 123 bytes behind the extents, too few for 30000 column widths and 2 row heights "
     "(@m.xy)"},
    {"layers_one_of_two.l", "m.l", "open @m.td1",
     "Tervex Desk: @m.td1 has no layer data for the grid."},
    {"thicknesses_cut.l", "m.l", "open @m.td1",
     "Tervex Desk: @m.td1 has no layer data for the grid."},
    {"lines_nineteen.typ", "m.typ", "coupling show @m.td1",
     "error: ends behind line 19, where line 20 of 20 (RHOF) was expected (@m.typ)"},
    {"empty.typ", "m.typ", "solver set @m.td1 plu",
     "error: ends behind line 0, where line 1 of 20 (KEY) was expected (@m.typ)"},
    {"empty.trn", "m.trn", "periods show @m.td1",
     "error: ends at line 1, where the number of periods was expected (@m.trn)"},
    {"periods_minus_five.trn", "m.trn", "periods set @m.td1 --unit 4",
     "error: line 1 holds -5, where the number of periods was expected (@m.trn)"},
    {"period_two_cut.trn", "m.trn", "wells @m.td1",
     "error: ends at line 5, where the time steps of period 2 was expected (@m.trn)"},
    {"mark_foreign.tpr", "x.tpr", "periods load @m.td1 @x.tpr",
     "Message: File has a wrong format."},
    {"lengths_cut.tpr", "x.tpr", "periods load @m.td1 @x.tpr",
     "error: ends at line 5, where the length of period 2 was expected (@x.tpr)"},
    {"lines_thirteen.mco", "m.mco", "rock show @m.td1",
     "error: ends behind line 13, where line 14 of 14 (WLYANI) was expected (@m.mco)"},
    {"heat_missing.mco", "x.mco", "heat load @m.td1 @x.mco", "Message: File has a wrong format."},
    {"tracer_six.ttc", "m.ttc", "tracer show @m.td1",
     "error: line 2 begins with 6, where a tracer number from 1 to 5 was expected (@m.ttc)"},
    {"betac_missing.ttc", "m.ttc", "tracer set @m.td1 --tracer 1 --active 1",
     "error: line 1 ends behind item 3, where the BetaC was expected (@m.ttc)"},
    {"value_three_missing.tma", "m.tma", "dispersion show @m.td1",
     "error: line 1 ends behind value 2, where the longitudinal dispersivity was expected "
     "(@m.tma)"},
    {"species_minus_two.sco", "m.sco", "reinjection show @m.td1",
     "error: byte 0 holds -2, where the number of species plus one (1 to 101) was expected "
     "(@m.sco)"},
    {"cut_in_count.sco", "m.sco", "reinjection show @m.td1",
     "error: ends at byte 3, where the number of species plus one was expected (@m.sco)"},
    {"tables_cut.per", "m.per", "array info @m.td1 1401",
     "error: ends at byte 3999, where the tables of periods were expected up to byte 4000 "
     "(@m.per)"},
    {"record_one_cut.per", "m.per", "array read @m.td1 1401",
     "error: ends at byte 4047, where the record of period 1 was expected up to byte 4048 "
     "(@m.per)"},
    {"key_1001.per", "m.per", "array read @m.td1 1401 --period 2",
     "error: byte 2: the key of period 2 is 1001, where 0 to 1000 was expected (@m.per)"},
    {"record_minus_seven.per", "m.per", "array get @m.td1 1401 1 1 --period 2",
     "error: byte 2002: the record number of key 2 is -7, where 0 or more was expected (@m.per)"},
    {"record_20000_of_one.per", "m.per", "array copy-period @m.td1 1401 1 2 --yes",
     "error: byte 2002: period 2 would get record 20000 of a file that holds 1 (@m.per)"},
    {"records_used_up.per", "m.per", "array copy-period @m.td1 1401 1 2",
     "error: a new period would get a record beyond 32767 (@m.per)"},
    {"zones_21.pez", "m.pez", "array copy-period @m.td1 1401 1 2 --yes",
     "error: byte 2018: the number of zones is 21, where 0 to 20 was expected (@m.pez)"},
    {"nodes_41.pez", "m.pez", "array copy-period @m.td1 1401 1 2 --yes",
     "error: byte 2038: the number of nodes is 41, where 0 to 40 was expected (@m.pez)"},
    {"zone_record_minus_one.pez", "m.pez", "array copy-period @m.td1 1401 1 2 --yes",
     "error: byte 18: the record number of period 1 is -1, where 0 or more was expected (@m.pez)"},
    {"mark_foreign.bor", "x.bor", "points import @m.td1 @x.bor",
     "Load Bore File: The file @x.bor does not contain the borehole data."},
    {"empty.obs", "x.obs", "observations import @m.td1 @x.obs",
     "Load Observation File: The file @x.obs does not contain the observation data."},
    {"value_word.txt", "x.txt", "array write @m.td1 1401 --file @x.txt",
     "error: value 5 is \"five\", where a number was expected (@x.txt)"},
    {"values_five.txt", "x.txt", "array write @m.td1 1401 --file @x.txt",
     "error: ends behind 5 values, where 6 were expected (@x.txt)"},
    {"nx_zero.td1", "m.td1", "array read @m.td1 1401",
     "error: NX of the grid is 0, where 1 to 32767 was expected (@m.td1)"},
    {"version_4000.td1", "m.td1", "open @m.td1",
     "Tervex Desk: @m.td1 is not a model file of BD 5."},
};

TEST_F(BadFiles, are_named_with_the_place_and_what_was_expected_there) {
    for (const Broken& broken : broken_files) {
        restore();
        fs::copy_file(fs::path(TD_TEST_DATA) / "broken" / broken.name, path(broken.file),
                      fs::copy_options::overwrite_existing);
        const Files before = files();
        const Outcome outcome = td(broken.command);
        std::string message = std::string(broken.message) + "\n";
        for (std::size_t at; (at = message.find('@')) != std::string::npos;) {
            message.replace(at, 1, folder_->path().string() + "/");
        }
        EXPECT_EQ(outcome.err, message) << broken.name;
        EXPECT_EQ(outcome.status, message.starts_with("error: ") ? 3 : 1) << broken.name;
        EXPECT_EQ(files(), before) << broken.name;
    }
}

} // namespace
