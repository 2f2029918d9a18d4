// Where a field may come from faster than from the text of its result file.
#pragma once

#include "results/field.h"
#include "results/parameters.h"
#include "results/resultfile.h"

#include <optional>

namespace results {

class FieldSource {
public:
    virtual ~FieldSource() = default;

    // The field of `parameter` in the units of the viewer, in the viewer's or the stream's order.
    // `grid` is that of the result file. Nothing when the text has to be read.
    virtual std::optional<Field> read(const ResultFile& result, const StreamGrid& grid,
                                      const Parameter& parameter, FieldOrder order,
                                      base::Interaction& user) = 0;
};

} // namespace results
