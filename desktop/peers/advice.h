#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <cstdint>
#include <vector>

class CListBox;
class CSheetView;
class CTextView;

namespace kq_desktop {

/// A place in a text that a message is about; line and column count from 1, a column of 0 is the whole line.
struct TTextMark {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    bool error = false;
    QString message;
};

/// What the program knows of its views beyond what the toolkit says, for the peers to show. Without a program's own
/// answer there is nothing more.
class CPeerAdvice {
public:
    virtual ~CPeerAdvice() = default;

    /// What is said of a cell to its user, why it is disabled, and what is wrong with a row.
    virtual QString CellHelp(CSheetView & /*sheet*/, std::uint32_t /*table*/, std::uint32_t /*row*/,
                             std::uint32_t /*column*/) {
        return {};
    }
    virtual QString CellReason(CSheetView & /*sheet*/, std::uint32_t /*table*/, std::uint32_t /*row*/,
                               std::uint32_t /*column*/) {
        return {};
    }
    virtual QString RowProblem(CSheetView & /*sheet*/, std::uint32_t /*table*/, std::uint32_t /*row*/) { return {}; }
    /// The name of a sheet, text or list for those who don't see it.
    virtual QString NameOf(const void * /*view*/) { return {}; }
    /// Where in the text a row of a list is about; empty without a place.
    virtual QString RowPlace(const CListBox & /*list*/, std::size_t /*row*/) { return {}; }
    virtual std::vector<TTextMark> TextMarks(const CTextView & /*text*/) { return {}; }

    /// What a button of a command is called that has no text of its own.
    virtual QString CommandName(std::uint32_t /*command*/) { return {}; }
    /// The keys that give a command, and its text with a mark before the letter that chooses it from a menu.
    virtual QList<QKeySequence> Shortcuts(std::uint32_t /*command*/) { return {}; }
    virtual QString MenuText(const QString &text) { return text; }
    /// A person is about to leave the active tab.
    virtual void LeavingTab() {}
    /// True if the program carries a command out by itself, instead of the view's receiver.
    virtual bool HandleCommand(std::uint32_t /*command*/) { return false; }
    /// The name of the file of an icon in the resources, by its number; empty for none.
    virtual QString IconName(std::uint32_t /*icon*/) { return {}; }
};

}  // namespace kq_desktop
