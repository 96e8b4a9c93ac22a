#pragma once

#include <string_view>

#include "configurator/kq_pdt.h"
#include "tools/session/script.h"

/// Why something can't be done as things are, for people; empty if it was done.
using TRefusal = std::string_view;

/// What a person does at the window, by the operations that a mouse or a keyboard would use. What it sets off waits in
/// the queue of events afterwards.
class CWindowCommands {
public:
    explicit CWindowCommands(CConfiguratorWindow &window) : window_(window) {}

    TRefusal Menu(std::string_view text);
    TRefusal Tool(std::string_view text);
    TRefusal Tab(std::uint32_t tab);
    void NextMessage();
    TRefusal Message(std::uint32_t row);
    TRefusal Undo();
    TRefusal Redo();
    TRefusal Find(std::string_view text);
    TRefusal NextProblem();
    /// The line and the column count from 1.
    TRefusal Replace(std::uint32_t line, std::uint32_t column, std::uint32_t count, std::string_view text);

    TRefusal Select(const TPlace &place);
    TRefusal Edit(const TPlace &place);
    TRefusal Type(std::string_view text);
    TRefusal Choose(std::uint32_t entry);
    TRefusal Commit();
    TRefusal Cancel();
    TRefusal Set(const TPlace &place, std::string_view text);

    /// Commits an open editor, as whatever leaves the cell does.
    void LeaveCell();

private:
    /// The table of a place, if it is shown.
    CSheetView *ShownTable(const TPlace &place);
    /// The table whose cell is edited; null without an editor.
    CSheetView *EditedTable();
    TRefusal Enter(std::string_view text);

    CConfiguratorWindow &window_;
};
