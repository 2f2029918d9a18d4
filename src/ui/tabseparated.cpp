#include "ui/tabseparated.h"

namespace ui {

namespace {

class Reader {
public:
    explicit Reader(const QString& text) : text_(text) {}

    std::vector<QStringList> rows() {
        std::vector<QStringList> rows;
        while (at_ < text_.size()) {
            rows.push_back(row());
        }
        return rows;
    }

private:
    bool at_line_end() const { return text_[at_] == '\n' || text_[at_] == '\r'; }

    QStringList row() {
        QStringList cells{cell()};
        while (at_ < text_.size() && text_[at_] == '\t') {
            ++at_;
            cells.push_back(cell());
        }
        if (at_ < text_.size()) {
            at_ += text_.mid(at_, 2) == "\r\n" ? 2 : 1;
        }
        return cells;
    }

    QString cell() {
        QString cell = at_ < text_.size() && text_[at_] == '"' ? quoted() : QString();
        while (at_ < text_.size() && text_[at_] != '\t' && !at_line_end()) {
            cell += text_[at_++];
        }
        return cell;
    }

    QString quoted() {
        QString cell;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == '"') {
                ++at_;
                if (at_ == text_.size() || text_[at_] != '"') {
                    break;
                }
            }
            cell += text_[at_];
        }
        return cell;
    }

    const QString& text_;
    qsizetype at_ = 0;
};

QString cell_text(QString cell) {
    for (const QChar special : {QChar('\t'), QChar('\n'), QChar('\r'), QChar('"')}) {
        if (cell.contains(special)) {
            return '"' + cell.replace('"', "\"\"") + '"';
        }
    }
    return cell;
}

} // namespace

std::vector<QStringList> parse_tab_separated(const QString& text) {
    return Reader(text).rows();
}

QString tab_separated(const std::vector<QStringList>& rows) {
    QString text;
    for (const QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0) {
                text += '\t';
            }
            text += cell_text(row[i]);
        }
        text += '\n';
    }
    return text;
}

} // namespace ui
