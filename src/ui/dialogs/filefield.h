// A field for the name of a file, with a button that opens the file dialog.
#pragma once

#include "base/interaction.h"

#include <QWidget>

#include <filesystem>
#include <functional>

class QLineEdit;

namespace ui {

// What the file dialog is opened with.
struct FileQuestion {
    base::FileChoice kind;
    std::string title;
    std::string filter;
};

class FileField : public QWidget {
    Q_OBJECT

public:
    // `question` is asked when the button is pressed.
    FileField(base::Interaction& user, std::function<FileQuestion()> question,
              const char* object_name, QWidget* parent = nullptr);

    std::filesystem::path file() const;
    void set_file(const std::filesystem::path& file);
    QLineEdit& line() { return *line_; }
    // Number of the filter that the file dialog was left with, from 1; 0 for a typed name.
    int filter() const;

private:
    void browse();

    base::Interaction& user_;
    std::function<FileQuestion()> question_;
    QLineEdit* line_;
    QString chosen_;
    int filter_ = 0;
};

} // namespace ui
