#include "model/name_index.h"

#include <algorithm>
#include <numeric>

#include "model/const_item.h"
#include "model/var_ref_item.h"
#include "platform/base/code_page.h"

namespace kq_pdt {

namespace {

/// More optional parts than this count as something that may begin in any way.
constexpr std::size_t kMaxLeads = 8;

std::uint64_t HashWith(std::uint64_t hash, char character) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    return (hash ^ static_cast<std::uint8_t>(kq_base::ToUpper(character))) * kPrime;
}

bool IsBound(const CItem &item) {
    const auto *reference = item.Code() == TItemCode::kPlain ? dynamic_cast<const CVarRefItem *>(&item) : nullptr;
    return reference != nullptr && reference->IsCaptured();
}

void Append(TLeads &leads, TLead lead, TLead::TRest rest) {
    lead.rest = rest;
    if (std::find(leads.begin(), leads.end(), lead) == leads.end()) {
        leads.push_back(lead);
    }
}

}  // namespace

void CNameIndex::Extend(TLead &lead, std::string_view text) {
    for (const char character : text.substr(0, kMaxLength - lead.length)) {
        lead.hash = HashWith(lead.hash, character);
        ++lead.length;
    }
}

std::uint64_t CNameIndex::HashOf(std::string_view text) {
    return std::accumulate(text.begin(), text.end(), std::uint64_t{0}, HashWith);
}

TLeads CNameIndex::LeadsOf(const CItemSeq &name) {
    TLeads leads;
    TLeads open(1);  // up to the item, as far as none of the items before it takes a character beyond them
    const auto close = [&](TLead::TRest rest) {
        for (const TLead &lead : open) {
            Append(leads, lead, lead.length == kMaxLength ? TLead::TRest::kAnything : rest);
        }
    };
    for (const auto &item : name.Items()) {
        if (item->Code() == TItemCode::kConst) {
            for (TLead &lead : open) {
                Extend(lead, static_cast<const CConstItem &>(*item).Text());
            }
        } else if (item->Code() == TItemCode::kNumber) {
            close(TLead::TRest::kDigit);
        } else if (IsBound(*item) && open.size() < kMaxLeads) {
            kq_base::CTextBuffer text;
            item->AppendText(text);
            TLeads taken = open;
            for (TLead &lead : taken) {
                Extend(lead, text.View());
            }
            open.insert(open.end(), taken.begin(), taken.end());
        } else {
            close(TLead::TRest::kAnything);
            return leads;
        }
    }
    close(TLead::TRest::kNothing);
    return leads;
}

std::uint64_t CNameIndex::KeyOf(std::uint64_t hash, TLead::TRest rest) {
    return hash * 4 + static_cast<std::uint64_t>(rest);
}

void CNameIndex::Add(const TLeads &leads, const TEntry &entry) {
    for (const TLead &lead : leads) {
        auto &entries = entries_[KeyOf(lead.hash, lead.rest)];
        const auto position =
            std::upper_bound(entries.begin(), entries.end(), entry.order,
                             [](std::uint32_t order, const TEntry &other) { return order < other.order; });
        entries.insert(position, entry);
        if (lead.rest != TLead::TRest::kNothing) {
            lengths_.set(lead.length);
            longest_ = std::max<std::size_t>(longest_, lead.length);
        }
    }
}

void CNameIndex::Remove(const TLeads &leads, std::uint32_t order) {
    for (const TLead &lead : leads) {
        const auto found = entries_.find(KeyOf(lead.hash, lead.rest));
        auto &entries = found->second;
        entries.erase(std::lower_bound(entries.begin(), entries.end(), order,
                                       [](const TEntry &other, std::uint32_t number) { return other.order < number; }));
        if (entries.empty()) {
            entries_.erase(found);
        }
    }
}

void CNameIndex::Clear() {
    entries_.clear();
    lengths_.reset();
    longest_ = 0;
}

void CNameIndex::Collect(std::uint64_t hash, TLead::TRest rest, std::vector<TEntry> &found) const {
    const auto entries = entries_.find(KeyOf(hash, rest));
    if (entries != entries_.end()) {
        found.insert(found.end(), entries->second.begin(), entries->second.end());
    }
}

void CNameIndex::Find(std::string_view text, std::vector<TEntry> &found) const {
    found.clear();
    std::uint64_t hash = 0;
    for (std::size_t length = 0;; ++length) {
        if (length <= longest_ && lengths_[length]) {
            Collect(hash, TLead::TRest::kAnything, found);
            if (length < text.size() && text[length] >= '0' && text[length] <= '9') {
                Collect(hash, TLead::TRest::kDigit, found);
            }
        }
        if (length == text.size()) {
            Collect(hash, TLead::TRest::kNothing, found);
            break;
        }
        hash = HashWith(hash, text[length]);
    }
    std::sort(found.begin(), found.end(),
              [](const TEntry &left, const TEntry &right) { return left.order < right.order; });
    found.erase(std::unique(found.begin(), found.end(),
                            [](const TEntry &left, const TEntry &right) { return left.order == right.order; }),
                found.end());
}

}  // namespace kq_pdt
