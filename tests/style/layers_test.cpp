// Which folder may include which: the table of the architecture, read against every #include line.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::map<std::string, std::set<std::string>> allowed = {
    {"base", {}},
    {"report", {"base"}},
    {"core", {"base", "report"}},
    {"sim", {"base", "report", "core"}},
    {"grid", {"base", "report", "core", "sim"}},
    {"input", {"base", "report", "core", "sim", "grid"}},
    {"results", {"base", "report", "core", "sim", "grid", "input"}},
    {"convert", {"base", "report", "core", "sim", "grid", "input", "results"}},
    {"plot", {"base", "report", "core", "sim", "grid"}},
    {"app", {"base", "report", "core", "sim", "grid", "input", "results", "convert", "plot"}},
    {"td", {"base", "report", "core", "sim", "grid", "input", "results", "convert", "plot", "app"}},
    {"ui", {"base", "report", "core", "sim", "grid", "input", "results", "convert", "plot", "app"}},
    {"minitervex", {"base", "input", "results"}},
};

// The simulator shares nothing but the grammar of its files with the rest.
const std::set<std::string> shared_with_minitervex = {"input/compact.h", "input/keywordstream.h",
                                                      "results/streamreader.h"};

struct Include {
    fs::path file;
    std::string folder; // of the file
    std::string name;   // as written between the quotes or angle brackets
    bool quoted;
};

void add_includes(const fs::path& root, std::vector<Include>& includes) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") {
            continue;
        }
        std::ifstream in(entry.path());
        const std::string folder = fs::relative(entry.path(), root).begin()->string();
        for (std::string line; std::getline(in, line);) {
            if (!line.starts_with("#include ")) {
                continue;
            }
            const bool quoted = line[9] == '"';
            const std::size_t end = line.find(quoted ? '"' : '>', 10);
            includes.push_back({entry.path(), folder, line.substr(10, end - 10), quoted});
        }
    }
}

std::vector<Include> all_includes() {
    std::vector<Include> includes;
    for (const char* root : {"src", "simulator"}) {
        add_includes(fs::path(TD_SOURCE_DIR) / root, includes);
    }
    return includes;
}

TEST(Layers, a_folder_includes_only_what_stands_below_it) {
    int seen = 0;
    for (const Include& include : all_includes()) {
        if (!include.quoted) {
            continue;
        }
        ++seen;
        const std::string target = include.name.substr(0, include.name.find('/'));
        ASSERT_TRUE(allowed.contains(include.folder)) << include.file << " is in an unknown folder";
        EXPECT_TRUE(target == include.folder || allowed.at(include.folder).contains(target))
            << include.file << " includes " << include.name;
        EXPECT_TRUE(include.folder != "minitervex" || target == "base" || target == "minitervex" ||
                    shared_with_minitervex.contains(include.name))
            << include.file << " includes " << include.name;
    }
    EXPECT_GT(seen, 100);
}

TEST(Layers, toolkits_stay_in_their_place) {
    for (const Include& include : all_includes()) {
        if (include.quoted) {
            continue;
        }
        if (include.name.starts_with("CLI/")) {
            EXPECT_EQ(include.file.filename(), "arguments.cpp") << include.file;
        }
        EXPECT_TRUE(!include.name.starts_with("Eigen/") || include.folder == "minitervex")
            << include.file << " includes " << include.name;
        EXPECT_TRUE(!include.name.starts_with("Q") || include.folder == "ui")
            << include.file << " includes " << include.name;
        EXPECT_FALSE(include.name.starts_with("vtk"))
            << include.file << " includes " << include.name;
        EXPECT_NE(include.name, "locale") << include.file;
        EXPECT_NE(include.name, "regex") << include.file;
    }
}

TEST(Layers, programs_are_thin) {
    for (const char* program : {"src/td/main.cpp", "src/ui/main.cpp", "simulator/minitervex/main.cpp"}) {
        std::ifstream in(fs::path(TD_SOURCE_DIR) / program);
        int lines = 0;
        for (std::string line; std::getline(in, line);) {
            ++lines;
        }
        EXPECT_GT(lines, 0) << program;
        EXPECT_LT(lines, 50) << program;
    }
}

} // namespace
