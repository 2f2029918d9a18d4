// The store of parameter arrays: the only code that touches array files.
//
// An array file has two tables of 1000 16-bit integers, `period_used` and `period_record`, and from
// byte 4000 on records of layers x NY x NX little-endian singles, column fastest, then row, then
// layer. There is no stored dimension: the file means what the model's grid says.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace core {

class ModelFiles;
class Project;
class RandomFile;

// Grid of one layer: value of column i, row j (from 1) at (j - 1) * NX + i - 1.
using LayerValues = std::vector<float>;

// Numbers outside their ranges (parameter 1 to 2000 with an extension, period 1 to 1000, layer, row
// and column of the grid) and layers of a wrong size are a RangeFailure in every operation, a grid
// that the project file makes smaller than one cell a FileFailure.
class ArrayStore {
public:
    ArrayStore(ModelFiles& files, int nx, int ny, int nz);
    ArrayStore(ModelFiles& files, const Project& project);

    int NX() const { return nx_; }
    int NY() const { return ny_; }
    int NZ() const { return nz_; }
    std::size_t cells_of_layer() const;
    // Layers of a record: NZ, or 1 for a single-layer parameter and under Force_2D.
    int layers(int number) const;
    void set_Force_2D(bool on) { Force_2D_ = on; }

    // True when the parameter has a file; false for a number without extension.
    bool exists(int number) const;

    // Memory for one layer, taken only after the file of the parameter, if there is one, has been
    // found as large as the grid asks for.
    LayerValues layer_values(int number) const;

    // One layer (from 1) of one period (from 1) into `values` (NX * NY). A period without record
    // gives `default_value`; parameter 85 always reads period 1. FileFailure when the file is
    // missing, its tables or the record of period 1 are cut off; a later record may end early and
    // reads 0 there.
    void read_array(int number, int period, int layer, std::span<float> values,
                    float default_value) const;
    // The same for layer after layer: the file is opened and its tables are read only once. A
    // reader must not outlive its store.
    class LayerReader {
    public:
        void read(int layer, std::span<float> values) const;

    private:
        friend ArrayStore;
        LayerReader(const ArrayStore& store, int number, float default_value)
            : store_(&store), number_(number), default_value_(default_value) {}

        const ArrayStore* store_;
        int number_;
        float default_value_;
        int record_ = 0; // 0: every cell has the default
        std::shared_ptr<const RandomFile> file_;
    };
    LayerReader layer_reader(int number, int period, float default_value) const;
    // A reader that gives the default everywhere when the parameter has no file.
    LayerReader layer_reader_if(int number, int period, float default_value) const;

    // True when the period has a record of its own.
    bool has_period(int number, int period) const;

    // Writes one layer of one period; a missing file is created with 0 first. A period without
    // record gets the next one (the largest record number plus one), with 0 in its other layers.
    void write_array(int number, int period, int layer, std::span<const float> values);

    // Writes the tables and one record of `default_value`; false when the file is there already.
    bool create_array_file(int number, float default_value);

    // Gives the period a record of its own with what reading it gives; a missing file is created
    // with the default first. Bytes change only where a reader of the period finds none of its own
    // or the file ends early. True when they did.
    bool complete_period(int number, int period, float default_value);

    struct CellValue {
        float value = 0;
        bool found = false; // the file is there
    };
    CellValue read_cell_value(int number, int period, int layer, int row, int column,
                              float default_value) const;

    // Copies all layers of a period, and the zones when there is a zone file. A period without data
    // copies `default_value`. Nothing for a copy onto itself. FileFailure when the file is missing.
    void copy_period(int number, int from, int to, float default_value);

    // Scratch copy at the beginning of an editing session: <base>.T<n> for an array (created with
    // the default when it is missing), <base>.{Z} for a zone number. Upgrades an older zone file in
    // the scratch copy.
    void backup_for_edit(int number, float default_value);

    struct Period {
        int period, record;
    };
    // Every period with a record of its own, in period order. FileFailure when the file is missing.
    std::vector<Period> periods(int number) const;
    // Bytes of the file. FileFailure when it is missing.
    std::uintmax_t file_size(int number) const;

private:
    const std::string& extension_of(int number) const;
    std::filesystem::path file_of(int number) const;
    RandomFile open(int number) const;
    RandomFile open_for_writing(int number, bool fresh);
    void require_period(int period) const;
    void require_grid() const;
    void require_layer(int number, int layer) const;
    void require_cells(std::size_t count) const;
    std::uint64_t layer_bytes() const;
    std::uint64_t record_bytes(int number) const;
    std::uint64_t record_start(int number, int record) const;
    std::uint64_t layer_start(int number, int record, int layer) const;
    void copy_zones(int number, int from, int to);
    void backup_zones(int number);

    ModelFiles* files_;
    int nx_, ny_, nz_;
    bool Force_2D_ = false;
};

} // namespace core
