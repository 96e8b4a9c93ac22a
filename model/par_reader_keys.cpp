// The keys of a section that is read: which line is which key, and what its values are.

#include <algorithm>
#include <utility>

#include "model/par_reader.h"
#include "model/sheet_data.h"
#include "model/template_values.h"
#include "model/texts.h"
#include "scanner/par_scanner.h"

namespace kq_pdt {

namespace {

/// May a value of the key go to a variable?
bool MayPublish(const CKeyDef &key) {
    return std::any_of(key.Pars().begin(), key.Pars().end(), [](const auto &par) {
        const auto &items = par->Items().Items();
        return std::any_of(items.begin(), items.end(), [](const auto &item) { return item->IdVariable() != nullptr; });
    });
}

}  // namespace

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
