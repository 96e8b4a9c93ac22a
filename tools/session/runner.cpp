#include "tools/session/runner.h"

#include <algorithm>

namespace {

TDriverPath DriverPath(const std::string &path) {
    TDriverPath bounded{};
    std::copy_n(path.begin(), std::min(path.size(), bounded.text.size() - 1), bounded.text.begin());
    return bounded;
}

std::uint32_t NumberOf(const TScriptCommand &command, std::size_t index) {
    return static_cast<std::uint32_t>(command.arguments.at(index).number);
}

}  // namespace

CSessionRunner::CSessionRunner(const std::vector<TScriptCommand> &script, CSessionReport &report)
    : script_(script), report_(report), former_source_(SetEventSource(this)) {
    kq_pdt::Init_();
}

CSessionRunner::~CSessionRunner() { SetEventSource(former_source_); }

bool CSessionRunner::Run() {
    while (next_ < script_.size()) {
        BeginCommand();
        if (window_ != nullptr) {
            RunWindow();
        } else {
            ProcessEvents();
        }
        FinishCommand();
    }
    report_.End();
    return all_done_;
}

void CSessionRunner::BeginCommand() {
    answer_ = {};
    running_ = true;
    const TScriptCommand &command = script_[next_++];
    answer_.refusal = CarryOut(command);
}

void CSessionRunner::FinishCommand() {
    const TScriptCommand &command = script_[next_ - 1];
    answer_.events = surroundings_.Recorder().Take();
    if (running_) {
        report_.Command(command, answer_);
        all_done_ = all_done_ && answer_.refusal.empty();
    } else if (!answer_.events.empty()) {
        report_.MoreEvents(command, answer_.events);
    }
    running_ = false;
}

void CSessionRunner::Wait(CView &window) {
    if (&window != window_) {
        person_.Act(window);
        return;
    }
    FinishCommand();
    if (next_ < script_.size()) {
        BeginCommand();
    } else {
        MakeEvent(window, ecCommand, kEndLoop);
    }
}

void CSessionRunner::RunWindow() {
    const std::uint32_t code = window_->Exec();
    const std::string title = window_->Title();
    window_->Done();
    surroundings_.Recorder().Add({{"window", TextJson(title)}, {"ended", code}});
    delete window_;
    window_ = nullptr;
    configurator_ = nullptr;
    ProcessEvents();
}

TRefusal CSessionRunner::CarryOut(const TScriptCommand &command) {
    using enum TScriptVerb;
    if (command.verb < kOpen) {
        return CarryOutAround(command);
    }
    const bool comes = command.verb == kOpen || command.verb == kCreate;
    if (comes == (window_ != nullptr)) {
        if (command.verb == kFind || command.verb == kNextProblem) {
            answer_.given["place"] = nullptr;
        }
        return comes ? "a window is open" : "no window is open";
    }
    return CarryOutAtWindow(command);
}

TRefusal CSessionRunner::CarryOutAtWindow(const TScriptCommand &command) {
    using enum TScriptVerb;
    const auto text = [&command](std::size_t index) { return std::string_view(command.arguments.at(index).text); };
    const auto place = [&command]() -> const TPlace & { return command.arguments.at(0).place; };
    if (command.verb == kOpen || command.verb == kCreate) {
        return command.verb == kOpen ? Open(command) : Create(command);
    }
    CWindowCommands person(*window_);
    switch (command.verb) {
        case kViewSettings:
            return ReadViewSettings();
        case kQueryClose:
            return QueryClose();
        case kCloseRequest:
            MakeEvent(*window_, ecCommand, kCloseLoop);
            return {};
        case kMenu:
            return person.Menu(text(0));
        case kTool:
            return person.Tool(text(0));
        case kTab:
            return person.Tab(NumberOf(command, 0));
        case kNextMessage:
            person.NextMessage();
            return {};
        case kMessage:
            return person.Message(NumberOf(command, 0));
        case kSelect:
            return person.Select(place());
        case kEdit:
            return person.Edit(place());
        case kType:
            return person.Type(text(0));
        case kChoose:
            return person.Choose(NumberOf(command, 0));
        case kCommit:
            return person.Commit();
        case kCancel:
            return person.Cancel();
        case kSet:
            return person.Set(place(), text(1));
        case kReplace:
            return person.Replace(NumberOf(command, 0), NumberOf(command, 1), NumberOf(command, 2), text(3));
        case kUndo:
            return person.Undo();
        case kRedo:
            return person.Redo();
        case kFind:
            return FindCell(person.Find(text(0)));
        case kNextProblem:
            return FindCell(person.NextProblem());
        default:
            AdvanceTimers(1000);
            return {};
    }
}

TRefusal CSessionRunner::Open(const TScriptCommand &command) {
    const auto path = [&command](std::size_t index) { return DriverPath(command.arguments.at(index).text); };
    return Show(OpenEditor(path(0), path(1), path(2)));
}

TRefusal CSessionRunner::Create(const TScriptCommand &command) {
    const auto text = [&command](std::size_t index) { return command.arguments.at(index).text; };
    surroundings_.Host().SetFiles({.module = text(1), .pdt = text(2), .par = text(3), .dmf = text(4)});
    const std::string name = text(0);
    return Show(CreateDriverConfigurator(static_cast<std::uint32_t>(name.size()), name.c_str(), &surroundings_.Host(),
                                         &configurator_));
}

TRefusal CSessionRunner::Show(CConfiguratorWindow *window) {
    window_ = window;
    if (window == nullptr) {
        return "no window came";
    }
    window->SetVisible(true);
    return {};
}

TRefusal CSessionRunner::ReadViewSettings() {
    if (configurator_ == nullptr) {
        return "the window has no host";
    }
    CWindowCommands(*window_).LeaveCell();
    configurator_->ReadViewSettings();
    return {};
}

TRefusal CSessionRunner::QueryClose() {
    if (configurator_ == nullptr) {
        return "the window has no host";
    }
    CWindowCommands(*window_).LeaveCell();
    const bool result = configurator_->QueryClose();
    answer_.given["result"] = result;
    // A host that may close its window doesn't let it run on.
    if (result) {
        MakeEvent(*window_, ecCommand, kEndLoop);
    }
    return {};
}

TRefusal CSessionRunner::FindCell(TRefusal refusal) {
    CSheetView &sheet = window_->Sheet();
    answer_.given["place"] = refusal.empty() ? TJson(PlaceText(sheet, sheet.Selection())) : TJson(nullptr);
    return refusal;
}
