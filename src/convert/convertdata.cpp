#include "convert/convertdata.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "results/tablefile.h"

#include <fmt/format.h>

namespace convert {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view mark = "IRGRID";

struct Counts {
    int x = 0, y = 0;
};

Counts read_counts(base::NumberReader& numbers, const fs::path& source) {
    const Counts counts{numbers.next_int("the count of x coordinates"),
                        numbers.next_int("the count of y coordinates")};
    if (counts.x < 1 || counts.y < 1) {
        throw base::FileFailure(fmt::format("line 1: the counts are {} and {}, where 1 or more was "
                                            "expected",
                                            counts.x, counts.y),
                                source);
    }
    return counts;
}

// Line by line: counts that the file does not fill take no memory.
void write_table(base::NumberReader& numbers, const fs::path& source, const fs::path& target,
                 base::Interaction& user) {
    const Counts counts = read_counts(numbers, source);
    for (std::int64_t n = 0; n < std::int64_t{counts.x} + counts.y; ++n) {
        numbers.next("a coordinate");
    }
    results::TableFile table(target);
    table.add(base::printed(counts.x) + base::printed(counts.y) + "\r\n");
    for (int row = 0; row < counts.y; ++row) {
        for (int column = 0; column < counts.x; ++column) {
            table.add(base::printed(numbers.next_single("a value")));
        }
        table.add("\r\n");
        user.show_meter(static_cast<int>(100 * (std::int64_t{row} + 1) / counts.y));
    }
    table.finish();
}

} // namespace

bool Write_ASCII(const fs::path& source, const fs::path& target, base::Interaction& user) {
    const std::string bytes = base::read_bytes(source);
    if (!bytes.starts_with(mark)) {
        user.message(base::Icon::warning, "Wrong Format",
                     "The Dat File is of wrong format (probably not saved from the Result "
                     "Viewer).");
        return false;
    }
    if (base::is_file(target) &&
        user.ask("Overwrite file?",
                 "The Filename already exist. Do you want to overwrite the file?",
                 base::Buttons::yes_no_risky) != base::Answer::yes) {
        return false;
    }
    base::NumberReader numbers(std::string_view(bytes).substr(mark.size()), source);
    write_table(numbers, source, target, user);
    user.message(base::Icon::information, "Done", "Array successfully saved in ASCII format.");
    return true;
}

} // namespace convert
