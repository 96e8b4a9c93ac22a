#include "tools/session/event_recorder.h"

#include <utility>

namespace {

const char *IconWord(TBoxIcon icon) {
    switch (icon) {
        case TBoxIcon::kStop:
            return "stop";
        case TBoxIcon::kQuestionMark:
            return "question";
        case TBoxIcon::kInfo:
            break;
    }
    return "info";
}

TJson ButtonWords(TBoxButtons buttons) {
    switch (buttons) {
        case TBoxButtons::kYesNo:
            return {"yes", "no"};
        case TBoxButtons::kYesNoCancel:
            return {"yes", "no", "cancel"};
        case TBoxButtons::kOk:
            break;
    }
    return TJson::array({"ok"});
}

const char *AnswerWord(TBoxAnswer answer) {
    switch (answer) {
        case TBoxAnswer::kYes:
            return "yes";
        case TBoxAnswer::kNo:
            return "no";
        case TBoxAnswer::kCancel:
            return "cancel";
        case TBoxAnswer::kOk:
            break;
    }
    return "ok";
}

}  // namespace

void CEventRecorder::Box(const TMessageBox &box, TBoxAnswer answer) {
    TJson texts = TJson::array({TextJson(box.title)});
    for (const std::string &line : box.lines) {
        texts.push_back(TextJson(line));
    }
    Add({{"box", std::move(texts)},
         {"icon", IconWord(box.icon)},
         {"buttons", ButtonWords(box.buttons)},
         {"answer", AnswerWord(answer)}});
}

void CEventRecorder::Host(std::string_view operation, const std::vector<std::string_view> &arguments) {
    TJson texts = TJson::array();
    for (const std::string_view argument : arguments) {
        texts.push_back(TextJson(argument));
    }
    Add({{"host", operation}, {"arguments", std::move(texts)}});
}

void CEventRecorder::Save(std::string_view path, bool ok) { Add({{"save", TextJson(path)}, {"ok", ok}}); }

TJson CEventRecorder::Take() { return std::exchange(events_, TJson::array()); }
