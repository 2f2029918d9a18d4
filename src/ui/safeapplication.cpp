#include "ui/safeapplication.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "report/attempt.h"

#include <clocale>
#include <new>

namespace ui {

SafeApplication::SafeApplication(int& argc, char** argv) : QApplication(argc, argv) {
    std::setlocale(LC_MESSAGES, "C");
}

bool SafeApplication::notify(QObject* receiver, QEvent* event) {
    if (!user_) {
        return QApplication::notify(receiver, event);
    }
    try {
        return QApplication::notify(receiver, event);
    } catch (const report::ProgramEnd&) {
        exit(0);
    } catch (const base::FileFailure& failure) {
        tell({failure.what(), failure.file()});
    } catch (const base::RangeFailure& failure) {
        tell({failure.what(), {}});
    } catch (const std::bad_alloc&) {
        tell({"out of memory", {}});
    }
    return true;
}

void SafeApplication::tell(const base::Failure& failure) {
    if (user_->failure(failure) == base::Reaction::end) {
        exit(0);
    }
}

} // namespace ui
