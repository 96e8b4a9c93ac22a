#include "configurator/kq_cfg.h"

#include <utility>

#include "configurator/describe.h"
#include "configurator/place_edit.h"
#include "configurator/session.h"
#include "model/matcher.h"
#include "platform/base/bounded_text.h"
#include "platform/base/paths.h"
#include "platform/view/message_box.h"
#include "template/compiler.h"
#include "template/language/host_callback.h"

namespace kq_cfg {

namespace {

/// A host that knows a language and a directory of modules, and nothing else.
class CDirectoryHost final : public CAbstractPdtIdeCallBack {
public:
    explicit CDirectoryHost(TOptions options) : options_(std::move(options)) {}

    void FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override {
        kq_base::CopyToBuffer(kq_base::JoinPath(options_.modules.value_or(""), kq_base::ViewOfPair(high, name)),
                              path_high, path);
    }
    bool FindFirstModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                         char * /*path*/) override {
        return false;
    }
    void GetModulesDir(std::uint32_t high, char *path) override {
        kq_base::CopyToBuffer(options_.modules.value_or(""), high, path);
    }
    void GetLanguage(std::uint32_t &language) override { language = options_.language.value_or(0xFFFFFFFF); }

private:
    TOptions options_;
};

TMessage DescribeRow(const kq_pdt::CMessageList::TRow &row, const kq_pdt::CMessageList::TMessageRecord &record) {
    TMessage message;
    message.severity = row.icon == kq_pdt::CMessageList::TIcon::kError ? TSeverity::kError : TSeverity::kWarning;
    message.text = row.text.View();
    if (record.HasPosition()) {
        message.line = record.line;
        if (record.column != 0) {
            message.column = record.column;
        }
    }
    return message;
}

}  // namespace

bool TReport::Good() const {
    for (const TMessageBox &box : boxes) {
        if (box.stop) {
            return false;
        }
    }
    return result.ok && errors == 0;
}

/// The session with what surrounds it. The library has one host and one answerer of message boxes, so each piece of
/// work sets its own and restores the former ones.
struct CConfiguration::TState {
    class CWork {
    public:
        explicit CWork(TState &state) : former_host_(kq_pdt::HostCallback()) {
            kq_pdt::SetHostCallback(state.host.get());
            former_handler_ = SetMessageBoxHandler([&state](const ::TMessageBox &box) {
                state.report.boxes.push_back(
                    {box.title, {box.lines.begin(), box.lines.end()}, box.icon == TBoxIcon::kStop});
                return TBoxAnswer::kOk;
            });
        }
        ~CWork() {
            SetMessageBoxHandler(std::move(former_handler_));
            kq_pdt::SetHostCallback(former_host_);
        }
        CWork(const CWork &) = delete;
        CWork &operator=(const CWork &) = delete;

    private:
        CAbstractPdtIdeCallBack *former_host_;
        TMessageBoxHandler former_handler_;
    };

    explicit TState(const TOptions &options) {
        if (options.language || options.modules) {
            host = std::make_unique<CDirectoryHost>(options);
        }
    }
    ~TState() {
        const CWork work(*this);
        session.SheetData().Done();
    }
    TState(const TState &) = delete;
    TState &operator=(const TState &) = delete;

    void BeginReport() {
        report = TReport();
        session.ClearMessages();
    }
    void FinishReport(bool template_ok) {
        const kq_pdt::TCompileResult &compiled = session.TemplateResult();
        report.result = {template_ok, std::string(compiled.message.View()), compiled.line, compiled.position};
        ReportNewMessages();
        const std::uint32_t stop = session.SheetData().Ranges().DmfStopLine();
        if (stop != 0) {
            report.dmf_end = stop;
        }
    }
    void ReportNewMessages() {
        const kq_pdt::CMessageList &messages = session.Messages();
        for (std::size_t row = report.messages.size(); row < messages.Rows().size(); ++row) {
            report.messages.push_back(DescribeRow(messages.Rows()[row], messages.Records()[row]));
            ++(report.messages.back().severity == TSeverity::kError ? report.errors : report.warnings);
        }
    }

    std::unique_ptr<CDirectoryHost> host;
    kq_pdt::CConfiguratorSession session;
    TReport report;
};

CConfiguration::CConfiguration(const TOptions &options) : state_(std::make_unique<TState>(options)) {}

CConfiguration::~CConfiguration() = default;

void CConfiguration::Translate(std::string_view template_text, std::string_view par_text, std::string_view dmf_text) {
    const TState::CWork work(*state_);
    state_->BeginReport();
    state_->session.SetTemplateText(template_text);
    state_->session.ParView().SetText(par_text);
    state_->session.DmfView().SetText(dmf_text);
    const auto outcome = state_->session.TranslateToModel();
    state_->FinishReport(outcome != kq_pdt::CConfiguratorSession::TOutcome::kTemplateFailed);
}

void CConfiguration::TranslateForRepair(std::string_view template_text, std::string_view par_text) {
    const TState::CWork work(*state_);
    state_->BeginReport();
    state_->session.SetTemplateText(template_text);
    state_->session.ParView().SetText(par_text);
    const auto outcome = state_->session.RepairDmf();
    state_->FinishReport(outcome != kq_pdt::CConfiguratorSession::TOutcome::kTemplateFailed);
}

