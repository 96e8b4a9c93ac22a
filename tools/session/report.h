#pragma once

#include <string>

#include "tools/console/console.h"
#include "tools/console/source_text.h"
#include "tools/print/json_text.h"
#include "tools/session/script.h"

/// What came of one command.
struct TSessionAnswer {
    std::string refusal;  ///< empty if it was carried out
    TJson events = TJson::array();
    TJson given = TJson::object();  ///< what else the command gives
};

/// Reports the commands of a session: as JSON, all at the end, or to a person as they come.
class CSessionReport {
public:
    CSessionReport(TConsole &console, const CSourceText &script, bool json)
        : console_(console), script_(script), json_(json) {}

    void Command(const TScriptCommand &command, const TSessionAnswer &answer);
    /// More events of the last command.
    void MoreEvents(const TScriptCommand &command, const TJson &events);
    void End();

private:
    void ShowEvents(const TScriptCommand &command, const TJson &events);

    TConsole &console_;
    const CSourceText &script_;
    bool json_;
    TJson answers_ = TJson::array();
};
