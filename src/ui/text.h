// Texts between the library (UTF-8) and the toolkit.
#pragma once

#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

namespace ui {

inline QString to_qt(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

inline std::string from_qt(const QString& text) {
    return text.toStdString();
}

inline QString to_qt(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

inline QString to_qt(const char* text) {
    return QString::fromUtf8(text);
}

inline QString to_qt(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace ui
