#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/console/console.h"
#include "tools/driver/driver_session.h"

/// What there is to know about a module before anything happens.
struct TDriveHead {
    std::string module;  ///< as typed
    std::string par;
    std::string name;  ///< the driver's, in code page 1250
    std::uint32_t instance = 0;
    std::optional<std::uint32_t> version = std::nullopt;
    std::optional<std::string> description = std::nullopt;  ///< in code page 1250
};

/// Reports how a driver is driven, as it happens: each operation once, in this order, except that all but Head and End
/// may be left out and Round comes as often as there are rounds.
class CDriveReport {
public:
    virtual ~CDriveReport() = default;
    virtual void Head(const TDriveHead &head) = 0;
    virtual void Parameters(const TParametersAnswer &answer) = 0;
    /// The mistakes in the driver's list are in UTF-8.
    virtual void Channels(const std::optional<std::vector<TDriverChannels>> &channels,
                          const std::vector<std::string> &mistakes) = 0;
    /// A half without points is left out.
    virtual void Round(const TDrivePlan &plan, const std::optional<THalfRound> &written,
                       const std::optional<THalfRound> &read) = 0;
    /// The message, in UTF-8, says what kept the driver from running; empty if it ran.
    virtual void End(bool interrupted, bool good, const std::string &message) = 0;
};

/// For people: lines as they come, failures on standard error.
std::unique_ptr<CDriveReport> MakeDriveOutline(TConsole &console);
/// One JSON value.
std::unique_ptr<CDriveReport> MakeDriveJson(TConsole &console);
