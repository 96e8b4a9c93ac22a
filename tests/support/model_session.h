#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "configurator/session.h"
#include "driver/channels/channel_range.h"
#include "model/sheet_edit.h"
#include "platform/base/code_page.h"
#include "platform/base/number_text.h"
#include "platform/base/paths.h"
#include "platform/view/message_box.h"
#include "template/language/host_callback.h"
#include "template/language/keywords.h"

/// UTF-8, as tests are written, to the code page.
inline std::string Bytes(std::string_view utf8) {
    std::string bytes;
    kq_base::FromUtf8(utf8, bytes);
    return bytes;
}

/// A host whose modules and templates are in one directory.
class CDirectoryHost final : public CAbstractPdtIdeCallBack {
public:
    explicit CDirectoryHost(std::string directory) : directory_(std::move(directory)) {}

    void FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override {
        asked.emplace_back(name);
        kq_base::CopyToBuffer(kq_base::JoinPath(directory_, kq_base::ViewOfPair(high, name)), path_high, path);
    }
    bool FindFirstModule(std::uint32_t name_high, char *name, std::uint32_t path_high, char *path) override {
        next_ = 0;
        return FindNextModule(name_high, name, path_high, path);
    }
    bool FindNextModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t path_high, char *path) override {
        if (next_ == further.size()) {
            return false;
        }
        kq_base::CopyToBuffer(further[next_++], path_high, path);
        return true;
    }
    void GetModulesDir(std::uint32_t high, char *path) override {
        ++listed;
        kq_base::CopyToBuffer(directory_, high, path);
    }

    std::uint32_t listed = 0;          ///< how often the directory was asked for
    std::vector<std::string> further;  ///< paths of modules beyond the directory's
    std::vector<std::string> asked;    ///< names of templates that were looked for

private:
    std::string directory_;
    std::size_t next_ = 0;
};

/// A session with what a test wants to see of it: messages, boxes, channels and texts, all in UTF-8.
class CModelSession : public kq_pdt::CConfiguratorSession {
public:
    CModelSession() {
        former_ = SetMessageBoxHandler([this](const TMessageBox &box) {
            boxes.push_back(kq_base::ToUtf8(box.title + ": " + box.lines[0] + "|" + box.lines[1] + "|" + box.lines[2]));
            return TBoxAnswer::kOk;
        });
    }
    ~CModelSession() override {
        SheetData().Done();
        kq_pdt::SetHostCallback(nullptr);
        SetMessageBoxHandler(std::move(former_));
    }
    CModelSession(const CModelSession &) = delete;
    CModelSession &operator=(const CModelSession &) = delete;

    bool Translate(std::string_view pdt, std::string_view par, std::string_view dmf = {}) {
        SetTemplateText(Bytes(pdt));
        ParView().SetText(Bytes(par));
        DmfView().SetText(Bytes(dmf));
        ClearMessages();
        return TranslateToModel() == TOutcome::kDone;
    }
    /// The model as a parameter file, with plain line ends.
    std::string Written() {
        WritePar();
        std::string text = kq_base::ToUtf8(ParView().Text());
        std::erase(text, '\r');
        return text;
    }
    /// "E:3,7 text" or "W:3 text", a line each.
    std::string MessageLines() const {
        std::string lines;
        for (std::size_t row = 0; row < Messages().Rows().size(); ++row) {
            const auto &[icon, text] = Messages().Rows()[row];
            const auto &record = Messages().Records()[row];
            lines += icon == kq_pdt::CMessageList::TIcon::kError ? "E" : "W";
            if (record.HasPosition()) {
                lines += ":" + std::to_string(record.line);
                lines += record.column == 0 ? "" : "," + std::to_string(record.column);
            }
            lines += " " + kq_base::ToUtf8(text.View()) + "\n";
        }
        return lines;
    }
    /// "1-4 real input; 5-5 ? ?", with a star before a range that a definition covers.
    std::string Channels() {
        std::string text;
        kq_pdt::CChannelRange range;
        for (std::uint32_t row = 0; SheetData().Ranges().GetRow(row, range); ++row) {
            const auto word = [](std::uint32_t code) {
                return code == kq_pdt::kUndefinedCode ? std::string("?") : std::string(kq_pdt::KeywordText(code));
            };
            text += (row == 0 ? "" : "; ") + std::string(range.defined ? "*" : "") + std::to_string(range.first) + "-" +
                    std::to_string(range.last) + " " + word(range.type) + " " + word(range.direction);
        }
        return text;
    }
    kq_pdt::CSectionDef &Section(std::size_t index) { return *SheetData().Instances().List().at(index); }
    kq_pdt::CKeyDef &Key(std::size_t section, std::size_t key) { return *Section(section).Keys().at(key); }

    /// The text of a cell of a key's name and lines, counted from 1; in brackets while it is disabled.
    static std::string Cell(kq_pdt::CKeyDef &key, std::uint32_t index) {
        kq_base::CTextBuffer text;
        bool disabled = false;
        const kq_pdt::CScopeGuard section(key.Section());
        key.GetCellInfo(index, text, kq_pdt::TCellField::kValue, disabled);
        const std::string shown = kq_base::ToUtf8(text.View());
        return disabled ? "(" + shown + ")" : shown;
    }
    /// Opens the editor of a cell, lets a person act on it, and closes it as the sheet does.
    static void Edit(kq_pdt::CParSheetData &data, kq_pdt::CKeyDef &key, std::uint32_t index,
                     const std::function<bool(kq_pdt::TCellEditor &)> &act) {
        kq_pdt::CSheetEdit edit(data);
        if (kq_pdt::TCellEditor *editor = edit.OpenCell(*key.Section(), &key, index)) {
            edit.CloseCell(act(*editor));
        }
    }

    std::vector<std::string> boxes;

private:
    TMessageBoxHandler former_;
};
