// Makes the stroke font of plots: makefont FILE.
//
// Each point of a stroke is two digits, x and y in a box of 0 to 9 with y upward; letters stand on
// 2, capitals reach up to 9. Letters with an accent are put together from both.

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Drawn {
    int code;
    const char* strokes;
};

constexpr int first_letter = 33;
constexpr const char* ascii[] = {
    // ! " # $ % & ' ( )
    "0905 0302", "0907 2927", "1318 3338 0444 0747", "483919080716354443321203 2129",
    "0249 0819281708 2334433223", "4207081928270403122245", "0907", "29070321", "09272301",
    // * + , - . /
    "2428 0547 0745", "2327 0545", "131201", "0535", "0203131202", "0249",
    // 0 to 9
    "120407193947443212", "072922 0242", "08193948460242", "08193948473626 364543321203",
    "32390444", "490906364543321203", "483919070312324345361605", "094912",
    "16070819394847361605031232434536", "031232444839190806153546",
    // : ; < = > ? @
    "0203 0607", "131201 1617", "480542", "0444 0646", "084502", "08193948472524 2322",
    "421203081939484434 34241516273734",
    // A to Z
    "022942 1535", "02093948473606 3645433202", "4839190803123243", "02092947442202",
    "49090242 0636", "490902 0636", "48391908031232434525", "0209 4249 0646", "0222 1219 0929",
    "3933221203", "0209 4905 1642", "090242", "0209254942", "02094249", "120308193948433212",
    "02093948463505", "120308193948433212 2442", "02093948463505 2542", "483919080716354443321203",
    "0949 2922", "090312324349", "092249", "0912263249", "0249 0942", "092649 2622", "09490242",
    // [ \ ] ^ _ `
    "29090121", "0942", "09292101", "072947", "0040", "0917",
    // a to z
    "3632 3526160503122233", "0902 0516263533221203", "3526160503122233", "3932 3526160503122233",
    "04343526160503122233", "38291812 0626", "3631201001 3526160503122233", "0902 0516263532",
    "0206 0809", "161100 1819", "0902 3603 1432", "090312", "0206 05162522 25364542",
    "0206 0516263532", "120305162635332212", "0600 0516263533221203", "3630 3526160503122233",
    "0206 051626", "3616051424332202", "18132232 0626", "0603122233 3632", "062246", "0612243246",
    "0236 0632", "0623 4600", "06360232",
    // { | } ~
    "29181605141221", "0901", "09181625141201", "05163445"};

constexpr Drawn latin[] = {
    {161, "0207 0809"},
    {162, "3526160503122233 2127"},
    {163, "48392918130242 0535"},
    {164, "1526352415 0716 4736 0314 4334"},
    {165, "092649 2622 0545 0444"},
    {166, "0906 0401"},
    {167, "38291908073433221203 0705 3436"},
    {168, "0809 2829"},
    {169, "120308193948433212 362716152435"},
    {170, "2926 281908071627"},
    {171, "260422 462442"},
    {172, "064644"},
    {173, "0535"},
    {174, "120308193948433212 141727362515 2534"},
    {175, "0939"},
    {176, "1708192817"},
    {177, "2428 0646 0242"},
    {178, "0819280525"},
    {179, "092917261505"},
    {180, "0719"},
    {181, "0600 0603122233 3632"},
    {182, "2229 4249 491908071626"},
    {183, "0506"},
    {184, "121100"},
    {185, "081915"},
    {186, "16070819282716"},
    {187, "062402 264422"},
    {188, "081916 0269 62654373"},
    {189, "081916 0269 4556654262"},
    {190, "092918271606 1279 72755383"},
    {191, "43321203042627 2829"},
    {198, "023969 393262 3656 1535"},
    {199, "4839190803123243 222110"},
    {208, "02092947442202 0626"},
    {215, "0347 0743"},
    {216, "120308193948433212 0249"},
    {222, "0209 083847453404"},
    {223, "0208192938372635332212"},
    {230, "3526160503122233 34646556463533425263"},
    {231, "3526160503122233 121100"},
    {240, "120305162635332212 3519 0738"},
    {247, "0545 2322 2728"},
    {248, "120305162635332212 0236"},
    {254, "0900 0516263533221203"},
};

