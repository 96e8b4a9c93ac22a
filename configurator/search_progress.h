#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "configurator/search_entries.h"
#include "configurator/search_reports.h"
#include "platform/os/events.h"
#include "platform/view/labels.h"
#include "platform/view/window.h"

namespace kq_pdt {

/// The window that is up while a driver searches, with the thread on which the driver does so. It ends when the driver
/// comes back; its button only asks the driver to.
class CSearchProgress final : public CWindow {
public:
    /// The code with which the window ends if the driver found nothing. It ends with kEndLoop if the driver did find
    /// something, and with kCloseLoop, whatever was found, if the person cancelled.
    static constexpr std::uint32_t kNothingFound = 0x4B1;

    /// The driver gets the path of the file with the present parameters.
    CSearchProgress(const CWindow &owner, const TSearchEntries &driver, std::string_view path);
    ~CSearchProgress() override;

    /// Starts the search. False if the system has no thread to give.
    bool Start();
    /// After a cancel the lines stay.
    void ShowLines(const TSearchLines &lines);

    std::uint32_t Exec() override;
    void ReceiveEvent(TEvent &event) override;

private:
    static std::uint32_t Work(void *parameter);
    bool Search() const;
    void LayOut();
    void Cancel();
    void WaitForWorker();

    const TSearchEntries driver_;
    const std::string path_;
    kq_os::HANDLE cancel_event_ = nullptr;
    kq_os::HANDLE worker_ = nullptr;
    std::array<CStaticText, 3> lines_;
    CButton button_;
    bool ended_ = false;  ///< the driver has come back
    bool nothing_found_ = false;
    bool cancelled_ = false;
};

}  // namespace kq_pdt
