#include "core/arraystore.h"

#include "arraymodel.h"
#include "core/extensions.h"
#include "core/zonefile.h"

#include <sys/stat.h>

#include <map>
#include <random>

namespace {

using core::ArrayStore;
using core::LayerValues;

constexpr int NX = 3, NY = 2, NZ = 4, cells = NX * NY;
constexpr int temperature = 1402, time_invariant = 85, single_layer = 23;

LayerValues layer_of(float first) {
    LayerValues values(cells);
    for (float& value : values) {
        value = first++;
    }
    return values;
}

class ArrayStoreTest : public ArrayModel {
protected:
    LayerValues read(int number, int period, int layer, float default_value = -99) const {
        LayerValues values(cells);
        store.read_array(number, period, layer, values, default_value);
        return values;
    }

    // A file of `records` records, whose values all are the number of their record.
    static std::string tables_and(int records) {
        std::string bytes(4000, '\0');
        set_int16(bytes, 0, 1);
        set_int16(bytes, 2000, 1);
        for (int record = 1; record <= records; ++record) {
            bytes += singles(LayerValues(cells * NZ, static_cast<float>(record)));
        }
        return bytes;
    }

    ArrayStore store{files, NX, NY, NZ};
};

TEST_F(ArrayStoreTest, a_new_file_has_period_1_with_the_default) {
    EXPECT_TRUE(store.create_array_file(temperature, 10));
    EXPECT_FALSE(store.create_array_file(temperature, 20));
    std::string expected(4000, '\0');
    set_int16(expected, 0, 1);
    set_int16(expected, 2000, 1);
    expected += singles(LayerValues(cells * NZ, 10));
    EXPECT_EQ(stored("m.tem"), expected);
    EXPECT_EQ(store.file_size(temperature), expected.size());
    EXPECT_EQ(read(temperature, 1, NZ), LayerValues(cells, 10));
    EXPECT_EQ(read(temperature, 2, 1, 5), LayerValues(cells, 5));
    EXPECT_EQ(read(temperature, 2, 1, 6), LayerValues(cells, 6));
}

TEST_F(ArrayStoreTest, a_layer_reader_gives_what_read_array_gives) {
    for (int layer = 1; layer <= NZ; ++layer) {
        store.write_array(temperature, 1, layer, layer_of(static_cast<float>(10 * layer)));
    }
    LayerValues values(cells);
    for (const int period : {1, 2}) {
        const auto reader = store.layer_reader(temperature, period, -99);
        for (int layer = 1; layer <= NZ; ++layer) {
            reader.read(layer, values);
            EXPECT_EQ(values, read(temperature, period, layer));
        }
        EXPECT_THROW(reader.read(NZ + 1, values), base::RangeFailure);
        EXPECT_THROW(reader.read(1, std::span(values).first(1)), base::RangeFailure);
    }
}

TEST_F(ArrayStoreTest, a_layer_reader_without_file_fails_or_gives_the_default) {
    EXPECT_THROW(store.layer_reader(temperature, 1, 7), base::FileFailure);
    LayerValues values(cells);
    store.layer_reader_if(temperature, 1, 7).read(NZ, values);
    EXPECT_EQ(values, LayerValues(cells, 7));
}

TEST_F(ArrayStoreTest, a_large_new_file_is_filled_to_its_end) {
    ArrayStore large(files, 700, 500, 2);
    large.create_array_file(temperature, 7);
    EXPECT_EQ(large.file_size(temperature), 4000u + 4 * 700 * 500 * 2);
    LayerValues values(large.cells_of_layer());
    large.read_array(temperature, 1, 2, values, 0);
    EXPECT_EQ(values, LayerValues(values.size(), 7));
}

TEST_F(ArrayStoreTest, records_are_given_in_the_order_of_first_writing) {
    store.write_array(temperature, 3, 1, layer_of(300));
    store.write_array(temperature, 2, 1, layer_of(200));
    store.write_array(temperature, 3, 2, layer_of(310));
    EXPECT_EQ(read(temperature, 2, 1), layer_of(200));
    EXPECT_EQ(read(temperature, 3, 1), layer_of(300));
    EXPECT_EQ(read(temperature, 3, 2), layer_of(310));
    EXPECT_EQ(read(temperature, 1, 1), LayerValues(cells, 0));
    std::string records;
    for (const auto& [period, record] : store.periods(temperature)) {
        records += std::to_string(period) + ":" + std::to_string(record) + " ";
    }
    EXPECT_EQ(records, "1:1 2:3 3:2 ");
    const std::string bytes = stored("m.tem");
    EXPECT_EQ(bytes.size(), 4000u + 3 * 4 * cells * NZ);
    EXPECT_EQ(base::int16_at(bytes, 4), 3);
    EXPECT_EQ(base::int16_at(bytes, 2004), 2);
    EXPECT_EQ(bytes.substr(4000 + 4 * cells * NZ, 4 * cells), singles(layer_of(300)));
}

TEST_F(ArrayStoreTest, the_other_layers_of_a_new_record_are_zero) {
    store.create_array_file(temperature, 10);
    store.write_array(temperature, 9, 3, layer_of(1));
    EXPECT_EQ(read(temperature, 9, 2), LayerValues(cells, 0));
    EXPECT_EQ(read(temperature, 9, 3), layer_of(1));
    EXPECT_EQ(read(temperature, 9, 4), LayerValues(cells, 0));
}

TEST_F(ArrayStoreTest, parameter_85_reads_period_1) {
    store.write_array(time_invariant, 1, 1, layer_of(1));
    store.write_array(time_invariant, 7, 1, layer_of(70));
    EXPECT_EQ(read(time_invariant, 7, 1), layer_of(1));
    EXPECT_EQ(store.read_cell_value(time_invariant, 7, 1, 2, 1, 0).value, 4);
}

TEST_F(ArrayStoreTest, a_single_layer_parameter_has_records_of_one_layer) {
    EXPECT_EQ(store.layers(single_layer), 1);
    store.write_array(single_layer, 2, 1, layer_of(20));
    EXPECT_EQ(stored("m.rch").size(), 4000u + 2 * 4 * cells);
    EXPECT_EQ(read(single_layer, 2, 1), layer_of(20));
    EXPECT_THROW(read(single_layer, 1, 2), base::RangeFailure);
}

TEST_F(ArrayStoreTest, Force_2D_makes_every_parameter_single_layer) {
    store.set_Force_2D(true);
    store.write_array(temperature, 2, 1, layer_of(5));
    EXPECT_EQ(stored("m.tem").size(), 4000u + 2 * 4 * cells);
    EXPECT_EQ(store.read_cell_value(temperature, 2, 1, 2, 3, 0).value, 10);
    store.set_Force_2D(false);
    EXPECT_THROW(read(temperature, 1, 1), base::FileFailure);
}

TEST_F(ArrayStoreTest, the_single_value_is_found_as_soon_as_the_file_is_there) {
    const auto cell = [this](int period, int row, int column) {
        return store.read_cell_value(temperature, period, 2, row, column, 42);
    };
    EXPECT_EQ(cell(1, 1, 1).value, 42);
    EXPECT_FALSE(cell(1, 1, 1).found);
    store.write_array(temperature, 1, 2, layer_of(1));
    EXPECT_EQ(cell(1, 2, 3).value, 6);
    EXPECT_TRUE(cell(1, 2, 3).found);
    EXPECT_EQ(cell(2, 1, 1).value, 42);
    EXPECT_TRUE(cell(2, 1, 1).found);
}

TEST_F(ArrayStoreTest, the_second_table_is_reached_through_the_first_one) {
    std::string bytes = tables_and(4);
    set_int16(bytes, 2 * 4, 3);        // period 5 under key 3
    set_int16(bytes, 2000 + 2 * 2, 4); // key 3 in record 4
    set_int16(bytes, 2000 + 2 * 4, 2); // key 5 in record 2
    folder.write("m.tem", bytes);
    EXPECT_EQ(read(temperature, 5, 1), LayerValues(cells, 4));
    store.write_array(temperature, 5, 1, layer_of(50));
    EXPECT_EQ(read(temperature, 5, 1), layer_of(50));
    EXPECT_EQ(read(temperature, 5, 2), LayerValues(cells, 2));
    store.write_array(temperature, 8, 1, layer_of(80));
    EXPECT_EQ(base::int16_at(stored("m.tem"), 2014), 5);
}

TEST_F(ArrayStoreTest, key_0_leads_to_the_last_entry_of_the_first_table) {
    std::string bytes = tables_and(2);
    set_int16(bytes, 1998, 2);
    folder.write("m.tem", bytes);
    EXPECT_EQ(read(temperature, 400, 1), LayerValues(cells, 2));
    EXPECT_FALSE(store.has_period(temperature, 400));
    EXPECT_TRUE(store.has_period(temperature, 1));
    EXPECT_FALSE(store.has_period(single_layer, 1));
}

TEST_F(ArrayStoreTest, a_file_cut_off_before_the_end_of_period_1_is_a_failure) {
    const std::string whole = tables_and(1);
    for (std::size_t length = 0; length < whole.size(); length += length < 3990 ? 399 : 1) {
        folder.write("m.tem", whole.substr(0, length));
        const std::string expected =
            "ends at byte " + std::to_string(length) +
            (length < 4000 ? ", where the tables of periods were expected up to byte 4000 (m.tem)"
                           : ", where the record of period 1 was expected up to byte 4096 (m.tem)");
        EXPECT_EQ(file_failure([&] { read(temperature, 2, 1); }), expected);
        EXPECT_EQ(file_failure([&] { store.write_array(temperature, 2, 1, layer_of(0)); }),
                  expected);
        EXPECT_FALSE(files.changed());
    }
}

TEST_F(ArrayStoreTest, a_later_record_may_be_cut_off_and_reads_0_there) {
    std::string bytes = tables_and(2);
    set_int16(bytes, 2, 2);
    set_int16(bytes, 2002, 2);
    for (std::size_t length = bytes.size() - 4 * cells; length <= bytes.size(); length += 4) {
        folder.write("m.tem", bytes.substr(0, length));
        LayerValues expected(cells, 2);
        std::fill_n(expected.rbegin(), (bytes.size() - length) / 4, 0.0F);
        EXPECT_EQ(read(temperature, 2, NZ), expected);
    }
}

TEST_F(ArrayStoreTest, hostile_tables_are_failures_with_their_place) {
    std::string bytes = tables_and(1);
    set_int16(bytes, 2, 1001);
    set_int16(bytes, 4, -1);
    set_int16(bytes, 6, 4);
    set_int16(bytes, 2006, -7);
    set_int16(bytes, 8, 5);
    set_int16(bytes, 2008, 32767);
    folder.write("m.tem", bytes);
    EXPECT_EQ(file_failure([&] { read(temperature, 2, 1); }),
              "byte 2: the key of period 2 is 1001, where 0 to 1000 was expected (m.tem)");
    EXPECT_EQ(file_failure([&] { store.periods(temperature); }),
              file_failure([&] { read(temperature, 2, 1); }));
    EXPECT_EQ(file_failure([&] { read(temperature, 3, 1); }),
              "byte 4: the key of period 3 is -1, where 0 to 1000 was expected (m.tem)");
    EXPECT_EQ(file_failure([&] { read(temperature, 4, 1); }),
              "byte 2006: the record number of key 4 is -7, where 0 or more was expected (m.tem)");
    EXPECT_EQ(read(temperature, 5, NZ), LayerValues(cells, 0));
    EXPECT_EQ(file_failure([&] { store.write_array(temperature, 6, 1, layer_of(0)); }),
              "a new period would get a record beyond 32767 (m.tem)");
    EXPECT_EQ(file_failure([&] { store.write_array(temperature, 5, 1, layer_of(0)); }),
              "byte 2008: period 5 would get record 32767 of a file that holds 1 (m.tem)");
    EXPECT_FALSE(files.changed());
}

TEST_F(ArrayStoreTest, what_is_no_array_file_is_a_failure) {
    EXPECT_EQ(file_failure([&] { read(temperature, 1, 1); }),
              "cannot be read: No such file or directory (m.tem)");
    std::filesystem::create_directory(folder.path() / "m.tem");
    EXPECT_EQ(file_failure([&] { read(temperature, 1, 1); }), "is no ordinary file (m.tem)");
    ASSERT_EQ(mkfifo((folder.path() / "m.per").c_str(), 0600), 0);
    EXPECT_EQ(file_failure([&] { read(1401, 1, 1); }), "is no ordinary file (m.per)");
}

TEST_F(ArrayStoreTest, numbers_outside_their_ranges_are_range_failures) {
    for (const int number : {0, 42, 2000, 2001}) {
        EXPECT_THROW(read(number, 1, 1), base::RangeFailure) << number;
        EXPECT_THROW(store.write_array(number, 1, 1, layer_of(0)), base::RangeFailure) << number;
    }
    store.create_array_file(temperature, 0);
    for (const int bad : {0, -1, 1001}) {
        EXPECT_THROW(read(temperature, bad, 1), base::RangeFailure);
        EXPECT_THROW(read(temperature, 1, bad), base::RangeFailure);
        EXPECT_THROW(store.read_cell_value(temperature, 1, 1, bad, 1, 0), base::RangeFailure);
        EXPECT_THROW(store.read_cell_value(temperature, 1, 1, 1, bad, 0), base::RangeFailure);
    }
    EXPECT_THROW(store.write_array(temperature, 1, 1, LayerValues(cells - 1)), base::RangeFailure);
    EXPECT_EQ(file_failure([&] { ArrayStore(files, 1, 0, 1).create_array_file(6, 0); }),
              "NY of the grid is 0, where 1 to 32767 was expected (m.td1)");
    EXPECT_FALSE(store.exists(42));
}

TEST_F(ArrayStoreTest, an_array_that_no_disk_holds_is_refused_before_it_is_written) {
    ArrayStore endless(files, 32767, 32767, 32767);
    EXPECT_THROW(endless.create_array_file(temperature, 0), base::FileFailure);
}

TEST_F(ArrayStoreTest, random_writes_are_read_back) {
    std::mt19937 random(4711);
    const auto pick = [&random](int last) {
        return static_cast<int>(random() % unsigned(last)) + 1;
    };
    for (const int number : {temperature, single_layer}) {
        std::map<std::pair<int, int>, LayerValues> model;
        const int layers = store.layers(number);
        for (int i = 0; i < 400; ++i) {
            const int period = pick(6) == 1 ? 1000 : pick(12);
            const int layer = pick(layers);
            if (!model.contains({period, 1})) {
                for (int other = 1; other <= layers; ++other) {
                    model[{period, other}] = LayerValues(cells, 0);
                }
            }
            model[{period, layer}] = layer_of(static_cast<float>(random() % 10000) / 8);
            store.write_array(number, period, layer, model[{period, layer}]);
        }
        for (const auto& [place, values] : model) {
            EXPECT_EQ(read(number, place.first, place.second), values);
        }
    }
}

TEST_F(ArrayStoreTest, writing_patches_a_copy_until_the_command_commits) {
    const std::string old = tables_and(1);
    folder.write("m.TEM", old);
    store.write_array(temperature, 1, 2, layer_of(1));
    EXPECT_EQ(folder.read("m.TEM"), old);
    files.commit();
    const std::string written = folder.read("m.TEM");
    EXPECT_EQ(written.substr(4000 + 4 * cells, 4 * cells), singles(layer_of(1)));
    EXPECT_EQ(written.size(), old.size());
}

TEST_F(ArrayStoreTest, a_copied_period_is_a_record_of_its_own) {
    store.create_array_file(temperature, 10);
    store.write_array(temperature, 1, 2, layer_of(1));
    store.copy_period(temperature, 1, 4, -1);
    store.write_array(temperature, 1, 2, layer_of(500));
    EXPECT_EQ(read(temperature, 4, 1), LayerValues(cells, 10));
    EXPECT_EQ(read(temperature, 4, 2), layer_of(1));
    EXPECT_EQ(stored("m.tez"), "missing");
    store.copy_period(temperature, 9, 5, 33);
    EXPECT_EQ(read(temperature, 5, NZ), LayerValues(cells, 33));
    const std::string before = stored("m.tem");
    store.copy_period(temperature, 7, 7, 33);
    EXPECT_EQ(stored("m.tem"), before);
}

TEST_F(ArrayStoreTest, zones_are_copied_with_their_period) {
    core::ZoneFile zones(files, NZ);
    core::Zone zone;
    zone.nodes = 3;
    zone.value = 8;
    zones.write_zones(1, 2, 1502, {zone, zone});
    store.create_array_file(temperature, 0);
    store.copy_period(temperature, 1, 3, 0);
    EXPECT_EQ(zones.read_zones(3, 1, 1502).size(), 0u);
    ASSERT_EQ(zones.read_zones(3, 2, 1502).size(), 2u);
    EXPECT_EQ(zones.read_zones(3, 2, 1502)[1].value, 8);
}

TEST_F(ArrayStoreTest, a_backup_copies_the_array_and_makes_a_missing_one) {
    store.backup_for_edit(temperature, 10);
    EXPECT_EQ(stored("m.tem").size(), 4096u);
    EXPECT_EQ(stored("m.T1402"), stored("m.tem"));
    store.write_array(temperature, 1, 1, layer_of(1));
    EXPECT_NE(stored("m.T1402"), stored("m.tem"));
    files.commit();
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "m.T1402"));
}

TEST_F(ArrayStoreTest, a_backup_of_zones_upgrades_the_scratch_copy_only) {
    store.backup_for_edit(1502, 0);
    EXPECT_EQ(stored("m.tez").size(), 2018u + NZ * 7820);
    EXPECT_EQ(stored("m.{Z}"), stored("m.tez"));
    store.backup_for_edit(single_layer + 100, 0);
    EXPECT_EQ(stored("m.rhz").size(), 2018u + 7820);
    folder.write("m.pez", "BALDO4000_ZONEFILE" + std::string(2000, '\0'));
    store.backup_for_edit(1501, 0);
    EXPECT_EQ(stored("m.{Z}"), "BALDO5000_ZONEFILE" + std::string(2000, '\0'));
    EXPECT_EQ(stored("m.pez"), "BALDO4000_ZONEFILE" + std::string(2000, '\0'));
}

} // namespace
