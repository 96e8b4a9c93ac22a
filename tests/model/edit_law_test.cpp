// The law of editing, on templates and edits at random. From the environment: KQ_EDIT_COUNT edits, beginning with the
// template of KQ_EDIT_SEED; KQ_EDIT_KNOBS as in MakeKnobs, such as "modules=0,conditions=60"; after KQ_EDIT_FAILURES
// failures the run ends; KQ_EDIT_TRACE=1 shows each edit as it is made, to find one that doesn't return.

#include <gtest/gtest.h>

#include <iostream>

#include "tests/model/edit_law.h"

namespace {

constexpr std::uint32_t kEditsOfOneTemplate = 40;

std::uint32_t FromEnvironment(const char *name, std::uint32_t usual) {
    const char *const text = std::getenv(name);
    std::uint32_t number = usual;
    return text != nullptr && kq_base::ParseDecimal(text, number) ? number : usual;
}

struct TCounts {
    std::uint32_t edits = 0;
    std::uint32_t taken = 0;
    std::uint32_t templates = 0;
    std::uint32_t unreadable = 0;
    std::uint32_t failures = 0;
};

/// Templates and edits at random, under the law.
class CLawTest {
public:
    /// One template and its edits. The model is written and read again now and then.
    void RunTemplate(std::uint32_t seed, const TKnobs &knobs) {
        ++counts_.templates;
        TCase start{MakeTemplate(seed, knobs), "", "", {}};
        CDice dice(seed ^ 0x5EEDU);
        const auto other_map = [&](const std::string &dmf) {
            return dice.Below(100) < knobs.at("driver_map") ? ChangeDriverMap(dmf, dice) : dmf;
        };
        start.dmf = other_map("begin\nend.\n");
        CModuleDirectory directory;
        auto run = std::make_unique<CLawRun>(directory, start);
        if (!run->IsReadable()) {
            ++counts_.unreadable;
            if (trace_) {
                std::cerr << "seed " << seed << " isn't readable: " << run->Model().MessageLines() << " "
                          << run->Model().TemplateResult().message.View() << "\n"
                          << Script(start);
            }
            return;
        }
        for (std::uint32_t edit = 0; edit < kEditsOfOneTemplate && run->Failure().cause.empty(); ++edit) {
            if (dice.OneIn(10)) {
                start.edits.clear();
                start.par = run->Par();
                const std::string dmf = run->Dmf();
                start.dmf = other_map(dmf);
                run.reset();  // one session at a time answers boxes
                run = std::make_unique<CLawRun>(directory, start);
                if (!run->IsReadable()) {
                    start.dmf = dmf;
                    run.reset();
                    run = std::make_unique<CLawRun>(directory, start);
                }
                continue;
            }
            start.edits.push_back(run->Choose(dice));
            run->Step(start.edits.back(), &dice);
            ++counts_.edits;
            counts_.taken += run->WasTaken() ? 1 : 0;
            if (trace_) {
                std::cerr << "seed " << seed << ": " << start.edits.back().section << "/" << start.edits.back().key
                          << " " << start.edits.back().value << std::endl;
            }
        }
        if (!run->Failure().cause.empty()) {
            const TFailure failure = run->Failure();
            run.reset();
            Report(directory, seed, start, failure);
        }
    }

    const TCounts &Counts() const { return counts_; }

private:
    void Report(CModuleDirectory &directory, std::uint32_t seed, const TCase &start, const TFailure &failure) {
        ++counts_.failures;
        const TCase small = Shrink(directory, start, failure.cause);
        const TFailure shown = RunCase(directory, small);
        ADD_FAILURE() << "seed " << seed << "\n# cause: " << failure.cause << "\n"
                      << Script(small) << "# - the model, + what reads from its texts\n"
                      << (shown.details.empty() ? failure.details : shown.details) << "# end of failure";
    }

    TCounts counts_;
    const bool trace_ = FromEnvironment("KQ_EDIT_TRACE", 0) != 0;
};

TEST(EditLaw, HoldsAfterEveryEdit) {
    const char *const changes = std::getenv("KQ_EDIT_KNOBS");
    const TKnobs knobs = MakeKnobs(changes == nullptr ? "" : changes);
    const std::uint32_t count = FromEnvironment("KQ_EDIT_COUNT", 3000);
    const std::uint32_t most = FromEnvironment("KQ_EDIT_FAILURES", 1);
    CLawTest test;
    const TCounts &counts = test.Counts();
    for (std::uint32_t seed = FromEnvironment("KQ_EDIT_SEED", 1); counts.edits < count && counts.failures < most;
         ++seed) {
        test.RunTemplate(seed, knobs);
    }
    std::cout << counts.edits << " edits, " << counts.taken << " taken, " << counts.templates << " templates, "
              << counts.unreadable << " of them unreadable, " << counts.failures << " failures\n";
    EXPECT_LT(counts.unreadable * 4, counts.templates + 4);
    EXPECT_GT(counts.taken * 3, counts.edits);
    EXPECT_LT(counts.taken, counts.edits);
}

}  // namespace
