#include "desktop/kqconf/changes_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBlock>
#include <QVBoxLayout>

#include "desktop/kqconf/line_diff.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

namespace {

using TKind = TDiffLine::TKind;

QStringList LinesOf(const std::string &text) {
    QString lines = ToQt(text);
    lines.remove(QLatin1Char('\r'));
    return lines.split(QLatin1Char('\n'));
}

void AppendLine(QTextCursor &cursor, const TDiffLine &line) {
    QTextBlockFormat block;
    QChar sign = QLatin1Char(' ');
    if (line.kind == TKind::kRemoved) {
        block.setBackground(QColor(214, 69, 69, 55));
        sign = u'−';
    } else if (line.kind == TKind::kAdded) {
        block.setBackground(QColor(46, 158, 91, 60));
        sign = QLatin1Char('+');
    }
    if (!cursor.atStart()) {
        cursor.insertBlock();
    }
    cursor.setBlockFormat(block);
    const auto number = [](int value) { return value == 0 ? QString() : QString::number(value); };
    cursor.insertText(
        QStringLiteral("%1 %2  %3 %4").arg(number(line.before), 5).arg(number(line.after), 5).arg(sign).arg(line.text));
}

/// All that differs, each with some lines around it.
QWidget *MakePage(const std::vector<TDiffLine> &lines) {
    constexpr std::size_t kAround = 3;
    auto *page = new QPlainTextEdit;
    page->setReadOnly(true);
    page->setPlaceholderText(QStringLiteral("Soubor se nezmění."));
    page->setLineWrapMode(QPlainTextEdit::NoWrap);
    page->setAccessibleName(QStringLiteral("Porovnání po řádcích"));
    QFont font(QStringLiteral("monospace"));
    font.setStyleHint(QFont::Monospace);
    page->setFont(font);
    std::vector<bool> shown(lines.size(), false);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (lines[at].kind != TKind::kEqual) {
            const std::size_t from = at < kAround ? 0 : at - kAround;
            for (std::size_t near = from; near < std::min(lines.size(), at + kAround + 1); ++near) {
                shown[near] = true;
            }
        }
    }
    QTextCursor cursor(page->document());
    cursor.beginEditBlock();
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (shown[at]) {
            AppendLine(cursor, lines[at]);
        } else if (at != 0 && shown[at - 1]) {
            cursor.insertBlock(QTextBlockFormat());
            cursor.insertText(QStringLiteral("     ⋯"));
        }
    }
    cursor.endEditBlock();
    page->moveCursor(QTextCursor::Start);
    return page;
}

QString Summary(const std::vector<TDiffLine> &lines) {
    int added = 0;
    int removed = 0;
    for (const TDiffLine &line : lines) {
        added += line.kind == TKind::kAdded ? 1 : 0;
        removed += line.kind == TKind::kRemoved ? 1 : 0;
    }
    return added == 0 && removed == 0 ? QStringLiteral("beze změny")
                                      : QStringLiteral("přibude řádků: %1, ubude řádků: %2").arg(added).arg(removed);
}

QStringList LostComments(const TComparison &file) {
    QStringList lost = CommentsOf(ToQt(file.before));
    for (const QString &kept : CommentsOf(ToQt(file.after))) {
        lost.removeOne(kept);
    }
    return lost;
}

}  // namespace

QStringList CommentsOf(const QString &text) {
    QStringList comments;
    qsizetype depth = 0;
    qsizetype begin = 0;
    bool quoted = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QStringView two = QStringView(text).mid(at, 2);
        if (depth == 0 && text[at] == QLatin1Char('\'')) {
            quoted = !quoted;
        } else if (text[at] == QLatin1Char('\n')) {
            quoted = false;
        } else if (!quoted && two == u"(*") {
            begin = depth == 0 ? at : begin;
            ++depth;
            ++at;
        } else if (depth > 0 && two == u"*)") {
            if (--depth == 0) {
                comments.append(text.mid(begin, at + 2 - begin));
            }
            ++at;
        }
    }
    return comments;
}

void ShowChanges(QWidget &parent, const QString &title, const QList<TComparison> &files) {
    QDialog dialog(&parent);
    dialog.setWindowTitle(title);
    dialog.resize(860, 560);
    auto *layout = new QVBoxLayout(&dialog);
    auto *tabs = new QTabWidget;
    for (const TComparison &file : files) {
        const std::vector<TDiffLine> lines = CompareLines(LinesOf(file.before), LinesOf(file.after));
        auto *page = new QWidget;
        auto *rows = new QVBoxLayout(page);
        rows->addWidget(new QLabel(QStringLiteral("%1: %2").arg(file.name, Summary(lines))));
        const QStringList lost = LostComments(file);
        if (!lost.isEmpty()) {
            auto *label = new QLabel(
                QStringLiteral("Ztratí se komentáře (%1): %2").arg(lost.size()).arg(lost.join(QLatin1Char(' '))));
            label->setTextFormat(Qt::PlainText);
            label->setWordWrap(true);
            label->setStyleSheet(QStringLiteral("color: #d64545"));
            rows->addWidget(label);
        }
        rows->addWidget(MakePage(lines), 1);
        tabs->addTab(page, file.name);
    }
    auto *buttons = new QDialogButtonBox;
    QPushButton *close = buttons->addButton(QStringLiteral("&Zavřít"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(tabs, 1);
    layout->addWidget(buttons);
    dialog.exec();
}

}  // namespace kq_desktop
