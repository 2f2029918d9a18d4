#include "ui/manualwindow.h"

#include "base/paths.h"
#include "ui/text.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolBar>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* first_page = "README.md";

QString text_of(const QString& file) {
    QFile page(file);
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

// Shows the pages of one folder; other addresses go to the desktop.
class PageBrowser : public QTextBrowser {
public:
    PageBrowser(const QString& folder, QWidget* parent) : QTextBrowser(parent) {
        setSearchPaths({folder});
        setOpenLinks(false);
        // A new page has the toolkit's narrow margin again.
        connect(this, &QTextBrowser::sourceChanged, this,
                [this] { document()->setDocumentMargin(fontMetrics().height()); });
        connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) { follow(url); });
    }

protected:
    // Pictures wider than the page are made to fit.
    QVariant loadResource(int type, const QUrl& name) override {
        QVariant found = QTextBrowser::loadResource(type, name);
        const int room =
            window()->width() - 5 * fontMetrics().height(); // before it is laid out, too
        QImage image;
        if (type == QTextDocument::ImageResource && room > 0 &&
            image.loadFromData(found.toByteArray()) && image.width() > room) {
            return image.scaledToWidth(room, Qt::SmoothTransformation);
        }
        return found;
    }

private:
    void follow(const QUrl& url) {
        if (!url.scheme().isEmpty() && url.scheme() != "file") {
            QDesktopServices::openUrl(url);
        } else if (url.isRelative() && url.path().isEmpty()) {
            scrollToAnchor(url.fragment());
        } else {
            setSource(source().resolved(url), QTextDocument::MarkdownResource);
        }
    }
};

} // namespace

std::optional<std::filesystem::path> manual_folder() {
    const std::filesystem::path program = base::executable_folder();
    for (const char* folder : {"../share/doc/tervexdesk/manual", "../docs/manual",
                               "../../docs/manual", "../../../docs/manual", "manual"}) {
        if (base::is_file(program / folder / first_page)) {
            return (program / folder).lexically_normal();
        }
    }
    return std::nullopt;
}

ManualWindow::ManualWindow(const QString& folder, QWidget* parent)
    : QMainWindow(parent), folder_(folder) {
    setObjectName("Help");
    setWindowTitle("Help");
    setContextMenuPolicy(Qt::PreventContextMenu);
    auto* middle = new QWidget(this);
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins({});
    browser_ = new PageBrowser(folder, middle);
    browser_->setObjectName("manual");
    browser_->setAccessibleName("Manual");
    column->addWidget(browser_);
    setCentralWidget(middle);
    build_bar();
    const int width = fontMetrics().averageCharWidth();
    resize(125 * width, 46 * fontMetrics().height());
}

void ManualWindow::build_bar() {
    QToolBar* bar = addToolBar("Manual");
    bar->setMovable(false);
    const auto add = [&](const char* text, const char* keys, auto&& slot) {
        QAction* action = bar->addAction(text);
        action->setShortcut(QKeySequence(keys));
        action->setToolTip(QString("%1 (%2)").arg(text, keys));
        connect(action, &QAction::triggered, browser_, slot);
        return action;
    };
    QAction* back = add("Back", "Alt+Left", &QTextBrowser::backward);
    QAction* forward = add("Forward", "Alt+Right", &QTextBrowser::forward);
    add("Contents", "Alt+Home", [this] { show_page({}); });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

    auto* space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    search_ = new QLineEdit(bar);
    search_->setObjectName("search");
    search_->setPlaceholderText("Search");
    search_->setAccessibleName("Search in the manual");
    search_->setClearButtonEnabled(true);
    search_->setMaximumWidth(40 * fontMetrics().averageCharWidth());
    bar->addWidget(search_);
    connect(search_, &QLineEdit::returnPressed, this, [this] { find(false); });
    add("Next", "F3", [this] { find(false); });
    add("Previous", "Shift+F3", [this] { find(true); });
    auto* focus = new QAction(this);
    focus->setShortcut(QKeySequence("Ctrl+F"));
    connect(focus, &QAction::triggered, this, &ManualWindow::begin_search);
    auto* close = new QAction(this);
    close->setShortcut(QKeySequence("Esc"));
    connect(close, &QAction::triggered, this, &QWidget::close);
    addActions({focus, close});
}

void ManualWindow::show_page(const QString& page) {
    const QString name = page.section('#', 0, 0), section = page.section('#', 1);
    const bool there = !name.isEmpty() && QFile::exists(QDir(folder_).filePath(name));
    const QString file = QDir(folder_).filePath(there ? name : first_page);
    browser_->setSource(QUrl::fromLocalFile(file), QTextDocument::MarkdownResource);
    if (there && !section.isEmpty()) {
        show_section(section);
    }
}

// A section is a heading, or a paragraph that begins with its name in bold.
void ManualWindow::show_section(const QString& name) {
    QTextDocument& page = *browser_->document();
    QTextCursor found(&page);
    bool begins = false;
    while (!begins && !found.isNull()) {
        found = page.find(name, found, QTextDocument::FindCaseSensitively);
        begins = found.charFormat().fontWeight() >= QFont::Bold &&
                 found.selectionStart() == found.block().position();
    }
    if (!found.isNull()) {
        found.setPosition(found.selectionStart());
        browser_->moveCursor(QTextCursor::End); // so that it is scrolled to the upper edge
        browser_->setTextCursor(found);
    }
}

void ManualWindow::begin_search() {
    search_->setFocus();
    search_->selectAll();
}

void ManualWindow::find(bool backward) {
    const QString text = search_->text();
    if (text.isEmpty()) {
        return;
    }
    const auto direction = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (!browser_->find(text, direction)) {
        find_on_other_pages(text);
    }
}

// The next page, round the manual, that has the text; the same one from its beginning at last.
void ManualWindow::find_on_other_pages(const QString& text) {
    const QStringList pages = QDir(folder_).entryList({"*.md"}, QDir::Files, QDir::Name);
    const qsizetype here = pages.indexOf(browser_->source().fileName());
    for (qsizetype step = 1; step <= pages.size(); ++step) {
        const QString page = pages[(here + step) % pages.size()];
        if (text_of(QDir(folder_).filePath(page)).contains(text, Qt::CaseInsensitive)) {
            show_page(page);
            browser_->moveCursor(QTextCursor::Start);
            if (browser_->find(text)) {
                return;
            }
        }
    }
    browser_->moveCursor(QTextCursor::Start);
    QApplication::beep();
}

} // namespace ui
