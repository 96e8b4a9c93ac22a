#include "tools/print/json_report.h"

using kq_cfg::TChannel;
using kq_cfg::TMessage;
using kq_cfg::TMessageBox;
using kq_cfg::TReport;
using kq_cfg::TSeverity;

TJson MessagesJson(const std::vector<TMessage> &messages) {
    TJson array = TJson::array();
    for (const TMessage &message : messages) {
        array.push_back({{"severity", message.severity == TSeverity::kError ? "error" : "warning"},
                         {"text", TextJson(message.text)},
                         {"line", NumberOrNull(message.line)},
                         {"column", NumberOrNull(message.column)}});
    }
    return array;
}

TJson ChannelsJson(const std::vector<TChannel> &channels) {
    TJson array = TJson::array();
    for (const TChannel &channel : channels) {
        array.push_back({{"first", channel.first},
                         {"last", channel.last},
                         {"type", TextOrNull(channel.type)},
                         {"direction", TextOrNull(channel.direction)},
                         {"defined", channel.defined},
                         {"typeFree", channel.type_free},
                         {"directionFree", channel.direction_free},
                         {"name", TextJson(channel.name)}});
    }
    return array;
}

TJson ReportJson(const TReport &report) {
    TJson boxes = TJson::array();
    for (const TMessageBox &box : report.boxes) {
        boxes.push_back({{"title", TextJson(box.title)}, {"lines", TextsJson(box.lines)}});
    }
    return {{"template",
             {{"ok", report.result.ok},
              {"message", TextJson(report.result.message)},
              {"line", report.result.line},
              {"position", report.result.position}}},
            {"messages", MessagesJson(report.messages)},
            {"errors", report.errors},
            {"warnings", report.warnings},
            {"boxes", std::move(boxes)}};
}
