#include "grid/worksheetfiles.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

namespace grid {

namespace fs = std::filesystem;

namespace {

constexpr const char* polygons = ".ppl";
constexpr const char* digitized = ".d97";

void copy_if_there(core::ModelFiles& files, const char* from, const char* to) {
    if (files.has(from)) {
        files.copy_file(files.name_of(from), scratch_path(files, to));
    }
}

void take_over(core::ModelFiles& files, const char* scratch, const fs::path& target) {
    if (const fs::path from = scratch_path(files, scratch); files.has_file(from)) {
        files.move_file(from, target);
    }
}

std::vector<int> numbers_of(const EditRequest& request) {
    return {request.Parameter_List.begin(), request.Parameter_List.begin() + request.Array_Count()};
}

void remove_all(core::ModelFiles& files, const std::vector<std::string>& extensions) {
    for (const std::string& extension : extensions) {
        files.remove_file(scratch_path(files, extension));
    }
}

void restore_arrays(core::ModelFiles& files, const std::vector<int>& numbers) {
    for (const int number : numbers) {
        if (const fs::path backup = scratch_path(files, backup_extension(number));
            files.has_file(backup)) {
            files.move_file(backup, files.name_of(core::file_ext(number)));
        }
    }
}

bool same_bytes(const fs::path& a, const std::optional<fs::path>& b) {
    std::error_code failed;
    if (!b || fs::file_size(a, failed) != fs::file_size(*b, failed) || failed) {
        return false;
    }
    std::ifstream first(a, std::ios::binary), second(*b, std::ios::binary);
    return std::equal(std::istreambuf_iterator<char>(first), {},
                      std::istreambuf_iterator<char>(second), {});
}

// Parameters with a copy in the folder, the one written last at the end.
std::vector<int> backed_up_numbers(const core::ModelFiles& files) {
    std::vector<std::pair<fs::file_time_type, int>> found;
    for (int number = 1; number <= core::parameter_count; ++number) {
        const fs::path backup = scratch_path(files, backup_extension(number));
        std::error_code failed;
        const auto time = fs::last_write_time(backup, failed);
        if (!failed && core::is_primary(number) && !core::file_ext(number).empty()) {
            found.emplace_back(time, number);
        }
    }
    std::ranges::sort(found);
    std::vector<int> numbers;
    for (const auto& [time, number] : found) {
        numbers.push_back(number);
    }
    return numbers;
}

} // namespace

fs::path scratch_path(const core::ModelFiles& files, std::string_view extension) {
    return files.base() + std::string(extension);
}

std::string backup_extension(int number) {
    return fmt::format(".T{}", number);
}

std::vector<std::string> scratch_extensions(const EditRequest& request) {
    std::vector<std::string> extensions{zone_scratch, point_scratch, polygon_scratch, reset_scratch,
                                        array_scratch};
    for (const int number : numbers_of(request)) {
        extensions.push_back(backup_extension(number));
    }
    return extensions;
}

void make_scratch_files(const EditRequest& request, int period, core::ArrayStore& store,
                        core::ModelFiles& files) {
    for (int k = 1; k <= request.Array_Count(); ++k) {
        store.complete_period(request.number(k), period, request.default_value(k));
    }
    remove_scratch_files(request, files); // of a session that was cut off
    copy_if_there(files, digitized, point_scratch);
    copy_if_there(files, polygons, polygon_scratch);
    for (int k = 1; k <= request.Array_Count(); ++k) {
        store.backup_for_edit(request.number(k), request.default_value(k));
    }
    if (request.Zones_Allowed) {
        store.backup_for_edit(request.zone_number(), 0);
    }
}

void edit_in_place(const EditRequest& request, core::ModelFiles& files) {
    for (const int number : numbers_of(request)) {
        files.write_in_place(files.name_of(core::file_ext(number)),
                             scratch_path(files, backup_extension(number)));
    }
    files.write_in_place(scratch_path(files, zone_scratch));
}

void keep_session_files(const EditRequest& request, core::ModelFiles& files) {
    if (request.Zones_Allowed) {
        take_over(files, zone_scratch, files.name_of(core::file_ext(request.zone_number())));
    }
    take_over(files, polygon_scratch, files.name_of(polygons));
    if (request.Current_Parameter() == digitizer) {
        take_over(files, point_scratch, files.name_of(digitized));
    }
    remove_scratch_files(request, files);
}

void restore_session_files(const EditRequest& request, core::ModelFiles& files) {
    restore_arrays(files, numbers_of(request));
    remove_scratch_files(request, files);
}

void remove_scratch_files(const EditRequest& request, core::ModelFiles& files) {
    remove_all(files, scratch_extensions(request));
}

bool has_cut_off_session(const core::ModelFiles& files) {
    return !backed_up_numbers(files).empty();
}

bool cut_off_session_differs(const core::ModelFiles& files) {
    const std::vector<int> numbers = backed_up_numbers(files);
    const auto differs = [&](std::string_view scratch, std::string_view extension) {
        const fs::path copy = scratch_path(files, scratch);
        return files.has_file(copy) && !same_bytes(copy, files.find(extension));
    };
    const auto array_differs = [&](int number) {
        return differs(backup_extension(number), core::file_ext(number));
    };
    const bool zones = !numbers.empty() &&
                       numbers.back() + core::zone_offset <= core::parameter_count &&
                       differs(zone_scratch, core::file_ext(numbers.back() + core::zone_offset));
    const bool points = numbers == std::vector{digitizer} && differs(point_scratch, digitized);
    return zones || points || differs(polygon_scratch, polygons) ||
           std::ranges::any_of(numbers, array_differs);
}

bool end_cut_off_session(const core::Project& project, core::ModelFiles& files, Recovery recovery) {
    const std::vector<int> numbers = backed_up_numbers(files);
    EditRequest none;
    none.Zones_Allowed = false;
    // Zones belong to the item that was opened last.
    const EditRequest request =
        numbers.empty()
            ? none
            : find_request_with(numbers.back(), project.flags.GridOrientation()).value_or(none);
    std::vector<std::string> extensions = scratch_extensions(request);
    for (const int number : numbers) {
        extensions.push_back(backup_extension(number));
    }
    const bool found = std::ranges::any_of(extensions, [&](const std::string& extension) {
        return files.has_file(scratch_path(files, extension));
    });
    if (recovery == Recovery::recover) {
        keep_session_files(request, files);
    } else {
        restore_arrays(files, numbers);
    }
    remove_all(files, extensions);
    return found;
}

std::string points_text(const std::vector<DigitizedPoint>& points) {
    std::vector<std::string> lines{base::printed(static_cast<std::int64_t>(points.size()))};
    for (const DigitizedPoint& point : points) {
        lines.push_back(base::printed(point.zone_value) + base::printed(point.x) +
                        base::printed(point.y) + base::printed(point.z));
    }
    return base::to_text_file(lines);
}

std::vector<DigitizedPoint> points_from_text(std::string_view bytes, const fs::path& file) {
    base::NumberReader reader(bytes, file);
    const double count = reader.next_if().value_or(0);
    if (count > double(max_digitized_points)) {
        throw base::FileFailure(fmt::format("holds {} points, where 0 to {} were expected",
                                            base::value_text(count), max_digitized_points),
                                file);
    }
    std::vector<DigitizedPoint> points;
    while (double(points.size()) < count) {
        const auto value = reader.next_if(), x = reader.next_if(), y = reader.next_if(),
                   z = reader.next_if();
        if (!z) {
            break;
        }
        points.push_back({static_cast<float>(*value), static_cast<float>(*x),
                          static_cast<float>(*y), static_cast<float>(*z)});
    }
    return points;
}

} // namespace grid
