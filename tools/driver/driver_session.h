#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "driver/kq_drv.h"
#include "tools/driver/drive_plan.h"
#include "tools/driver/module_file.h"

/// Channels of a driver that follow each other and are described alike. Texts are in code page 1250.
struct TDriverChannels {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint32_t type = 0;
    kq_def::TDirection direction{};
    std::uint8_t flag = 0;
    std::string description;
    std::string detail;
};

/// What a driver said to its parameter file. Texts are in code page 1250.
struct TParametersAnswer {
    bool ok = false;
    std::string message;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::string detail;
};

/// How a step of a round went.
struct TStepResult {
    bool ok = true;
    std::uint32_t code = 0;
    std::string text = {};     ///< of the code; UTF-8
    std::uint32_t status = 0;  ///< only of a value that was read
};

/// How a half of a round went: each value in the order of the plan, and the whole.
struct THalfRound {
    std::vector<TStepResult> values;
    TStepResult whole;

    bool Good() const;
};

/// One driver in its module, from loading to freeing. Whatever happens in between, the end of the object stops a driver
/// that runs, ends one that was made, and frees the module, in this order.
class CDriverSession {
public:
    CDriverSession() = default;
    ~CDriverSession();
    CDriverSession(const CDriverSession &) = delete;
    CDriverSession &operator=(const CDriverSession &) = delete;

    /// Loads the module. False with the reason, in UTF-8.
    bool Load(const std::string &module, std::string &reason);
    /// What a loaded module says of itself; none if it isn't a driver module.
    std::optional<std::uint32_t> Version();
    std::optional<std::string> Description();
    /// Makes a driver. False with the reason, in UTF-8.
    bool MakeDriver(const std::string &name, std::uint32_t instance, std::string &reason);
    TParametersAnswer ReadParameters(const std::string &path);
    /// What the driver lists; none if it doesn't list its channels. The mistakes, in UTF-8, are what a channel map
    /// refuses of the list, and the first block that holds no channel or ends beyond 32 bits.
    std::optional<std::vector<TDriverChannels>> Channels(std::vector<std::string> &mistakes);
    /// Offers memory for all buffers that are to be read. False, with the reason, if the driver doesn't want one.
    bool OfferBuffers(TDrivePlan &plan, std::string &reason);

    void Run();
    THalfRound Write(std::deque<TDrivePoint> &points);
    /// Puts what was read into the points; one that failed keeps its former value.
    THalfRound Read(std::deque<TDrivePoint> &points);

private:
    void AddDescribed(const TDriverChannels &block, std::vector<TDriverChannels> &channels);
    TStepResult Failure(std::uint32_t code);
    using TFinalized = bool (kq_drv::CDriver::*)(std::uint32_t number, std::uint32_t &code);
    TStepResult AwaitEnd(TFinalized finalized);

    CModuleFile module_;
    kq_drv::CDriver driver_;
    bool made_ = false;
    bool running_ = false;
};
