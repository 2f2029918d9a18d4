// The dialog of a failure: what happened and where, and how the program goes on.
#pragma once

#include "base/interaction.h"

#include <QString>

#include <functional>

class QUrl;
class QWidget;

namespace report {
class FailureLog;
}

namespace ui {

// What the buttons of the dialog reach outside of the program.
struct ReportWays {
    std::function<void(const QString& text, QWidget* parent)> print; // asks for the printer
    std::function<void(const QUrl&)> open;                           // web page, e-mail program
};
ReportWays system_ways();

// Appends the failure to the log, then shows it in the dialog ErrPtnr and gives the answer, Leave
// when the dialog was closed. While the dialog is open, another failure is only appended; it is
// left. Messages and questions of the dialog go to `user`, and so does the beep. The report is
// saved as NAME.ERR beside NAME.EPT.
base::Reaction show_error_report(QWidget* parent, const base::Failure& failure,
                                 report::FailureLog& log, int number, base::Interaction& user,
                                 const ReportWays& ways = system_ways());

} // namespace ui
