#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/base/export.h"

/// A user's settings: named values below paths such as "\driver config tool\Sheet". A value is a number of 32 bits,
/// signed or not, or a boolean; it reads as any of the three. Paths and names are compared byte by byte.
class KQ_API CSettingsStore {
public:
    virtual ~CSettingsStore() = default;
    /// True if some value was written below the path or a path under it.
    virtual bool HasPath(std::string_view path) const = 0;
    /// False if there is no such value.
    virtual bool Read(std::string_view path, std::string_view name, std::int64_t &value) const = 0;
    virtual void Write(std::string_view path, std::string_view name, std::int64_t value) = 0;
};

/// Settings that end with the process.
class KQ_API CMemorySettings : public CSettingsStore {
public:
    using TValues = std::map<std::string, std::int64_t, std::less<>>;
    using TPaths = std::map<std::string, TValues, std::less<>>;

    bool HasPath(std::string_view path) const override;
    bool Read(std::string_view path, std::string_view name, std::int64_t &value) const override;
    void Write(std::string_view path, std::string_view name, std::int64_t value) override;
    /// All values, paths and names in byte order.
    const TPaths &Paths() const { return paths_; }

private:
    TPaths paths_;
};

/// Settings in a file of the user's, read when they are first asked for and written at once after each change that
/// changes something, in such a way that a crash leaves the old content or the new one. A missing or damaged file reads
/// as empty. A write that fails is no failure: the value then lives as long as the process.
class KQ_API CFileSettings : public CSettingsStore {
public:
    explicit CFileSettings(std::string_view path);
    ~CFileSettings() override;
    /// The file below $XDG_CONFIG_HOME, or ~/.config without it.
    static std::string DefaultPath();

    bool HasPath(std::string_view path) const override;
    bool Read(std::string_view path, std::string_view name, std::int64_t &value) const override;
    void Write(std::string_view path, std::string_view name, std::int64_t value) override;

private:
    struct TState;
    std::unique_ptr<TState> state_;
};

/// Installs the store that all windows use, not owned, and gives the one before. Without one settings live in memory.
KQ_API CSettingsStore *SetSettingsStore(CSettingsStore *store);
KQ_API CSettingsStore &SettingsStore();

/// One path of the settings.
class KQ_API CSettings {
public:
    /// The root path of a kind of settings; there is kind 4, the user's programs, whose root is empty.
    static std::string GetRegistryIniPath(std::uint32_t kind);

    /// Opens a path to read; false if nothing is below it.
    bool Open(std::string_view path);
    /// Opens a path to write.
    void Create(std::string_view path) { path_ = path; }

    /// Each leaves the value as it is and gives false if there is none.
    bool ReadBoolean(std::string_view name, bool &value) const;
    bool ReadInteger(std::string_view name, std::int32_t &value) const;
    bool ReadUnsigned(std::string_view name, std::uint32_t &value) const;
    void WriteBoolean(std::string_view name, bool value);
    void WriteInteger(std::string_view name, std::int32_t value);
    void WriteUnsigned(std::string_view name, std::uint32_t value);

private:
    std::string path_;
};
