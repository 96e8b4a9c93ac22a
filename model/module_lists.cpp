#include "model/module_lists.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/base/files.h"
#include "platform/base/paths.h"
#include "platform/os/modules.h"
#include "template/language/host_callback.h"

namespace kq_pdt {

namespace {

/// A path buffer as the host's callback takes it.
using TPathBuffer = std::array<char, kq_base::TPathText::kBound + 1>;

constexpr std::uint32_t kPathHigh = kq_base::TPathText::kBound;

/// The module is only looked at, nothing of it runs.
bool HasProcedures(std::string_view path, const CNameList &procedures) {
    const kq_os::HMODULE module = kq_os::LoadLibraryExA(path, kq_os::kDontResolveReferences);
    if (module == nullptr) {
        return false;
    }
    const bool all = std::all_of(procedures.begin(), procedures.end(), [module](const kq_base::TText &procedure) {
        return kq_os::GetProcAddress(module, procedure.Characters()) != nullptr;
    });
    kq_os::FreeLibrary(module);
    return all;
}

}  // namespace

CSharedNames ListModules(const CNameList &procedures) {
    auto modules = std::make_shared<CNameList>();
    CAbstractPdtIdeCallBack *host = HostCallback();
    if (host == nullptr) {
        return modules;
    }
    const auto offer = [&](std::string_view path) {
        if (HasProcedures(path, procedures)) {
            modules->emplace_back(kq_base::FileNamePart(path));
        }
    };
    TPathBuffer path{};
    host->GetModulesDir(kPathHigh, path.data());
    const std::string directory(path.data());
    std::vector<std::string> files;
    std::string error;
    if (kq_base::CDisk::Current().List(directory, "*.dll", files, error)) {
        for (const std::string &file : files) {
            offer(kq_base::JoinPath(directory, file));
        }
    }
    TPathBuffer name{};
    for (bool more = host->FindFirstModule(kPathHigh, name.data(), kPathHigh, path.data()); more;
         more = host->FindNextModule(kPathHigh, name.data(), kPathHigh, path.data())) {
        const std::string found(path.data());
        offer(found);
        kq_base::CopyToBuffer(kq_base::FileNamePart(found), kPathHigh, name.data());
        kq_base::CopyToBuffer(kq_base::DirectoryPart(found), kPathHigh, path.data());
    }
    return modules;
}

CSharedNames CModuleLists::Find(const CNameList &procedures) {
    const auto found = std::find_if(lists_.begin(), lists_.end(),
                                    [&procedures](const auto &list) { return list.first == procedures; });
    if (found != lists_.end()) {
        return found->second;
    }
    CSharedNames modules = ListModules(procedures);
    lists_.emplace_back(procedures, modules);
    return modules;
}

}  // namespace kq_pdt