const TReport &CConfiguration::Report() const { return state_->report; }

TEditOutcome CConfiguration::Set(std::string_view place, std::string_view value) {
    const TState::CWork work(*state_);
    TEditOutcome outcome;
    outcome.ok = kq_pdt::CPlaceEdit(state_->session.SheetData()).Set(place, value, outcome.message);
    state_->ReportNewMessages();
    return outcome;
}

TEditOutcome CConfiguration::Add(std::string_view place) {
    const TState::CWork work(*state_);
    TEditOutcome outcome;
    outcome.ok = kq_pdt::CPlaceEdit(state_->session.SheetData()).Add(place, outcome.added, outcome.message);
    state_->ReportNewMessages();
    return outcome;
}

TEditOutcome CConfiguration::Remove(std::string_view place) {
    const TState::CWork work(*state_);
    TEditOutcome outcome;
    outcome.ok = kq_pdt::CPlaceEdit(state_->session.SheetData()).Remove(place, outcome.message);
    state_->ReportNewMessages();
    return outcome;
}

std::string CConfiguration::ParText() const {
    const TState::CWork work(*state_);
    state_->session.WritePar();
    return std::string(state_->session.ParView().Text());
}

std::string CConfiguration::DmfText() const {
    const TState::CWork work(*state_);
    state_->session.WriteDmf();
    return std::string(state_->session.DmfView().Text());
}

std::vector<TChannel> CConfiguration::Channels() const { return Describe(state_->session.SheetData().Ranges()); }

TTemplate DescribeTemplate(const TOptions &options, std::string_view template_text, std::string_view dmf_text) {
    return CConfiguration(options).CompileTemplate(template_text, dmf_text);
}

TTemplate CConfiguration::CompileTemplate(std::string_view template_text, std::string_view dmf_text) {
    const TState::CWork work(*state_);
    state_->BeginReport();
    state_->session.SetTemplateText(template_text);
    state_->session.DmfView().SetText(dmf_text);
    const bool ok = state_->session.CompileTemplate();
    state_->FinishReport(ok);

    const kq_pdt::CParSheetData &data = state_->session.SheetData();
    TTemplate result;
    result.report = state_->report;
    result.no_channels = data.NoChannels();
    result.can_add_multiple = data.CanAddMultiple();
    for (const kq_base::TText &word : data.KeywordWords()) {
        result.keywords.emplace_back(word.View());
    }
    result.channels = Channels();
    result.variables = Describe(&state_->session.SheetData().RootScope());
    for (const auto &section : data.Definitions()) {
        result.sections.push_back(Describe(*section));
    }
    return result;
}

TEvaluation EvaluateExpression(std::string_view expression, const TVariables &variables) {
    kq_pdt::CParSheetData data;
    for (const auto &[name, value] : variables) {
        TParValue stored;
        if (value.kind == TValueKind::kText) {
            stored = TParValue::Text(value.text);
        } else if (value.kind == TValueKind::kNumber) {
            stored = TParValue::Number(value.number);
        } else if (value.kind == TValueKind::kBool) {
            stored = TParValue::Bool(value.truth);
        }
        data.RootScope().Declare(name).Replace(stored);
    }
    kq_pdt::CPdtCompiler compiler;
    kq_pdt::CSectionList sections;
    compiler.Init(data, expression, data.RootScope(), sections);
    std::unique_ptr<kq_pdt::CExpression> tree;
    kq_pdt::TCompileResult compiled;
    TEvaluation result;
    result.ok = compiler.CompileExpression(tree, compiled);
    result.message = compiled.message.View();
    if (result.ok) {
        TParValue value;
        tree->Evaluate(value);
        result.value = Describe(value);
        result.tree = Describe(*tree);
    }
    return result;
}

TMatch MatchValueList(std::string_view value_list, std::string_view text) {
    kq_pdt::CParSheetData data;
    kq_pdt::CPdtCompiler compiler;
    kq_pdt::CSectionList sections;
    compiler.Init(data, value_list, data.RootScope(), sections);
    std::unique_ptr<kq_pdt::CItemList> list;
    kq_pdt::TCompileResult compiled;
    TMatch result;
    result.ok = compiler.CompileValueList(list, compiled);
    result.message = compiled.message.View();
    if (!result.ok) {
        return result;
    }
    kq_pdt::CMatcher matcher;
    const kq_base::TText bounded(text);
    matcher.Begin(bounded.View());
    matcher.AddPattern(list->Items(), nullptr, nullptr);
    result.matched = matcher.Run();
    if (result.matched) {
        const auto results = matcher.TakeResults();
        for (const auto &item : results->Items()) {
            kq_base::CTextBuffer shown;
            const bool writes = item->AppendText(shown);
            result.items.push_back({KindOf(*item), writes ? std::optional<std::string>(shown.View()) : std::nullopt});
        }
    }
    return result;
}

}  // namespace kq_cfg
