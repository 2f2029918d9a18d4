// The toolkit's application with a net below the handlers of events: a failure that none of them
// took comes to the user like all others.
#pragma once

#include <QApplication>

namespace base {
class Interaction;
struct Failure;
} // namespace base

namespace ui {

class SafeApplication : public QApplication {
    Q_OBJECT

public:
    // The system tells its reasons in English, the language of the texts that they stand in; the
    // toolkit has taken over the user's locale.
    SafeApplication(int& argc, char** argv);

    // nullptr: there is nobody to tell, and failures pass.
    void set_user(base::Interaction* user) { user_ = user; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void tell(const base::Failure& failure);

    base::Interaction* user_ = nullptr;
};

} // namespace ui
