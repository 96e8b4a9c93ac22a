#include "model/par_reader.h"

#include <utility>

#include "model/sheet_data.h"
#include "model/template_values.h"
#include "scanner/text_par_scanner.h"

namespace kq_pdt {

namespace {

std::string ShownName(CSectionDef &section) {
    const CScopeGuard scope(&section);
    kq_base::CTextBuffer text;
    section.Names()->Items().AppendText(text);
    return std::string(text.View());
}

}  // namespace

void CParReader::Warn(std::string_view text1, std::string_view text2, std::uint32_t line) {
    if (CReportWindow *window = sheet_data_.Window()) {
        window->AddWarning(text1, text2, line);
    }
}

void CParReader::Read(std::string_view text) {
    par_scanner::CTextParScanner scanner(text);
    scanner_ = &scanner;
    TPending pending;
    for (bool more = scanner.FirstSection(); more; more = scanner.NextSection()) {
        pending.push_back(
            {std::string(scanner.SectionName()), scanner.GetActSectionHandle(), scanner.GetSectionLine()});
    }
    TPending retry;
    sheet_data_.Assignments().ForgetLostSources();
    while (true) {
        const bool any_read = RunPass(pending, retry);
        const bool any_module = FollowModules(retry);
        if (retry.empty() || !(any_read || any_module)) {
            break;
        }
        pending = std::move(retry);
        retry.clear();
    }
    retry.insert(retry.end(), lost_.begin(), lost_.end());
    for (const TParSectionRef &section : retry) {
        AddUnknownSection(section);
    }
    CheckRequiredSections();
    scanner_ = nullptr;
    scanner.Done();
}

bool CParReader::RunPass(const TPending &pending, TPending &retry) {
    sheet_data_.Assignments().SetReading(true);
    bool any_read = false;
    for (const TParSectionRef &section : pending) {
        scanner_->SetActSectionHandle(section.handle);
        if (ReadSection(section)) {
            any_read = true;
        } else {
            retry.push_back(section);
        }
    }
    sheet_data_.Assignments().SetReading(false);
    return any_read;
}

CSectionDef *CParReader::MatchDefinition(std::string_view name, std::unique_ptr<CItemSeq> &results) {
    CTemplateValues values;
    matcher_.Begin(name);
    sheet_data_.DefinitionNames().Find(name, names_);
    for (const CNameIndex::TEntry &found : names_) {
        values.Keep(*found.node);
        matcher_.AddPattern(found.node->Names()->Items(), found.node, nullptr);
    }
    if (!matcher_.Run()) {
        return nullptr;
    }
    results = matcher_.TakeResults();
    return static_cast<CSectionDef *>(names_[matcher_.Winner()].node);
}

CSectionDef *CParReader::MatchCandidates(std::string_view name, std::unique_ptr<CItemSeq> &results) {
    matcher_.Begin(name);
    for (CSectionDef *instance : candidates_) {
        matcher_.AddPattern(instance->Names()->Items(), instance, nullptr);
    }
    if (!matcher_.Run()) {
        return nullptr;
    }
    results = matcher_.TakeResults();
    return candidates_[matcher_.Winner()];
}

/// Of several instances that fit, one that no text was read into yet. Those of another definition than the best one
/// have to show the very same name.
CSectionDef *CParReader::MatchInstance(std::string_view name, std::unique_ptr<CItemSeq> &results) {
    sheet_data_.Instances().Index().FindCandidates(name, candidates_);
    CSectionDef *first = MatchCandidates(name, results);
    if (first == nullptr || !first->WasTaken()) {
        return first;
    }
    std::erase_if(candidates_, [&](CSectionDef *other) {
        return other->WasTaken() || (other->Definition() != first->Definition() && ShownName(*other) != name);
    });
    CSectionDef *fresh = MatchCandidates(name, results);
    return fresh != nullptr ? fresh : first;
}

/// False if neither a definition nor an instance has the name, so that a later pass may.
bool CParReader::ReadSection(const TParSectionRef &section) {
    std::unique_ptr<CItemSeq> results;
    CSectionDef *definition = MatchDefinition(section.name, results);
    CSectionDef *instance = nullptr;
    if (definition == nullptr || definition->DependOn() != nullptr) {
        results.reset();
        instance = MatchInstance(section.name, results);
        if (instance != nullptr) {
            definition = instance->Definition();
        } else if (definition == nullptr) {
            return false;
        }
    }
    const bool shared = definition->Has(nfModule) || definition->DependOn() != nullptr;
    if (instance == nullptr && shared) {
        // The section that a module requires came with the module and waits for its text.
        CSectionDef *first = sheet_data_.Instances().Index().FirstOf(definition);
        const bool waits =
            first != nullptr && definition->Has(nfModule) && definition->Has(nfRequired) && !first->WasTaken();
        instance = waits || !definition->Has(nfMultiple) ? first : nullptr;
    }
    if (instance == nullptr) {
        instance = &sheet_data_.Instances().Append(definition->Clone(true));
    }
    instance->SetTaken();
    if (shared) {
        read_.emplace_back(section, instance->Handle());
    }
    if (instance->Names() != nullptr && results) {
        const CScopeGuard scope(instance);
        instance->Names()->Items().CopyValues(*results);
        instance->Names()->Items().CountAsGiven(results->Items().size());
    }
    results.reset();
    ReadKeys(*definition, *instance);
    instance->RegisterChannels();
    Publish(*instance);
    instance->ReconsiderChannels();
    instance->CommitChannels();
    return true;
}

/// What no text gave a value counts as if its own text had been read.
void CParReader::Publish(CSectionDef &section) {
    section.PublishTree();
    if (!section.IsReleased()) {
        sheet_data_.Assignments().CreateAsFromText(section);
    }
}

}  // namespace kq_pdt
