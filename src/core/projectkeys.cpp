#include "core/projectkeys.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace core {

namespace {

using enum KeyKind;

// Names are spelled as the files have always spelled them ("Plot_H_Gird"). Most keys from WETDRY on
// belong to the packages of the predecessor and are only carried along.
constexpr KeyInfo keys[] = {
    {"INFO", "DESCRIPTION", text, "", KeyUse::both, 132},
    {"OPTIONS", "NO_MODPATH_ANYWAY", flag, "-1"},
    {"OPTIONS", "SIMULATION_MODE", int16, "1"},
    {"OPTIONS", "RECHARGE", int16, "1"},
    {"OPTIONS", "EVAPOTRANSPIRATION", int16, "1"},
    {"OPTIONS", "BCF_VERSION", int16, "2"},
    {"OPTIONS", "HNOFLO", single, "-999.99"},
    {"OPTIONS", "HDRY", single, "-1E+30"},
    {"OPTIONS", "CINACT", single, "1E+30"},
    {"OPTIONS", "THKMIN", single, ".05", KeyUse::read_only},
    {"OPTIONS", "NPRMAS", int16, "1", KeyUse::read_only},
    {"DIMENSION", "NX", int16, "30"},
    {"DIMENSION", "NY", int16, "30"},
    {"DIMENSION", "NZ", int16, "1"},
    {"DIMENSION", "SHEET_X1", single, "0"},
    {"DIMENSION", "SHEET_Y1", single, "0"},
    {"DIMENSION", "SHEET_X2", single, "1000"},
    {"DIMENSION", "SHEET_Y2", single, "1000"},
    {"GRIDPOSITION", "LEFT", single, "0"},
    {"GRIDPOSITION", "TOP", single, "0"},
    {"GRIDPOSITION", "RAD", single, "0"},
    {"GRIDPOSITION", "ANGLE", single, "0"},
    {"GRIDPOSITION", "MOVED", flag, "0"},
    {"COLOR", "MESH", colour, "12632256"},
    {"COLOR", "INACTIVE_CELL", colour, "8421504"},
    {"COLOR", "FIXEDHEAD_CELL", colour, "8388608"},
    {"COLOR", "FIXEDCONC_CELL", colour, "4227327"},
    {"COLOR", "GHB_CELL", colour, "16448"},
    {"COLOR", "DISCHARGE_WELL", colour, "255"},
    {"COLOR", "RECHARGE_WELL", colour, "16711680"},
    {"COLOR", "DRAIN", colour, "8454143"},
    {"COLOR", "RIVER", colour, "16776960"},
    {"COLOR", "Horizontal-Flow-Barriers", colour, "0"},
    {"COLOR", "Bores", colour, "0"},
    {"COLOR", "Contours", colour, "255"},
    {"COLOR", "Reservoir", colour, "8404992"},
    {"COLOR", "DIGI_POINTS", colour, "0"},
    {"COLOR", "CHD", colour, "7404992"},
    {"COLOR", "TVSC", colour, "9685503"},
    {"COLOR", "MinContour", colour, "0"},
    {"COLOR", "MaxContour", colour, "0"},
    {"COLOR", "MinFill", colour, "0"},
    {"COLOR", "MaxFill", colour, "0"},
    {"COLOR", "MinTrace", colour, "0"},
    {"COLOR", "MaxTrace", colour, "0"},
    {"GRID_APPEARANCE", "MESH", flag, "-1"},
    {"GRID_APPEARANCE", "INACTIVE_CELL", flag, "-1"},
    {"GRID_APPEARANCE", "FIXEDHEAD_CELL", flag, "-1"},
    {"GRID_APPEARANCE", "FIXEDCONC_CELL", flag, "-1"},
    {"GRID_APPEARANCE", "GHB_CELL", flag, "-1"},
    {"GRID_APPEARANCE", "DISCHARGE_WELL", flag, "-1"},
    {"GRID_APPEARANCE", "RECHARGE_WELL", flag, "-1"},
    {"GRID_APPEARANCE", "DRAIN", flag, "-1"},
    {"GRID_APPEARANCE", "RIVER", flag, "-1"},
    {"GRID_APPEARANCE", "Horizontal-Flow-Barriers", flag, "-1"},
    {"GRID_APPEARANCE", "ZONES", flag, "0"},
    {"GRID_APPEARANCE", "BORES", flag, "-1"},
    {"GRID_APPEARANCE", "CONTOURS", flag, "0"},
    {"GRID_APPEARANCE", "Contour_lines", flag, "-1"},
    {"GRID_APPEARANCE", "DisplayFullExtent", flag, "0"},
    {"GRID_APPEARANCE", "Fill CONTOURS", flag, "0"},
    {"GRID_APPEARANCE", "IGNORE_INACTIVE", flag, "-1"},
    {"GRID_APPEARANCE", "RESERVOIR", flag, "-1"},
    {"GRID_APPEARANCE", "DIGI_POINTS", flag, "-1"},
    {"GRID_APPEARANCE", "Time-variant_specified-head", flag, "-1"},
    {"GRID_APPEARANCE", "Time-variant_specified-conc", flag, "-1"},
    {"CONTOURS", "LabelStyle", int16, "1"},
    {"CONTOURS", "DataSource", int16, "0"},
    {"CONTOURS", "Decimal", int16, "2"},
    {"CONTOURS", "LabelUphill", flag, "-1"},
    {"CONTOURS", "LabelPrefix", text, ""},
    {"CONTOURS", "LabelSuffix", text, ""},
    {"GeoReference", "basemap_visible", flag, "0"},
    {"GeoReference", "Basemap", text, "", KeyUse::both, 120},
    {"GeoReference", "P1_PixelX", single, "0"},
    {"GeoReference", "P1_PixelY", single, "0"},
    {"GeoReference", "P1_RealX", single, "0"},
    {"GeoReference", "P1_RealY", single, "0"},
    {"GeoReference", "P2_PixelX", single, "0"},
    {"GeoReference", "P2_PixelY", single, "0"},
    {"GeoReference", "P2_RealX", single, "0"},
    {"GeoReference", "P2_RealY", single, "0"},
    {"WETDRY", "WETTING_FACTOR", single, ".1"},
    {"WETDRY", "INTERVAL", int16, "1"},
    {"WETDRY", "EQUATION", int16, "0"},
    {"DENSITY", "REFERENCE_DENSITY", single, "1"},
    {"MTRCT2", "ISOTHERM", int16, "1"},
    {"MTRCT2", "REACTION", int16, "0"},
    {"SIP1", "MXITER", int16, "200"},
    {"SIP1", "NPARM", int16, "5"},
    {"SIP1", "ACCL", single, "1"},
    {"SIP1", "HCLOSE", single, ".001"},
    {"SIP1", "IPCALC", int16, "1"},
    {"SIP1", "WSEED", single, "0"},
    {"SIP1", "IPRSIP", int16, "1"},
    {"SSOR1", "MXITER", int16, "200"},
    {"SSOR1", "ACCL", single, "1"},
    {"SSOR1", "HCLOSE", single, ".001"},
    {"SSOR1", "IPRSOR", int16, "1"},
    {"PCG2", "MXITER", int16, "50"},
    {"PCG2", "ITER1", int16, "30"},
    {"PCG2", "NPCOND", int16, "1"},
    {"PCG2", "HCLOSE", single, ".001"},
    {"PCG2", "RCLOSE", single, ".001"},
    {"PCG2", "RELAX", single, "1"},
    {"PCG2", "NBPOL", int16, "1"},
    {"PCG2", "IPRPCG", int16, "1"},
    {"PCG2", "MUTPCG", int16, "0"},
    {"PCG2", "IPCGCD", int16, "0"},
    {"DE45", "MXITER", int16, "500"},
    {"DE45", "IPRD4", int16, "1"},
    {"DE45", "MUTD4", int16, "0"},
    {"DE45", "IFREQ", int16, "3"},
    {"DE45", "MXUP", int16, "0"},
    {"DE45", "MXLOW", int16, "0"},
    {"DE45", "MXBW", int16, "0"},
    {"DE45", "HCLOSE", single, ".001"},
    {"DE45", "ACCL", single, "1"},
    {"RES1", "OPTION", int16, "2"},
    {"RES1", "Make_Table", flag, "-1"},
    {"RES1", "NPTS", int16, "10"},
    {"MODFLOW_ASCII_FLAGS", "OC", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "BAS1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "BCF", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "DRN1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "GHB1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "RIV1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "STR1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "WEL1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "HFB1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "IBS1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "CHD1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "EVT1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "RCH1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "RES1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "SIP1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "SSOR1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "PCG2", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "DE45", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "MPATH1", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "MPATH3", flag, "0"},
    {"MODFLOW_ASCII_FLAGS", "DEN1", flag, "0"},
    {"MT3D_ASCII_FLAGS", "MTBTN1", flag, "0"},
    {"MT3D_ASCII_FLAGS", "MTSSM1", flag, "0"},
    {"MT3D_ASCII_FLAGS", "MTRCT1", flag, "0"},
    {"MT3D_ASCII_FLAGS", "MTADV1", flag, "0"},
    {"MT3D_ASCII_FLAGS", "MTDSP1", flag, "0"},
    {"MT3D_ASCII_FLAGS", "MTRCT2", flag, "0"},
    {"MOC3D_ASCII_FLAGS", "MOCMAIN", flag, "0"},
    {"MOC3D_ASCII_FLAGS", "MOCCRCH", flag, "0"},
    {"MOC3D_ASCII_FLAGS", "MOCOBS", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSADV1", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSBTN1", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSDSP1", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSGCG1", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSRCT1", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSRCT2", flag, "0"},
    {"MT3DMS_ASCII_FLAGS", "MTMSSSM1", flag, "0"},
    {"Output Control", "ICBCFL", flag, "-1"},
    {"Output Control", "IHDSV", flag, "-1"},
    {"Output Control", "IDDSV", flag, "-1"},
    {"Output Control", "ISUBSV", flag, "-1"},
    {"Output Control", "ICOMSV", flag, "-1"},
    {"Output Control", "IHCSV", flag, "-1"},
    {"Output Control", "IMT3D", flag, "-1"},
    {"Output Control", "SAVCBM", flag, "-1"},
    {"Output Control", "SAVUCN", flag, "-1"},
    {"Output Control", "IECHO", int16, "0"},
    {"Output Control", "IPERIOD", int16, "1"},
    {"Output Control", "ISTEP", int16, "1"},
    {"Output Control", "IFMTCN", int16, "0"},
    {"Output Control", "IFMTNP", int16, "0"},
    {"Output Control", "IFMTRF", int16, "0"},
    {"Output Control", "IFMTDP", int16, "0"},
    {"Animation", "display time", single, "0", KeyUse::write_only},
    {"Water Budget", "PERIOD", int16, "1", KeyUse::from_one},
    {"Water Budget", "STEP", int16, "1", KeyUse::from_one},
    {"Curve", "Plot_Calculated", flag, "-1"},
    {"Curve", "Plot_Observed", flag, "-1"},
    {"Curve", "Plot_H_Gird", flag, "0"},
    {"Curve", "Plot_V_Gird", flag, "0"},
    {"Curve", "AutoAdjustMinMax", flag, "-1"},
    {"Curve", "GraphType", int16, "0"},
};

constexpr char folded(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The order of two names without regard to case: negative, 0 or positive.
constexpr int compared(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (folded(a[i]) != folded(b[i])) {
            return folded(a[i]) < folded(b[i]) ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

struct Name {
    std::string_view section;
    std::string_view key;
};

constexpr bool is_before(const Name& a, const Name& b) {
    const int by_section = compared(a.section, b.section);
    return by_section < 0 || (by_section == 0 && compared(a.key, b.key) < 0);
}

constexpr Name name_of(std::uint8_t index) {
    return {keys[index].section, keys[index].key};
}

// Indices of `keys`, sorted by name for the look-up.
constexpr auto sorted_by_name = [] {
    std::array<std::uint8_t, std::size(keys)> order{};
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = static_cast<std::uint8_t>(i);
    }
    std::sort(order.begin(), order.end(),
              [](std::uint8_t a, std::uint8_t b) { return is_before(name_of(a), name_of(b)); });
    return order;
}();

static_assert(std::size(keys) <= 256, "an index no longer fits into 8 bits");
static_assert(std::adjacent_find(sorted_by_name.begin(), sorted_by_name.end(),
                                 [](std::uint8_t a, std::uint8_t b) {
                                     return !is_before(name_of(a), name_of(b));
                                 }) == sorted_by_name.end(),
              "two keys of a section have the same name");

} // namespace

std::span<const KeyInfo> project_keys() {
    return keys;
}

std::optional<std::size_t> find_project_key(std::string_view section, std::string_view key) {
    const Name name{section, key};
    const auto at = std::lower_bound(
        sorted_by_name.begin(), sorted_by_name.end(), name,
        [](std::uint8_t index, const Name& wanted) { return is_before(name_of(index), wanted); });
    if (at == sorted_by_name.end() || is_before(name, name_of(*at))) {
        return std::nullopt;
    }
    return *at;
}

} // namespace core
