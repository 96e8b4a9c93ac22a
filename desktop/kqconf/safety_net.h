#pragma once

#include <QTimer>
#include <cstdint>
#include <functional>
#include <utility>

#include "configurator/kq_pdt.h"
#include "desktop/kqconf/disk_watch.h"
#include "desktop/kqconf/driver_files.h"
#include "desktop/kqconf/notices.h"
#include "desktop/kqconf/recovery.h"

class QWidget;

namespace kq_desktop {

/// Sees to it that no work is lost: keeps copies of what isn't saved, tells of files that others changed, compares.
class CSafetyNet {
public:
    CSafetyNet(CConfiguratorWindow &window, TDriverFiles files, CNotices &notices, QWidget &parent);
    CSafetyNet(const CSafetyNet &) = delete;
    CSafetyNet &operator=(const CSafetyNet &) = delete;

    /// Called when the files are to be read anew, which ends the window.
    std::function<void()> reload;

    /// True if there is work that is in no file.
    bool HasUnsavedWork() const;
    /// The window has come to rest; what changed is kept soon.
    void Refresh();
    /// The configurator is about to write the files.
    void Saving();
    /// Asks before files that somebody else changed are overwritten; false if they aren't to be.
    bool MayOverwrite();
    /// The window is about to end, and nobody will ask any more.
    void Closing();
    /// Compares the files with what a save would write.
    void ShowSavedChanges();

private:
    void Tick();
    void KeepCopy();
    void OfferCopy();
    void CompareCopy(const CRecovery::TCopy &copy);
    void OpenCopy(const CRecovery::TCopy &copy);
    void CheckDisk();
    void CheckSave();
    void CheckComments();
    bool IsParUnsaved() const;
    bool IsDmfUnsaved() const;
    bool FilesHold(const CConfiguratorWindow::TTexts &texts) const;
    std::pair<std::uint64_t, std::uint64_t> ChangeMark() const;

    CConfiguratorWindow &window_;
    TDriverFiles files_;
    CNotices &notices_;
    QWidget &parent_;
    CRecovery recovery_;
    CDiskWatch disk_;
    QTimer timer_;
    std::pair<std::uint64_t, std::uint64_t> kept_mark_;
    bool saving_ = false;       ///< a save was begun, and how it ended isn't known yet
    std::string saved_dmf_;     ///< the text of the driver map's view at the last save that went well
    bool save_failed_ = false;  ///< the files don't hold what the last save was to write
    std::uint32_t tab_ = 0;
    bool told_comments_ = false;
};

}  // namespace kq_desktop
