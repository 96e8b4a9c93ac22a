#include "driver/driver_entries.h"

#include "platform/os/modules.h"

namespace kq_drv {

bool CDriverEntries::Find(void *module, bool wide, std::string &missing) {
    return VisitEntryGroups([this, module, wide, &missing](TEntryGroup group) {
        if (group.front().need == TEntryNeed::kEitherWidth || group.front().need == TEntryNeed::kDeviceSearch) {
            return true;
        }
        bool found = false;
        for (const TEntryRow &row : group) {
            void *&address = addresses_[static_cast<std::size_t>(&row - kEntryTable.data())];
            address = kq_os::GetFunctionAddress(module, row.NameIn(wide));
            found = found || address != nullptr;
        }
        if (!found && IsNeeded(group)) {
            missing = GroupNames(group, wide);
            return false;
        }
        return true;
    });
}

}  // namespace kq_drv
