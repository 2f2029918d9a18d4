// The documents of the repository: their links and their pictures.

#include "base/textfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path root = TD_SOURCE_DIR;

std::vector<fs::path> documents() {
    std::vector<fs::path> pages;
    for (const char* folder : {"", "docs", "docs/manual"}) {
        for (const auto& entry : fs::directory_iterator(root / folder)) {
            if (entry.path().extension() == ".md") {
                pages.push_back(entry.path());
            }
        }
    }
    return pages;
}

// The files that the page's links and pictures name.
std::vector<fs::path> targets(const fs::path& page) {
    static const std::regex link(R"(\]\(([^)#:]+)\))");
    const std::string text = base::read_bytes(page);
    std::vector<fs::path> files;
    for (std::sregex_iterator found(text.begin(), text.end(), link), end; found != end; ++found) {
        files.push_back((page.parent_path() / (*found)[1].str()).lexically_normal());
    }
    return files;
}

TEST(Documents, links_lead_to_files_and_every_picture_is_shown) {
    std::set<fs::path> named;
    for (const fs::path& page : documents()) {
        for (const fs::path& file : targets(page)) {
            EXPECT_TRUE(fs::exists(file)) << page << " names " << file;
            named.insert(file);
        }
    }
    EXPECT_GT(named.size(), 60U);
    for (const auto& entry : fs::recursive_directory_iterator(root / "docs/pictures")) {
        const std::string ending = entry.path().extension();
        EXPECT_TRUE((ending != ".png" && ending != ".svg") ||
                    named.contains(entry.path().lexically_normal()))
            << entry.path();
    }
}

// The installed manual has its pictures beside it and nothing else of the repository.
TEST(Documents, pages_of_the_manual_name_only_each_other_and_pictures) {
    for (const fs::path& page : documents()) {
        if (page.parent_path().filename() != "manual") {
            continue;
        }
        for (const fs::path& file : targets(page)) {
            const std::string place = file.lexically_relative(root / "docs");
            EXPECT_TRUE(place.starts_with("manual/") || place.starts_with("pictures/"))
                << page << " names " << file;
        }
    }
}

// What F1 in a dialog opens: a heading, or a paragraph that begins with its name in bold.
TEST(Documents, dialogs_name_sections_that_the_manual_has) {
    static const std::regex place(R"re("([a-z]+\.md)#([^"]+)")re");
    int dialogs = 0;
    for (const auto& entry : fs::directory_iterator(root / "src/ui/dialogs")) {
        const std::string code = base::read_bytes(entry.path());
        for (std::sregex_iterator found(code.begin(), code.end(), place), end; found != end;
             ++found) {
            ++dialogs;
            const std::string page = base::read_bytes(root / "docs/manual" / (*found)[1].str());
            const std::string section = (*found)[2].str();
            EXPECT_TRUE(page.find("\n## " + section + "\n") != std::string::npos ||
                        page.find("\n**" + section) != std::string::npos)
                << entry.path() << ": " << section;
        }
    }
    EXPECT_GT(dialogs, 20);
}

} // namespace
