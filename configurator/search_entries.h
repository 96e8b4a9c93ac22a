#pragma once

#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"
#include "platform/os/modules.h"

namespace kq_pdt {

/// The entries of a driver's module that a search for devices calls; null where the module has none.
struct TSearchEntries {
    explicit TSearchEntries(kq_os::HMODULE module)
        : load(Find<KQLoadModulesTreeEntry>(module, "LoadModulesTree")),
          load_wide(Find<KQLoadModulesTreeEntryW>(module, "LoadModulesTreeW")),
          put(Find<KQPutModulesToParEntry>(module, "PutModulesToPar")),
          done(Find<KQDoneTreeDataEntry>(module, "DoneTreeData")) {}

    bool CanSearch() const { return load != nullptr || load_wide != nullptr; }

    KQLoadModulesTreeEntry *load;
    KQLoadModulesTreeEntryW *load_wide;  ///< preferred
    KQPutModulesToParEntry *put;
    KQDoneTreeDataEntry *done;

private:
    template <class Entry>
    static Entry *Find(kq_os::HMODULE module, const char *name) {
        return module == nullptr ? nullptr : reinterpret_cast<Entry *>(kq_os::GetFunctionAddress(module, name));
    }
};

}  // namespace kq_pdt
