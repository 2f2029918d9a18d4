#include "ui/desk.h"

#include "app/newmodel.h"
#include "app/openmodel.h"
#include "app/saveas.h"
#include "core/modelturn.h"

#include <QCoreApplication>

#include <utility>

namespace ui {

namespace {

// For the command of another program on the model; nothing is painted meanwhile.
constexpr std::chrono::seconds patience{2};

} // namespace

Desk::Desk(base::Interaction& user, Folders folders) : user_(user), folders_(std::move(folders)) {}

Desk::~Desk() = default;

report::Outcome Desk::attempt(std::string_view signature, const std::function<void()>& step) {
    try {
        return report::attempt(user_, signature, step);
    } catch (const report::ProgramEnd&) {
        // Must not pass through the toolkit's event handlers.
        QCoreApplication::exit(0);
        return report::Outcome::left;
    }
}

bool Desk::take(app::Loaded loaded) {
    if (loaded.refusal) {
        base::show(user_, *loaded.refusal);
    }
    if (!loaded.workspace) {
        return false;
    }
    const std::filesystem::path path = loaded.workspace->Model_Path();
    loaded.workspace.reset(); // the lock of the opening ends here
    app::Loaded shown = app::load_model(path, core::Access::read);
    if (shown.refusal) {
        base::show(user_, *shown.refusal);
        return false;
    }
    model_ = std::move(shown.workspace);
    history_.reset(); // before the next one: it may be of the same model
    history_ = std::make_unique<app::UndoHistory>(model_->Model_Path());
    emit model_changed();
    return true;
}

bool Desk::create(const std::filesystem::path& path) {
    bool done = false;
    attempt("file_new_model()",
            [&] { done = take(app::new_model(path, user_, folders_.settings)); });
    return done;
}

bool Desk::open(const std::filesystem::path& path, std::optional<grid::Recovery> recovery) {
    bool done = false;
    attempt("Open_Model(FileName)", [&] {
        core::wait_for_turn(path, patience);
        done = take(app::open_model(path, user_, folders_.settings, recovery));
    });
    return done;
}

bool Desk::save_as(const std::filesystem::path& target) {
    bool done = false;
    if (model_) {
        attempt("file_save_model_as()", [&] {
            done = take(app::save_model_as(*model_, target, user_, folders_.settings).opened);
        });
    }
    return done;
}

void Desk::close_model() {
    model_.reset();
    history_.reset();
    emit model_changed();
}

void Desk::reload() {
    if (!model_) {
        return;
    }
    if (lent_) {
        model_->project = lent_->project; // the lock is ours: a second opening would wait for it
    } else if (!in_session_) {
        const std::filesystem::path path = model_->Model_Path();
        attempt("Read_Project(FileName)", [&] {
            app::Loaded loaded = app::load_model(path, core::Access::read);
            if (loaded.workspace) {
                model_ = std::move(loaded.workspace);
            }
        });
    }
    emit model_changed();
}

std::optional<app::Workspace> Desk::load_to_write() {
    core::wait_for_turn(model_->Model_Path(), patience);
    app::Loaded loaded = app::load_model(model_->Model_Path(), core::Access::write);
    if (loaded.refusal) {
        base::show(user_, *loaded.refusal);
    }
    if (loaded.workspace) {
        history_->attach(loaded.workspace->files);
    }
    return std::move(loaded.workspace);
}

bool Desk::change(std::string_view signature, const std::string& step,
                  const std::function<bool(app::Workspace&)>& work) {
    if (!model_ || (in_session_ && !lent_)) {
        return false;
    }
    bool done = false;
    if (lent_) {
        done = change_lent(signature, work);
    } else {
        const auto open_step = history_->step(step);
        attempt(signature, [&] {
            done = false;
            auto workspace = load_to_write();
            if (workspace && work(*workspace)) {
                workspace->save();
                done = true;
            }
        });
    }
    reload();
    return done;
}

namespace {

void take_back(app::Workspace& workspace, const core::Project& before) {
    workspace.files.rollback();
    workspace.project = before;
}

} // namespace

bool Desk::change_lent(std::string_view signature,
                       const std::function<bool(app::Workspace&)>& work) {
    const core::Project before = lent_->project;
    bool done = false;
    attempt(signature, [&] {
        done = false;
        lent_->files.commit(); // what the session holds aside is not to go with a failed command
        try {
            if (work(*lent_)) {
                lent_->save();
                done = true;
            }
        } catch (...) {
            take_back(*lent_, before);
            throw;
        }
    });
    if (!done) {
        take_back(*lent_, before);
    }
    return done;
}

std::optional<app::Workspace> Desk::begin_session(std::string_view signature,
                                                  const std::string& step) {
    std::optional<app::Workspace> workspace;
    if (model_ && !in_session_) {
        history_->begin(step);
        attempt(signature, [&] { workspace = load_to_write(); });
        in_session_ = workspace.has_value();
        if (!in_session_) {
            history_->end();
        }
    }
    return workspace;
}

void Desk::end_session() {
    lent_ = nullptr;
    if (std::exchange(in_session_, false)) {
        history_->end();
    }
    reload();
}

std::optional<std::string> Desk::undo_name() const {
    return history_ ? history_->undo_name() : std::nullopt;
}

std::optional<std::string> Desk::redo_name() const {
    return history_ ? history_->redo_name() : std::nullopt;
}

bool Desk::undo() {
    return go_over("undo()", &app::UndoHistory::undo);
}

bool Desk::redo() {
    return go_over("redo()", &app::UndoHistory::redo);
}

bool Desk::go_over(std::string_view signature,
                   std::optional<base::Refusal> (app::UndoHistory::*step)()) {
    if (!history_ || in_session_) {
        return false;
    }
    std::optional<base::Refusal> refusal;
    const report::Outcome outcome = attempt(signature, [&] {
        core::wait_for_turn(model_->Model_Path(), patience);
        refusal = ((*history_).*step)();
    });
    if (refusal) {
        base::show(user_, *refusal);
    }
    reload();
    return outcome == report::Outcome::done && !refusal;
}

void Desk::set_editor_open(bool open) {
    editor_open_ = open;
    emit editor_changed();
}

} // namespace ui
