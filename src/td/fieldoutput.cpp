#include "td/fieldoutput.h"

#include "base/numbertext.h"
#include "results/fieldcsv.h"

#include <limits>
#include <ostream>
#include <string>

namespace td {

namespace {

void print_layer(std::ostream& out, const results::ParameterField& field, int layer) {
    std::string line;
    for (int row = 1; row <= field.rows(); ++row) {
        line.clear();
        for (int column = 1; column <= field.columns(); ++column) {
            line += column == 1 ? "" : " ";
            line += base::exact_text(field.at(layer, row, column));
        }
        out << line << '\n';
    }
}

} // namespace

std::optional<int> layer_of(const Context& context) {
    if (!context.args.has(layer_option.name)) {
        return std::nullopt;
    }
    return context.args.integer(layer_option.name, std::numeric_limits<int>::min(),
                                std::numeric_limits<int>::max(), 1);
}

void print_field(Context& context, const results::ParameterField& field) {
    if (const auto layer = layer_of(context)) {
        results::require_layer(field, *layer);
        print_layer(context.out, field, *layer);
        return;
    }
    for (int layer = 1; layer <= field.layers(); ++layer) {
        context.out << "layer " << layer << '\n';
        print_layer(context.out, field, layer);
    }
}

} // namespace td
