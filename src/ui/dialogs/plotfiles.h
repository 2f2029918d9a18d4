// Files of the picture that the worksheet shows.
#pragma once

#include "plot/plotpage.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace app {
struct Workspace;
}
namespace grid {
class Worksheet;
}

namespace ui {

class Desk;
class WorksheetView;

// A format of the list. Plot formats are drawn by the library, the others by the view.
struct PictureFormat {
    const char* name;
    const char* extension;
    const char* filter;
    std::optional<plot::Plot_Format> plot;
    // The file's bytes, of a view's picture.
    std::string (*draw)(const WorksheetView& view) = nullptr;
};
std::span<const PictureFormat> picture_formats();
// By the extension, whatever its case; nothing for another one.
const PictureFormat* format_of_file(const std::filesystem::path& file);

// Writes what the view shows, with the display mode but not with the zoom. FileFailure when the
// grid or the file fails.
void write_picture(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                   const WorksheetView& view, const PictureFormat& format,
                   const std::filesystem::path& file);

} // namespace ui
