#pragma once

#include <bitset>
#include <cstdint>
#include <string_view>
#include <vector>

#include "model/item_list.h"
#include "platform/base/pool_map.h"

namespace kq_pdt {

class CDefNode;

/// What a text has to begin with so that a name may take any of its characters after the constants that the name
/// begins with. A name of several optional parts has several leads.
struct TLead {
    /// What has to come after it.
    enum class TRest : std::uint8_t { kNothing, kDigit, kAnything };

    std::uint64_t hash = 0;  ///< of its characters, whatever their case
    std::uint32_t length = 0;
    TRest rest = TRest::kNothing;

    friend bool operator==(const TLead &, const TLead &) = default;
};
using TLeads = kq_base::TPoolVector<TLead>;

/// Finds the names that a text may match among many, by the constants that they begin with. It leaves out only names
/// that would fail in a match without any effect, so that a match of the others alone ends the same.
///
/// Constants and bound references count with their text, a reference also as one that is passed over, as a match
/// does; a number needs a digit. What else comes in a name may begin in any way.
class CNameIndex {
public:
    /// The node whose name it is, and a number that puts names in the order in which they are to be matched.
    struct TEntry {
        std::uint32_t order;
        CDefNode *node;
    };

    /// The same for texts that differ in the case of their letters alone.
    static std::uint64_t HashOf(std::string_view text);
    static TLeads LeadsOf(const CItemSeq &name);
    /// Adds a name. No other one may have the same order.
    void Add(const TLeads &leads, const TEntry &entry);
    /// Takes a name out that was added with these leads.
    void Remove(const TLeads &leads, std::uint32_t order);
    void Clear();
    /// Puts the names that a text may match into found, in order.
    void Find(std::string_view text, std::vector<TEntry> &found) const;

private:
    /// Of longer leads only the beginning counts.
    static constexpr std::size_t kMaxLength = 255;

    static void Extend(TLead &lead, std::string_view text);
    static std::uint64_t KeyOf(std::uint64_t hash, TLead::TRest rest);
    void Collect(std::uint64_t hash, TLead::TRest rest, std::vector<TEntry> &found) const;

    kq_base::TPoolMap<std::uint64_t, kq_base::TPoolVector<TEntry>> entries_;
    std::bitset<kMaxLength + 1> lengths_;  ///< of leads after which something may come
    std::size_t longest_ = 0;              ///< of these lengths
};

}  // namespace kq_pdt
