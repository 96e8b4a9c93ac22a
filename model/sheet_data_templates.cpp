// Compiling templates into the model: the driver's own, and those that the modules of `dll` values bring along.

#include <algorithm>
#include <array>
#include <string>

#include "model/journal.h"
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
    references_outdated_ = true;
    return ok;
}

bool CParSheetData::LoadTemplate(std::string_view path, TCompileResult &result) {
    const bool ok = CompileTemplate(path, definitions_, result);
    definition_names_outdated_ = true;
    no_channels_ = result.no_channels;
    return ok;
}

bool CParSheetData::LoadTemplateText(std::string_view text, TCompileResult &result) {
    const bool ok = CompileTemplateText(text, definitions_, result);
    definition_names_outdated_ = true;
    no_channels_ = result.no_channels;
    return ok;
}

void CParSheetData::ReleaseDefinition(const CSectionDef &definition) {
    const auto found = std::find_if(definitions_.begin(), definitions_.end(),
                                    [&definition](const auto &other) { return other.get() == &definition; });
    if (found == definitions_.end()) {
        return;
    }
    const auto index = found - definitions_.begin();
    std::unique_ptr<CSectionDef> section = std::move(*found);
    CSectionDef *released = section.get();
    definitions_.erase(found);
    references_outdated_ = true;
    if (!definition_names_outdated_ && released->Names() != nullptr) {
        definition_names_.Remove(CNameIndex::LeadsOf(released->Names()->Items()), released->Serial());
    }
    CJournal::Note([this, released, index] {
        definition_names_outdated_ = true;
        definitions_.insert(definitions_.begin() + index, std::unique_ptr<CSectionDef>(instances_.Unbury(*released)));
    });
    instances_.Bury(std::move(section));
}

void CParSheetData::ReleaseModule(TLoadedModule &loaded) {
    CJournal::Keep(loaded, keyword_words_);
    const TLoadedModule released = std::move(loaded);
    loaded = {};
    const bool notes = assignments_.NoteLostSources(true);
    for (const CSectionDef *definition : released.sections) {
        instances_.ReleaseOf(*definition);
        ReleaseDefinition(*definition);
    }
    assignments_.NoteLostSources(notes);
    for (const std::uint32_t first : released.channels) {
        RemoveChannelRange(first);
    }
    if (!released.words.empty()) {
        TellKeywordsChanged();
    }
    for (const kq_base::TText &word : released.words) {
        const auto found = std::find(keyword_words_.rbegin(), keyword_words_.rend(), word);
        if (found != keyword_words_.rend()) {
            keyword_words_.erase(std::next(found).base());
        }
    }
}

CSharedNames CParSheetData::ModulesWith(const CNameList &procedures) {
    return reading_par_ ? module_lists_.Find(procedures) : ListModules(procedures);
}

/// An edit that is taken back changes them again.
void CParSheetData::TellKeywordsChanged() {
    Post(cmKeywordsChanged);
    CJournal::Note([this] { Post(cmKeywordsChanged); });
}

void CParSheetData::LoadModuleTemplate(TLoadedModule &loaded, std::string_view name) {
    const CScopeIsolation isolation(root_scope_);
    const CInstances::CHold hold(instances_);
    ReleaseModule(loaded);
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
    const std::size_t own_words = keyword_words_.size();
    const bool compiled = CompileTemplate(path.data(), sections, result);
    loaded.channels = result.channels;
    loaded.words.assign(keyword_words_.begin() + static_cast<std::ptrdiff_t>(own_words), keyword_words_.end());
    if (!compiled) {
        for (std::unique_ptr<CSectionDef> &section : sections) {
            instances_.Bury(std::move(section));  // an edit that is taken back still empties it
        }
        ReleaseModule(loaded);
        ShowTemplateBox(path.data(), result);
        return;
    }
    ++module_depth_;
    TakeModuleSections(sections, loaded);
    --module_depth_;
    Post(cmRebuildSheets);
}

/// What the required sections publish may concern sections that the template declares further down, so all definitions
/// are there first.
void CParSheetData::TakeModuleSections(CSectionList &sections, TLoadedModule &loaded) {
    TellKeywordsChanged();
    for (std::unique_ptr<CSectionDef> &section : sections) {
        CSectionDef &definition = AppendDefinition(std::move(section));
        definition.SetFlag(nfModule);
        loaded.sections.push_back(&definition);
    }
    const std::vector<CSectionDef *> taken = loaded.sections;
    for (CSectionDef *definition : taken) {
        if (!definition->Has(nfRequired)) {
            continue;
        }
        CSectionDef &instance = instances_.Append(definition->Clone(true));
        instance.PublishTree();
        // While a file is read the section's text may still come and define its channels.
        if (!reading_par_ && !instance.IsReleased() && !instance.CommitChannels()) {
            Refuse(true);
        }
        if (loaded.sections != taken) {
            return;  // what was published has switched this very module off
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
