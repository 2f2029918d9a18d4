// What td writes for VTK, as VTK itself reads it.
#include "cli/tdtest.h"

#include "base/numbertext.h"
#include "grid/griddefinition.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkRectilinearGrid.h>
#include <vtkRectilinearGridReader.h>
#include <vtkSmartPointer.h>
#include <vtkStructuredPoints.h>
#include <vtkStructuredPointsReader.h>
#include <vtkXMLRectilinearGridReader.h>

#include <algorithm>

namespace {

constexpr int columns = 4, rows = 3, layers = 2;
constexpr std::size_t cells = std::size_t{columns} * rows * layers;

// Values of `seed` that differ in every cell, with zeros and exponents among them.
std::vector<float> values_of(int seed) {
    std::vector<float> values;
    for (std::size_t n = 0; n < cells; ++n) {
        const auto number = static_cast<float>(static_cast<int>(n) * 7 + seed);
        values.push_back(n % 5 == 0 ? 0 : n % 3 == 0 ? -number * 1E-13F : number / 3);
    }
    return values;
}

std::string block(const std::string& key, const std::vector<float>& values) {
    std::string text = "# " + key + "\r\n";
    for (const float value : values) {
        text += base::exact_text(value) + " ";
    }
    return text + "\r\n";
}

std::vector<double> edges_of(const std::vector<float>& sizes) {
    std::vector<double> edges{0};
    for (const float size : sizes) {
        edges.push_back(edges.back() + double{size});
    }
    return edges;
}

std::vector<double> numbers_in(vtkDataArray* array) {
    std::vector<double> numbers;
    for (vtkIdType n = 0; n < array->GetNumberOfTuples(); ++n) {
        for (int part = 0; part < array->GetNumberOfComponents(); ++part) {
            numbers.push_back(array->GetComponent(n, part));
        }
    }
    return numbers;
}

std::vector<double> doubles(const std::vector<float>& values) {
    return {values.begin(), values.end()};
}
// As seven digits of text give them.
std::vector<double> rounded(const std::vector<float>& values) {
    std::vector<double> numbers;
    for (const float value : values) {
        numbers.push_back(double{base::leading_single(base::value_text(value))});
    }
    return numbers;
}

template <class Reader>
vtkSmartPointer<Reader> read(const std::filesystem::path& file) {
    auto reader = vtkSmartPointer<Reader>::New();
    reader->SetFileName(file.c_str());
    reader->Update();
    return reader;
}

class ReadBack : public TdTest, public testing::WithParamInterface<const char*> {
protected:
    // Uneven in every direction.
    void make() {
        prepare("new @m.td1 --yes\ngrid set @m.td1 --columns 4 --rows 3 --layers 2 --finish "
                "--orientation " +
                std::string(GetParam()) +
                "\ngrid size @m.td1 --column 1=10 --column 2=2.5 --column 3=.1 --column 4=7 "
                "--row 1=1 --row 2=200 --row 3=.4\n"
                "layers set @m.td1 --geometry thickness --thickness 1=5 --thickness 2=3.3");
        std::string text;
        for (int n = 0; n < 5; ++n) {
            constexpr const char* keys[] = {"PERM", "VX", "VY", "VZ", "TEMP"};
            text += block(keys[n], values_of(n));
        }
        folder.write("m.nlo", text + "# ANZSUBS\r\n1\r\n# ANZCHEM\r\n0\r\n# ANZMINS\r\n0\r\n" +
                                  block("CONC           1", values_of(5)));
    }
    bool horizontal() const { return std::string(GetParam()) == "horizontal"; }
    int J0() const { return horizontal() ? rows : layers; }

