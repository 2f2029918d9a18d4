// What the desktop program holds while it runs: the open model, the person who answers, the folders
// of the settings; and the one way in which a command changes the model.
#pragma once

#include "app/undo.h"
#include "app/workspace.h"
#include "base/interaction.h"
#include "grid/worksheetfiles.h"
#include "report/attempt.h"
#include "ui/choosers.h"

#include <QObject>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ui {

struct Folders {
    std::filesystem::path program;  // of the program and its data
    std::filesystem::path settings; // of the user; empty: nothing is remembered
};

class Desk : public QObject {
    Q_OBJECT

public:
    // `user` outlives the desk.
    Desk(base::Interaction& user, Folders folders);
    ~Desk() override;

    base::Interaction& user() const { return user_; }
    const Folders& folders() const { return folders_; }
    Choosers& choosers() { return choosers_; }

    // The open model as the last command left it, without a lock; nullptr when none is open. To
    // change it there is change().
    const app::Workspace* model() const { return model_ ? &*model_ : nullptr; }

    // What File|New, Open, Save As do, behind their questions. The model that was open stays open
    // when it fails or is refused, which is shown. True: the model is open.
    bool create(const std::filesystem::path& path);
    bool open(const std::filesystem::path& path,
              std::optional<grid::Recovery> recovery = std::nullopt);
    bool save_as(const std::filesystem::path& target);
    void close_model();
    // Reads the model anew, after a command or another program has changed it.
    void reload();

    // Runs `work` on the model with write access and saves it when that gives true; otherwise
    // nothing is changed. A failure is shown, and the step repeated when the user says so. `step`
    // names what can be taken back: the caption of the command. False: nothing was changed. In a
    // session it works on the lent model.
    bool change(std::string_view signature, const std::string& step,
                const std::function<bool(app::Workspace&)>& work);

    // The same without a model's lock: shows the failures of `step`. Does not throw when the user
    // ends the program: then the event loop is left.
    report::Outcome attempt(std::string_view signature, const std::function<void()>& step);

    // A session is a command that lasts, such as that of the worksheet: it holds the model with
    // write access, and all that it changes is one step, named `step`. Nothing when the model
    // cannot be had, which was shown. Whoever began it lends the workspace, which stays in its
    // place until the end, and has it destroyed before end_session().
    std::optional<app::Workspace> begin_session(std::string_view signature,
                                                const std::string& step);
    void lend(app::Workspace* workspace) { lent_ = workspace; }
    // Ends the session, with whatever outcome, and reads the model anew.
    void end_session();
    bool in_session() const { return in_session_; }

    // The step that undo() or redo() would go over; nothing when there is none, and in a session.
    std::optional<std::string> undo_name() const;
    std::optional<std::string> redo_name() const;
    // Take the last command on the model back, or do it again. A refusal or failure is shown.
    bool undo();
    bool redo();

    // The worksheet or the mesh editor is open: the menus change.
    bool editor_open() const { return editor_open_; }
    void set_editor_open(bool open);

signals:
    // Another model, none, or the same after a change.
    void model_changed();
    void editor_changed();

private:
    // Takes over what an opening gave; shows its refusal.
    bool take(app::Loaded loaded);
    // The model with write access, its commits part of the open step; refused: nothing.
    std::optional<app::Workspace> load_to_write();
    bool go_over(std::string_view signature,
                 std::optional<base::Refusal> (app::UndoHistory::*step)());
    bool change_lent(std::string_view signature, const std::function<bool(app::Workspace&)>& work);

    base::Interaction& user_;
    Folders folders_;
    Choosers choosers_;
    std::optional<app::Workspace> model_;
    std::unique_ptr<app::UndoHistory> history_; // of the open model
    app::Workspace* lent_ = nullptr;
    bool in_session_ = false;
    bool editor_open_ = false;
};

} // namespace ui
