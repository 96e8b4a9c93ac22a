#include "model/instance_index.h"

#include <algorithm>

#include "model/section_def.h"

namespace kq_pdt {

namespace {

void InsertInOrder(kq_base::TPoolVector<CSectionDef *> &list, CSectionDef &section) {
    const auto position =
        std::upper_bound(list.begin(), list.end(), section.Serial(),
                         [](std::uint32_t serial, const CSectionDef *other) { return serial < other->Serial(); });
    list.insert(position, &section);
}

/// The lists are in order, so neither taking the last instances first nor taking the first ones searches through them.
void EraseInOrder(kq_base::TPoolVector<CSectionDef *> &list, const CSectionDef &section) {
    const auto found =
        std::lower_bound(list.begin(), list.end(), section.Serial(),
                         [](const CSectionDef *other, std::uint32_t serial) { return other->Serial() < serial; });
    if (found != list.end() && *found == &section) {
        list.erase(found);
    }
}

template <class Map, class Key>
void EraseFrom(Map &map, const Key &key, const CSectionDef &section) {
    const auto found = map.find(key);
    if (found == map.end()) {
        return;
    }
    EraseInOrder(found->second, section);
    if (found->second.empty()) {
        map.erase(found);
    }
}

}  // namespace

CInstanceIndex::TEntry CInstanceIndex::Describe(CSectionDef &section) {
    if (section.Names() == nullptr || section.Names()->Items().IsEmpty()) {
        return {};
    }
    bool is_text = true;
    bool shows_variable = false;
    bool publishes = false;
    kq_base::CTextBuffer text;
    for (const auto &item : section.Names()->Items().Items()) {
        const auto *reference = dynamic_cast<const CVarRefItem *>(item.get());
        if (item->Code() == TItemCode::kConst || (reference != nullptr && reference->IsCaptured())) {
            item->AppendText(text);
        } else {
            is_text = false;
        }
        shows_variable = shows_variable || reference != nullptr;
        publishes = publishes || item->IdVariable() != nullptr;
    }
    if (is_text && !publishes) {
        return {TForm::kText, std::string(text.View()), {}};
    }
    const TForm form = shows_variable || publishes ? TForm::kSingle : TForm::kPattern;
    return {form, {}, CNameIndex::LeadsOf(section.Names()->Items())};
}

void CInstanceIndex::Insert(CSectionDef &section) {
    TEntry entry = Describe(section);
    switch (entry.form) {
        case TForm::kText:
            InsertInOrder(by_text_[CNameIndex::HashOf(entry.text)], section);
            break;
        case TForm::kPattern:
            InsertPattern(section, entry.leads);
            break;
        case TForm::kSingle:
            singles_.Add(entry.leads, {section.Serial(), &section});
            break;
        default:
            break;
    }
    entries_[&section] = std::move(entry);
}

void CInstanceIndex::Take(CSectionDef &section) {
    const auto found = entries_.find(&section);
    if (found == entries_.end()) {
        return;
    }
    const TEntry &entry = found->second;
    if (entry.form == TForm::kText) {
        EraseFrom(by_text_, CNameIndex::HashOf(entry.text), section);
    } else if (entry.form == TForm::kPattern) {
        TakePattern(section, entry.leads);
    } else if (entry.form == TForm::kSingle) {
        singles_.Remove(entry.leads, section.Serial());
    }
    entries_.erase(found);
}

void CInstanceIndex::InsertPattern(CSectionDef &section, const TLeads &leads) {
    TPatterns &patterns = patterns_of_[section.Definition()];
    if (patterns.sections.empty()) {
        patterns.order = section.Serial();
        patterns_.Add(leads, {patterns.order, section.Definition()});
    }
    InsertInOrder(patterns.sections, section);
}

void CInstanceIndex::TakePattern(CSectionDef &section, const TLeads &leads) {
    const auto found = patterns_of_.find(section.Definition());
    TPatterns &patterns = found->second;
    EraseInOrder(patterns.sections, section);
    patterns.fresh = 0;
    if (patterns.sections.empty()) {
        patterns_.Remove(leads, patterns.order);
        patterns_of_.erase(found);
    }
}

void CInstanceIndex::Add(CSectionDef &section) {
    InsertInOrder(by_definition_[section.Definition()], section);
    Insert(section);
}

void CInstanceIndex::Remove(CSectionDef &section) {
    Take(section);
    EraseFrom(by_definition_, section.Definition(), section);
}

void CInstanceIndex::Rename(CSectionDef &section) {
    const auto found = entries_.find(&section);
    if (found != entries_.end() && found->second != Describe(section)) {
        Take(section);
        Insert(section);
    }
}

void CInstanceIndex::ForgetNames() {
    entries_.clear();
    by_text_.clear();
    patterns_of_.clear();
    patterns_.Clear();
    singles_.Clear();
}

CSectionDef *CInstanceIndex::FirstOf(const CSectionDef *definition) const {
    const auto found = by_definition_.find(definition);
    return found != by_definition_.end() ? found->second.front() : nullptr;
}

CSectionDef *CInstanceIndex::LastBefore(const CSectionDef *definition, std::uint32_t serial) const {
    const auto found = by_definition_.find(definition);
    if (found == by_definition_.end()) {
        return nullptr;
    }
    const auto next =
        std::lower_bound(found->second.begin(), found->second.end(), serial,
                         [](const CSectionDef *other, std::uint32_t number) { return other->Serial() < number; });
    return next != found->second.begin() ? *std::prev(next) : nullptr;
}

CSectionDef *CInstanceIndex::NextOf(const CSectionDef *definition, std::uint32_t serial) const {
    const auto found = by_definition_.find(definition);
    if (found == by_definition_.end()) {
        return nullptr;
    }
    const auto next =
        std::upper_bound(found->second.begin(), found->second.end(), serial,
                         [](std::uint32_t number, const CSectionDef *other) { return number < other->Serial(); });
    return next != found->second.end() ? *next : nullptr;
}

CSectionDef *CInstanceIndex::PreviousOf(const CSectionDef &section) const {
    const auto &sections = by_definition_.at(section.Definition());
    const auto found =
        std::lower_bound(sections.begin(), sections.end(), section.Serial(),
                         [](const CSectionDef *other, std::uint32_t number) { return other->Serial() < number; });
    return found != sections.begin() ? *std::prev(found) : nullptr;
}

void CInstanceIndex::FindCandidates(std::string_view text, std::vector<CSectionDef *> &candidates) const {
    candidates.clear();
    singles_.Find(text, found_);
    for (const CNameIndex::TEntry &single : found_) {
        candidates.push_back(static_cast<CSectionDef *>(single.node));
    }
    patterns_.Find(text, found_);
    for (const CNameIndex::TEntry &pattern : found_) {
        const TPatterns &patterns = patterns_of_.at(pattern.node);
        const auto &sections = patterns.sections;
        while (patterns.fresh < sections.size() && sections[patterns.fresh]->WasTaken()) {
            ++patterns.fresh;
        }
        candidates.push_back(patterns.fresh < sections.size() ? sections[patterns.fresh] : sections.front());
    }
    AppendByText(text, candidates);
    std::sort(candidates.begin(), candidates.end(),
              [](const CSectionDef *left, const CSectionDef *right) { return left->Serial() < right->Serial(); });
}

void CInstanceIndex::AppendByText(std::string_view text, std::vector<CSectionDef *> &candidates) const {
    const auto found = by_text_.find(CNameIndex::HashOf(text));
    if (found == by_text_.end()) {
        return;
    }
    const auto begin = static_cast<std::ptrdiff_t>(candidates.size());
    for (CSectionDef *section : found->second) {
        const std::string &shown = entries_.at(section).text;
        const auto same = std::find_if(candidates.begin() + begin, candidates.end(), [&](const CSectionDef *other) {
            return other->Definition() == section->Definition() && entries_.at(other).text == shown;
        });
        if (same == candidates.end()) {
            candidates.push_back(section);
        } else if ((*same)->WasTaken() && !section->WasTaken()) {
            *same = section;
        }
    }
}

}  // namespace kq_pdt
