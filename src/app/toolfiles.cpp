#include "app/toolfiles.h"

#include "base/binaryio.h"
#include "core/modelfiles.h"

namespace app {

void check_tool_files(const core::ModelFiles& files) {
    for (const char* extension : {".ppl", ".upl"}) {
        static_cast<void>(files.read_if(extension));
    }
}

void create_tool_files(core::ModelFiles& files) {
    if (!files.has(".ppl")) {
        files.write(".ppl", {});
    }
    if (!files.has(".upl")) {
        files.write(".upl", default_upl());
    }
}

std::string default_upl() {
    constexpr std::size_t name_width = 120, text_width = 100;
    base::ByteWriter out;
    out.fixed_text("", name_width);
    out.single(0);
    out.single(0.01F);

    out.int16(3);
    out.single(1.0F);
    out.single(0.01F);
    out.single(0.01F);
    out.int16(0);
    out.int16(30);
    out.single(2.0F);
    out.fixed_text("MRDRIVE", text_width);
    out.int16(3);
    out.int16(0);
    out.int16(0);
    return out.data();
}

} // namespace app
