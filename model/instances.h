#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/instance_index.h"
#include "model/section_def.h"

class CTextOut;

namespace kq_pdt {

/// The instances of a model in the order in which they were created, and the end of sections.
///
/// What follows from a value may switch off the module that brought the very section that holds the value. A section
/// that is released while its scope is in force leaves the list at once but ends only later, with the outermost
/// iteration over the instances and the last CHold.
class CInstances {
public:
    /// As long as one of these lives no section that was released in use ends: whoever publishes a section and then
    /// commits its channels, or closes an editor and then leaves the scopes, holds one.
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

    /// Puts an instance at the end of the list.
    CSectionDef &Append(std::unique_ptr<CSectionDef> section);
    /// An instance's name shows another text now.
    void Renamed(CSectionDef &section);
    /// Lets each instance follow a changed variable, or a changed bound value if variable is null; ok becomes false if
    /// one refuses. Instances created on the way follow, too; released ones don't.
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok);
    /// Releases all instances of a definition.
    void ReleaseOf(const CSectionDef &definition);
    /// Ends a section that is in no list any more, at once or, if it is in use, later.
    void Release(std::unique_ptr<CSectionDef> section);
    /// Releases all instances.
    void Clear();
    /// Writes all instances out.
    void Write(CTextOut &out) const;

    const CSectionList &List() const { return list_; }
    const CInstanceIndex &Index() const { return index_; }
    bool Has(const CSectionDef &definition) const { return index_.FirstOf(&definition) != nullptr; }

private:
    bool IsInUse(const CSectionDef &section) const;
    /// Ends the sections that were released in use, unless they still are.
    void EndReleased();

    CSectionList list_;
    CInstanceIndex index_;
    std::uint32_t next_serial_ = 1;
    std::vector<std::size_t *> iterations_;  ///< for each iteration under way the index that comes next
    CSectionList released_;                  ///< released sections that may still be in use, oldest first
    std::uint32_t holds_ = 0;
};

}  // namespace kq_pdt
