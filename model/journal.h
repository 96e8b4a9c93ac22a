#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace kq_pdt {

/// How to take back, step by step, what an edit has changed in the model. While one lives, whatever an edit may change
/// notes its old value here first; without one nothing is noted. There is one edit at a time, on one thread.
class CJournal {
public:
    /// What takes changes back, to be called from the back.
    using TSteps = std::vector<std::function<void()>>;

    CJournal();
    ~CJournal();
    CJournal(const CJournal &) = delete;
    CJournal &operator=(const CJournal &) = delete;

    /// Notes what takes the next change back.
    static void Note(std::function<void()> take_back);
    /// Notes the values that fields have now; they are about to change. The fields must outlive the journal.
    template <class... TFields>
    static void Keep(TFields &...fields) {
        if (active_ != nullptr) {
            (Note([&fields, old_value = fields]() mutable { fields = std::move(old_value); }), ...);
        }
    }
    static bool IsActive() { return active_ != nullptr; }

    /// Takes all changes back, the newest first, and is empty then.
    void TakeBack() { TakeBack(steps_); }
    /// The same for steps that were taken out of a journal.
    static void TakeBack(TSteps &steps);
    /// Hands over what was noted; the journal is empty then.
    TSteps TakeSteps() { return std::exchange(steps_, {}); }

private:
    static thread_local CJournal *active_;

    TSteps steps_;
};

}  // namespace kq_pdt
