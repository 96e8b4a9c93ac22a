#include <algorithm>
#include <chrono>
#include <exception>

#include "platform/base/file_system_name.h"
#include "tools/commands.h"
#include "tools/console/diagnostics.h"
#include "tools/driver/drive_report.h"
#include "tools/driver/driver_session.h"
#include "tools/driver/interrupt.h"

namespace {

/// What a drive is made of, and how it goes.
class CDrive {
public:
    CDrive(const TArguments &arguments, TConsole &console, TDrivePlan &plan)
        : arguments_(arguments),
          console_(console),
          plan_(plan),
          report_(arguments.json ? MakeDriveJson(console) : MakeDriveOutline(console)) {}

    /// From loading the module to freeing it.
    int Drive() {
        const CInterrupt interrupt;
        std::string message;
        bool good = false;
        try {
            CDriverSession session;
            good = Begin(session, message) && Rounds(session) && mistakes_.empty();
        } catch (const std::exception &failure) {
            message = failure.what();
        }
        report_->End(CInterrupt::Came(), good, message);
        return good ? kDone : kInputErrors;
    }

private:
    /// Up to the moment when the driver may run. False with the reason, or without one if the report has it.
    bool Begin(CDriverSession &session, std::string &message) {
        TDriveHead head{.module = arguments_.module, .par = arguments_.par, .name = plan_.name};
        head.instance = arguments_.drive.instance;
        const bool loaded = session.Load(arguments_.module, message);
        if (loaded) {
            head.version = session.Version();
            head.description = session.Description();
        }
        report_->Head(head);
        if (!loaded || !session.MakeDriver(plan_.name, head.instance, message)) {
            return false;
        }
        const TParametersAnswer answer = session.ReadParameters(arguments_.par);
        report_->Parameters(answer);
        if (!answer.ok) {
            return false;
        }
        report_->Channels(session.Channels(mistakes_), mistakes_);
        return session.OfferBuffers(plan_, message);
    }

    bool Rounds(CDriverSession &session) {
        const TDriveArguments &options = arguments_.drive;
        auto next = std::chrono::steady_clock::now();
        bool good = true;
        session.Run();
        for (std::uint32_t round = 0; options.rounds == 0 || round < options.rounds; ++round) {
            if (!CInterrupt::WaitUntil(next)) {
                break;
            }
            // After a round that took longer the next one follows at once, without catching up on those missed.
            next = std::max(next + std::chrono::milliseconds(options.interval), std::chrono::steady_clock::now());
            good = Round(session) && good;
            // Each round is to be seen when it is over. If nobody takes it the drive ends.
            std::string reason;
            if (!console_.out.Finish(reason)) {
                break;
            }
        }
        return good;
    }

    bool Round(CDriverSession &session) {
        std::optional<THalfRound> written;
        std::optional<THalfRound> read;
        if (!plan_.writes.empty()) {
            written = session.Write(plan_.writes);
        }
        if (!plan_.reads.empty()) {
            read = session.Read(plan_.reads);
        }
        report_->Round(plan_, written, read);
        return (!written || written->Good()) && (!read || read->Good());
    }

    const TArguments &arguments_;
    TConsole &console_;
    TDrivePlan &plan_;
    std::unique_ptr<CDriveReport> report_;
    std::vector<std::string> mistakes_;  // in the driver's list of channels
};

}  // namespace

int RunDrive(const TArguments &arguments, TConsole &console) {
    TDrivePlan plan;
    std::string reason;
    if (!MakeDrivePlan(arguments.drive, arguments.module, plan, reason)) {
        PrintError(console, "kqcfg", reason);
        return kFailed;
    }
    if (!CheckReadable(console, arguments.module) || !CheckReadable(console, arguments.par)) {
        return kFailed;
    }
    if (kq_base::FromFileSystem(arguments.par).size() > kLongestParPath) {
        PrintError(console, arguments.par, "the path is too long: drivers take at most 259 characters");
        return kFailed;
    }
    return CDrive(arguments, console, plan).Drive();
}