    // Value of a velocity block brought to the centre of a cell.
    static float centre(const std::vector<float>& faces, std::size_t cell, std::size_t step,
                        int index, int count) {
        return index == 1       ? faces[cell]
               : index == count ? faces[cell - step]
                                : (faces[cell] + faces[cell - step]) / 2;
    }
    std::vector<float> vectors() const {
        std::vector<float> found;
        const int K0 = horizontal() ? layers : rows;
        const auto row = std::size_t{columns}, layer = row * static_cast<std::size_t>(J0());
        std::size_t cell = 0;
        for (int k = 1; k <= K0; ++k) {
            for (int j = 1; j <= J0(); ++j) {
                for (int i = 1; i <= columns; ++i, ++cell) {
                    found.push_back(centre(values_of(1), cell, 1, i, columns));
                    found.push_back(centre(values_of(2), cell, row, j, J0()));
                    found.push_back(centre(values_of(3), cell, layer, k, K0));
                }
            }
        }
        return found;
    }
};

TEST_P(ReadBack, vtr_has_the_true_edges_and_every_value) {
    make();
    EXPECT_EQ(run("vtk @m.td1 --format vtr --all --ugradt"), done("m.vtr\n"));
    const auto reader = read<vtkXMLRectilinearGridReader>(folder.path() / "m.vtr");
    vtkRectilinearGrid* const grid = reader->GetOutput();
    // The sizes that the model's own files hold, from the south and from below.
    auto sizes = grid::GridFile::read(folder.read("m.xy"), "m.xy");
    auto [heights, thicknesses] = std::pair{sizes.Row_Height, std::vector<float>{5, 3.3F}};
    EXPECT_EQ(grid::LayerFile::read(folder.read("m.l"), "m.l", 2)->layers[1].thickness, 3.3F);
    std::ranges::reverse(heights);
    if (horizontal()) {
        std::ranges::reverse(thicknesses);
    } else {
        std::swap(heights, thicknesses);
    }
    EXPECT_EQ(numbers_in(grid->GetXCoordinates()), edges_of(sizes.Column_Width));
    EXPECT_EQ(numbers_in(grid->GetYCoordinates()), edges_of(heights));
    EXPECT_EQ(numbers_in(grid->GetZCoordinates()), edges_of(thicknesses));

    vtkCellData* const data = grid->GetCellData();
    ASSERT_EQ(data->GetNumberOfArrays(), 5);
    std::vector<float> permeability = values_of(0);
    std::ranges::for_each(permeability, [](float& value) { value = std::abs(value); });
    EXPECT_EQ(numbers_in(data->GetArray("Permeability")), doubles(permeability));
    EXPECT_EQ(numbers_in(data->GetArray("Temperature")), doubles(values_of(4)));
    EXPECT_EQ(numbers_in(data->GetArray("Tracer-1")), doubles(values_of(5)));
    EXPECT_EQ(numbers_in(data->GetArray("FlowVectors")), doubles(vectors()));
    EXPECT_EQ(data->GetArray("FlowVectors")->GetNumberOfComponents(), 3);

    prepare("vtk @m.td1 --type points --all --ugradt");
    const auto text = read<vtkStructuredPointsReader>(folder.path() / "m-ugradT.vtk");
    const std::vector<double> u = numbers_in(data->GetArray("ugradT"));
    EXPECT_EQ(numbers_in(text->GetOutput()->GetPointData()->GetScalars()),
              rounded({u.begin(), u.end()}));
}

TEST_P(ReadBack, points_and_rectilinear_files_are_valid) {
    make();
    prepare("vtk @m.td1 --type points --all --scale-z 2");
    const auto points = read<vtkStructuredPointsReader>(folder.path() / "m-Tracer-1.vtk");
    vtkStructuredPoints* const image = points->GetOutput();
    EXPECT_EQ(image->GetDimensions()[1], J0());
    EXPECT_EQ(image->GetSpacing()[0], 10);
    EXPECT_EQ(image->GetSpacing()[2], horizontal() ? 10 : 2);
    EXPECT_EQ(numbers_in(image->GetPointData()->GetScalars()), rounded(values_of(5)));
    const auto flow = read<vtkStructuredPointsReader>(folder.path() / "m-FlowVectors.vtk");
    EXPECT_EQ(numbers_in(flow->GetOutput()->GetPointData()->GetVectors()), rounded(vectors()));

    prepare("vtk @m.td1 --type rectilinear --temp\nformula @m.td1 'TEMP + GONE' --type points");
    const auto lists = read<vtkRectilinearGridReader>(folder.path() / "m-Temperature.vtk");
    vtkRectilinearGrid* const grid = lists->GetOutput();
    EXPECT_EQ(numbers_in(grid->GetXCoordinates()), rounded({5, 7.5F, 7.6F, 14.6F}));
    EXPECT_EQ(numbers_in(horizontal() ? grid->GetYCoordinates() : grid->GetZCoordinates()),
              rounded({.2F, 200.2F, 201.2F}));
    EXPECT_EQ(numbers_in(grid->GetPointData()->GetScalars()), rounded(values_of(4)));
    const auto calc = read<vtkStructuredPointsReader>(folder.path() / "m-Calc.vtk");
    std::vector<float> twice = values_of(4);
    std::ranges::for_each(twice, [](float& value) { value *= 2; });
    EXPECT_EQ(numbers_in(calc->GetOutput()->GetPointData()->GetScalars()), rounded(twice));
}

INSTANTIATE_TEST_SUITE_P(Grids, ReadBack, testing::Values("horizontal", "vertical"),
                         [](const auto& grid) { return std::string(grid.param); });

} // namespace
