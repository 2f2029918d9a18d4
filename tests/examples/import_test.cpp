// The streams of the examples become models again, and these write the same streams.
#include "examples/examplemodel.h"

#include <fmt/format.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace examples {

namespace {

TEST_P(ExampleModel, ImportedStreamIsWrittenAgainByteForByte) {
    const std::string name = GetParam();
    const auto original = made().folder.path() / (name + ".nml");
    for (const char* rock : {"individual", "zones"}) {
        const support::TempFolder folder;
        const std::string model = (folder.path() / (name + ".td1")).string();
        const std::string commands = fmt::format(
            "'{0}' import-model '{1}' '{2}' --orientation {3} --porosity {4} --permeability {4} "
            "--quiet && '{0}' check '{2}' && '{0}' create-input '{2}' --install '{5}' --quiet "
            ">/dev/null",
            TD_PROGRAM, original.string(), model, is_section() ? "vertical" : "horizontal", rock,
            folder.path().string());
        ASSERT_EQ(std::system(commands.c_str()), 0) << commands;
        EXPECT_TRUE(bytes_of(folder.path() / (name + ".nml")) == made().bytes) << rock;
    }
}

} // namespace

} // namespace examples
