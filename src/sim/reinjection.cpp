#include "sim/reinjection.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "core/modelflags.h"

#include <algorithm>

#include <fmt/format.h>

namespace sim {

namespace {

float next_or_zero(base::ByteReader& reader) {
    return reader.remaining() < sizeof(float) ? 0 : reader.single("a concentration");
}

} // namespace

ReinjectionTable ReinjectionTable::read(std::string_view bytes, const std::filesystem::path& file) {
    base::ByteReader reader(bytes, file);
    const int columns = reader.int32("the number of species plus one");
    if (columns < 1 || columns > max_species + 1)
        throw base::FileFailure(fmt::format("byte 0 holds {}, where the number of species plus one "
                                            "(1 to {}) was expected",
                                            columns, max_species + 1),
                                file);
    ReinjectionTable table;
    table.species = columns - 1;
    while (reader.remaining() >= sizeof(float) && int(table.rows.size()) < max_wells) {
        Row row;
        row.rate = next_or_zero(reader);
        for (int i = 0; i < table.species; ++i)
            row.concentrations.push_back(next_or_zero(reader));
        table.rows.push_back(std::move(row));
    }
    return table;
}

std::string ReinjectionTable::bytes() const {
    base::ByteWriter writer;
    writer.int32(species + 1);
    for (int well = 1; well <= int(rows.size()); ++well) {
        writer.single(rows[std::size_t(well - 1)].rate);
        for (int number = 1; number <= species; ++number)
            writer.single(concentration(well, number));
    }
    return writer.data();
}

float ReinjectionTable::concentration(int well, int species_number) const {
    if (well < 1 || well > int(rows.size()))
        return 0;
    const std::vector<float>& values = rows[std::size_t(well - 1)].concentrations;
    const bool known = species_number >= 1 && species_number <= int(values.size());
    return known ? values[std::size_t(species_number - 1)] : 0;
}

const char* reinjection_extension(const core::ModelFlags& flags) {
    return flags.ActivityModel() == 1 || flags.ActivityModel() == 3 ? ".dhs" : ".sco";
}

} // namespace sim
