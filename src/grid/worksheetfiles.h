// The scratch files of a worksheet session in the model's folder.
//
//   <base>.T<n>  the array file of parameter n at the opening
//   <base>.{Z}   the zones that the session works on
//   <base>.{d}   the digitized points that it works on
//   <base>.{P}   the polygon file at the opening
//   <base>.{R}   the layer before the last reset
//   <base>.{t}   the scratch array
#pragma once

#include "grid/editrequest.h"
#include "grid/worksheetsteps.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace core {
class ArrayStore;
class ModelFiles;
class Project;
} // namespace core

namespace grid {

inline constexpr const char* zone_scratch = ".{Z}";
inline constexpr const char* point_scratch = ".{d}";
inline constexpr const char* polygon_scratch = ".{P}";
inline constexpr const char* reset_scratch = ".{R}";
inline constexpr const char* array_scratch = ".{t}";

inline constexpr int presentation = 83, digitizer = 97;

// Where the scratch file lies; extensions keep their letters' case.
std::filesystem::path scratch_path(const core::ModelFiles& files, std::string_view extension);
// Extension of the copy of an array: ".T1402".
std::string backup_extension(int number);
// Scratch files of a session on these parameters, whether they exist or not.
std::vector<std::string> scratch_extensions(const EditRequest& request);

// Completes the arrays of the request in this period, then makes the scratch copies.
void make_scratch_files(const EditRequest& request, int period, core::ArrayStore& store,
                        core::ModelFiles& files);
// Arrays and scratch files are written where they lie from now on.
void edit_in_place(const EditRequest& request, core::ModelFiles& files);

// What Yes and No make of the files of a session; both remove its scratch files. Not committed.
void keep_session_files(const EditRequest& request, core::ModelFiles& files);
void restore_session_files(const EditRequest& request, core::ModelFiles& files);
void remove_scratch_files(const EditRequest& request, core::ModelFiles& files);

// True when a session on this model was cut off: copies of its arrays lie in the folder.
bool has_cut_off_session(const core::ModelFiles& files);
// True when such a session has changed anything: recovering and restoring give different models.
bool cut_off_session_differs(const core::ModelFiles& files);
enum class Recovery { recover, restore };
// Ends a session that was cut off, if there is one: keeps the arrays as it left them and takes its
// zones over, or puts back what was before it. Removes its scratch files; false when there are
// none. Not committed.
bool end_cut_off_session(const core::Project& project, core::ModelFiles& files, Recovery recovery);

// <base>.{d} and <base>.d97: the count, then one line a point. Points that the file does not have
// are left out; FileFailure for more than the worksheet takes.
std::string points_text(const std::vector<DigitizedPoint>& points);
std::vector<DigitizedPoint> points_from_text(std::string_view bytes,
                                             const std::filesystem::path& file);

} // namespace grid
