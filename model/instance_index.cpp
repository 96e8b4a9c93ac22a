#include "model/instance_index.h"

#include <algorithm>

#include "model/section_def.h"
#include "platform/base/code_page.h"

namespace kq_pdt {

namespace {

void InsertInOrder(std::vector<CSectionDef *> &list, CSectionDef &section) {
    const auto position =
        std::upper_bound(list.begin(), list.end(), section.Serial(),
                         [](std::uint32_t serial, const CSectionDef *other) { return serial < other->Serial(); });
    list.insert(position, &section);
}

/// The lists are in order, so neither taking the last instances first nor taking the first ones searches through them.
void EraseInOrder(std::vector<CSectionDef *> &list, const CSectionDef &section) {
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
        return {TForm::kText, std::string(text.View())};
    }
    return {shows_variable || publishes ? TForm::kSingle : TForm::kPattern, {}};
}

void CInstanceIndex::Insert(CSectionDef &section) {
    TEntry entry = Describe(section);
    switch (entry.form) {
        case TForm::kText:
            InsertInOrder(by_text_[kq_base::ToUpper(entry.text)], section);
            break;
        case TForm::kPattern:
            InsertInOrder(patterns_[section.Definition()], section);
            break;
        case TForm::kSingle:
            InsertInOrder(singles_, section);
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
        EraseFrom(by_text_, kq_base::ToUpper(entry.text), section);
    } else if (entry.form == TForm::kPattern) {
        EraseFrom(patterns_, section.Definition(), section);
        fresh_.erase(section.Definition());
    } else if (entry.form == TForm::kSingle) {
        EraseInOrder(singles_, section);
    }
    entries_.erase(found);
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
    if (entries_.contains(&section)) {
        Take(section);
        Insert(section);
    }
}

void CInstanceIndex::Clear() {
    entries_.clear();
    by_definition_.clear();
    by_text_.clear();
    patterns_.clear();
    fresh_.clear();
    singles_.clear();
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
    candidates = singles_;
    for (const auto &[definition, sections] : patterns_) {
        std::size_t &fresh = fresh_[definition];
        while (fresh < sections.size() && sections[fresh]->WasTaken()) {
            ++fresh;
        }
        candidates.push_back(fresh < sections.size() ? sections[fresh] : sections.front());
    }
    const auto found = by_text_.find(kq_base::ToUpper(text));
    if (found != by_text_.end()) {
        const std::size_t begin = candidates.size();
        for (CSectionDef *section : found->second) {
            const std::string &shown = entries_.at(section).text;
            const auto same = std::find_if(candidates.begin() + static_cast<std::ptrdiff_t>(begin), candidates.end(),
                                           [&](const CSectionDef *other) {
                                               return other->Definition() == section->Definition() &&
                                                      entries_.at(other).text == shown;
                                           });
            if (same == candidates.end()) {
                candidates.push_back(section);
            } else if ((*same)->WasTaken() && !section->WasTaken()) {
                *same = section;
            }
        }
    }
    std::sort(candidates.begin(), candidates.end(),
              [](const CSectionDef *left, const CSectionDef *right) { return left->Serial() < right->Serial(); });
}

bool CInstanceIndex::ShowOneName(const CSectionDef &left, const CSectionDef &right) const {
    const TEntry &first = entries_.at(&left);
    const TEntry &second = entries_.at(&right);
    return first.form == TForm::kText && second.form == TForm::kText && first.text == second.text;
}

}  // namespace kq_pdt
