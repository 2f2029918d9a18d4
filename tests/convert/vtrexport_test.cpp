#include "convert/vtrfile.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(VtrFile, raw_bytes_follow_the_description_of_the_arrays) {
    std::string bytes;
    convert::VtrFile file([&](std::string_view more) { bytes += more; },
                          {{{0, 2}, {0, 1, 3}, {0, 1}}}, {{"a<\"&\n", 1}, {"v", 3}});
    EXPECT_EQ(bytes.substr(0, bytes.find("_\x10") + 1), R"(<?xml version="1.0" encoding="UTF-8"?>
<VTKFile type="RectilinearGrid" version="1.0" byte_order="LittleEndian" header_type="UInt64">
  <RectilinearGrid WholeExtent="0 1 0 2 0 1">
    <Piece Extent="0 1 0 2 0 1">
      <CellData>
        <DataArray type="Float32" Name="a&lt;&quot;&amp;_" format="appended" offset="80"/>
        <DataArray type="Float32" Name="v" NumberOfComponents="3" format="appended" offset="96"/>
      </CellData>
      <Coordinates>
        <DataArray type="Float64" Name="x" format="appended" offset="0"/>
        <DataArray type="Float64" Name="y" format="appended" offset="24"/>
        <DataArray type="Float64" Name="z" format="appended" offset="56"/>
      </Coordinates>
    </Piece>
  </RectilinearGrid>
  <AppendedData encoding="raw">
_)");
    const std::size_t head = bytes.find("_\x10") + 1;
    EXPECT_EQ(bytes.substr(head, 24),
              "\x10\0\0\0\0\0\0\0"s + "\0\0\0\0\0\0\0\0"s + "\0\0\0\0\0\0\0\x40"s);
    EXPECT_EQ(bytes.size(), head + 80);
    const std::vector<float> values{1, -2};
    file.begin_field();
    file.add(values);
    file.finish();
    EXPECT_EQ(bytes.substr(head + 80), "\x08\0\0\0\0\0\0\0"s + "\0\0\x80\x3F\0\0\0\xC0"s +
                                           "\n  </AppendedData>\n</VTKFile>\n");
}

} // namespace
