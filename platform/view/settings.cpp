#include "platform/view/settings.h"

#include <utility>

namespace {

CSettingsStore *installed_store = nullptr;

}  // namespace

bool CMemorySettings::HasPath(std::string_view path) const {
    if (path.empty()) {
        return !paths_.empty();
    }
    const std::string below = std::string(path) + '\\';
    const auto found = paths_.lower_bound(below);
    return paths_.contains(path) || (found != paths_.end() && found->first.starts_with(below));
}

bool CMemorySettings::Read(std::string_view path, std::string_view name, std::int64_t &value) const {
    const auto values = paths_.find(path);
    if (values == paths_.end()) {
        return false;
    }
    const auto found = values->second.find(name);
    if (found == values->second.end()) {
        return false;
    }
    value = found->second;
    return true;
}

void CMemorySettings::Write(std::string_view path, std::string_view name, std::int64_t value) {
    paths_[std::string(path)][std::string(name)] = value;
}

CSettingsStore *SetSettingsStore(CSettingsStore *store) { return std::exchange(installed_store, store); }

CSettingsStore &SettingsStore() {
    static CMemorySettings memory;
    return installed_store != nullptr ? *installed_store : memory;
}

std::string CSettings::GetRegistryIniPath(std::uint32_t /*kind*/) { return {}; }

bool CSettings::Open(std::string_view path) {
    path_ = path;
    return SettingsStore().HasPath(path);
}

bool CSettings::ReadBoolean(std::string_view name, bool &value) const {
    std::int64_t stored = 0;
    if (!SettingsStore().Read(path_, name, stored)) {
        return false;
    }
    value = stored != 0;
    return true;
}

bool CSettings::ReadInteger(std::string_view name, std::int32_t &value) const {
    std::uint32_t bits = 0;
    if (!ReadUnsigned(name, bits)) {
        return false;
    }
    value = static_cast<std::int32_t>(bits);
    return true;
}

bool CSettings::ReadUnsigned(std::string_view name, std::uint32_t &value) const {
    std::int64_t stored = 0;
    if (!SettingsStore().Read(path_, name, stored)) {
        return false;
    }
    value = static_cast<std::uint32_t>(stored);
    return true;
}

void CSettings::WriteBoolean(std::string_view name, bool value) { SettingsStore().Write(path_, name, value ? 1 : 0); }

void CSettings::WriteInteger(std::string_view name, std::int32_t value) { SettingsStore().Write(path_, name, value); }

void CSettings::WriteUnsigned(std::string_view name, std::uint32_t value) { SettingsStore().Write(path_, name, value); }
