// Compiling templates into the model: the driver's own, and those that the modules of `dll` values bring along.

#include <algorithm>
#include <array>
#include <string>

#include "model/sheet_data.h"
#include "model/texts.h"
#include "platform/base/files.h"
#include "platform/base/number_text.h"
#include "platform/base/paths.h"
#include "platform/view/message_box.h"
#include "template/compiler.h"
#include "template/language/host_callback.h"

namespace kq_pdt {

bool CParSheetData::CompileTemplate(std::string_view path, CSectionList &sections, TCompileResult &result) {
    std::string text;
    std::string error;
    if (!kq_base::CDisk::Current().Read(path, text, error)) {
        result = TCompileResult();
        result.message = texts::kCannotOpenTemplate;
        return false;
    }
    return CompileTemplateText(text, sections, result);
}

bool CParSheetData::CompileTemplateText(std::string_view text, CSectionList &sections, TCompileResult &result) {
    CPdtCompiler compiler;
    compiler.Init(*this, text, root_scope_, sections);
    const bool ok = compiler.Compile(&ranges_, &keyword_words_, result);
    no_channels_ = result.no_channels;
    can_add_multiple_ = can_add_multiple_ || std::any_of(sections.begin(), sections.end(), [](const auto &section) {
                            return section->Has(nfMultiple) && section->DependOn() == nullptr;
                        });
    assignments_.FindDependents(definitions_);
    return ok;
}

bool CParSheetData::LoadTemplate(std::string_view path, TCompileResult &result) {
    return CompileTemplate(path, definitions_, result);
}

bool CParSheetData::LoadTemplateText(std::string_view text, TCompileResult &result) {
    return CompileTemplateText(text, definitions_, result);
}

void CParSheetData::ReleaseDefinition(const CSectionDef &definition) {
    const auto found = std::find_if(definitions_.begin(), definitions_.end(),
                                    [&definition](const auto &other) { return other.get() == &definition; });
    if (found == definitions_.end()) {
        return;
    }
    std::unique_ptr<CSectionDef> section = std::move(*found);
    definitions_.erase(found);
    assignments_.FindDependents(definitions_);
    instances_.Release(std::move(section));
}

void CParSheetData::LoadModuleTemplate(CSectionRefs &loaded, std::string_view name) {
    for (const CSectionRefs released = std::move(loaded); const CSectionDef *definition : released) {
        instances_.ReleaseOf(*definition);
        ReleaseDefinition(*definition);
    }
    loaded.clear();
    CAbstractPdtIdeCallBack *host = HostCallback();
    if (name.empty() || host == nullptr) {
        return;
    }
    constexpr std::uint32_t kHigh = kq_base::TPathText::kBound;
    const kq_base::TPathText file(kq_base::ChangeExtension(name, "pdt"));
    std::array<char, kHigh + 1> path{};
    host->FindPdtFile(kHigh, file.Characters(), kHigh, path.data());

    if (module_depth_ == 0) {
        module_loads_ = 0;
        module_limit_shown_ = false;
    }
    CSectionList sections;
    TCompileResult result;
    if (module_depth_ >= kMaxModuleDepth || module_loads_ >= kMaxModuleLoads) {
        if (!module_limit_shown_) {
            module_limit_shown_ = true;
            result.message = texts::kTemplateTooDeep;
            ShowTemplateBox(path.data(), result);
        }
        return;
    }
    ++module_loads_;
    if (!CompileTemplate(path.data(), sections, result)) {
        for (const auto &section : sections) {
            section->Done();
        }
        ShowTemplateBox(path.data(), result);
        return;
    }
    ++module_depth_;
    TakeModuleSections(sections, loaded);
    --module_depth_;
    Post(cmRebuildSheets);
}

void CParSheetData::TakeModuleSections(CSectionList &sections, CSectionRefs &loaded) {
    const CInstances::CHold hold(instances_);
    Post(cmKeywordsChanged);
    for (std::unique_ptr<CSectionDef> &section : sections) {
        CSectionDef &definition = AppendDefinition(std::move(section));
        definition.SetFlag(nfModule);
        loaded.push_back(&definition);
        if (definition.Has(nfRequired)) {
            CSectionDef &instance = instances_.Append(definition.Clone(true));
            instance.PublishTree();
            instance.CommitChannels();
            if (loaded.empty() || loaded.back() != &definition) {
                return;  // what was published has switched this very module off
            }
        }
    }
}

void CParSheetData::ShowTemplateBox(std::string_view path, const TCompileResult &result) {
    TMessageBox box;
    box.title = texts::kTemplateBoxTitle;
    box.lines[0] = kq_base::TText(std::string(texts::kTemplateBoxError).append(path)).View();
    box.lines[1] = kq_base::TText(std::string(result.message.View())
                                      .append(texts::kTemplateBoxLine)
                                      .append(kq_base::DecimalText(result.line))
                                      .append(texts::kTemplateBoxPosition)
                                      .append(kq_base::DecimalText(result.position)))
                       .View();
    box.icon = TBoxIcon::kStop;
    DoMessageBox2(box);
}

}  // namespace kq_pdt
