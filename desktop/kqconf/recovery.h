#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include "configurator/kq_pdt.h"

namespace kq_desktop {

/// Copies of unsaved work, kept where nobody else may read them, so that a crash or a failed save loses none. A session
/// keeps one copy of its own; what an earlier session left is offered to the next one of the same parameter file.
class CRecovery {
public:
    using TTexts = CConfiguratorWindow::TTexts;

    /// What an earlier session left.
    struct TCopy {
        QString base;  ///< the path of its files without their suffix
        QDateTime time;
    };

    explicit CRecovery(const QString &par_path);

    /// The latest copy that was left; nothing without one.
    std::optional<TCopy> Left() const;
    static TTexts Read(const TCopy &copy);
    static void Delete(const TCopy &copy);

    /// Keeps the texts as the session's own copy. True if they are kept.
    bool Keep(const TTexts &texts);
    /// The session's own copy isn't needed any more.
    void Remove();
    bool HasOwn() const { return kept_; }

private:
    QString name_;  ///< of all copies of this parameter file
    QString own_;   ///< the path of the session's own one, without suffix
    bool kept_ = false;
};

}  // namespace kq_desktop
