#pragma once

#include <cstddef>
#include <vector>

#include "configurator/kq_pdt.h"
#include "tools/console/console.h"
#include "tools/session/report.h"
#include "tools/session/script.h"
#include "tools/session/search_person.h"
#include "tools/session/surroundings.h"
#include "tools/session/window_commands.h"

/// Runs a script. While a window is open its own loop runs, and whenever no event waits there, the next command of the
/// script is carried out: this object is where the loop turns to for what a person does.
///
/// The members lie in two files: runner.cpp (the order of things, the window) and runner_surroundings.cpp.
class CSessionRunner final : private CEventSource {
public:
    CSessionRunner(const std::vector<TScriptCommand> &script, CSessionReport &report);
    ~CSessionRunner() override;
    CSessionRunner(const CSessionRunner &) = delete;
    CSessionRunner &operator=(const CSessionRunner &) = delete;

    /// True if every command was carried out.
    bool Run();

private:
    void Wait(CView &window) override;
    void ModalBegan(CView &window) override { person_.WindowBegan(window); }
    void ModalEnded(CView &window, std::uint32_t code) override { person_.WindowEnded(window, code); }

    /// Begins the next command; what it sets off may still wait in the queue.
    void BeginCommand();
    /// All that the last command set off has happened.
    void FinishCommand();
    /// Runs the window until it ends, with as many commands as that takes.
    void RunWindow();

    TRefusal CarryOut(const TScriptCommand &command);
    TRefusal CarryOutAround(const TScriptCommand &command);
    TRefusal CarryOutAtWindow(const TScriptCommand &command);
    void SetSurroundings(const TScriptCommand &command);
    TRefusal Open(const TScriptCommand &command);
    TRefusal Create(const TScriptCommand &command);
    TRefusal Show(CConfiguratorWindow *window);
    TRefusal ReadViewSettings();
    TRefusal QueryClose();
    TRefusal FindCell(TRefusal refusal);
    TRefusal Expect(const TScriptCommand &command);
    TRefusal ShowFile(const std::string &path);
    TRefusal Write(const std::string &path, const std::string &text);
    void ShowSettings();
    void ShowState(const TScriptCommand &command);

    const std::vector<TScriptCommand> &script_;
    CSessionReport &report_;
    CSurroundings surroundings_;
    CSearchPerson person_{surroundings_.Recorder()};
    CEventSource *former_source_ = nullptr;

    std::size_t next_ = 0;
    bool running_ = false;  ///< a command was begun and not finished
    bool all_done_ = true;
    TSessionAnswer answer_;

    CConfiguratorWindow *window_ = nullptr;
    CAbstractDriverConfigurator *configurator_ = nullptr;  ///< null if the window has no host
};