// Accents over a letter whose middle is at x = 1.
constexpr const char* accents[] = {"0918", "1829", "081928", "08192839", "0809 2829", "1708192817"};

// Six letters each: grave, acute, circumflex, tilde, diaeresis, ring; 0 for none.
struct Accented {
    char letter;
    int codes[std::size(accents)];
};
constexpr Accented accented[] = {
    {'A', {192, 193, 194, 195, 196, 197}}, {'E', {200, 201, 202, 0, 203, 0}},
    {'I', {204, 205, 206, 0, 207, 0}},     {'N', {0, 0, 0, 209, 0, 0}},
    {'O', {210, 211, 212, 213, 214, 0}},   {'U', {217, 218, 219, 0, 220, 0}},
    {'Y', {0, 221, 0, 0, 0, 0}},           {'a', {224, 225, 226, 227, 228, 229}},
    {'e', {232, 233, 234, 0, 235, 0}},     {'i', {236, 237, 238, 0, 239, 0}},
    {'n', {0, 0, 0, 241, 0, 0}},           {'o', {242, 243, 244, 245, 246, 0}},
    {'u', {249, 250, 251, 0, 252, 0}},     {'y', {0, 253, 0, 0, 255, 0}},
};

struct Point {
    int x, y;
    bool draw;
};
using Glyph = std::vector<Point>;

Glyph glyph_of(std::string_view strokes) {
    Glyph glyph;
    bool draw = false;
    for (std::size_t at = 0; at < strokes.size();) {
        if (strokes[at] == ' ') {
            draw = false;
            ++at;
            continue;
        }
        glyph.push_back({strokes[at] - '0', strokes[at + 1] - '0', draw});
        draw = true;
        at += 2;
    }
    return glyph;
}

int right_edge(const Glyph& glyph) {
    int edge = 0;
    for (const Point& point : glyph) {
        edge = std::max(edge, point.x);
    }
    return edge;
}

// Capitals make room for their accent.
Glyph under_accent(char letter) {
    if (letter == 'i') {
        return glyph_of("1216");
    }
    Glyph glyph = glyph_of(ascii[letter - first_letter]);
    for (Point& point : glyph) {
        if (letter < 'a') {
            point.y = 2 + ((point.y - 2) * 5 + 3) / 7;
        }
    }
    return glyph;
}

Glyph with_accent(char letter, std::string_view accent) {
    Glyph glyph = under_accent(letter);
    const int shift = right_edge(glyph) > 3 ? 1 : 0;
    for (const Point& point : glyph_of(accent)) {
        glyph.push_back({point.x + shift, point.y, point.draw});
    }
    return glyph;
}

std::map<int, Glyph> all_glyphs() {
    std::map<int, Glyph> glyphs{{' ', {}}, {160, {}}};
    int code = first_letter;
    for (const char* strokes : ascii) {
        glyphs[code++] = glyph_of(strokes);
    }
    for (const Drawn& drawn : latin) {
        glyphs[drawn.code] = glyph_of(drawn.strokes);
    }
    for (const auto& [letter, codes] : accented) {
        for (std::size_t n = 0; n < std::size(accents); ++n) {
            if (codes[n] != 0) {
                glyphs[codes[n]] = with_accent(letter, accents[n]);
            }
        }
    }
    return glyphs;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: makefont FILE\n", stderr);
        return 2;
    }
    std::ofstream out(argv[1], std::ios::binary);
    for (const auto& [code, glyph] : all_glyphs()) {
        out << code << ' ' << (glyph.empty() ? 4 : right_edge(glyph) + 2) << ' ' << glyph.size()
            << "\r\n";
        for (const Point& point : glyph) {
            out << point.x << ' ' << point.y << ' ' << (point.draw ? 1 : 0) << "\r\n";
        }
    }
    return out.flush() ? 0 : 1;
}
