#include "tools/driver/drive_report.h"
#include "tools/driver/driver_words.h"
#include "tools/print/json_rows.h"

namespace {

TJson ChannelsJson(const std::optional<std::vector<TDriverChannels>> &channels) {
    if (!channels) {
        return nullptr;
    }
    TJson array = TJson::array();
    for (const TDriverChannels &each : *channels) {
        array.push_back({{"first", each.first},
                         {"last", each.first + (each.count - 1)},
                         {"type", TextOrNull(ChannelTypeWord(each))},
                         {"direction", TextOrNull(ChannelDirectionWord(each))},
                         {"flag", each.flag},
                         {"description", TextJson(each.description)},
                         {"detail", TextJson(each.detail)}});
    }
    return array;
}

TJson ResultJson(const TStepResult &result) {
    return {{"ok", result.ok}, {"code", result.code}, {"text", result.text}};
}

TJson ValuesJson(const std::deque<TDrivePoint> &points, const std::optional<THalfRound> &half, bool read) {
    TJson array = TJson::array();
    for (std::size_t index = 0; half && index < points.size(); ++index) {
        const TStepResult &result = half->values[index];
        TJson json = {{"channel", points[index].channel},
                      {"type", points[index].value.TypeWord()},
                      {"value", result.ok || !read ? points[index].value.Json() : TJson(nullptr)}};
        json.update(ResultJson(result));
        if (read) {
            json["status"] = result.ok ? TJson(result.status) : TJson(nullptr);
        }
        array.push_back(std::move(json));
    }
    return array;
}

TJson WholeJson(const std::optional<THalfRound> &half) { return half ? ResultJson(half->whole) : TJson(nullptr); }

class CDriveJson : public CDriveReport {
public:
    explicit CDriveJson(COutput &output) : output_(output) {}

    void Head(const TDriveHead &head) override {
        head_ = {{"version", NumberOrNull(head.version)},
                 {"description", TextOrNull(head.description)},
                 {"name", TextJson(head.name)},
                 {"instance", head.instance},
                 {"parameters", nullptr},
                 {"channels", nullptr},
                 {"channelMistakes", TJson::array()}};
    }
    void Parameters(const TParametersAnswer &answer) override {
        head_["parameters"] = {{"ok", answer.ok},
                               {"message", TextJson(answer.message)},
                               {"a", answer.a},
                               {"b", answer.b},
                               {"detail", TextJson(answer.detail)}};
    }
    void Channels(const std::optional<std::vector<TDriverChannels>> &channels,
                  const std::vector<std::string> &mistakes) override {
        head_["channels"] = ChannelsJson(channels);
        head_["channelMistakes"] = mistakes;
    }
    void Round(const TDrivePlan &plan, const std::optional<THalfRound> &written,
               const std::optional<THalfRound> &read) override {
        Rounds().Add({{"writes", ValuesJson(plan.writes, written, false)},
                      {"output", WholeJson(written)},
                      {"reads", ValuesJson(plan.reads, read, true)},
                      {"input", WholeJson(read)}});
    }
    void End(bool interrupted, bool good, const std::string &message) override {
        Rounds().End();
        const TJson tail = {{"interrupted", interrupted}, {"ok", good}, {"message", message}};
        output_.Write(",\n" + Dumped(tail).substr(2));
    }

private:
    /// The rounds follow the head, which is whole once the first comes.
    CJsonRows &Rounds() {
        if (!rounds_) {
            std::string text = Dumped(head_);
            text.resize(text.rfind("\n}"));
            output_.Write(text + ",\n  \"rounds\": ");
            rounds_.emplace(output_, "    ");
        }
        return *rounds_;
    }

    COutput &output_;
    TJson head_;
    std::optional<CJsonRows> rounds_;
};

}  // namespace

std::unique_ptr<CDriveReport> MakeDriveJson(TConsole &console) { return std::make_unique<CDriveJson>(console.out); }
