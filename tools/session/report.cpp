#include "tools/session/report.h"

#include "tools/console/diagnostics.h"
#include "tools/session/outline.h"

namespace {

std::string BoxLine(const TJson &event) {
    std::string text = event["box"][0];
    std::string separator = ": ";
    for (std::size_t line = 1; line < event["box"].size(); ++line) {
        const std::string part = event["box"][line];
        if (!part.empty()) {
            text += separator + part;
            separator = " / ";
        }
    }
    return "box: " + text + " [" + event["answer"].get<std::string>() + "]";
}

std::string HostLine(const TJson &event) {
    std::string text = "host: " + event["host"].get<std::string>();
    for (const TJson &argument : event["arguments"]) {
        text += " \"" + argument.get<std::string>() + "\"";
    }
    return text;
}

}  // namespace

void CSessionReport::Command(const TScriptCommand &command, const TSessionAnswer &answer) {
    if (json_) {
        TJson json = {{"line", command.line},
                      {"command", command.name},
                      {"ok", answer.refusal.empty()},
                      {"events", answer.events}};
        json.update(answer.given);
        answers_.push_back(std::move(json));
        return;
    }
    ShowEvents(command, answer.events);
    if (!answer.refusal.empty()) {
        const auto found = answer.given.find("found");
        const std::string value = found == answer.given.end() ? "" : ": " + found->dump();
        PrintDiagnostic(console_, script_,
                        {.text = command.name + ": " + answer.refusal + value, .line = command.line});
    }
    console_.out.Write(Outline(command.verb, answer.given));
}

void CSessionReport::MoreEvents(const TScriptCommand &command, const TJson &events) {
    if (!json_) {
        ShowEvents(command, events);
        return;
    }
    TJson &all = answers_.back()["events"];
    all.insert(all.end(), events.begin(), events.end());
}

void CSessionReport::ShowEvents(const TScriptCommand &command, const TJson &events) {
    for (const TJson &event : events) {
        const bool box = event.contains("box");
        if (box || event.contains("host")) {
            PrintDiagnostic(
                console_, script_,
                {.kind = TDiagnosticKind::kNote, .text = box ? BoxLine(event) : HostLine(event), .line = command.line});
        }
    }
}

void CSessionReport::End() {
    if (json_) {
        console_.out.Write(Dumped(answers_));
    }
}
