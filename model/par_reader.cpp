#include "model/par_reader.h"

#include <algorithm>
#include <utility>

#include "model/sheet_data.h"
#include "model/texts.h"
#include "scanner/text_par_scanner.h"

namespace kq_pdt {

namespace {

/// Puts the variables of definitions back at its end. Where a name publishes, matching it assigns to them; but every
/// name is matched with the values that the template gives, and every instance begins with those. A channel that a
/// variable took when the name was matched stays its value, or each match would take another.
class CTemplateValues {
public:
    CTemplateValues() = default;
    ~CTemplateValues() {
        for (const auto &[variable, value] : values_) {
            variable->Replace(value);
        }
    }
    CTemplateValues(const CTemplateValues &) = delete;
    CTemplateValues &operator=(const CTemplateValues &) = delete;

    void Keep(const CDefNode &node) {
        if (node.Scope() != nullptr) {
            for (const auto &[name, variable] : node.Scope()->Variables()) {
                if (variable->Stored().kind != TParKind::pvNewChannel) {
                    values_.emplace_back(variable.get(), variable->Stored());
                }
            }
        }
    }

private:
    std::vector<std::pair<CVariable *, TParValue>> values_;
};

/// May a value of the key go to a variable?
bool MayPublish(const CKeyDef &key) {
    return std::any_of(key.Pars().begin(), key.Pars().end(), [](const auto &par) {
        const auto &items = par->Items().Items();
        return std::any_of(items.begin(), items.end(), [](const auto &item) { return item->IdVariable() != nullptr; });
    });
}

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

/// Nothing is written of a key whose values are switched off, so a line may be the first sign that no text comes for
/// those before it in the template. What they have counts from there on. A key whose line is further down waits for it.
void CParReader::PassOverKeys(CSectionDef &instance, const CKeyDef &key, std::size_t &next) {
    const auto &keys = instance.Keys();
    for (; next < keys.size() && keys[next].get() != &key && !keys[next]->Has(nfMultiple); ++next) {
        CKeyDef &passed = *keys[next];
        if (!passed.WasRead() && MayPublish(passed) && !HasLine(instance, passed)) {
            const CScopeGuard section_scope(&instance);
            const CScopeGuard key_scope(&passed);
            for (const auto &par : passed.Pars()) {
                par->Items().PublishWithoutText();
            }
        }
    }
}

/// Does the section of the text have a line for the key?
bool CParReader::HasLine(CSectionDef &instance, const CKeyDef &key) {
    CSectionDef &definition = *instance.Definition();
    for (const std::string_view name : std::exchange(lines_, {})) {
        matcher_.Begin(name);
        definition.KeyNames().Find(name, names_);
        for (const CNameIndex::TEntry &found : names_) {
            matcher_.AddPattern(found.node->Names()->Items(), &definition, found.node);
        }
        if (matcher_.RunSilently()) {
            keys_with_line_.insert(names_[matcher_.Winner()].node);
        }
    }
    return keys_with_line_.contains(key.Definition());
}

/// Keeps what HasLine needs, unless no key of the section can be passed over.
void CParReader::NoteLines(const CSectionDef &instance) {
    lines_.clear();
    keys_with_line_.clear();
    if (instance.Keys().empty() || instance.Keys().front()->Has(nfMultiple)) {
        return;
    }
    for (bool more = scanner_->FirstKey(); more; more = scanner_->NextKey()) {
        lines_.push_back(scanner_->KeyName());
    }
}

void CParReader::ReadKeys(CSectionDef &definition, CSectionDef &instance) {
    NoteLines(instance);
    std::size_t next = 0;
    for (bool more = scanner_->FirstKey(); more; more = scanner_->NextKey()) {
        const std::string_view text = scanner_->KeyName();
        if (CKeyDef *key = KeyFor(text, definition, instance)) {
            PassOverKeys(instance, *key, next);
            ReadValues(text, instance, *key);
            key->SetRead();
            if (key->Has(nfChannels)) {
                const CScopeGuard scope(&instance);
                key->RegisterChannels();
            }
        } else {
            std::string_view value;
            scanner_->KeyPars(value);
            AddUnknownKey(text, value, instance);
            Warn(texts::kUnknownKey, text, scanner_->GetKeyLine());
        }
    }
}

const CKeyDef *CParReader::MatchKey(std::string_view text, CSectionDef &definition,
                                    std::unique_ptr<CItemSeq> &results) {
    CTemplateValues values;
    values.Keep(definition);
    matcher_.Begin(text);
    definition.KeyNames().Find(text, names_);
    for (const CNameIndex::TEntry &found : names_) {
        values.Keep(*found.node);
        matcher_.AddPattern(found.node->Names()->Items(), &definition, found.node);
    }
    if (!matcher_.Run()) {
        return nullptr;
    }
    const auto *key = static_cast<const CKeyDef *>(names_[matcher_.Winner()].node);
    if (!key->Has(nfMultiple) || !matcher_.LinesUp()) {
        results = matcher_.TakeResults();
    }
    return key;
}

/// A key with the name that was matched: clones of the results or, where these can be spared, clones of the
/// definition's items with what results would hold.
std::unique_ptr<CKeyDef> CParReader::NewKey(const CKeyDef &definition, const CItemSeq *results) {
    std::unique_ptr<CKeyDef> key = definition.Clone(true, results);
    if (results == nullptr) {
        matcher_.PutInto(key->Names()->Items());
        key->Names()->Items().ForceIntoRange();
    }
    return key;
}

/// The instance key that a key of the text belongs to: one of its own for a `multiple` key, otherwise the clone of the
/// definition. None for an unknown key.
CKeyDef *CParReader::KeyFor(std::string_view text, CSectionDef &definition, CSectionDef &instance) {
    std::unique_ptr<CItemSeq> results;
    const CKeyDef *found = MatchKey(text, definition, results);
    if (found == nullptr) {
        return nullptr;
    }
    CKeyDef *key = nullptr;
    if (found->Has(nfMultiple)) {
        key = &instance.AddKey(NewKey(*found, results.get()));
    } else {
        key = instance.CloneOf(*found);
        if (key == nullptr) {
            return nullptr;
        }
    }
    const CScopeGuard section_scope(&instance);
    const CScopeGuard key_scope(key);
    CItemSeq &names = key->Names()->Items();
    if (!found->Has(nfMultiple)) {
        names.CopyValues(*results);
    }
    names.CountAsGiven(results ? results->Items().size() : names.Items().size());
    return key;
}

/// The texts go to the values of the key in order. A value that is switched off is passed over, and one that may stay
/// empty leaves a text that it doesn't accept to the next. A module's name is written in any case, so it is taken from
/// the text while it is switched off, too, if it is there. A value is published as it is taken, so it can switch later
/// ones.
void CParReader::ReadValues(std::string_view key_text, CSectionDef &instance, CKeyDef &key) {
    const auto &pars = key.Pars();
    std::size_t next = 0;
    const auto is_enabled = [&](const CParDef &par) {
        const CScopeGuard section_scope(&instance);
        const CScopeGuard key_scope(&key);
        return par.AnyEnabled();
    };
    const auto pass_over = [&] {
        const CScopeGuard section_scope(&instance);
        const CScopeGuard key_scope(&key);
        pars[next++]->Items().PublishWithoutText();
    };
    const auto skip_disabled = [&] {
        while (next < pars.size() && !pars[next]->Items().HasModule() && !is_enabled(*pars[next])) {
            pass_over();
        }
    };
    std::string_view value;
    std::uint32_t separator = 0;
    bool has_separator = false;
    bool has_value = scanner_->FirstValue(value);
    const auto next_value = [&] {
        has_value = scanner_->NextValue(value, separator);
        has_separator = true;
    };
    skip_disabled();
    while (has_value && next < pars.size()) {
        CParDef &par = *pars[next];
        if (TakeValue(value, has_separator, separator, instance, key, par)) {
            next_value();
            ++next;
        } else {
            if (!par.AllOptional() && is_enabled(par)) {
                ReportRefusedValue(key_text, value);
                next_value();
            }
            pass_over();
        }
        skip_disabled();
    }
    while (next < pars.size()) {
        pass_over();
    }
    if (!has_value || pars.empty() || !pars.back()->Items().ReadsAll()) {
        return;
    }
    const CScopeGuard section_scope(&instance);
    const CScopeGuard key_scope(&key);
    while (has_value) {
        pars.back()->Items().AppendRaw(separator, value);
        next_value();
    }
}

bool CParReader::TakeValue(std::string_view value, bool has_separator, std::uint32_t separator, CSectionDef &instance,
                           CKeyDef &key, CParDef &par) {
    matcher_.Begin(value);
    matcher_.AddPattern(par.Items(), &instance, &key);
    if (!matcher_.Run()) {
        return false;
    }
    const CScopeGuard section_scope(&instance);
    const CScopeGuard key_scope(&key);
    if (matcher_.LinesUp()) {
        matcher_.PutInto(par.Items());
    } else {
        par.Items().CopyValues(*matcher_.TakeResults());
    }
    if (has_separator) {
        par.SetSeparator(separator);
    }
    return true;
}

void CParReader::ReportRefusedValue(std::string_view key_text, std::string_view value) {
    if (CReportWindow *window = sheet_data_.Window()) {
        kq_base::CTextBuffer text;
        text.Append(key_text);
        text.Append(" ");
        text.Append(texts::kValueOfParameter);
        text.Append(value);
        window->AddErrorAt(texts::kBadParameter, text.View(), scanner_->GetKeyLine(), scanner_->GetActPos());
    }
}

}  // namespace kq_pdt
