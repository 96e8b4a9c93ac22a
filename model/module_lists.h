#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/base/bounded_text.h"

namespace kq_pdt {

/// Names in order: words to be coloured, required procedures, modules.
using CNameList = std::vector<kq_base::TText>;
using CSharedNames = std::shared_ptr<const CNameList>;

/// The file names of the host's modules that export all of the procedures: those of its directory, then those that it
/// finds itself. Empty without a host.
CSharedNames ListModules(const CNameList &procedures);

/// Lists of modules that are made once for the same procedures: to list them takes a look into each module.
class CModuleLists {
public:
    CSharedNames Find(const CNameList &procedures);
    void Clear() { lists_.clear(); }

private:
    std::vector<std::pair<CNameList, CSharedNames>> lists_;
};

}  // namespace kq_pdt
