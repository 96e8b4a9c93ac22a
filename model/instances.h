#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "model/instance_index.h"
#include "model/section_def.h"

class CTextOut;

namespace kq_pdt {

class CParSheetData;

/// The instances of a model in the order in which they were created, and the end of sections.
///
/// What follows from a value may switch off the module that brought the very section that holds the value. So a
/// released section leaves the list and gives back its channels at once, but ends only with the last CHold, and not
/// while its scope is in force.
class CInstances {
public:
    /// As long as one of these lives no released section ends: whoever publishes a section and then commits its
    /// channels, or iterates over instances that follow a variable, holds one; an edit holds one to its end.
    class CHold {
    public:
        explicit CHold(CInstances &instances) : instances_(instances) { ++instances_.holds_; }
        ~CHold() {
            --instances_.holds_;
            instances_.EndReleased();
        }
        CHold(const CHold &) = delete;
        CHold &operator=(const CHold &) = delete;

    private:
        CInstances &instances_;
    };

    explicit CInstances(CParSheetData &data) : data_(data) {}

    /// Puts an instance at the end of the list.
    CSectionDef &Append(std::unique_ptr<CSectionDef> section);
    /// An instance's name shows another text now.
    void Renamed(CSectionDef &section);
    /// Releases an instance: it leaves the list and gives back what others can see of it. It ends later if it is in use
    /// or if an edit may put it back.
    void Release(CSectionDef &section);
    /// Releases all instances of a definition.
    void ReleaseOf(const CSectionDef &definition);
    /// Ends an object that is in no list any more, at once or, if it may be in use, later.
    void Bury(std::unique_ptr<CDefNode> node);
    /// Takes back a section that was buried; the caller owns it then.
    CSectionDef *Unbury(const CSectionDef &section);
    /// Releases all instances.
    void Clear();
    /// Writes all instances out.
    void Write(CTextOut &out) const;

    const CSectionList &List() const { return list_; }
    /// The position in the list of an instance that is in it.
    std::size_t IndexOf(const CSectionDef &section);
    const CInstanceIndex &Index() const { return index_; }
    /// The serial number that the next instance to be created will have, higher than all others.
    std::uint32_t NextSerial() const { return next_serial_; }
    bool Has(const CSectionDef &definition) const { return index_.FirstOf(&definition) != nullptr; }

private:
    void TellRow(CSectionList::iterator position, bool inserted);
    /// Ends what was buried, unless it may still be in use.
    void EndReleased();

    CParSheetData &data_;
    CSectionList list_;
    CInstanceIndex index_;
    std::uint32_t next_serial_ = 1;
    std::vector<std::unique_ptr<CDefNode>> buried_;  ///< what may still be in use, oldest first
    std::uint32_t holds_ = 0;
};

}  // namespace kq_pdt
