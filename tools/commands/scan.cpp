#include <algorithm>
#include <cstddef>

#include "platform/base/code_page.h"
#include "scanner/par_scanner.h"
#include "tools/commands.h"
#include "tools/console/files.h"
#include "tools/print/json_rows.h"
#include "tools/print/par_surface.h"
#include "tools/print/report_text.h"

namespace {

class CJsonSurface : public CSurfaceSink {
public:
    explicit CJsonSurface(COutput &output) : output_(output) {
        output_.Write("{\"sections\": ");
        sections_.emplace(output_, " ");
    }
    void BeginSection(const std::string &name, std::uint32_t line) override {
        sections_->Next();
        output_.Write("{\"name\":" + TextJson(name).dump() + ",\"line\":" + std::to_string(line) + ",\"keys\":");
        keys_.emplace(output_, "  ");
    }
    void Key(const TSurfaceKey &key) override {
        TJson values = TJson::array();
        for (const TSurfaceValue &value : key.values) {
            values.push_back({{"value", TextJson(value.value)},
                              {"separator", value.separator ? TextJson(par_scanner::TokenKindText(*value.separator))
                                                            : TJson(nullptr)}});
        }
        keys_->Add({{"name", TextJson(key.name)},
                    {"line", key.line},
                    {"text", TextOrNull(key.text)},
                    {"values", std::move(values)}});
    }
    void EndSection() override {
        keys_->End();
        output_.Write("}");
    }
    void End() {
        sections_->End();
        output_.Write("}\n");
    }

private:
    COutput &output_;
    std::optional<CJsonRows> sections_;
    std::optional<CJsonRows> keys_;
};

/// `LINE  [NAME]`, and indented below it `LINE    KEY = «VALUE», «VALUE»`.
class CSurfaceOutline : public CSurfaceSink {
public:
    explicit CSurfaceOutline(COutput &output) : output_(output) {}
    void BeginSection(const std::string &name, std::uint32_t line) override {
        WriteLine(line, "[" + kq_base::ToUtf8(name) + "]");
    }
    void Key(const TSurfaceKey &key) override {
        std::string text = "  " + kq_base::ToUtf8(key.name);
        text += key.text ? " =" : "";
        for (const TSurfaceValue &value : key.values) {
            text += value.separator == par_scanner::kComma ? ", " : " ";
            text += "«" + kq_base::ToUtf8(value.value) + "»";
        }
        WriteLine(key.line, text);
    }
    void EndSection() override {}

private:
    void WriteLine(std::uint32_t line, const std::string &text) {
        constexpr std::size_t kNumberWidth = 6;
        const std::string number = std::to_string(line);
        output_.Write(std::string(kNumberWidth - std::min(number.size(), kNumberWidth), ' ') + number + "  " + text +
                      "\n");
    }

    COutput &output_;
};

}  // namespace

int RunScan(const TArguments &arguments, TConsole &console) {
    CSourceText par;
    if (!ReadSource(console, arguments.par, par)) {
        return kFailed;
    }
    if (arguments.json) {
        CJsonSurface surface(console.out);
        ReadSurface(par.Text(), surface);
        surface.End();
    } else {
        CSurfaceOutline outline(console.out);
        ReadSurface(par.Text(), outline);
        PrintUnreadText(console, par);
    }
    return kDone;
}
