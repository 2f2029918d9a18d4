#include "targets.h"

#include "checks.h"

#include <algorithm>
#include <string>

namespace fuzz {

namespace {

constexpr Target all_targets[] = {
    {"project", project},
    {"inifile", inifile},
    {"notes", notes},
    {"settings", settings},
    {"arrayfile", arrayfile},
    {"zonefile", zonefile},
    {"points", points},
    {"reinjection", reinjection},
    {"gridfile", gridfile},
    {"layerfile", layerfile},
    {"exchange", exchange},
    {"typfile", typfile},
    {"periods", periods},
    {"timeparameters", timeparameters},
    {"rockfile", rockfile},
    {"tracer", tracer},
    {"dispersion", dispersion},
    {"arguments", arguments},
    {"session", session},
    {"numbers", numbers},
    {"stream", stream},
    {"import", modelimport},
    {"viewersettings", viewersettings},
    {"series", series},
    {"depthlog", depthlog},
    {"balance", balance},
    {"minitervex", minitervex},
    {"rvb", rvb},
    {"his", his},
    {"tal", tal},
    {"irgrid", irgrid},
    {"formula", formula},
    {"ctr", ctr},
    {"font", font},
    {"zon", zon},
    {"trs", trs},
    {"arraytext", arraytext},
    {"grd", grd},
};

} // namespace

std::span<const Target> targets() {
    return all_targets;
}

void run(std::string_view target, std::string_view input) {
    const auto found =
        std::ranges::find(all_targets, target, [](const Target& t) { return t.name; });
    require(found != std::end(all_targets), "no such target");
    succeeds([&] { found->run(input); });
}

} // namespace fuzz
